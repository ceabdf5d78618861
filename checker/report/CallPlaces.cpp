// Where calls stand in a file as it was shipped. The engine finds them in the text without comments; the runs of bytes
// that it kept lead back. Calls are taken in the order of their offsets, so that columns of a long line are counted
// once. Test: tests/checker/CallPlaces_test.cpp.

#include "checker/report/CallPlaces.h"

#include <algorithm>
#include <climits>
#include <iterator>

#include "APICheckEngine/Facade.h"
#include "checker/report/Characters.h"

namespace detail = FlashEngine_1_00::detail;

namespace {

constexpr std::size_t kMaxExcerpt = 160;  // bytes of a line that are shown
constexpr std::size_t kLead = 48;         // of those, before the call
constexpr std::size_t kLinesAround = 2;   // before and after the call's line

bool isContinuation(char c) {
  return (static_cast<unsigned char>(c) & 0xC0U) == 0x80;
}

// `at`, or the start of the character of UTF-8 that it lies in, if that is not far.
std::size_t characterStart(std::string_view text, std::size_t at) {
  std::size_t start = at;
  while (start > 0 && at - start < 3 && start < text.size() && isContinuation(text[start]))
    --start;
  return start < at && start + firstCharacter(text.substr(start)).size > at ? start : at;
}

// The lines of a text. A line ends with a line feed, which is no part of it, nor is a carriage return before that.
class Lines {
 public:
  explicit Lines(std::string_view text) : text_(text) {
    for (std::size_t at = text.find('\n'); at != std::string_view::npos; at = text.find('\n', at + 1))
      starts_.push_back(at + 1);
  }

  std::size_t count() const { return starts_.size(); }

  std::size_t lineOf(std::size_t offset) const {
    const auto next = std::upper_bound(starts_.begin(), starts_.end(), offset);
    return static_cast<std::size_t>(next - starts_.begin()) - 1;
  }

  std::size_t startOf(std::size_t line) const { return starts_[line]; }

  std::string_view textOf(std::size_t line) const {
    const bool isLast = line + 1 == starts_.size();
    const std::size_t end = isLast ? text_.size() : starts_[line + 1] - 1;
    std::string_view text = text_.substr(starts_[line], end - starts_[line]);
    if (!text.empty() && text.back() == '\r') text.remove_suffix(1);
    return text;
  }

 private:
  std::string_view text_;
  std::vector<std::size_t> starts_{0};
};

// A part of a text that is no longer than is shown, and starts and ends between characters.
std::string_view shownPart(std::string_view text, std::size_t from) {
  const std::size_t begin = characterStart(text, from);
  const std::size_t end = characterStart(text, std::min(text.size(), begin + kMaxExcerpt));
  return text.substr(begin, end - begin);
}

SourceLine shownLine(const Lines& lines, std::size_t line) {
  return {static_cast<int>(line + 1), std::string(shownPart(lines.textOf(line), 0))};
}

// Fills in what is shown of the call that stands at [begin, end) of `line`.
void takeExcerpt(std::string_view line, std::size_t begin, std::size_t end, Call& call) {
  end = std::min(end, line.size());
  begin = std::min(begin, end);
  const std::size_t room = line.size() <= kMaxExcerpt ? 0 : line.size() - kMaxExcerpt;
  const std::string_view shown = shownPart(line, std::min(begin - std::min(begin, kLead), room));
  call.excerpt.text = shown;
  call.mark = std::min(begin - static_cast<std::size_t>(shown.data() - line.data()), shown.size());
  call.markLength = std::min(end - begin, shown.size() - call.mark);
}

// Where the bytes of a cleaned text stand in the one that it was made of.
class SourceOffsets {
 public:
  explicit SourceOffsets(std::string_view source) : runs_(detail::keptRuns(source)) {}

  std::size_t of(std::size_t cleaned) const {
    const auto next = std::upper_bound(runs_.begin(), runs_.end(), cleaned,
                                       [](std::size_t at, const detail::KeptRun& run) { return at < run.cleaned; });
    return next == runs_.begin() ? cleaned : std::prev(next)->source + (cleaned - std::prev(next)->cleaned);
  }

 private:
  std::vector<detail::KeptRun> runs_;
};

// The file's text as the engine read it; empty if it cannot be read, or not whole.
std::string textOf(const std::string& path) {
  const FlashEngine_1_00::File file = FlashEngine_1_00::openFile(path, "rb");
  std::string text;
  if (file == nullptr) return text;
  char buffer[65536];
  for (std::size_t read = sizeof buffer; read == sizeof buffer && text.size() < INT_MAX;) {
    read = std::fread(buffer, 1, sizeof buffer, file.get());
    text.append(buffer, read);
  }
  return text.substr(0, text.find('\0'));
}

// Whether `cleaned` is what the engine makes of `source`.
bool isMadeOf(std::string_view cleaned, std::string source) {
  source.push_back('\0');
  const int length = delete_comment(source.data(), static_cast<int>(source.size()), source.data());
  return cleaned == source.substr(0, static_cast<std::size_t>(length)).c_str();
}

}  // namespace

void placeInSource(const std::string& path, std::string_view cleaned, std::vector<Sighting> sightings) {
  const std::string shipped = textOf(path);
  const bool isKnown = isMadeOf(cleaned, shipped);
  const std::string_view text = isKnown ? shipped : cleaned;
  const SourceOffsets offsets(isKnown ? text : std::string_view());
  const Lines lines(text);
  std::sort(sightings.begin(), sightings.end(),
            [](const Sighting& a, const Sighting& b) { return a.offset < b.offset; });
  std::size_t counted = 0;  // up to here, columns of its line are counted
  std::size_t column = 0;
  for (const Sighting& sighting : sightings) {
    Call& call = *sighting.call;
    const std::size_t begin = offsets.of(sighting.offset);
    const std::size_t end = sighting.length == 0 ? begin : offsets.of(sighting.offset + sighting.length - 1) + 1;
    const std::size_t line = lines.lineOf(begin);
    const std::size_t start = lines.startOf(line);
    call.code = shownPart(cleaned.substr(sighting.offset, sighting.length), 0);
    takeExcerpt(lines.textOf(line), begin - start, end - start, call);
    if (!isKnown) continue;

    if (counted < start) {
      counted = start;
      column = 0;
    }
    for (; counted < begin; ++column)
      counted += firstCharacter(text.substr(counted, begin - counted)).size;
    call.place = {static_cast<int>(line + 1), static_cast<int>(column + 1)};
    call.excerpt.number = call.place.line;
    for (std::size_t around = line - std::min(line, kLinesAround); around < line; ++around)
      call.before.push_back(shownLine(lines, around));
    for (std::size_t around = line + 1; around <= line + kLinesAround && around < lines.count(); ++around)
      call.after.push_back(shownLine(lines, around));
  }
}

void placeInStatements(std::string_view statements, const Sighting& sighting) {
  // Not more of the line than can be shown: there may be many calls in one of megabytes.
  const std::size_t begin = sighting.offset - std::min(sighting.offset, kMaxExcerpt);
  const std::string_view lead = statements.substr(begin, sighting.offset - begin);
  const std::size_t start = begin + lead.rfind('\n') + 1;  // 0 behind npos
  const std::string_view rest = statements.substr(sighting.offset, 2 * kMaxExcerpt);
  const std::size_t end = sighting.offset + std::min(rest.find('\n'), rest.size());
  const std::string_view line = statements.substr(start, end - start);
  sighting.call->code = shownPart(statements.substr(sighting.offset, sighting.length), 0);
  takeExcerpt(line, sighting.offset - start, sighting.offset - start + sighting.length, *sighting.call);
}

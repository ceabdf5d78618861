// Where calls stand in a file as it was shipped. The engine finds them in the text without comments; the runs of bytes
// that it kept lead back. Calls are taken in the order of their offsets, so that columns of a long line are counted
// once. Test: tests/checker/CallPlaces_test.cpp.

#include "checker/report/CallPlaces.h"

#include <algorithm>
#include <climits>
#include <iterator>

#include "APICheckEngine/Facade.h"
#include "checker/report/Characters.h"
#include "checker/report/Excerpts.h"

namespace detail = FlashEngine_1_00::detail;

namespace {

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
  const FlashEngine_1_00::File file = FlashEngine_1_00::openInput(path);
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
    takeLinesAround(lines, line, call);
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

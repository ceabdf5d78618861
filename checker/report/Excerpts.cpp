// What a report shows of a file around a call: an excerpt of its line with the call marked, and the lines around. Lines
// may be megabytes long and of any encoding, so that everything is cut, and no character is cut apart.
// Test: tests/checker/CallPlaces_test.cpp.

#include "checker/report/Excerpts.h"

#include <algorithm>

#include "checker/report/Characters.h"

namespace {

constexpr std::size_t kLead = 48;        // bytes of an excerpt before the call
constexpr std::size_t kLinesAround = 2;  // before and after the call's line

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

// The byte at a column, which counts characters from 1.
std::size_t byteAt(std::string_view line, int column) {
  std::size_t byte = 0;
  for (int left = column - 1; left > 0 && byte < line.size(); --left)
    byte += firstCharacter(line.substr(byte)).size;
  return byte;
}

// What stands at the start of `text`: up to the next closing parenthesis.
std::string_view codeAtStart(std::string_view text) {
  const std::size_t open = text.find('(');
  const std::size_t close = open == std::string_view::npos ? open : text.find(')', open);
  std::string_view code = close == std::string_view::npos ? text : text.substr(0, close + 1);
  code = shownPart(code, 0);
  return code.substr(0, code.find_last_not_of(' ') + 1);  // 0 behind npos
}

bool isAscii(char c) {
  return static_cast<unsigned char>(c) < 0x80;
}

// What stands at `begin` and reads `code`, which may be in another encoding there; empty if that is not so.
std::string_view spelledAs(std::string_view line, std::size_t begin, std::string_view code) {
  std::size_t at = begin;
  for (; !code.empty(); code.remove_prefix(firstCharacter(code).size)) {
    if (at >= line.size() || isAscii(line[at]) != isAscii(code[0])) return {};
    if (isAscii(code[0]) && line[at] != code[0]) return {};
    at += firstCharacter(line.substr(at)).size;
  }
  return line.substr(begin, at - begin);
}

}  // namespace

Lines::Lines(std::string_view text) : text_(text) {
  for (std::size_t at = text.find('\n'); at != std::string_view::npos; at = text.find('\n', at + 1))
    starts_.push_back(at + 1);
}

std::size_t Lines::lineOf(std::size_t offset) const {
  const auto next = std::upper_bound(starts_.begin(), starts_.end(), offset);
  return static_cast<std::size_t>(next - starts_.begin()) - 1;
}

std::string_view Lines::textOf(std::size_t line) const {
  const bool isLast = line + 1 == starts_.size();
  const std::size_t end = isLast ? text_.size() : starts_[line + 1] - 1;
  std::string_view text = text_.substr(starts_[line], end - starts_[line]);
  if (!text.empty() && text.back() == '\r') text.remove_suffix(1);
  return text;
}

std::string_view shownPart(std::string_view text, std::size_t from) {
  const std::size_t begin = characterStart(text, from);
  const std::size_t end = characterStart(text, std::min(text.size(), begin + kMaxExcerpt));
  return text.substr(begin, end - begin);
}

void takeExcerpt(std::string_view line, std::size_t begin, std::size_t end, Call& call) {
  end = std::min(end, line.size());
  begin = std::min(begin, end);
  const std::size_t room = line.size() <= kMaxExcerpt ? 0 : line.size() - kMaxExcerpt;
  const std::string_view shown = shownPart(line, std::min(begin - std::min(begin, kLead), room));
  call.excerpt.text = shown;
  call.mark = std::min(begin - static_cast<std::size_t>(shown.data() - line.data()), shown.size());
  call.markLength = std::min(end - begin, shown.size() - call.mark);
}

void takeLinesAround(const Lines& lines, std::size_t line, Call& call) {
  const auto take = [&](std::size_t around) {
    return SourceLine{static_cast<int>(around + 1), std::string(shownPart(lines.textOf(around), 0))};
  };
  for (std::size_t around = line - std::min(line, kLinesAround); around < line; ++around)
    call.before.push_back(take(around));
  for (std::size_t around = line + 1; around <= line + kLinesAround && around < lines.count(); ++around)
    call.after.push_back(take(around));
}

// ---- files of an application ----

void ReportedFiles::add(const std::string& path, const std::string& shownAs, std::string_view bytes) {
  files_.insert_or_assign(path, Shown{shownAs, Lines(bytes)});
}

const ReportedFiles::Shown* ReportedFiles::find(const std::string& path) const {
  const auto found = files_.find(path);
  return found == files_.end() ? nullptr : &found->second;
}

std::string ReportedFiles::shown(const std::string& path) const {
  const Shown* file = find(path);
  return file == nullptr ? path : file->path;
}

void ReportedFiles::place(const std::string& path, Position place, Call& call) const {
  const Shown* file = find(path);
  call.path = file == nullptr ? path : file->path;
  call.place = place;
  const auto line = static_cast<std::size_t>(place.line) - 1;
  if (file == nullptr || place.line < 1 || line >= file->lines.count()) return;
  const std::string_view text = file->lines.textOf(line);
  const std::size_t begin = byteAt(text, place.column);
  if (call.code.empty()) call.code = codeAtStart(text.substr(begin));
  const std::size_t inLine = std::min(call.code.find('\n'), call.code.size());
  const std::string_view spelled = spelledAs(text, begin, std::string_view(call.code).substr(0, inLine));
  if (inLine == call.code.size() && !spelled.empty()) call.code = spelled;  // as it is in the file
  takeExcerpt(text, begin, begin + (spelled.empty() ? inLine : spelled.size()), call);
  call.excerpt.number = place.line;
  takeLinesAround(file->lines, line, call);
}

std::string ReportedFiles::lineAt(const std::string& path, Position place) const {
  Call call;
  this->place(path, place, call);
  return call.excerpt.text;
}

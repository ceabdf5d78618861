// Comment removal: the text is cut at its slashes, and what stays is handed over run by run, to the copy that the
// engine makes and to whoever wants to know where the runs came from. Test:
// tests/APICheckEngine/CommentStripping_test.cpp.

#include "APICheckEngine/CommentStripping.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace {

constexpr std::string_view kLineComment = "//";
constexpr std::string_view kBlockComment = "/*";
constexpr std::string_view kBlockEnd = "*/";

bool startsWith(std::string_view text, std::string_view prefix) {
  return text.substr(0, prefix.size()) == prefix;
}

// How many bytes a comment at the start of `rest` takes up, as far as it is dropped; 0 if none starts there.
std::size_t droppedBytes(std::string_view rest) {
  if (startsWith(rest, kLineComment)) return std::min(rest.find('\n'), rest.size());
  if (!startsWith(rest, kBlockComment)) return 0;
  const std::size_t end = rest.find(kBlockEnd, kBlockComment.size());
  return end == std::string_view::npos ? rest.size() : end + kBlockEnd.size();
}

// Hands over the runs of bytes that stay, each with its offset and length. Returns the position behind the last byte
// that was looked at: one more than there are if `text` ends with a comment.
template <typename Keep>
std::size_t forEachKept(std::string_view text, Keep keep) {
  std::size_t at = 0;
  while (at < text.size()) {
    const std::size_t slash = std::min(text.find('/', at), text.size());
    keep(at, slash - at);
    if (slash == text.size()) return slash;
    at = slash + droppedBytes(text.substr(slash));
    // KEPT: the byte after a comment is copied unseen, so that a comment right behind a "*/" is not one. Line numbers
    // and findings that hosts have on record depend on it. (test CommentRightBehindACommentStays)
    if (at < text.size()) keep(at, 1);
    ++at;
  }
  return at;
}

bool isBlankLine(std::string_view line) {
  return line.find_first_not_of(" \t\n") == std::string_view::npos;
}

}  // namespace

extern "C" int delete_comment(const char* source, int length, char* output) {
  const std::string_view text(source, static_cast<std::size_t>(std::max(length, 0)));
  char* out = output;
  const std::size_t behind = forEachKept(text, [&](std::size_t offset, std::size_t count) {
    if (out != source + offset) std::memmove(out, source + offset, count);  // often in place
    out += count;
  });
  if (behind > text.size()) *out++ = '\0';
  return static_cast<int>(out - output);
}

std::vector<FlashEngine_1_00::detail::KeptRun> FlashEngine_1_00::detail::keptRuns(std::string_view source) {
  std::vector<KeptRun> runs;
  std::size_t cleaned = 0;
  forEachKept(source, [&](std::size_t offset, std::size_t count) {
    if (runs.empty() || runs.back().source - runs.back().cleaned != offset - cleaned) runs.push_back({cleaned, offset});
    cleaned += count;
  });
  return runs;
}

extern "C" int delete_blankline(const char* source, int length, char* output) {
  std::string_view rest(source, static_cast<std::size_t>(std::max(length, 0)));
  char* out = output;
  bool dropped = false;
  while (!rest.empty()) {
    const bool lastLine = rest.find('\n') == std::string_view::npos;
    const std::string_view line = rest.substr(0, lastLine ? rest.size() : rest.find('\n') + 1);
    rest.remove_prefix(line.size());
    if (!lastLine && isBlankLine(line)) {
      dropped = true;
      continue;
    }
    if (dropped && !lastLine) *out++ = '\n';
    dropped = false;
    out = std::copy(line.begin(), line.end(), out);
  }
  return static_cast<int>(out - output);
}

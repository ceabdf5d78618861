// Any bytes without their comments, and without their blank lines: compared with a transcription of the rules byte by
// byte. Input and output lie in heap blocks of the same exact size.

#include "APICheckEngine/CommentStripping.h"
#include "Support.h"

namespace {

std::string strip(int (*function)(const char*, int, char*), std::string_view input) {
  const std::vector<char> in(input.begin(), input.end());
  std::vector<char> out(input.size());
  const int length = function(in.data(), static_cast<int>(in.size()), out.data());
  fuzz::require(length >= 0 && static_cast<std::size_t>(length) <= out.size(), "the text does not grow");
  return std::string(out.data(), static_cast<std::size_t>(length));
}

std::string withoutComments(std::string_view in) {
  std::string out;
  const auto at = [&](std::size_t i) { return i < in.size() ? in[i] : '\0'; };
  for (std::size_t i = 0; i < in.size(); ++i) {
    if (in[i] == '/' && at(i + 1) == '/') {
      while (i < in.size() && in[i] != '\n')
        ++i;
    } else if (in[i] == '/' && at(i + 1) == '*') {
      for (i += 2; i < in.size() && !(in[i] == '*' && at(i + 1) == '/');)
        ++i;
      i = std::min(i + 2, in.size());
    }
    out += at(i);
  }
  return out;
}

std::string withoutBlankLines(std::string_view in) {
  std::string out;
  std::string line;
  bool dropped = false;
  for (const char c : in) {
    line += c;
    if (c != '\n') continue;
    const bool blank = line.find_first_not_of(" \t") == line.size() - 1;
    if (!blank) out += dropped ? '\n' + line : line;
    dropped = blank;
    line.clear();
  }
  return out + line;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input = fuzz::viewOf(data, size);
  fuzz::require(strip(delete_comment, input) == withoutComments(input), "comments go by the rules");
  fuzz::require(strip(delete_blankline, input) == withoutBlankLines(input), "blank lines go by the rules");
  return 0;
}

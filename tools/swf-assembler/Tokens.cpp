#include "swf-assembler/Tokens.h"

#include <algorithm>
#include <utility>

#include "swf-assembler/Assembler.h"

namespace swf_assembler {
namespace {

using namespace std::string_view_literals;

bool isOneOf(std::string_view set, char c) {
  return set.find(c) != std::string_view::npos;
}
bool isMark(char c) {
  return isOneOf("{}():", c);
}
bool isComment(char c) {
  return isOneOf("#;", c);
}
bool endsWord(char c) {
  return isOneOf("\n\" \t\r,", c) || isMark(c) || isComment(c);
}

int hexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

class Lexer {
 public:
  explicit Lexer(std::string_view text) : text_(text) {}

  std::vector<Token> tokens() {
    while (at_ < text_.size())
      readToken();
    add(Kind::kFileEnd, "the end of the file");
    return std::move(tokens_);
  }

 private:
  void add(Kind kind, std::string text) { tokens_.push_back({kind, std::move(text), line_}); }

  void readToken() {
    const char c = text_[at_];
    if (isComment(c)) {
      at_ = std::min(text_.find('\n', at_), text_.size());
    } else if (c == '"') {
      readString();
    } else if (!endsWord(c)) {
      const std::size_t start = at_;
      while (at_ < text_.size() && !endsWord(text_[at_]))
        ++at_;
      add(Kind::kWord, std::string(text_.substr(start, at_ - start)));
    } else {
      readSeparator(c);
    }
  }

  void readSeparator(char c) {
    ++at_;
    if (isMark(c)) add(Kind::kMark, std::string(1, c));
    if (c != '\n') return;
    add(Kind::kLineEnd, "the end of the line");
    ++line_;
  }

  void readString() {
    std::string value;
    for (++at_; current() != '"'; ++at_) {
      if (current() == '\\') {
        ++at_;
        readEscape(value);
      } else {
        value += current();
      }
    }
    ++at_;
    add(Kind::kString, std::move(value));
  }

  void readEscape(std::string& value) {
    static constexpr std::string_view kLetters = "ntr0\\\"'", kMeanings = "\n\t\r\0\\\"'"sv;
    const std::size_t letter = kLetters.find(current());
    if (letter != std::string_view::npos) {
      value += kMeanings[letter];
    } else if (current() == 'x' && text_.size() - at_ > 2 && appendHex(text_.substr(at_ + 1, 2), value)) {
      at_ += 2;
    } else {
      throw AssemblyError(line_, std::string("unknown escape '\\") + current() + "'; \\x takes two digits");
    }
  }

  // A string ends in its line: a forgotten quote is reported where it was forgotten.
  char current() const {
    if (at_ >= text_.size() || text_[at_] == '\n') throw AssemblyError(line_, "this string has no closing quote");
    return text_[at_];
  }

  std::string_view text_;
  std::size_t at_ = 0;
  int line_ = 1;
  std::vector<Token> tokens_;
};

}  // namespace

std::vector<Token> tokensOf(std::string_view text) {
  return Lexer(text).tokens();
}

bool appendHex(std::string_view digits, std::string& bytes) {
  if (digits.empty() || digits.size() % 2 != 0) return false;
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    const int high = hexDigit(digits[i]);
    const int low = hexDigit(digits[i + 1]);
    if (high < 0 || low < 0) return false;
    bytes += static_cast<char>(high * 16 + low);
  }
  return true;
}

}  // namespace swf_assembler

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "swf-assembler/Assembler.h"
#include "swf-assembler/Tokens.h"

namespace swf_assembler {

// What the text wants to be written instead of the right number.
using Override = std::optional<long long>;

// Walks the tokens of a text and turns them into numbers, strings and bytes. What is not as expected is thrown as an
// AssemblyError with the line where it stands. Words of the language are compared without regard to case.
class TokenReader {
 public:
  explicit TokenReader(const std::string& text) : tokens_(tokensOf(text)) {}

  int line() const { return peek().line; }
  [[noreturn]] void fail(const std::string& message) const { throw AssemblyError(line(), message); }
  [[noreturn]] void failExpected(const std::string& what) const { fail("expected " + what + ", found " + shown()); }
  std::string shown() const;  // the current token, as a message names it

  bool at(Kind kind) const { return peek().kind == kind; }
  bool atMark(char mark) const { return at(Kind::kMark) && peek().text[0] == mark; }
  bool atNumber() const;
  bool beforeColon() const;
  bool atRecordEnd() const { return at(Kind::kLineEnd) || at(Kind::kFileEnd) || atMark('}'); }
  bool atListEnd() const { return at(Kind::kFileEnd) || atMark('}'); }

  // These step over what they accept, and leave it be otherwise.
  bool accept(const char* word);
  bool acceptInLaterLine(const char* word);
  void expect(char mark);
  void expectRecordEnd() const;
  void skipLineEnds();

  // The row of `table` whose name stands here; null, if it is none.
  template <class Row, std::size_t rows>
  const Row* acceptRowOf(const Row (&table)[rows]) {
    for (const Row& row : table)
      if (accept(row.name)) return &row;
    return nullptr;
  }

  // A word or string; `what` names it in the message if there is none.
  std::string text(const char* what);

  // A number that `bits` bits can hold, be they signed or not.
  long long integer(int bits);
  Override option(const char* name, int bits) { return accept(name) ? Override(integer(bits)) : std::nullopt; }
  double decimal();

  // Bytes as pairs of hexadecimal digits: of one word, and of all words up to something else.
  std::string hexWord();
  std::string hexWords();

  // Is the number that stands here a whole one?
  bool atWholeNumber() const;

  // The bytes of one operand: b, w, i an integer of 8, 16, 32 bits; f, g a number of 32, 64 bits; s a string with its
  // final zero; h a word of hexadecimal digits.
  std::string field(char letter);

  // One field for each letter; those after '?' may be missing.
  std::string fields(const char* letters);

  // A block: '{', what `content` reads, '}'.
  template <class Content>
  auto block(Content content) {
    const int begin = beginBlock();
    auto inside = content();
    endBlock(begin);
    return inside;
  }
  int depth() const { return depth_; }  // blocks around this place

 private:
  const Token& peek() const { return tokens_[at_]; }
  int beginBlock();
  void endBlock(int begin);

  std::vector<Token> tokens_;
  std::size_t at_ = 0;
  int depth_ = 0;
};

}  // namespace swf_assembler

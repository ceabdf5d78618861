#include "swf-assembler/TokenReader.h"

#include <strings.h>

#include <cstdlib>
#include <string_view>

#include "swf-assembler/Bytes.h"

namespace swf_assembler {
namespace {

constexpr int kDeepestNesting = 200;  // a block in a block takes a few frames of our stack

bool isHex(const std::string& number) {
  return number.find_first_of("xX") != std::string::npos;
}

}  // namespace

std::string TokenReader::shown() const {
  return at(Kind::kLineEnd) || at(Kind::kFileEnd) ? peek().text : "'" + peek().text + "'";
}

bool TokenReader::accept(const char* word) {
  const bool accepted = at(Kind::kWord) && strcasecmp(peek().text.c_str(), word) == 0;
  if (accepted) ++at_;
  return accepted;
}

bool TokenReader::acceptInLaterLine(const char* word) {
  const std::size_t before = at_;
  skipLineEnds();
  if (accept(word)) return true;
  at_ = before;
  return false;
}

void TokenReader::expect(char mark) {
  if (!atMark(mark)) failExpected(std::string("'") + mark + "'");
  ++at_;
}

void TokenReader::skipLineEnds() {
  while (at(Kind::kLineEnd))
    ++at_;
}

std::string TokenReader::text(const char* what) {
  if (!at(Kind::kWord) && !at(Kind::kString)) failExpected(what);
  return tokens_[at_++].text;
}

long long TokenReader::integer(int bits) {
  if (!atNumber()) failExpected("a number");
  const std::string& word = peek().text;
  char* end = nullptr;
  const long long value = std::strtoll(word.c_str(), &end, isHex(word) ? 16 : 10);
  if (*end != '\0') failExpected("a whole number");
  if (value < -(1LL << bits >> 1) || value >= 1LL << bits)
    fail(word + " does not fit into " + std::to_string(bits) + " bits");
  ++at_;
  return value;
}

double TokenReader::decimal() {
  if (!at(Kind::kWord)) failExpected("a number");
  char* end = nullptr;
  const double value = std::strtod(peek().text.c_str(), &end);
  if (*end != '\0') failExpected("a number");
  ++at_;
  return value;
}

std::string TokenReader::hexWord() {
  std::string bytes;
  if (!at(Kind::kWord) || !appendHex(peek().text, bytes)) failExpected("pairs of hexadecimal digits");
  ++at_;
  return bytes;
}

std::string TokenReader::hexWords() {
  std::string bytes;
  while (at(Kind::kWord))
    bytes += hexWord();
  return bytes;
}

std::string TokenReader::field(char letter) {
  switch (letter) {
    case 'b':
      return little(integer(8), 1);
    case 'w':
      return little(integer(16), 2);
    case 'i':
      return little(integer(32), 4);
    case 'f':
      return floatBytes(decimal());
    case 'g':
      return doubleBytes(decimal());
    case 'h':
      return hexWord();
    default:
      return text("a string") + '\0';
  }
}

std::string TokenReader::fields(const char* letters) {
  std::string bytes;
  for (; *letters != '\0'; ++letters) {
    if (*letters != '?') {
      bytes += field(*letters);
    } else if (atRecordEnd()) {
      break;
    }
  }
  return bytes;
}

bool TokenReader::atNumber() const {
  return at(Kind::kWord) && std::string_view("0123456789+-.").find(peek().text[0]) != std::string_view::npos;
}

bool TokenReader::atWholeNumber() const {
  return isHex(peek().text) || peek().text.find_first_of(".eE") == std::string::npos;
}

bool TokenReader::beforeColon() const {
  return at(Kind::kWord) && tokens_[at_ + 1].kind == Kind::kMark && tokens_[at_ + 1].text == ":";
}

void TokenReader::expectRecordEnd() const {
  if (!atRecordEnd()) failExpected("the end of the line");
}

int TokenReader::beginBlock() {
  const int begin = line();
  expect('{');
  if (++depth_ > kDeepestNesting) throw AssemblyError(begin, "too many blocks inside each other");
  return begin;
}

void TokenReader::endBlock(int begin) {
  if (!atMark('}')) throw AssemblyError(begin, "this block has no '}'");
  ++at_;
  --depth_;
}

}  // namespace swf_assembler

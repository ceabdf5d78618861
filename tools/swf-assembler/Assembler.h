#pragma once

#include <stdexcept>
#include <string>

// Makes SWF files with ActionScript 1/2 byte code from a readable text; README.md beside this file is the language's
// reference.
//
// Nothing is added or put right that the text does not say: end tags and End records stand where the text has them, and
// every count and size can be given a wrong value. So a text can also describe the damaged files that a reader must
// survive.
//
// Test: tests/tools/Assembler_test.cpp.

namespace swf_assembler {

// What is wrong with a text, and where. what() reads "line 7: unknown action 'Plya'".
class AssemblyError : public std::runtime_error {
 public:
  AssemblyError(int line, const std::string& message)
      : std::runtime_error("line " + std::to_string(line) + ": " + message), line_(line), message_(message) {}

  int line() const { return line_; }  // 1-based
  const std::string& message() const { return message_; }

 private:
  int line_;
  std::string message_;
};

// The file that `text` describes, byte for byte. Throws AssemblyError at the first mistake in the text.
std::string assemble(const std::string& text);

// The byte code of a text that holds nothing but action records, as it would stand in a doaction tag. Throws like
// assemble().
std::string assembleActions(const std::string& text);

}  // namespace swf_assembler

// swf-assembler: makes a SWF file of a text. Exit status: 0 done, 1 failed, 2 wrong usage.

#include <fstream>
#include <iostream>
#include <sstream>
#include <string_view>

#include "swf-assembler/Assembler.h"

namespace {

enum ExitStatus { kDone = 0, kFailed = 1, kWrongUsage = 2 };

constexpr const char* kUsage =
    "usage: swf-assembler INPUT.asm OUTPUT.swf\n"
    "\n"
    "Makes a SWF file of a text that lists its tags and action records. INPUT - reads standard input.\n";

bool fail(const std::string& message) {
  std::cerr << "swf-assembler: " << message << '\n';
  return false;
}

bool read(const std::string& path, std::string& text) {
  std::ostringstream content;
  std::ifstream file;
  if (path != "-") file.open(path, std::ios::binary);
  std::istream& input = path == "-" ? std::cin : file;
  for (char c; input.get(c);)
    content.put(c);
  if (path != "-" && !file.is_open()) return fail("cannot open '" + path + "'");
  if (input.bad()) return fail("cannot read '" + path + "'");
  text = content.str();
  return true;
}

bool write(const std::string& path, const std::string& bytes) {
  std::ofstream file(path, std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  return file ? true : fail("cannot write '" + path + "'");
}

bool assembleFile(const std::string& input, const std::string& output) {
  std::string text;
  if (!read(input, text)) return false;
  try {
    return write(output, swf_assembler::assemble(text));
  } catch (const swf_assembler::AssemblyError& error) {
    std::cerr << (input == "-" ? "standard input" : input) << ':' << error.line() << ": " << error.message() << '\n';
    return false;
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 2 && std::string_view(argv[1]) == "--help") {
    std::cout << kUsage;
    return kDone;
  }
  if (argc != 3) {
    std::cerr << kUsage;
    return kWrongUsage;
  }
  try {
    return assembleFile(argv[1], argv[2]) ? kDone : kFailed;
  } catch (const std::exception& error) {
    fail(error.what());
    return kFailed;
  }
}

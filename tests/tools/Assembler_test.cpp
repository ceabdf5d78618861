#include "swf-assembler/Assembler.h"

#include <gtest/gtest.h>
#include <zlib.h>

using swf_assembler::assemble;
using swf_assembler::assembleActions;
using swf_assembler::AssemblyError;

namespace {

std::string hex(const std::string& bytes) {
  static constexpr const char* kDigits = "0123456789abcdef";
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (!text.empty()) text += ' ';
    text += {kDigits[byte >> 4], kDigits[byte & 15]};
  }
  return text;
}

struct Row {
  const char *text, *expected;
};

const char* const kPlainMovie = "doaction { Play \n End }\nshowframe\nend\n";

}  // namespace

TEST(Assembler, RecordsAreTheBytesOfTheFormat) {
  const Row rows[] = {
      {"Play", "06"},
      {"callMETHOD # a comment\n\n; another\nEnd", "52 00"},
      {"GotoFrame 0x102", "81 02 00 02 01"},
      {"GetURL \"a;#\\x41\\n\\\"\" _self", "83 0d 00 61 3b 23 41 0a 22 00 5f 73 65 6c 66 00"},
      {"WaitForFrame 1 2", "8a 03 00 01 00 02"},
      {"Call", "9e 00 00"},
      {"GotoFrame2 1", "9f 01 00 01"},
      {"GotoFrame2 3 -2", "9f 03 00 03 fe ff"},
      {"ConstantPool a \"\"", "88 05 00 02 00 61 00 00"},
      {"ConstantPool count 9 a", "88 04 00 09 00 61 00"},
      {"raw 0xA5 01 0203", "a5 03 00 01 02 03"},
      {"raw length 9 0x96 00", "96 09 00 00"},
      {"bytes 96 ff", "96 ff"},
      {"StoreRegister length 0 7", "87 00 00 07"},
  };
  for (const Row& row : rows)
    EXPECT_EQ(hex(assembleActions(row.text)), row.expected) << row.text;
}

TEST(Assembler, PushHoldsValuesOfEveryType) {
  const Row rows[] = {
      {"\"ab\"", "00 61 62 00"},
      {"float -2", "01 00 00 00 c0"},
      {"null undefined", "02 03"},
      {"register 4, true, false, boolean 2", "04 04 05 01 05 00 05 02"},
      {"1.5", "06 00 00 f8 3f 00 00 00 00"},
      {"double 0.1", "06 99 99 b9 3f 9a 99 99 99"},
      {"-2 int 0x1e", "07 fe ff ff ff 07 1e 00 00 00"},
      {"const8 255 const16 256", "08 ff 09 00 01"},
      {"type 10 hex 0bad null", "0a 0b ad 02"},
  };
  for (const Row& row : rows) {
    const std::string record = assembleActions(std::string("Push ") + row.text);
    EXPECT_EQ(hex(record.substr(3)), row.expected) << row.text;
    EXPECT_EQ(hex(record.substr(0, 3)), hex({'\x96', static_cast<char>(record.size() - 3), '\0'})) << row.text;
  }
}

TEST(Assembler, BranchesReachTheirLabelsThroughBlocks) {
  const Row rows[] = {
      {"again: Play\nJump again", "06 99 02 00 fa ff"},
      {"If 3", "9d 02 00 03 00"},
      {"Jump -1", "99 02 00 ff ff"},
      {"with {\n Jump out\n}\nPlay\nout:", "94 02 00 05 00 99 02 00 01 00 06"},
      {"Jump in\nwith { Play\n in: Stop }", "99 02 00 06 00 94 02 00 02 00 06 07"},
  };
  for (const Row& row : rows)
    EXPECT_EQ(hex(assembleActions(row.text)), row.expected) << row.text;
}

TEST(Assembler, BlocksHaveTheSizeOfTheirCodeOrTheOneGiven) {
  const Row rows[] = {
      {"with { with { Play } }", "94 02 00 06 00 94 02 00 01 00 06"},
      {"with size 999 { Play }", "94 02 00 e7 03 06"},
      {"with length 1 { }", "94 01 00 00 00"},
      {"function f(a, b) { Return }", "9b 0a 00 66 00 02 00 61 00 62 00 01 00 3e"},
      {"function () { }", "9b 05 00 00 00 00 00 00"},
      {"function2 f registers 3 flags 0x101 (2:a b) size 5 { Pop }",
       "8e 0f 00 66 00 02 00 03 01 01 02 61 00 00 62 00 05 00 17"},
      {"try { Play }\ncatch e { Stop \n Stop }\nfinally { }", "8f 09 00 03 01 00 02 00 00 00 65 00 06 07 07"},
      {"try { } catch reg 4 { Pop }", "8f 08 00 05 00 00 01 00 00 00 04 17"},
      {"try flags 7 size 1 { } finally size 2 { Pop }", "8f 08 00 07 01 00 00 00 02 00 00 17"},
  };
  for (const Row& row : rows)
    EXPECT_EQ(hex(assembleActions(row.text)), row.expected) << row.text;
}

TEST(Assembler, HeaderFieldsStandAsGiven) {
  const Row rows[] = {
      {"end", "46 57 53 08 17 00 00 00 78 00 05 5f 00 00 0f a0 00 00 0c 01 00 00 00"},
      {"frame 0 15 -16 1\nversion 6\nrate 12.5\nframes 258", "46 57 53 06 10 00 00 00 28 1f 00 80 80 0c 02 01"},
      {"frame 0 1 -1 0 bits 4", "46 57 53 08 0f 00 00 00 20 0f 80 00 0c 01 00"},
      {"signature XYZ\nfilelength 5\nframe 0 0 0 0", "58 59 5a 08 05 00 00 00 00 00 0c 01 00"},
  };
  for (const Row& row : rows)
    EXPECT_EQ(hex(assemble(row.text)), row.expected) << row.text;
}

TEST(Assembler, TagsHaveShortOrLongHeaders) {
  const std::string manyBytes = "\nbytes " + std::string(std::size_t{2} * 62, '0');
  const struct {
    std::string text;
    const char* start;
  } rows[] = {
      {kPlainMovie, "02 03 06 00 40 00 00 00"},
      {"sprite 70 2 {\n showframe\n end\n}", "c8 09 46 00 02 00 40 00 00 00"},
      {"tag 1023 bytes ff00", "c2 ff ff 00"},
      {"tag 59 bytes 46 00 { Play }", "c3 0e 46 00 06"},
      {"doaction long { End }", "3f 03 01 00 00 00 00"},
      {"doaction length 5 { End }", "05 03 00"},
      {"end length 63", "3f 00 3f 00 00 00"},
      {"doaction {" + manyBytes + "}", "3e 03 00 00"},
      {"doaction {" + manyBytes + "00 }", "3f 03 3f 00 00 00 00 00"},
      {"bytes 00 ff\nend", "00 ff 00 00"},
  };
  for (const auto& row : rows) {
    const std::string header = assemble("frame 0 0 0 0");
    const std::string tags = hex(assemble("frame 0 0 0 0\n" + row.text).substr(header.size()));
    EXPECT_EQ(tags.substr(0, std::string(row.start).size()), row.start) << row.text;
  }
}

TEST(Assembler, CompressedMovieInflatesToThePlainOne) {
  const std::string plain = assemble(kPlainMovie);
  const std::string packed = assemble(std::string("signature CWS\n") + kPlainMovie);
  EXPECT_EQ(packed.substr(0, 3), "CWS");
  EXPECT_EQ(hex(packed.substr(3, 5)), hex(plain.substr(3, 5)));
  std::string body(plain.size(), '\0');
  uLongf size = static_cast<uLongf>(body.size());
  ASSERT_EQ(uncompress(reinterpret_cast<Bytef*>(body.data()), &size, reinterpret_cast<const Bytef*>(&packed[8]),
                       static_cast<uLong>(packed.size() - 8)),
            Z_OK);
  EXPECT_EQ(hex(body.substr(0, size)), hex(plain.substr(8)));
  EXPECT_EQ(assemble(std::string("signature CWS\ncut 3\n") + kPlainMovie), packed.substr(0, packed.size() - 3));
}

TEST(Assembler, CutsTheEndButNotTheDeclaredLength) {
  const std::string whole = assemble(kPlainMovie);
  for (const char* cut : {"cut 3\n", "cut plain 3\n", "cut 1\ncut plain 2\n"})
    EXPECT_EQ(hex(assemble(cut + std::string(kPlainMovie))), hex(whole.substr(0, whole.size() - 3))) << cut;
}

TEST(Assembler, MistakesAreReportedWithTheirLine) {
  const Row rows[] = {
      {"end\nplay", "line 2: unknown tag 'play'"},
      {"doaction {\n Plya\n}", "line 2: unknown action 'Plya'"},
      {"doaction {\n with {\n }\n", "line 1: this block has no '}'"},
      {"end }", "line 1: expected a tag, found '}'"},
      {"doaction { Push \"a\n\" }", "line 1: this string has no closing quote"},
      {"\n\ndoaction { SetTarget \"\\x1\" }", "line 3: unknown escape '\\x'; \\x takes two digits"},
      {"doaction {\nPush 1\n+\n}", "line 3: unknown action '+'"},
      {"doaction {\nGotoFrame 65536 }", "line 2: 65536 does not fit into 16 bits"},
      {"doaction { GotoFrame\n1 }", "line 1: expected a number, found the end of the line"},
      {"doaction { Play 1 }", "line 1: expected the end of the line, found '1'"},
      {"doaction {\nJump a\n}\ndoaction { a: }", "line 2: unknown label 'a'"},
      {"doaction {\na:\nwith { a: }\n}", "line 3: label 'a' stands in line 2 already"},
      {"frame 0 2 0 0 bits 2", "line 1: this frame size needs 3 bits"},
      {"rate 1\ncut 99", "line 2: there are 21 bytes to cut from"},
      {"doaction { raw 5 00 }", "line 1: a record below 0x80 has no operands"},
  };
  for (const Row& row : rows) {
    try {
      assemble(row.text);
      ADD_FAILURE() << "accepted: " << row.text;
    } catch (const AssemblyError& error) {
      EXPECT_STREQ(error.what(), row.expected) << row.text;
    }
  }
}

TEST(Assembler, SizesThatCannotBeWrittenAreRefused) {
  const std::string far = "bytes " + std::string(std::size_t{2} * 32768, '0') + "\n";
  const std::string tooMuch = "with {\n" + far + far + "}";
  std::string deep;
  for (int i = 0; i < 100000; ++i)
    deep += "with {";
  for (const std::string& text : {"a:\n" + far + "Jump a", "Jump a\n" + far + "a:", tooMuch, deep})
    EXPECT_THROW(assembleActions(text), AssemblyError) << text.substr(0, 20);
  EXPECT_NO_THROW(assembleActions(tooMuch.substr(0, 5) + "size 1 " + tooMuch.substr(5)));
}

// The listing and the statements of movies that the assembler makes, against texts that people have read.
// refresh-golden writes the texts anew.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "decompiler/DeCompiler.h"
#include "platform/TimeBudget.h"
#include "swf-assembler/Assembler.h"
#include "swf/DeAssembler.h"

namespace fs = std::filesystem;
using namespace FlashEngine_1_00;
using Texts = std::vector<std::string>;

namespace {

std::string fileText(const fs::path& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::string joined(const Texts& lines) {
  std::string text;
  for (const std::string& line : lines)
    text += line + '\n';
  return text;
}

// The listing of one script block of these records.
Texts listingOf(const std::string& actions) {
  startTimeBudget();
  const std::string code = swf_assembler::assembleActions(actions);
  const ByteView block(reinterpret_cast<const unsigned char*>(code.data()), static_cast<Position>(code.size()));
  Texts lines;
  DeAssembler().getActionBlock(block, 0, lines);
  return lines;
}

TEST(Golden, MoviesAreListedAndReplayedAsRead) {
  const std::string movie = testing::TempDir() + "golden.swf";
  int movies = 0;
  for (const auto& entry : fs::directory_iterator(GOLDEN)) {
    if (entry.path().extension() != ".asm") continue;
    ++movies;
    std::ofstream(movie, std::ios::binary) << swf_assembler::assemble(fileText(entry.path()));
    startTimeBudget();
    Texts lines;
    Texts statements;
    (void)DeAssembler().SWFDeAssemblerMain(movie, lines);
    (void)DeCompiler().SWFDeCompilerMain(lines, statements);
    EXPECT_EQ(joined(lines), fileText(fs::path(entry.path()).replace_extension(".listing"))) << entry.path();
    EXPECT_EQ(joined(statements), fileText(fs::path(entry.path()).replace_extension(".statements"))) << entry.path();
  }
  fs::remove(movie);
  EXPECT_EQ(movies, 10);
}

TEST(Listing, UndefinedHasNoSeparators) {
  EXPECT_EQ(listingOf("Push undefined"), (Texts{"[ActionPush]", "ActionPush#type:3#value:undefined"}));
}

TEST(Listing, GotoFrame2FieldsAreNamedGetProperty) {
  EXPECT_EQ(listingOf("GotoFrame2 1"), (Texts{"[ActionGotoFrame2]", "ActionGetProperty#@x441#oper#@x442#AndPlay"}));
}

TEST(Listing, ARecordThatDoesNotFitStillHasItsLabel) {
  EXPECT_EQ(
      listingOf("If 0\nraw length 9 0x96 00"),
      (Texts{"[ActionIf]", "ActionIf#@x441#offset#@x442#0#@x441#address#@x442#5", "----EMPTY----", "Label#@x442#0x5"}));
}

TEST(Listing, LongFieldLinesAreCut) {
  const Texts lines = listingOf("Push \"" + std::string(2000, 'x') + "\"");
  EXPECT_EQ(lines[1].size(), 1255U);
}

TEST(Listing, NestedBlocksAreNoStackDepth) {
  std::string nested;
  for (int i = 0; i < 13107; ++i)
    nested += "raw 0x94 ff ff\n";
  const Texts lines = listingOf(nested);
  EXPECT_EQ(lines.size(), 3 * 13107U);
  EXPECT_EQ(lines.back(), "ActionWith#@x441#oper#@x442#end");
}

TEST(Listing, AFullTableOfBranchTargetsDropsFurtherOnes) {
  std::string jumps;
  for (int i = 0; i < 100001; ++i)
    jumps += "Jump 0\n";
  const Texts lines = listingOf(jumps + "Stop");
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "----EMPTY----"), 100000);
  EXPECT_EQ(lines.back(), "[ActionStop]");
  EXPECT_NE(lines[lines.size() - 2].rfind("Label", 0), 0U);
}

}  // namespace

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

// The statements of the movie at `path`, which is replayed as it is listed.
Texts statementsWhileListed(const std::string& path) {
  DeCompiler replay;
  replay.beginReplay();
  (void)DeAssembler().listFile(path, replay.lineTaker());
  Texts statements;
  replay.endReplay(statements);
  return statements;
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
    EXPECT_EQ(statementsWhileListed(movie), statements) << entry.path();
  }
  fs::remove(movie);
  EXPECT_EQ(movies, 10);
}

// Records whose lines, as texts, say something else than the records do. Their calls take all that is on the stack.
TEST(Golden, AReplayWhileAMovieIsListedIsThatOfItsListing) {
  const std::string movie = testing::TempDir() + "while-listed.swf";
  const std::string function =
      R"(function2 "g#@x441#Preloaded#@x442#this" registers 6 flags 0x2A (2:a 3:"a#@x441#b" 4:"#") {
}
)";
  const std::string call = "\nPush 9, \"f\"\nCallFunction\n";
  for (const std::string& actions : std::vector<std::string>{
           "Push \"a#@x441#b\", \"#\", \"#@x442#\", \"\", \"a#@x441#b#@x442#c\"",
           "Push \"" + std::string(1300, 'x') + "\", \"y\"",
           "Push undefined, null, true, double 100, double -0.0, double 0.5, double 1e300, float 3, reg 200",
           "Push \"a\", \"b\"\nAdd\nAdd2\nPush \"c\"\nPushDuplicate",
           "Push \"a\", \"b\"\nGetURL \"[ActionPop]\" \"[ActionPush]\"",
           "Push \"a\", \"b\"\nGoToLabel \"[ActionNot][ActionPop]\"\nGotoFrame2 1",
           "Push \"a\", \"b\"\nraw 0xA5 01\nPush \"ActionPush\"\nJump 0\nPop",
           "Push \"a\"\nConstantPool \"ActionGetMember\" \"#@x441#\"\nPush const8 1, const8 0, const8 7\nGetMember",
           function + "Push reg 1, reg 2, reg 3, reg 4",
       }) {
    std::ofstream(movie, std::ios::binary) << swf_assembler::assemble("doaction {\n" + actions + call + "}\nend\n");
    startTimeBudget();
    Texts lines;
    Texts statements;
    (void)DeAssembler().SWFDeAssemblerMain(movie, lines);
    (void)DeCompiler().SWFDeCompilerMain(lines, statements);
    EXPECT_FALSE(statements.empty()) << actions;
    EXPECT_EQ(statementsWhileListed(movie), statements) << actions;
  }
  fs::remove(movie);
}

timespec late() {
  return {firstCheckTime.tv_sec + 21, firstCheckTime.tv_nsec};
}

TEST(Golden, WhatWasListedInTimeIsKept) {
  const std::string movie = testing::TempDir() + "in-time.swf";
  std::ofstream(movie, std::ios::binary) << swf_assembler::assemble(
      "doaction {\nPush 0, \"f\"\nCallFunction\n}\nend\n");
  startTimeBudget();
  DeCompiler replay;
  replay.beginReplay();
  EXPECT_EQ(DeAssembler().listFile(movie, replay.lineTaker()), RUN_SUCCESS);
  TESTING_ONLY_setClock(late);
  Texts statements;
  replay.endReplay(statements);
  TESTING_ONLY_setClock(nullptr);
  EXPECT_EQ(statements.size(), 1U);
  fs::remove(movie);
}

TEST(Listing, UndefinedHasNoSeparators) {
  EXPECT_EQ(listingOf("Push undefined"), (Texts{"[ActionPush]", "ActionPush#type:3#value:undefined"}));
}

TEST(Listing, RealsHaveSixDigitsBehindThePoint) {
  const std::string field = "ActionPush#@x441#type#@x442#6#@x441#value#@x442#";
  EXPECT_EQ(listingOf("Push double 100, double -7, double -0.0, double 0.5, double 1e15, double -123456789012345"),
            (Texts{"[ActionPush]", field + "100.000000", field + "-7.000000", field + "-0.000000", field + "0.500000",
                   field + "1000000000000000.000000", field + "-123456789012345.000000"}));
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

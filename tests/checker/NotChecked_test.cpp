// What the checker knows of the parts that the engine did not look at, and why.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "checker/EngineRun.h"
#include "checker/Flash.h"
#include "platform/TimeBudget.h"
#include "support/CraftedZip.h"
#include "swf-assembler/Assembler.h"
#include "unzip/expansion_budget.h"

namespace fs = std::filesystem;
using swf_assembler::assemble;
using Texts = std::vector<std::string>;

namespace {

class Parts : public ::testing::Test {
 protected:
  Parts() {
    char name[] = "/tmp/tarvo-parts-test-XXXXXX";
    directory_ = mkdtemp(name);
    fs::current_path(directory_);
  }
  ~Parts() override {
    fs::current_path("/");
    fs::remove_all(directory_);
  }

  static void write(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
  }

  static Texts notChecked(const std::string& application) {
    const EngineRun run(DATABASE, application);
    Texts texts;
    for (const NotChecked& missed : run.notChecked())
      texts.push_back(missed.part + ": " + missed.reason);
    return texts;
  }

  struct Row {
    std::string file, bytes;
    Texts expected;  // behind the file's name
  };
  static void expectNotChecked(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
      Texts expected;
      for (const std::string& text : row.expected)
        expected.push_back(row.file + text);
      write(row.file, row.bytes);
      EXPECT_EQ(notChecked(row.file), expected);
    }
  }

  std::string directory_;
};

TEST_F(Parts, OfPackagesThatWereNotUnpacked) {
  const CraftedEntry a{"a.js", "a"}, b{"b.js", "b"};
  const std::string rest = ": neither it nor what follows was unpacked";
  expectNotChecked({
      {"clean.zip", craftedZip({a, b}), {}},
      {"1.zip", craftedZip({{"a.js", "?", false, 1, {}, 0x12345678}, b}), {"!/a.js: encrypted" + rest}},
      {"2.zip", craftedZip({a, b}, 3), {"!: damaged" + rest}},
      {"3.zip", craftedZip({a, b}, 1), {"!/b.js: it stands behind the entries that the package counts" + rest}},
      {"4.zip", craftedZip({a, {"a.js/b.js", "b"}}), {"!/a.js/b.js: could not be read or written" + rest}},
      {"5.zip", craftedZip({{"../a.js", "a"}, b}), {"!/../a.js: its name leads out of the package"}},
      {"6.zip",
       craftedZip({{std::string("a.js\0.gif", 9), "a"}}),
       {"!/a.js: its name is too long or holds a zero byte"}},
      {"7.zip", craftedZip({a, a, a}), {"!/a.js: an earlier entry of the same name was replaced"}},
      {"8.zip",
       craftedZip({{"a.js", "a", false, 0, "a.gi"}}),
       {"!/a.js: other readers take it for another file: its own header has another name"}},
      {"9.zip",
       craftedZip({{"a.js", "pp", false, 0, {}, 0x82079EB1, 1}}),  // size and checksum of one "p"
       {"!/a.js: it holds more than its header says"}},
      {"10.zip", "PK\3\4 cut in the middle", {": could not be opened as a package"}},
      {"11.zip",
       craftedZip({{"x.fla/in.zip", craftedZip({a})}, {"x.fla/PK", "text"}}),
       {"!/x.fla/in.zip: a package below a name with '.fla', which is not unpacked"}},
      {"12.zip",
       craftedZip({{"in.zip", craftedZip({b, {"c.js", std::string("c\0c", 3)}})}}),
       {"!/in.zip!/c.js: cut at its first zero byte, or too large to be read"}},
  });
  const std::string folder(240, 'f');
  expectNotChecked({{"14.zip",
                     craftedZip({{folder + "/in.zip", craftedZip({a})}}),
                     {"!/" + folder + "/in.zip: its path is too long for the engine"}}});
  FlashEngine_1_00::TESTING_ONLY_setExpansionBounds(100, 1);
  expectNotChecked(
      {{"13.zip", craftedZip({a, b}), {"!/b.js: a bound on what all packages unpack to was passed" + rest}}});
  FlashEngine_1_00::TESTING_ONLY_setExpansionBounds(0, 0);
}

TEST_F(Parts, OfDirectoriesAndSources) {
  fs::create_directories("www/folder");
  fs::create_directory_symlink("folder", "www/link");
  for (const char* closed : {"www/closed.js", "www/closed.swf"})
    fs::create_symlink("/proc/sys/vm/drop_caches", closed);  // which nobody can read
  write("www/both.Js", "x");
  write("www/good.JS", std::string(100'000, 'x'));
  write("www/page.htm", std::string(100'000, 'x') + '\0');
  write("www/movie.gif", assemble(""));
  EXPECT_EQ(notChecked("www"), (Texts{
                                   "www/link: a link to a directory",
                                   "www/closed.js: could not be opened",
                                   "www/closed.swf: could not be opened",
                                   "www/page.htm: cut at its first zero byte, or too large to be read",
                                   "www/both.Js: its extension is written neither in small nor in capital letters",
                                   "www/movie.gif: a Flash file by its content that has another extension",
                               }));
}

TEST_F(Parts, OfFlashFiles) {
  const std::string play = "doaction { Play }\n";
  const std::string avm2 = ": ActionScript 3 (DoABC) is not read";
  const std::string button = ": button actions are not read";
  const std::string clip = ": clip actions are not read";
  const std::string damaged = ": its tags are damaged or cut short";
  const std::string lost = ": the engine loses its way among the tags and passes over a script";
  std::string broken = assemble("signature CWS\n" + play);
  broken[10] = '\xFF';
  expectNotChecked({
      {"movie.swf", "ZWS", {": compressed with LZMA, which the engine does not read"}},
      {"movie.swf", "", {": not a Flash file that the engine reads: its first bytes are neither FWS nor CWS"}},
      {"movie.swf", broken, {": its compressed body is damaged or too large"}},
      {"movie.swf", "FWS", {damaged}},
      {"movie.swf", assemble(play + "end\n cut 2"), {damaged}},
      {"movie.swf", assemble("tag 9 length 4 bytes 00 00 00\n"), {damaged}},
      {"movie.swf", assemble("sprite 66 1 { tag 9 length 9 bytes 00 \n}\n" + play + "end"), {damaged}},
      {"movie.swf", assemble("sprite 66 1 { sprite 66 1 { end \n}\n}\n end"), {damaged}},
      {"movie.swf", assemble("signature CWS\n" + play + "sprite 66 1 {\n" + play + "}\n" + play), {}},
      {"movie.swf",
       assemble("frame 0 9 0 9 bits 31\n" + play + "sprite 66 1 {\n" + play + "end\n}\n" + play + "end"),
       {}},
      {"movie.swf", assemble("sprite 66 1 {\n end\n bytes 00 00\n}\n" + play), {lost}},
      {"movie.swf", assemble("sprite 1 1 {\n" + play + "}\n end"), {lost}},
      {"movie.swf", assemble("tag 92 \n" + play), {": a tag of an unknown kind, where the engine stops", lost}},
      {"movie.swf", assemble("tag 72 bytes 00\ntag 82 bytes 00"), {avm2}},
      {"movie.SWF", assemble("tag 59 bytes 01 00"), {": DoInitAction is not read"}},
      {"movie.swf", assemble("sprite 66 1 {\n tag 7 bytes 00\n}"), {button}},
      {"movie.swf", assemble("tag 34 bytes 01 00 00 05 00"), {button}},
      {"movie.swf", assemble("tag 34 bytes 01 00 00 00 01"), {button}},
      {"movie.swf", assemble("tag 34 bytes 01 00 00 00 00 06\n tag 26 bytes 7F\n tag 70 bytes 7F"), {}},
      {"movie.swf", assemble("tag 26 bytes 80"), {clip}},
      {"movie.swf", assemble("tag 70 bytes 80\n tag 70 bytes 80"), {clip}},
  });
  EXPECT_EQ(disassemble("movie.swf").gaps, Texts{clip.substr(2)});
}

const std::string kCut = "cut by a bound or by the time for Flash files";

// The argument of each call is the call before, twice: 100 bytes ask for as much text as there is.
std::string doublingMovie() {
  std::string calls;
  for (int i = 0; i < 30; ++i)
    calls += "PushDuplicate\n Push 2 \"f\"\n CallFunction\n";
  return assemble("doaction {\n Push \"x\"\n" + calls + "}\n");
}

// A listing of 16 KiB pushes of a constant of 1 KiB, more than is kept.
std::string longMovie() {
  std::string pushes;
  for (int i = 0; i < 16 * 1024; ++i)
    pushes += " const8 0";
  std::string script = "ConstantPool \"" + std::string(1200, 'x') + "\"\n";
  for (int i = 0; i < 14; ++i)
    script += "Push" + pushes + "\n";
  return assemble("doaction {\n" + script + "}\n");
}

TEST_F(Parts, OfFlashFilesThatABoundCut) {
  expectNotChecked({{"movie.swf", doublingMovie(), {": " + kCut}}});
  EXPECT_EQ(decompile("movie.swf").gaps, Texts{"its replay was " + kCut});
  expectNotChecked({{"movie.swf", longMovie(), {": " + kCut}}});
  EXPECT_EQ(disassemble("movie.swf").gaps, Texts{"its listing was " + kCut});
}

// A second passes with each look at the clock.
timespec ticking() {
  static int looks = 0;
  return {++looks, 0};
}

TEST_F(Parts, OfFlashFilesForWhichThereWasNoTime) {
  fs::create_directory("www");
  std::string script;
  for (int i = 0; i < 500; ++i)
    script += "Play\n";
  for (const char* file : {"www/a.swf", "www/b.swf"})
    write(file, assemble("doaction {\n" + script + "}"));
  FlashEngine_1_00::TESTING_ONLY_setClock(ticking);
  EXPECT_EQ(notChecked("www"), (Texts{"www/b.swf: the time for Flash files was used up", "www/a.swf: " + kCut}));
  EXPECT_EQ(decompile("www/a.swf").gaps, (Texts{"its listing was " + kCut, "its replay was " + kCut}));
  FlashEngine_1_00::TESTING_ONLY_setClock(nullptr);
}

}  // namespace

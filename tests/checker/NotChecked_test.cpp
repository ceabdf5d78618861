// What the checker knows of the parts that the engine did not look at, and why.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "checker/commands/Flash.h"
#include "checker/run/EngineRun.h"
#include "platform/TimeBudget.h"
#include "support/CraftedZip.h"
#include "swf-assembler/Assembler.h"

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

  static Texts notChecked(const std::string& application, const FlashEngine_1_00::ExpansionBounds& bounds = {}) {
    EngineRunOptions options{DATABASE};
    options.expansion = bounds;
    Texts texts;
    for (const NotChecked& gap : runEngine(application, options).notChecked)
      texts.push_back(gap.part + ": " + gap.reason);
    return texts;
  }

  struct Row {
    std::string file, bytes;
    Texts expected;  // behind the file's name
  };
  static void expectNotChecked(const std::vector<Row>& rows, const FlashEngine_1_00::ExpansionBounds& bounds = {}) {
    for (const Row& row : rows) {
      Texts expected;
      for (const std::string& text : row.expected)
        expected.push_back(row.file + text);
      write(row.file, row.bytes);
      EXPECT_EQ(notChecked(row.file, bounds), expected);
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
  // On the device it is "/tmp/0/FOLDER/in.zip", of which the engine takes 255 bytes.
  const std::string fits(241, 'f');
  const std::string folder = fits + 'f';
  expectNotChecked({{"13.zip", craftedZip({{fits + "/in.zip", craftedZip({a})}}), {}},
                    {"14.zip",
                     craftedZip({{folder + "/in.zip", craftedZip({a})}}),
                     {"!/" + folder + "/in.zip: its path is too long for the engine"}}});
  const std::string bound = "!/b.js: a bound on what all packages unpack to was passed" + rest;
  expectNotChecked({{"13.zip", craftedZip({a, b}), {bound}}}, {100, 1, 1});
  expectNotChecked({{"13.zip", craftedZip({a, b}), {bound}}}, {1, 100, 1});
}

// Little-endian.
std::string number(std::size_t value, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i)
    text += static_cast<char>(value >> 8 * i & 0xFF);
  return text;
}

TEST_F(Parts, OfPackagesInWhichOtherReadersFindMore) {
  constexpr std::uint32_t kChecksumOfP = 0x82079EB1;
  const std::string zip = craftedZip({{"a.js", "a"}});
  const std::string withComment = zip.substr(0, zip.size() - 2) + number(4, 2) + "text";
  const std::string inComment =
      zip.substr(0, zip.size() - 2) + number(zip.size() - 22, 2) + zip.substr(0, zip.size() - 22);
  const std::string local = zip.substr(0, zip.find("PK\1\2"));
  // An entry that the directory does not have, between the others and the directory.
  std::string between = local + zip;
  const std::string more =
      ": other readers may find more in it: it holds bytes that belong to no entry of its directory";
  const std::string otherName =
      "!/a.js: other readers take it for another file: its field for Unicode has another name";
  const auto unicode = [](const std::string& name) {
    return number(0x7075, 2) + number(name.size() + 5, 2) + "\1CRC_" + name;
  };
  const auto withField = [&](const std::string& name, const std::string& field) {
    CraftedEntry entry{name, "a"};
    entry.extra = number(0x5455, 2) + number(1, 2) + "t" + unicode(field);
    return craftedZip({entry});
  };
  CraftedEntry link{"link.js", "../../elsewhere"};
  link.mode = 0120777;
  CraftedEntry program{"program.js", "a"};
  program.mode = 0100755;
  const std::string goesOn = "!/a.js: it holds more than its header says";
  expectNotChecked({
      {"comment.zip", withComment, {}},
      {"marker.zip", "PK\7\10" + zip, {}},
      {"filled.zip", zip + std::string(512, '\0'), {}},
      {"before.zip", zip + craftedZip({{"b.js", "b"}}), {more}},
      {"behind.zip", zip + "PK" + std::string(20, 'x'), {more}},
      {"in-comment.zip", inComment, {more}},
      {"first.zip", between, {more}},
      {"same.zip", withField("a.js", "a.js"), {}},
      {"latin.zip", withField("\x84.js", "\xC3\xA4.js"), {}},
      {"other.zip", withField("a.js", "a.swf"), {otherName}},
      {"longer.zip", withField("a.js", "a.js\xC3\xA4"), {otherName}},
      {"link.zip", craftedZip({link, program}), {"!/link.js: a symbolic link, which other readers follow"}},
      {"folder.zip",
       craftedZip({{"d/", "", true}, {"e/", ""}, {"f.js/", "f"}, {"g\\", "g", true}}),
       {"!/f.js/: a directory with data, which other readers take for a file",
        "!/g\\: a directory with data, which other readers take for a file"}},
      // The stream goes on behind the size, and behind the size and the compressed size; it ends before the latter.
      {"1.zip", craftedZip({{"a.js", "pq", true, 0, {}, kChecksumOfP, 1}}), {goesOn}},
      {"2.zip", craftedZip({{"a.js", "pq", true, 0, {}, kChecksumOfP, 1, 3}}), {goesOn}},
      {"3.zip", craftedZip({{"a.js", "p", true, 0, {}, {}, {}, 40}, {"b.js", std::string(40, 'b')}}), {goesOn}},
      {"empty.zip", craftedZip({{"a.js", "", true}, {"b.js", ""}}), {}},
  });
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
  write("www/later.png", assemble("").replace(3, 1, 1, '\xF0'));
  write("www/letter.dat", assemble("").replace(3, 1, 1, 'A'));
  write("www/letter.txt",
        "FWSA is the signature of a Flash file,\n and this is a text about such files and their headers.");
  fs::create_symlink("nowhere.js", "www/dangling.js");
  ASSERT_EQ(mkfifo("www/pipe.Js", 0600), 0);
  ASSERT_EQ(mkfifo("www/pipe.txt", 0600), 0);
  Texts told = notChecked("www");
  std::sort(told.begin(), told.begin() + 3);  // those come in the order of the file system
  EXPECT_EQ(told, (Texts{
                      "www/dangling.js: a link to what is not there",
                      "www/link: a link to a directory",
                      "www/pipe.Js: neither a file nor a directory",
                      "www/closed.js: could not be opened",
                      "www/closed.swf: could not be opened",
                      "www/page.htm: cut at its first zero byte, or too large to be read",
                      "www/both.Js: its extension is written neither in small nor in capital letters",
                      "www/later.png: a Flash file by its content that has another extension",
                      "www/letter.dat: a Flash file by its content that has another extension",
                      "www/movie.gif: a Flash file by its content that has another extension",
                  }));
}

// A jump over `offset` bytes, before a push of two bytes and an action: 99 02 00 <offset> | 96 02 00 05 01 | 06
std::string hiddenIn(const std::string& offset) {
  return assemble("tag 12 bytes 99 02 00 " + offset + " 96 02 00 05 01 06\nend");
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
      {"movie.swf", hiddenIn("02 00"), {": a branch leads into the middle of an action: what runs there is not read"}},
      {"movie.swf", hiddenIn("05 00"), {}},
      {"movie.swf", hiddenIn("06 00"), {}},
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

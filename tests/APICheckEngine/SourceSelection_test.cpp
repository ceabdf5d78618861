#include <sys/stat.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <system_error>

#include "support/EngineFixture.h"

namespace {

class SourceSelection : public EngineTest {
 protected:
  void scan(const Texts& paths) {
    Texts files = paths;
    ASSERT_EQ(engine().FirstScanSource(&files), RUN_SUCCESS);
  }
  static Texts texts(const APIAnalysis::Strings& list) {
    Texts all;
    for (const std::string* text : list)
      all.push_back(*text);
    return all;
  }
};

TEST_F(SourceSelection, ExtensionsDecideAndTheListsStayParallel) {
  Texts paths;
  for (const char* name : {"a.html", "a.HTML", "a.htm", "a.HTM", "a.js", "a.JS", "a.xml", "a.XML", "a.Html", "a.css",
                           "a.info", "a.swf", "a.jpg", "a.js.PNG", "js", "a."}) {
    paths.push_back(addFile(name, name));
  }
  scan(paths);
  const Texts expected(paths.begin(), paths.begin() + 8);
  EXPECT_EQ(texts(engine().worthfulPathList), expected);
  EXPECT_EQ(texts(engine().worthfulExtList), (Texts{"html", "HTML", "htm", "HTM", "js", "JS", "xml", "XML"}));
  EXPECT_EQ(engine().worthfulSourceList, engine().cleanedSourceList);
  EXPECT_EQ(*engine().worthfulSourceList[4], std::string("a.js", 5));
  EXPECT_EQ(log("WorthFul"), (Texts{"FirstScanSource:  WorthFul File [8] EA"}));
}

TEST_F(SourceSelection, UnusualFilesArePassedOverOrCut) {
  mkdir((directory() + "/dir.js").c_str(), 0755);
  scan({addFile("empty.js", ""), addFile("zero.js", std::string("\0abc", 4)), directory() + "/dir.js",
        directory() + "/missing.js", addFile("cut.js", std::string("ab\0cd", 5)),
        addFile("comment.js", "/* a\n */\n// b\n"), addFile("bom.js", "\xEF\xBB\xBFx\xFF"), addFile("one.js", "$")});
  EXPECT_EQ(texts(engine().worthfulSourceList), (Texts{std::string("ab", 3), std::string("\n\n", 3),
                                                       std::string("\xEF\xBB\xBFx\xFF", 6), std::string("$", 2)}));
  EXPECT_EQ(log("Open Error"), (Texts{"CheckFileAnalysisWorth:  file[" + directory() + "/missing.js] Open Error "}));
}

// More than off_t, long and int hold in a process of 32 bits, unless asked for. Almost all of it is a hole.
TEST_F(SourceSelection, FilesOfThreeGiBAreReadLikeOthers) {
  constexpr std::uintmax_t kHole = std::uintmax_t{3} << 30;
  const auto grow = [](const std::string& path) {
    std::error_code refused;
    std::filesystem::resize_file(path, std::filesystem::file_size(path) + kHole, refused);
    return !refused;
  };
  const std::string source = addScript("tv.a(1);");
  const std::string bytes = zipBytes({{"app/www/packed.js", "tv.b(1);"}});
  const std::size_t end = bytes.size() - 22;  // its last record holds where the directory of the entries is
  const std::size_t directoryAt = bytes.find("PK\1\2");
  const std::string package = addFile("app.wgt", bytes.substr(0, directoryAt));
  if (!grow(source) || !grow(package)) GTEST_SKIP() << "the file system refuses them";
  std::string directoryAndEnd = bytes.substr(directoryAt);
  const auto moved = static_cast<std::uint32_t>(directoryAt + kHole);
  for (std::size_t i = 0; i < 4; ++i)
    directoryAndEnd[end - directoryAt + 16 + i] = static_cast<char>(moved >> 8 * i);
  std::ofstream(package, std::ios::binary | std::ios::app) << directoryAndEnd;

  GapList gaps;
  engine().observer = &gaps;
  EXPECT_EQ(run(), RUN_SUCCESS);
  engine().observer = nullptr;
  EXPECT_EQ(texts(engine().worthfulSourceList), (Texts{std::string("tv.a(1);", 9), std::string("tv.b(1);", 9)}));
  EXPECT_EQ(gaps.texts, (Texts{package, source}));  // the hole in the package is none that a packer leaves
}

// All are in the excerpts of all, without a blank between; each is found once for every hit.
TEST_F(SourceSelection, OfEqualAccessesABoundedNumberStays) {
  std::string source = "x=document.embeds[1];";
  for (int i = 0; i < 100; ++i)
    source += "a=document.embeds[0];b=$('tv');";
  ASSERT_EQ(engine().Init(), RUN_SUCCESS);
  scan({addScript(source + "y=document.embeds[2];")});
  std::map<std::string, int> places;
  for (const auto* list : {&engine().embedsAccessList, &engine().objectAccessList})
    for (const SWFStateMentInfo* record : *list)
      EXPECT_LE(++places[*record->expression], FlashEngine_1_00::kMaxEqualRecords) << *record->expression;
  EXPECT_EQ(places.size(), 4U);
  EXPECT_EQ(*engine().embedsAccessList.back()->expression, "y=document.embeds[2]");
}

TEST_F(SourceSelection, CollectsAccessesOfEachForm) {
  struct Row {
    std::string source;
    Texts accesses, embeds;
  };
  for (const Row& row : std::vector<Row>{
           {"var t = document.getElementById('tv'); next();", {"t = document.getElementById('tv')"}, {}},
           {"x.t=document . getElementById ( \"tv\" ).Open('a'); z",
            {"x.t=document . getElementById ( \"tv\" ).Open('a'"},
            {}},
           {"  a=$('tv').b; $_( tv ) ; last word", {"a=$('tv').b", " $_( tv ) "}, {}},
           {"document.getElementById(id + 1); a", {}, {}},
           {"t = document.embeds[ 12 ].Play('x'); a", {}, {"t = document.embeds[ 12 ].Play('x'"}},
           {"document.embeds['tv']; document.all; a", {}, {}},
           {"$('#tv'); $x('tv'); (tv); abcdefgh", {}, {}},
       }) {
    ASSERT_EQ(engine().Init(), RUN_SUCCESS);
    scan({addScript(row.source)});
    Texts accesses = expressions(engine().objectAccessList);
    accesses.erase(std::unique(accesses.begin(), accesses.end()), accesses.end());
    EXPECT_EQ(accesses, row.accesses) << row.source;
    EXPECT_EQ(expressions(engine().embedsAccessList), row.embeds) << row.source;
    for (const SWFStateMentInfo* record : engine().objectAccessList) {
      EXPECT_EQ(record->scope, "Global");
      EXPECT_EQ(record->path, directory() + "/app/www/main.js");
    }
  }
}

}  // namespace

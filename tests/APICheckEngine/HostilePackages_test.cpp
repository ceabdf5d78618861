// Packages that somebody made to harm whoever unpacks them.

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>

#include "platform/Limits.h"
#include "support/CraftedZip.h"
#include "support/EngineFixture.h"
#include "unzip/unzip_job.h"

namespace fs = std::filesystem;
using FlashEngine_1_00::kMaxEntryName;

namespace {

class HostilePackages : public EngineTest {
 protected:
  // Expands one package; what is in the extraction directories then, "path=content" or "path/", sorted.
  Texts expand(const std::string& bytes) {
    clearLog();
    engine().extractedFileList.clear();
    engine().extractedDirList.clear();
    engine().addFilePathbyUnzipping({addFile("app.wgt", bytes)});
    Texts there;
    for (const std::string& directory : engine().extractedDirList) {
      if (fs::is_symlink(directory)) continue;
      for (const auto& entry : fs::recursive_directory_iterator(directory)) {
        const std::string name = entry.path().string().substr(directory.size() + 1);
        const fs::file_type type = entry.symlink_status().type();
        if (type == fs::file_type::directory) there.push_back(name + "/");
        if (type == fs::file_type::regular) there.push_back(name + "=" + readFile(entry.path().string()));
      }
    }
    std::sort(there.begin(), there.end());
    return there;
  }

  // What stands beside the extraction directories: the application, the database and what a test put there.
  Texts outside() {
    Texts there;
    for (const auto& entry : fs::recursive_directory_iterator(directory())) {
      const std::string name = entry.path().string().substr(directory().size() + 1);
      if (!isdigit(static_cast<unsigned char>(name[0]))) there.push_back(name);
    }
    std::sort(there.begin(), there.end());
    return there;
  }
};

TEST_F(HostilePackages, NamesLeadNowhereElse) {
  const std::string inner = std::string(240, 'n') + "/";
  const std::string longName = inner + std::string(4096 - inner.size(), 'x');
  const std::string good = "good.js";
  const auto ends = [](const std::string& name) { return "do_extract:  entry [" + name + "] not extracted [-1] "; };
  const auto skips = [](const std::string& name) {
    return "do_extract_currentfile:  unsafe entry [" + name + "] skipped ";
  };
  const auto isLonger = [](const std::string& name) {
    return "do_extract_currentfile:  entry [" + name + "] has a longer name ";
  };
  struct Row {
    std::string name;
    Texts extracted;  // of the package: this entry, then good.js
    std::string logged;
  };
  for (const Row& row : std::vector<Row>{
           {directory() + "/x", {good + "=g"}, skips(directory() + "/x")},
           {"/" + directory() + "/x", {good + "=g"}, skips("/" + directory() + "/x")},
           {"\\x", {good + "=g"}, skips("\\x")},
           {"..", {good + "=g"}, skips("..")},
           {"../x", {good + "=g"}, skips("../x")},
           {"..//x", {good + "=g"}, skips("..//x")},
           {"..\\x", {good + "=g"}, skips("..\\x")},
           {"..\\\\x", {good + "=g"}, skips("..\\\\x")},
           {"a/../x", {good + "=g"}, skips("a/../x")},
           {"a/b/../../../x", {good + "=g"}, skips("a/b/../../../x")},
           {"a\\..\\..\\x", {good + "=g"}, skips("a\\..\\..\\x")},
           {"./../x", {good + "=g"}, skips("./../x")},
           {"../x/", {good + "=g"}, skips("../x/")},
           {"a/..", {good + "=g"}, skips("a/..")},
           {"...", {"...=x", good + "=g"}, ""},
           {"..a/b..js", {"..a/", "..a/b..js=x", good + "=g"}, ""},
           {"x\\y.js", {"x\\y.js=x", good + "=g"}, ""},
           {"./a//./b.js", {"a/", "a/b.js=x", good + "=g"}, ""},
           {"C:\\x", {"C:\\x=x", good + "=g"}, ""},
           {"CON", {"CON=x", good + "=g"}, ""},
           {"dev/null", {"dev/", "dev/null=x", good + "=g"}, ""},
           {"a\nb\x1b\xff\xfe.js", {"a\nb\x1b\xff\xfe.js=x", good + "=g"}, ""},
           {"%s%n.js", {"%s%n.js=x", good + "=g"}, ""},
           {std::string("a.js\0/../../x", 13), {"a.js=x", good + "=g"}, isLonger("a.js")},
           {"", {}, ends("")},
           {".", {}, ends(".")},
           {"a/.", {"a/"}, ends("a/.")},
           {longName,
            {good + "=g", inner, longName.substr(0, kMaxEntryName) + "=x"},
            isLonger(longName.substr(0, kMaxEntryName))},
       }) {
    SCOPED_TRACE(row.name);
    addFile("app.wgt", "");
    const Texts before = outside();
    Texts expected = row.extracted;
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(expand(craftedZip({{row.name, "x"}, {good, "g"}})), expected);
    EXPECT_EQ(outside(), before);
    EXPECT_EQ(log(" entry ["), row.logged.empty() ? Texts() : Texts{row.logged});
  }
}

TEST_F(HostilePackages, HeadersThatLieCostTheirEntryOnlyAndAreTold) {
  const CraftedEntry a{"a.js", "a"};
  const CraftedEntry b{"b.js", "b"};
  const auto with = [](CraftedEntry entry, auto member, auto value) {
    entry.*member = value;
    return entry;
  };
  const CraftedEntry encrypted{"a.js", "?", false, 1, {}, 0x12345678};
  CraftedEntry cut{"a.js", std::string(20'000, 'p'), false, 0, {}, 0x82079EB1, 1};  // size and checksum of one "p"
  CraftedEntry packed = with(cut, &CraftedEntry::content, std::string(30'000'000, 'p'));
  packed.deflated = true;
  CraftedEntry reaching = with(a, &CraftedEntry::packedSize, 4'000'000'000U);
  reaching.size = reaching.packedSize;
  const CraftedEntry shared{"b.js", "", false, 0, {}, {}, {}, {}, 0};
  const std::string behind = "do_extract:  entry [b.js] not extracted [-100] ";
  struct Row {
    const char* what;
    std::string bytes;
    Texts extracted;
    Texts logged;
  };
  for (const Row& row : std::vector<Row>{
           {"a directory that names its entry otherwise",
            craftedZip({with(a, &CraftedEntry::localName, "z.js"), b}),
            {"a.js=a", "b.js=b"},
            {"do_extract_currentfile:  entry [a.js] is named [z.js] in its own header "}},
           {"names of other lengths",
            craftedZip({with(a, &CraftedEntry::localName, "long.js"), b}),
            {},
            {"do_extract:  entry [a.js] not extracted [-103] "}},
           {"fewer entries claimed", craftedZip({a, b}, 1), {"a.js=a"}, {behind}},
           {"none claimed", craftedZip({b}, 0), {}, {behind}},
           {"more claimed",
            craftedZip({a, b}, 3),
            {"a.js=a", "b.js=b"},
            {"do_extract:  entry [] not extracted [-103] "}},
           {"twice the same name",
            craftedZip({a, {"a.js", "second"}}),
            {"a.js=second"},
            {"do_extract_currentfile:  entry [a.js] replaces an earlier one "}},
           {"two entries over the same bytes",
            craftedZip({a, shared}),
            {"a.js=a", "b.js=a"},
            {"do_extract_currentfile:  entry [b.js] is named [a.js] in its own header "}},
           {"an encrypted entry first",
            craftedZip({encrypted, b}),
            {"a.js=?"},
            {"do_extract:  entry [a.js] not extracted [-201] "}},
           {"more stored than its size",
            craftedZip({cut, b}),
            {"a.js=p", "b.js=b"},
            {"do_extract_currentfile:  entry [a.js] holds more than the [1] bytes of its header "}},
           {"less stored than its size", craftedZip({with(a, &CraftedEntry::size, 5), b}), {"a.js=a", "b.js=b"}, {}},
           {"more deflated than its size",
            craftedZip({packed, b}),
            {"a.js=p", "b.js=b"},
            {"do_extract_currentfile:  entry [a.js] holds more than the [1] bytes of its header "}},
           {"data past the end", craftedZip({reaching}), {"a.js="}, {"do_extract:  entry [a.js] not extracted [-1] "}},
           {"a file, then a directory of its name",
            craftedZip({a, {"a.js/", ""}, {"a.js/x.js", "x"}, b}),
            {"a.js=a"},
            {"do_extract:  entry [a.js/x.js] not extracted [-1] "}},
           {"a directory, then a file of its name",
            craftedZip({{"d/", ""}, {"d", "x"}, b}),
            {"d/"},
            {"do_extract:  entry [d] not extracted [-1] "}},
       }) {
    SCOPED_TRACE(row.what);
    EXPECT_EQ(expand(row.bytes), row.extracted);
    EXPECT_EQ(log(" entry ["), row.logged);
  }
}

TEST_F(HostilePackages, NothingIsWrittenThroughWhatWasPlanted) {
  const fs::path victim = fs::path(addFile("victim/file.js", "kept")).parent_path();
  const std::string package = craftedZip({{"d/e/a.js", "a"}, {"b.js", "b"}, {"made/", ""}});
  const Texts whole{"b.js=b", "d/", "d/e/", "d/e/a.js=a", "made/"};
  using Plant = void (*)(const fs::path& at, const fs::path& target);
  const Plant link = [](const fs::path& at, const fs::path& target) { fs::create_symlink(target, at); };
  const Plant hardLink = [](const fs::path& at, const fs::path& target) { fs::create_hard_link(target, at); };
  const Plant pipe = [](const fs::path& at, const fs::path&) { mkfifo(at.c_str(), 0666); };
  const struct {
    const char* what;
    const char* at;  // below the extraction directory; empty: itself
    Plant plant;
    const char* target;  // below the victim's directory
    const char* alsoFound = nullptr;
  } rows[] = {
      {"the directory itself", "", link, ""},
      {"the directory itself, leading nowhere", "", link, "new"},
      {"the directory itself, a pipe", "", pipe, ""},
      {"a directory", "d", link, ""},
      {"a deeper directory", "d/e", link, ""},
      {"a directory that is missing", "d", link, "new"},
      {"a file", "b.js", link, "file.js"},
      {"a deeper file", "d/e/a.js", link, "file.js"},
      {"a file that is missing", "b.js", link, "new.js"},
      {"a hard link", "b.js", hardLink, "file.js"},
      {"a pipe where nobody writes", "b.js", pipe, ""},
      {"a directory entry", "made", link, "new"},
      {"a pipe beside the entries", "pipe.js", pipe, ""},
      {"a directory beside the entries", "other", link, "", "other/file.js"},
      {"a file beside the entries", "other.js", link, "file.js", "other.js"},
      {"a way back to the entries", "d/back", [](const fs::path& at, const fs::path&) { fs::create_symlink("..", at); },
       ""},
  };
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    const auto& row = rows[i];
    SCOPED_TRACE(row.what);
    const fs::path directory = fs::path(this->directory()) / std::to_string(2 * i);  // then one of the run's
    const fs::path at = *row.at == '\0' ? directory : directory / row.at;
    fs::create_directories(at.parent_path());
    row.plant(at, victim / row.target);
    const Texts files = expand(package);
    const bool blocked = row.at == std::string("made");  // a directory of its own is not worth a fight
    EXPECT_EQ(files, blocked ? Texts(whole.begin(), whole.end() - 1) : whole);
    Texts found = engine().extractedFileList;
    std::sort(found.begin(), found.end());
    Texts expected{directory / "b.js", directory / "d/e/a.js"};
    if (row.alsoFound != nullptr) expected.push_back(directory / row.alsoFound);
    EXPECT_EQ(found, expected);
    EXPECT_EQ(run(), RUN_SUCCESS);
    EXPECT_FALSE(fs::exists(fs::symlink_status(directory)));
    EXPECT_EQ(std::distance(fs::directory_iterator(victim), {}), 1);
    EXPECT_EQ(readFile(victim / "file.js"), "kept");
  }
}

// Somebody is quicker than us, between the making of the directory and the job.
TEST_F(HostilePackages, ADirectoryThatBecameALinkIsNotEntered) {
  fs::create_directory(directory() + "/victim");
  fs::create_directory_symlink("victim", directory() + "/link");
  std::string words[] = {"uzip", addFile("app.zip", craftedZip({{"a.js", "a"}})), "-d", directory() + "/link"};
  char* argv[] = {words[0].data(), words[1].data(), words[2].data(), words[3].data()};
  EXPECT_EQ(FlashEngine_1_00::do_UnzipJob(4, argv), 1);
  EXPECT_TRUE(fs::is_empty(directory() + "/victim"));
}

class Bombs : public HostilePackages {
 protected:
  void setBounds(std::uint64_t bytes, std::uint32_t entries) { engine().expansionBounds = {bytes, entries, entries}; }

  // Expands a package under bounds of so many bytes and entries; the bytes and files that came of it.
  std::pair<std::uintmax_t, std::size_t> expandWithin(std::uint64_t bytes, std::uint32_t entries,
                                                      const std::string& package) {
    setBounds(bytes, entries);
    clearLog();
    engine().extractedFileList.clear();
    engine().addFilePathbyUnzipping({addFile("app.wgt", package)});
    std::uintmax_t size = 0;
    for (const std::string& path : engine().extractedFileList)
      size += fs::file_size(path);
    return {size, engine().extractedFileList.size()};
  }

  // A package of `width` packages like it, `depth` deep, around 64 KiB of zeroes.
  static std::string nest(int width, int depth) {
    if (depth == 0) return craftedZip({{"zeroes", std::string(65'536, '\0'), true}});
    std::vector<CraftedEntry> copies{{"p00", nest(width, depth - 1), true}};
    for (int i = 1; i < width; ++i)
      copies.push_back({"p" + std::to_string(10 + i), "", false, 0, {}, {}, {}, {}, 0});
    return craftedZip(copies);
  }
};

TEST_F(Bombs, ExpandToTheBoundsOfTheRunOnly) {
  std::vector<CraftedEntry> overlapping{{"0000", std::string(4 << 20, '\0'), true}};
  for (int i = 1; i < 2048; ++i)
    overlapping.push_back({std::to_string(2000 + i), "", false, 0, {}, {}, {}, {}, 0});
  const std::string eightGiB = craftedZip(overlapping);
  EXPECT_LT(eightGiB.size(), 200'000U);
  using Sizes = std::pair<std::uintmax_t, std::size_t>;
  EXPECT_EQ(expandWithin((9 << 20) + 5, 5000, eightGiB), Sizes((9 << 20), 3));
  EXPECT_EQ(log("not extracted"), (Texts{"do_extract:  entry [2002] not extracted [-200] "}));

  // 16 * 16 * 16 * 16 * 64 KiB; every package that is cut tells so.
  const std::uintmax_t bytes = expandWithin(3 << 20, 100'000, nest(16, 4)).first;
  EXPECT_LE(bytes, 3U << 20);
  EXPECT_GT(bytes, 2U << 20);
  EXPECT_FALSE(log("not extracted [-200]").empty());

  std::vector<CraftedEntry> empty;
  for (int i = 0; i < 300; ++i)
    empty.push_back({std::to_string(1000 + i), ""});
  EXPECT_EQ(expandWithin(1, 300, craftedZip(empty)).second, 300U);
  EXPECT_EQ(log("not extracted"), Texts());
  EXPECT_EQ(expandWithin(1, 299, craftedZip(empty)).second, 299U);
  EXPECT_EQ(log("not extracted"), (Texts{"do_extract:  entry [1299] not extracted [-200] "}));

  // Three directories for each entry.
  EXPECT_EQ(expandWithin(9, 8, craftedZip({{"1/2/3/a", "a"}, {"4/5/6/b", "b"}, {"7/8/9/c", "c"}})).second, 2U);
  EXPECT_EQ(log("not extracted"), (Texts{"do_extract:  entry [7/8/9/c] not extracted [-1] "}));
}

TEST_F(Bombs, BoundsAreThoseOfOneRunAndAllItsPackages) {
  setBounds(100, 3);
  const std::string two = craftedZip({{"a", "a"}, {"b", "b"}});
  const Texts both{addFile("1.wgt", two), addFile("2.wgt", two)};
  for (int round = 0; round < 2; ++round) {
    engine().extractedFileList.clear();
    engine().addFilePathbyUnzipping(both);
    EXPECT_EQ(engine().extractedFileList.size(), 3U);
  }
}

TEST_F(Bombs, APackageThatContainsItselfEnds) {
  const std::string package = craftedZip({{"self.wgt", "to be replaced"}});
  const std::string path = addFile("app.wgt", package);
  onLog([&](const std::string& line) {
    if (line.find("zip file found") != std::string::npos || engine().extractedFileList.empty()) return;
    writeFile(engine().extractedFileList.back(), package);
  });
  setBounds(1 << 20, 200);
  EXPECT_EQ(run(), RUN_SUCCESS);
  EXPECT_EQ(engine().extractedDirList.size(), 201U);
  EXPECT_EQ(engine().extractedFileList.size(), 200U);
  EXPECT_EQ(log("not extracted").size(), 1U);
}

}  // namespace

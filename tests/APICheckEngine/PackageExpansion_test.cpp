#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "support/EngineFixture.h"
#include "unzip/unzip_job.h"

namespace fs = std::filesystem;

namespace {

class PackageExpansion : public EngineTest {
 protected:
  // Paths below the extraction directories, sorted: the file system's order is not ours to know.
  Texts extracted() {
    Texts paths;
    for (const std::string& path : engine().extractedFileList)
      paths.push_back(path.substr(directory().size() + 1));
    std::sort(paths.begin(), paths.end());
    return paths;
  }

  // Expands one package of these bytes.
  void expand(const std::string& bytes, const std::string& name = "app.wgt") {
    engine().addFilePathbyUnzipping({addFile(name, bytes)});
  }
};

// The bytes of `zip` with every `from` of the same length replaced.
std::string patched(std::string zip, const std::string& from, const std::string& to) {
  for (std::size_t at; (at = zip.find(from)) != std::string::npos;)
    zip.replace(at, to.size(), to);
  return zip;
}

TEST_F(PackageExpansion, KnowsPackagesByTheirFirstBytesOnly) {
  const std::string zip = zipBytes({{"www/index.html", "<html/>"}, {"www/js/a.js", ""}});
  Texts paths{addFile("app.bin", zip),   addFile("fake.zip", "not a package"),
              addFile("movie.fla", zip), addFile("empty.wgt", std::string("PK\5\6", 4) + std::string(18, '\0')),
              addFile("short", "PK"),    directory() + "/missing",
              directory() + "/app"};
  engine().addFilePathbyUnzipping(paths);
  EXPECT_EQ(extracted(), (Texts{"0/www/index.html", "0/www/js/a.js"}));
  EXPECT_EQ(engine().extractedDirList, (Texts{directory() + "/0", directory() + "/1"}));
  EXPECT_EQ(log("Open Error"), (Texts{"addFilePathbyUnzipping:  [" + directory() + "/missing] Open Error "}));
  EXPECT_EQ(readFile(directory() + "/0/www/index.html"), "<html/>");
}

TEST_F(PackageExpansion, EachSignatureIsOneOfAPackageAndNoOther) {
  const std::string zip = zipBytes({{"a.js", "a"}});
  for (const char* signature : {"PK\3\4", "PK\5\6", "PK\7\10", "PKLI", "PKSp", "PKnZ"}) {
    engine().extractedDirList.clear();
    engine().addFilePathbyUnzipping({addFile("app.bin", signature + zip)});
    EXPECT_EQ(engine().extractedDirList.size(), 1U) << signature;
  }
  engine().extractedDirList.clear();
  for (const char* other : {"PK\4\3", "PK\3\5", "PK\7\6", "PKli", "PKSP", "PKNZ", "pk\3\4", "PK00"})
    engine().addFilePathbyUnzipping({addFile("app.bin", other + zip)});
  engine().addFilePathbyUnzipping({addFile("a.fla.b/app.wgt", zip)});
  EXPECT_TRUE(engine().extractedDirList.empty());
}

TEST_F(PackageExpansion, DirectoriesHaveTheirModes) {
  const auto modeOf = [&](const std::string& path) {
    struct stat status {};
    return stat((directory() + path).c_str(), &status) == 0 ? status.st_mode & 07777U : 0U;
  };
  const mode_t before = umask(0);
  engine().addFilePathbyUnzipping({addZip("app.wgt", {{"named/", ""}, {"needed/a.js", "a"}})});
  (void)umask(before);
  EXPECT_EQ(modeOf("/0"), 0755U);
  EXPECT_EQ(modeOf("/0/named"), 0775U);
  EXPECT_EQ(modeOf("/0/needed"), 0775U);
}

TEST_F(PackageExpansion, NestedPackagesTakeTheNextNumbersDepthFirst) {
  const std::string innermost = zipBytes({{"c.js", "c"}});
  const std::string inner = zipBytes({{"b.js", "b"}, {"innermost", innermost}});
  engine().addFilePathbyUnzipping({addZip("one.wgt", {{"inner.wgt", inner}}), addZip("two.wgt", {{"d.js", "d"}})});
  EXPECT_EQ(extracted(), (Texts{"0/inner.wgt", "1/b.js", "1/innermost", "2/c.js", "3/d.js"}));
}

TEST_F(PackageExpansion, NestingIsNoStackDepth) {
  std::string zip = zipBytes({{"a.js", "a"}});
  for (int i = 0; i < 300; ++i)
    zip = zipBytes({{"p", zip}});
  expand(zip);
  EXPECT_EQ(engine().extractedDirList.size(), 301U);
  EXPECT_TRUE(fs::exists(directory() + "/300/a.js"));
}

TEST_F(PackageExpansion, WorkingDirectoryStaysInTheLastExtractionDirectory) {
  expand(zipBytes({{"a.js", ""}}));
  EXPECT_EQ(fs::current_path().string(), directory() + "/0");
}

TEST_F(PackageExpansion, FilesKeepTheirStoredDateAndDirectoriesAreMade) {
  expand(zipBytes({{"deep/", ""}, {"a/b/c/d.js", "x"}}));
  EXPECT_TRUE(fs::is_directory(directory() + "/0/deep"));
  struct stat status {};
  ASSERT_EQ(stat((directory() + "/0/a/b/c/d.js").c_str(), &status), 0);
  const std::tm* local = std::localtime(&status.st_mtime);
  EXPECT_EQ(local->tm_year, 113);
  EXPECT_EQ(local->tm_hour, 12);
}

TEST_F(PackageExpansion, AnEntryThatFailsEndsItsPackageAndKeepsWhatIsThere) {
  const std::string good =
      zipBytes({{"first.js", "first"}, {"second.js", std::string(5000, 'q')}, {"third.js", "third"}});
  std::string wrongCrc = good;
  const std::size_t local = good.find("second.js") - 30;  // ZIP APPNOTE, local header: the CRC is at 14
  const std::size_t central = good.rfind("second.js") - 46;
  wrongCrc[local + 14] = wrongCrc[central + 16] = static_cast<char>(wrongCrc[central + 16] ^ 1);
  std::string encrypted = good;
  encrypted[local + 6] = encrypted[central + 8] = 1;
  encrypted[local + 45] = 'Z';
  struct Row {
    std::string bytes, failed;
  } rows[] = {
      {wrongCrc, "second.js"},
      {encrypted, "second.js"},
      {patched(good, "second.js", "first.js/"), ""},  // a directory of that name: ignored
      {patched(good, "second.js", "first.js\\"), ""},
      {zipBytes({{"first.js", "first"}, {"first.js/x.js", "x"}, {"third.js", "third"}}), "first.js/x.js"},
  };
  for (const Row& row : rows) {
    clearLog();
    expand(row.bytes);
    const std::string& last = engine().extractedDirList.back();
    EXPECT_EQ(readFile(last + "/first.js"), "first");
    EXPECT_EQ(fs::exists(last + "/third.js"), row.failed.empty()) << row.failed;
    const Texts failures = log("not extracted");
    ASSERT_EQ(failures.size(), row.failed.empty() ? 0U : 1U) << row.failed;
    if (row.failed.empty()) continue;
    EXPECT_EQ(failures[0].rfind("do_extract:  entry [" + row.failed + "] not extracted [-", 0), 0U) << failures[0];
  }
}

TEST_F(PackageExpansion, DamagedPackagesAndLongNamesLoseOnlyThemselves) {
  const std::string good = zipBytes({{"a.js", std::string(3000, 'a')}});
  const std::string longName = std::string(200, 'd') + "/" + std::string(100, 'n');
  Texts paths{addFile("cut.wgt", good.substr(0, good.size() / 2)), addFile("head.wgt", good.substr(0, 4)),
              addZip("long.wgt", {{longName, "x"}, {"b.js", "b"}}), addFile("good.wgt", good)};
  engine().addFilePathbyUnzipping(paths);
  EXPECT_EQ(extracted(), (Texts{"2/b.js", "2/" + longName.substr(0, 255), "3/a.js"}));
}

TEST_F(PackageExpansion, TheExtractionJobKnowsItsOptions) {
  const std::string package = addZip("app.zip", {{"d/a.js", "a"}, {"b.js", "b"}});
  const std::string shortName = package.substr(0, package.size() - 4);
  struct Row {
    Texts arguments;
    int result;
    Texts files;
  } rows[] = {
      {{}, 0, {}},
      {{"-x"}, 1, {}},
      {{package + ".missing", "-d", "DIR"}, 1, {}},
      {{package, "-d", "DIR/missing"}, 1, {}},
      {{package, "-d", "DIR"}, 0, {"b.js", "d", "d/a.js"}},
      {{"-XOD", "DIR", shortName}, 0, {"b.js", "d", "d/a.js"}},
      {{package, "-e", "-d", "DIR"}, 0, {"a.js", "b.js"}},
      {{package, "d/a.js", "-d", "DIR"}, 0, {"d", "d/a.js"}},
      {{package, "-L", "-d", "DIR"}, 0, {}},
  };
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    const std::string target = directory() + "/job" + std::to_string(i);
    fs::create_directory(target);
    Texts words{"uzip"};
    for (std::string word : rows[i].arguments) {
      if (word.rfind("DIR", 0) == 0) word = target + word.substr(3);
      words.push_back(word);
    }
    std::vector<char*> argv;
    for (std::string& word : words)
      argv.push_back(word.data());
    EXPECT_EQ(FlashEngine_1_00::do_UnzipJob(static_cast<int>(argv.size()), argv.data()), rows[i].result) << i;
    Texts files;
    for (const auto& entry : fs::recursive_directory_iterator(target)) {
      files.push_back(entry.path().string().substr(target.size() + 1));
    }
    std::sort(files.begin(), files.end());
    EXPECT_EQ(files, rows[i].files) << i;
  }
  EXPECT_EQ(log("do_list"), (Texts{"do_list:  entry [d/a.js] [1] ", "do_list:  entry [b.js] [1] "}));
}

TEST_F(PackageExpansion, OnlyOverwriteReplacesAFile) {
  const std::string package = addZip("app.zip", {{"a.js", "new"}});
  for (const auto& [option, content] : {std::pair{"-x", "old"}, std::pair{"-o", "new"}}) {
    writeFile(directory() + "/a.js", "old");
    std::string words[] = {"uzip", option, package, "-d", directory()};
    char* argv[] = {words[0].data(), words[1].data(), words[2].data(), words[3].data(), words[4].data()};
    EXPECT_EQ(FlashEngine_1_00::do_UnzipJob(5, argv), 0);
    EXPECT_EQ(readFile(directory() + "/a.js"), content);
  }
}

}  // namespace

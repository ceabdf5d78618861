// Lists of applications, as long as may be.

#include "checker/options/PathList.h"

#include "CheckerFixture.h"
#include "OwnDirectory.h"
#include "checker/options/Applications.h"
#include "checker/options/UserError.h"
#include "checker/run/Worker.h"

namespace {

class PathLists : public OwnDirectory {
 protected:
  static std::vector<std::string> pathsIn(const PathList& list) {
    std::vector<std::string> paths;
    PathList::Reader reader(list);
    for (std::string path; reader.next(path);)
      paths.push_back(path);
    return paths;
  }

  static PathList named(const std::vector<std::string>& applications, const std::vector<std::string>& lists) {
    Options options;
    options.applications = applications;
    options.lists = lists;
    return namedApplications(options);
  }
};

TEST_F(PathLists, LongOnesKeepEachPathAndTheOrder) {
  std::string lines, nuls;
  std::vector<std::string> expected{"first.wgt"};
  for (int i = 0; i < 60'000; ++i) {
    const std::string path = std::string(static_cast<std::size_t>(i % 97), 'd') + "/\xFF" + std::to_string(i);
    expected.push_back(path);
    lines += path + (i % 3 == 0 ? "\r\n" : i % 5 == 0 ? "\n\n" : "\n");
    nuls += path + "\n" + '\0';
  }
  write("lines", lines);
  write("nuls", nuls);
  const PathList list = named({"first.wgt"}, {"lines"});
  EXPECT_EQ(list.size(), expected.size());
  EXPECT_EQ(pathsIn(list), expected);
  EXPECT_EQ(pathsIn(list), expected) << "once more";
  for (std::string& path : expected)
    path += path == expected.front() ? "" : "\n";
  EXPECT_EQ(pathsIn(named({"first.wgt"}, {"nuls"})), expected) << "a path can hold a line feed";
}

TEST_F(PathLists, WhatIsNoListIsRefused) {
  write("mixed", std::string(70'000, '\n') + "a" + '\0' + "b\n");
  EXPECT_EQ(pathsIn(named({}, {"mixed"})), (std::vector<std::string>{"a", "b"})) << "never a path that is cut off";
  write("binary", std::string(200'000, 'x'));
  EXPECT_THROW(named({}, {"binary"}), UserError);
  const std::string before = getenv("TMPDIR") == nullptr ? "" : getenv("TMPDIR");
  setenv("TMPDIR", "/dev/null", 1);
  PathList list;
  EXPECT_THROW(for (int i = 0; i < 20'000; ++i) list.add(std::string(100, 'x')), UserError);
  before.empty() ? unsetenv("TMPDIR") : setenv("TMPDIR", before.c_str(), 1);
}

using LongList = Checker;

TEST_F(LongList, TakesNoMemory) {
  if (!kIsMemoryBounded) GTEST_SKIP() << "a sanitizer takes all there is";
#ifdef TARVO_EMULATED
  GTEST_SKIP() << "an emulator takes more than the program may have";
#endif
  const Output output = runCommand(
      "seq -f '/nowhere/a/directory/of/many/packages/%.0f/application.wgt' 1000000 |"
      "(ulimit -Sv 100000; " CHECKER " --shard 2/200000 - 2>&1 | tail -n 1)");
  EXPECT_EQ(output.text, "9 applications: 9 could not be checked; 0 uses of undocumented APIs\n");
  EXPECT_TRUE(fs::is_empty(directory_ + "/tmp"));
}

}  // namespace

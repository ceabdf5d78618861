#include "store/Merge.h"

#include <algorithm>
#include <fstream>

#include "StoreFixture.h"
#include "checker/report/ReportJson.h"

namespace fs = std::filesystem;

namespace store {
namespace {

std::string bytesOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

constexpr const char* kAll =
    "SELECT application, sha256, verdict, findings, calls, failure, run FROM applications ORDER BY application";

TEST_F(StoreTest, TheOrderAndTheNumberOfInputsDoNotMatter) {
  ApplicationReport differs = report("a.wgt", "a");
  differs.findings.front().call.place.line = 99;
  ApplicationReport failed;
  failed.application = "b.wgt";
  failed.failure = "it takes longer than the 60 seconds of --timeout";
  write("s1", {report("a.wgt", "a"), failed, report("\xff.wgt", "bytes")});
  write("s2", {report("b.wgt", "b"), differs, report("copy.wgt", "a")});
  write("s3", {report("c.wgt", "c")}, "second");
  std::vector<std::string> inputs{file("s1"), file("s2"), file("s3")};
  const Merged first = merge(file("whole"), inputs);
  EXPECT_EQ(first.applications, 5U);
  EXPECT_EQ(first.results, 4U);
  EXPECT_EQ(first.conflicts, Rows{hexOf(sha256("a"))});
  EXPECT_EQ(rows("whole", kAll).size(), 5U);
  EXPECT_EQ(rows("whole", "SELECT verdict FROM applications WHERE application = 'b.wgt'"), Rows{"findings"});
  EXPECT_EQ(rows("whole", "SELECT run, applications FROM runs"), (Rows{"first|4", "second|1"}));
  EXPECT_EQ(rows("whole", "PRAGMA integrity_check"), Rows{"ok"});

  const std::string bytes = bytesOf(file("whole"));
  std::rotate(inputs.begin(), inputs.begin() + 1, inputs.end());
  inputs.push_back(inputs.front());
  (void)merge(file("turned"), inputs);
  EXPECT_TRUE(bytesOf(file("turned")) == bytes) << "other order, one twice";
  (void)merge(file("whole"), {file("s2")});
  EXPECT_TRUE(bytesOf(file("whole")) == bytes) << "what is merged already";
  (void)merge(file("steps"), {file("s3")});
  (void)merge(file("steps"), {file("s1")});
  (void)merge(file("steps"), {file("s2")});
  EXPECT_TRUE(bytesOf(file("steps")) == bytes) << "one after the other";
}

TEST_F(StoreTest, JsonLinesBecomeApplications) {
  ApplicationReport complete = report("a.wgt", "a");
  ApplicationReport older = report("b.wgt", "b");
  older.sha256 = older.content;
  older.content.clear();
  ApplicationReport folder = older;
  folder.application = "www";
  folder.sha256.clear();
  {
    std::ofstream lines(file("r.jsonl"));
    for (const ApplicationReport& each : {complete, older, folder})
      lines << toJson(each).dump() << '\n';
    lines << R"({"version":1,"tool":{"name":"tarvo-check","version":"1.30"},"engine":"e","database":"api.xml",)"
          << R"("databaseSha256":")" << hexOf(sha256("api.xml"))
          << R"(","started":"2026-11-21T22:06:32Z","summary":{}})" << '\n';
  }
  const Merged merged = merge(file("s"), {file("r.jsonl")});
  EXPECT_EQ(merged.applications, 3U);
  EXPECT_EQ(merged.withoutContent, 1U);
  EXPECT_EQ(rows("s", "SELECT application, verdict, tool, run FROM applications ORDER BY application"),
            (Rows{"a.wgt|findings|1.30|2026-11-21", "b.wgt|findings|1.30|2026-11-21",
                  "www|could not check|1.30|2026-11-21"}));
  std::ofstream(file("broken.jsonl")) << "{\"application\": \n";
  const std::string before = bytesOf(file("s"));
  EXPECT_THROW((void)merge(file("s"), {file("broken.jsonl")}), StoreError);
  EXPECT_THROW((void)merge(file("s"), {file("none")}), StoreError);
  EXPECT_TRUE(bytesOf(file("s")) == before) << "a failure changes nothing";
  for (const auto& entry : fs::directory_iterator(directory_))
    EXPECT_EQ(entry.path().filename().string().find(".tarvo"), std::string::npos) << entry.path();
}

}  // namespace
}  // namespace store

// Two versions of an application, as an author compares them: from folders, packages and reports.

#include "CheckerFixture.h"

namespace {

const std::string kMore =
    "function g() {\n var t2 = document.getElementById('tv');\n t2.GetVersion();\n t2.Run(1);\n}\n";

class CompareCommand : public Checker {
 protected:
  CompareCommand() {
    for (const char* version : {"v1", "v2"}) {
      fs::create_directory(version);
      write(std::string(version) + "/index.html", kPage);
      write(std::string(version) + "/a.js", kCall);
    }
  }

  static Output compare(const std::string& arguments) { return runCommand(CHECKER " compare " + arguments + " 2>&1"); }

  static std::string textOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
};

TEST_F(CompareCommand, TellsByItsStatusWhatIsNew) {
  EXPECT_EQ(compare("v1 v2").text, "v1, now v2: 0 new, 0 gone, 0 moved, 1 the same\n");
  EXPECT_EQ(compare("v1 v2").status, 0);

  write("v2/a.js", "\n" + kCall + kMore);
  write("v2/b.txt", "new");
  const Output output = compare("--device v1 v2");
  EXPECT_EQ(output.status, 1);
  EXPECT_EQ(
      output.text,
      "v2/a.js:9:2: new: undocumented API 'Run' on MORVANE-NAVERTIX-TUNER (variable; line 8 on the device)\n"
      "v2/a.js:4:2: moved: undocumented API 'GetSerial' on MORVANE-NAVERTIX-TUNER (variable; line 3 on the device; was "
      "v1/a.js:3:2)\n"
      "calls: MORVANE-NAVERTIX-TUNER.GetVersion: 1 call, before 0\n"
      "calls: MORVANE-NAVERTIX-TUNER.Run: 1 call, before 0\n"
      "file came: b.txt\n"
      "v1, now v2: 1 new, 0 gone, 1 moved, 0 the same\n");
  EXPECT_EQ(compare("--accept Run v1 v2").status, 0);
  const Output back = compare("v2 v1");
  EXPECT_EQ(back.status, 0);
  EXPECT_NE(back.text.find("gone: undocumented API 'Run'"), std::string::npos) << back.text;

  write("v2/a.js", kCall);
  write("v2/bad.swf", "FWS");
  EXPECT_EQ(compare("v1 v2").status, 3);
  EXPECT_EQ(compare("--allow-incomplete v1 v2").status, 0);
  EXPECT_EQ(compare("v2 v2").status, 0);
}

TEST_F(CompareCommand, TakesReportsAsItTakesApplications) {
  write("v2/a.js", "\n" + kCall + kMore);
  check("--quiet --all --output v1.json v1");
  check("--quiet --all --output v2.jsonl v2");
  const std::string expected = compare("v1 v2").text;
  for (const char* versions : {"v1.json v2.jsonl", "v1 v2.jsonl", "v1.json v2"}) {
    const Output output = compare(versions);
    EXPECT_EQ(output.status, 1);
    EXPECT_EQ(output.text, expected) << versions;
  }
  check("--quiet --output brief.json v1");
  EXPECT_NE(compare("brief.json v2").text.find("calls and files are not compared"), std::string::npos);
  EXPECT_EQ(compare("--quiet v1 v2").text, "");
  EXPECT_EQ(compare("--output c.json --output c.html --output c.txt v1 v2").text,
            "1 application: 1 new, 0 gone, 1 moved, 0 the same\n");
  EXPECT_EQ(textOf("c.txt"), expected);
  EXPECT_EQ(textOf("c.json").find("{\n  \"comparison\": 1"), 0U);
  EXPECT_EQ(textOf("c.html").find("<!DOCTYPE html>"), 0U);
}

TEST_F(CompareCommand, RefusesWhatIsNoVersion) {
  check("--quiet --all --output v1.json v1");
  write("cut.json", textOf("v1.json").substr(0, 500));
  write("empty.wgt", "");
  struct Row {
    const char* arguments;
    const char* says;
  };
  for (const Row& row : {Row{"v1 v3", "there is no 'v3'; did you mean 'v"},
                         Row{"cut.json v2", "'cut.json' is no report of this program"},
                         Row{"--output x.pdf v1 v2", "call it .txt, .json or .html"},
                         Row{"--format sarif v1 v2", "--format: there is no"}, Row{"v1", "NEW is required"},
                         Row{"v1 empty.wgt", "the newer version could not be checked"},
                         Row{"empty.wgt v1", "the older version could not be checked"}}) {
    const Output output = compare(row.arguments);
    EXPECT_EQ(output.status, 2) << row.arguments;
    EXPECT_NE(output.text.find(row.says), std::string::npos) << output.text;
  }
  // What a config file says of reports is not for comparisons.
  write(".tarvo-check.toml", "output = [\"report.json\"]\nformat = \"sarif\"\nbaseline = \"none.json\"\n");
  EXPECT_EQ(compare("--quiet v1 v2").status, 0);
  EXPECT_FALSE(fs::exists("report.json"));
}

}  // namespace

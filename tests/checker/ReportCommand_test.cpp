// Reports of earlier runs in other formats, as a user makes them.

#include "CheckerFixture.h"

namespace {

std::string textOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

class ReportCommand : public Checker {
 protected:
  ReportCommand() {
    write("www/index.html", kPage);
    write("www/a.js", kCall);
    fs::create_directory("other");
    write("other/index.html", kPage + "\xE9");
    write("other/\xE9.js", kCall + "function g() { tv.Run('\xFF'); }\n");
    write("other/bad.swf", "FWS");
  }

  static Output report(const std::string& arguments) { return runCommand(CHECKER " report " + arguments + " 2>&1"); }
};

TEST_F(ReportCommand, WritesWhatTheRunWrote) {
  const std::string outputs =
      " --output %.json --output %.jsonl --output %.txt --output %.sarif --output %.xml --output %.html ";
  const auto called = [&](const char* name) {
    std::string text = outputs;
    for (std::size_t at; (at = text.find('%')) != std::string::npos;)
      text.replace(at, 1, name);
    return text;
  };
  const std::string summary = check("--all" + called("run") + "www other missing.wgt").text;
  for (const char* from : {"run.json", "run.jsonl"}) {
    const Output output = report(from + called("again"));
    EXPECT_EQ(output.status, 0);
    EXPECT_EQ(output.text, summary);
    for (const char* suffix : {".json", ".jsonl", ".txt", ".sarif", ".xml", ".html"})
      EXPECT_TRUE(textOf(std::string("again") + suffix) == textOf(std::string("run") + suffix)) << from << suffix;
  }
  EXPECT_EQ(report("--engine-lines run.json").text, check("--all --engine-lines www other missing.wgt").text);
  EXPECT_EQ(report("--map www=www --format github run.json").text,
            check("--all --map www=www --format github www other missing.wgt").text);
}

TEST_F(ReportCommand, PutsSeveralTogether) {
  check("--quiet --output a.json www");
  check("--quiet --output b.jsonl other");
  EXPECT_EQ(report("a.json b.jsonl --quiet --format text").text, "");
  const std::string text = report("a.json b.jsonl").text;
  EXPECT_LT(text.find("www/a.js"), text.find("not checked: other/bad.swf"));
  EXPECT_NE(text.find("\n2 applications: 2 with findings"), std::string::npos) << text;
  EXPECT_EQ(runCommand("cat b.jsonl | " CHECKER " report --format jsonl -").text, textOf("b.jsonl"));
  report("--quiet --output both.json a.json b.jsonl");
  report("--quiet --output all.json both.json a.json");
  EXPECT_NE(textOf("all.json").find("\"runs\": ["), std::string::npos);
  EXPECT_NE(report("--format html all.json").text.find("One of its runs"), std::string::npos);
}

TEST_F(ReportCommand, LeavesNothingBehindWhenAnInputIsBad) {
  check("--quiet --output a.json --output a.jsonl www");
  const std::string lines = textOf("a.jsonl");
  write("cut.jsonl", lines.substr(0, lines.find('\n') + 1));
  write("half.json", textOf("a.json").substr(0, 700));
  write("old.txt", "kept");
  struct Row {
    const char* input;
    const char* says;
  };
  for (const Row& row :
       {Row{"cut.jsonl", "'cut.jsonl' is cut off: "}, Row{"half.json", "'half.json' is no report of this"},
        Row{"nome.json", "'nome.json' cannot be read: No such file or directory"},
        Row{"a.jso", "did you mean 'a.json'?"}, Row{"www", "'www' cannot be read: Is a directory"},
        Row{"www/a.js", "line 1, byte "}}) {
    const Output output = report(std::string("--output old.txt --output new.html --format sarif a.json ") + row.input);
    EXPECT_EQ(output.status, 2) << row.input;
    EXPECT_EQ(output.text.find("tarvo-check: "), 0U) << output.text;
    EXPECT_NE(output.text.find(row.says), std::string::npos) << output.text;
    EXPECT_EQ(textOf("old.txt"), "kept");
    EXPECT_FALSE(fs::exists("new.html"));
  }
  EXPECT_EQ(report("").status, 2);
}

}  // namespace

// Config files: which one counts, and that what is printed as one can be read as one.

#include <unistd.h>

#include "CheckerFixture.h"

namespace {

// In each test, `cwd` is the user's folder; `app` in it is an application.
class ConfigFile : public Checker {
 protected:
  ConfigFile() { reset(); }

  void reset() const {
    fs::current_path(directory_);
    fs::remove_all("cwd");
    fs::create_directories("cwd/app/sub");
    fs::create_directories("cwd/other");
    fs::current_path("cwd");
    write("app/index.html", kPage);
    write("app/sub/a.js", kCall);
    write("other/index.html", kPage);
  }

  static bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }
};

TEST_F(ConfigFile, AnApplicationDoesNotConfigureItsCheck) {
  const std::string own = "echo 'timeout = 7' >.tarvo-check.toml; ";
  const std::string theirs = "echo 'timeout = 8' >app/.tarvo-check.toml; ";
  const std::string lies = ": it lies in the application '";
  struct Row {
    std::string before, directory, arguments;
    int timeout;  // 60: no file counts
    std::string line;
  };
  std::vector<Row> rows{
      {theirs, "app", ".", 60, lies + ".'"},
      {theirs, "app", "../app/", 60, lies + "../app/'"},
      {theirs, "app/sub", "..", 60, lies + "..'"},
      {theirs, "app", "../other .", 60, lies + ".'"},
      {theirs, "app", "index.html", 60, "'index.html' may be a part of the application that it lies in"},
      {theirs, "app", "sub/a.js", 60, "'sub/a.js' may be a part"},
      {theirs, "app", ".tarvo-check.toml", 60, lies + ".tarvo-check.toml'"},
      {theirs + "echo . >list; ", "app", "--from ../list", 60, lies + ".'"},
      {theirs + "ln -s app link; ", "app", "../link", 60, lies + "../link'"},
      {theirs + "ln -s app link; ", "link", ".", 60, lies + ".'"},
      {theirs, "app", "../other", 8, "options are taken from "},
      {own + "mv .tarvo-check.toml x.toml; ln -s ../x.toml app/.tarvo-check.toml; ", "app", ".", 60, lies + ".'"},
      {theirs + "ln -s app/.tarvo-check.toml .tarvo-check.toml; ", ".", "app", 60, lies + "app'"},
      {theirs + "ln app/.tarvo-check.toml .tarvo-check.toml; ", ".", "app", 60, ": it has a second name, a hard link"},
      {"mkfifo .tarvo-check.toml; ", ".", "app", 60, ": it is not a regular file"},
      {"mkdir .tarvo-check.toml; ", ".", "app", 60, ": it is not a regular file"},
      {"ln -s nowhere .tarvo-check.toml; ", ".", "app", 60, ": it cannot be read"},
      {own, ".", "app", 7, "/cwd/.tarvo-check.toml\n"},
      {own, "app", ".", 7, "options are taken from "},
      {own, "app/sub", "../../other", 7, "options are taken from "},
      {own +
           "ln -s .tarvo-check.toml y; mv .tarvo-check.toml z; mv y .tarvo-check.toml; ln -s z .tarvo-check.toml -f; ",
       ".", "app", 7, "options are taken from "},
      {own + theirs, "app", ".", 7, "not used: "},  // and it does not hide the user's own
      {own + theirs, "app", "--config .tarvo-check.toml .", 8, ""},
      {own + theirs, "app", "--no-config .", 60, ""},
  };
  if (geteuid() == 0) {
    rows.push_back({own + "chown 12345 .tarvo-check.toml; ", ".", "app", 60, ": it belongs to another user"});
    rows.push_back({own + "chown 12345 .tarvo-check.toml; ", ".", "--config .tarvo-check.toml app", 7, ""});
    rows.push_back({own + "mv .tarvo-check.toml x; ln -s x .tarvo-check.toml; chown -h 12345 .tarvo-check.toml; ", ".",
                    "app", 60, ": it belongs to another user"});
  }
  for (const Row& row : rows) {
    reset();
    const std::string command =
        row.before + "cd " + row.directory + "; " + CHECKER + " --print-config " + row.arguments;
    const Output output = runCommand(command + " 2>&1");
    EXPECT_TRUE(has(output.text, "\ntimeout = " + std::to_string(row.timeout) + "\n")) << command << '\n'
                                                                                       << output.text;
    EXPECT_TRUE(has(output.text, row.line)) << command << '\n' << output.text;
    const std::string quiet = "cd " + row.directory + "; " + CHECKER + " --quiet --print-config " + row.arguments;
    EXPECT_EQ(runCommand(quiet + " 2>&1 >/dev/null").text, "");
  }
  reset();
  write("app/.tarvo-check.toml", "database = 'no.xml'");
  EXPECT_EQ(runCommand("cd app; " CHECKER " explain . 2>&1 >/dev/null").text,
            "not used: " + directory_ + "/cwd/app/.tarvo-check.toml" + lies + ".'\n");
}

TEST_F(ConfigFile, AFoundFileWritesReportsIntoItsFolderOnly) {
  fs::create_directory_symlink("..", "up");
  fs::create_symlink("../nothing.txt", "dangling.txt");
  fs::create_directory("reports");
  struct Row {
    std::string output;
    bool isTaken;
  };
  for (const Row& row : std::vector<Row>{{"r.txt", true},
                                         {"reports/r.txt", true},
                                         {"./reports/../r.txt", true},
                                         {directory_ + "/cwd/r.txt", true},
                                         {"../r.txt", false},
                                         {"up/r.txt", false},
                                         {"dangling.txt", false},
                                         {directory_ + "/cwd2.txt", false}}) {
    write(".tarvo-check.toml", "output = ['" + row.output + "']");
    const Output output = check("other 2>&1");
    EXPECT_EQ(output.status, row.isTaken ? 0 : 2) << row.output << '\n' << output.text;
    EXPECT_EQ(!has(output.text, ":1:10: 'output' names '" + row.output + "', which is not in the folder"), row.isTaken)
        << output.text;
    fs::rename(".tarvo-check.toml", "named.toml");
    EXPECT_EQ(check("--config named.toml other 2>&1").status, 0) << row.output;
  }
}

TEST_F(ConfigFile, EveryReportNamesIt) {
  write(".tarvo-check.toml", "all = true");
  const std::string file = directory_ + "/cwd/.tarvo-check.toml";
  for (const char* format : {"text", "json", "jsonl", "sarif", "junit", "html"}) {
    const Output output = check(std::string("--format ") + format + " other 2>/dev/null");
    EXPECT_TRUE(has(output.text, file)) << format << '\n' << output.text;
    const Output without = check(std::string("--no-config --format ") + format + " other 2>/dev/null");
    EXPECT_FALSE(has(without.text, ".tarvo-check.toml")) << format;
  }
}

TEST_F(ConfigFile, WhatIsPrintedCanBeRead) {
  const std::string odd =
      " --accept 'a\"b' --accept '#c' --baseline 'x#y \"z\" \\n\n\t\x7F.json' --accept-file "
      "'\xE2\x80\xAE\xC3\xA4' --output 'it'\\''s.txt' --output /abs.txt --jobs 5 --all --color never";
  const std::string printed = check("--print-config" + odd).text;
  EXPECT_TRUE(has(printed, "all = true\n")) << printed;
  write("printed.toml", printed);
  EXPECT_EQ(check("--config printed.toml --print-config").text, printed);
  EXPECT_EQ(check("--config printed.toml --jobs 6 --print-config").text.find("jobs = 5"), std::string::npos);
  // Relative paths stay relative: to the working directory, where such a file will stand.
  write("other/x.toml", "database = \"data/db.xml\"\noutput = '/r.txt'\n");
  const std::string moved = check("--config other/x.toml --print-config").text;
  EXPECT_TRUE(has(moved, "database = \"other/data/db.xml\"\n") && has(moved, "output = [\"/r.txt\"]\n")) << moved;
  EXPECT_TRUE(has(check("--database db.xml --print-config").text, "database = \"db.xml\"\n"));
  const Output raw = check("--print-config --output '\xFF.txt' 2>&1");
  EXPECT_TRUE(has(raw.text, "of --output is not UTF-8")) << raw.text;
  EXPECT_EQ(raw.status, 2);
}

TEST_F(ConfigFile, MistakesAreToldWithTheirPlace) {
  struct Row {
    std::string text, message;
  };
  for (const Row& row : std::vector<Row>{
           {"\njbos = 3", "2:8: no option is called 'jbos'; did you mean 'jobs'?"},
           {"print-config = true", "1:16: no option is called 'print-config'"},
           {"[check]\njobs = 3", "1:1: there are no sections, but 'check' is one"},
           {"jobs = 'many'", "1:8: 'jobs' must be a whole number"},
           {"jobs = -1", "1:8: --jobs: '-1' is not a whole number"},
           {"timeout = 0", "1:11: --timeout: 0 is not in the range from 1 to 1000000"},
           {"all = 'yes'", "1:7: 'all' must be true or false"},
           {"format = 'jsno'", "1:10: --format: there is no 'jsno', but text, json,"},
           {"accept = ['A', 3]", "1:10: 'accept' must be text in quotes, or a list of such"},
           {"database = ''", "1:12: 'database' names no file"},
           {"database = \"a\\u0000b\"", "1:12: 'database' holds a zero byte"},
           {"jobs = 1\njobs = 2", "2:"},
           {"jobs = = 2", "1:8: "},
           {"database = '\xFF'", "1:"},
           {std::string(1 << 20, '#') + "#", ""},
       }) {
    write(".tarvo-check.toml", row.text);
    const Output output = check("other 2>&1");
    const std::string file = directory_ + "/cwd/.tarvo-check.toml";
    if (!row.message.empty()) {
      EXPECT_EQ(output.text.find("tarvo-check: " + file + ":" + row.message), 0U) << output.text;
    } else {
      EXPECT_EQ(output.text, "tarvo-check: cannot read the config file '" + file + "': it is larger than 1 MiB\n");
    }
    EXPECT_EQ(output.status, 2) << row.text.substr(0, 100);
  }
}

}  // namespace

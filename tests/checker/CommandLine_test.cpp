// What the user can ask for, where, and what is said when that goes wrong.

#include "CheckerFixture.h"

namespace {

class CommandLine : public Checker {
 protected:
  static std::string content(const std::string& file) { return runCommand("cat " + file).text; }
};

TEST_F(CommandLine, ListsNameApplications) {
  const std::string b =
      "b.js: nothing could be judged: calls look like plug-in calls, but no plug-in element is known; check the whole "
      "application\n";
  const std::string a = "a " + b;
  const std::string page = "www/index.html: clean: no call on a plug-in object was found\n";
  write("www/index.html", kPage);
  for (const char* name : {"a b.js", "b.js"})
    write(name, kCall);
  write("list", "a b.js\r\n\nb.js");
  struct Row {
    std::string command, text;
  };
  for (const Row& row : std::vector<Row>{
           {CHECKER " --from list www/index.html", page + a + b},
           {"printf 'a b.js\\0\\0b.js\\0' | " CHECKER " www/index.html - b.js", page + a + b + b},
           {"cat list | " CHECKER " check --from -", a + b},
           {"printf '\\n' | " CHECKER " - 2>&1", "tarvo-check: the list names no application\n"},
           {CHECKER " --from lits 2>&1", "tarvo-check: cannot read the list 'lits'; did you mean 'list'?\n"},
           {CHECKER " --from . 2>&1", "tarvo-check: cannot read the list '.'\n"},
       }) {
    expectReports(runCommand(row.command).text, row.text);
  }
}

TEST_F(CommandLine, MistakesAreExplained) {
  write("application.wgt", "");
  write("-x.wgt", "");
  write("www/index.html", kPage);
  struct Row {
    std::string arguments, part;
  };
  for (const Row& row : std::vector<Row>{
           {"--jbos 4 application.wgt", "there is no option --jbos; did you mean '--jobs'?"},
           {"check --outptu=x application.wgt", "there is no option --outptu=x; did you mean '--output'?"},
           {"explain --databse x application.wgt", "did you mean '--database'?"},
           {"--nothing-like-it application.wgt", "there is no option --nothing-like-it\n"},
           {"aplication.wgt", "no such file or directory; did you mean 'application.wgt'?"},
           {"explain ./applicatoin.wgt", "no such file or directory; did you mean './application.wgt'?"},
           {"--format jsno application.wgt",
            "--format: there is no 'jsno', but text, json, jsonl, sarif, junit, html, "},
           {"--format jsno application.wgt", "; did you mean 'json'?"},
           {"--output report.odt application.wgt", "no format is known by the name of 'report.odt'; call it .txt"},
           {"--output no/r.txt application.wgt", "cannot write 'no/r.txt': No such file or directory"},
           {"--format text --output www application.wgt", "cannot write 'www': Is a directory"},
           {"--timeout 0 application.wgt", "--timeout: 0 is not in the range from 1 to 1000000\n"},
           {"--timeout abc application.wgt", "--timeout: 'abc' is not a whole number\n"},
           {"explain --memory 1e3 application.wgt", "--memory: '1e3' is not a whole number\n"},
           {"--color sometimes application.wgt", "--color: there is no 'sometimes', but auto, always or never"},
           {"expalin application.wgt", "there is no command and no file 'expalin'; did you mean 'explain'?"},
           {"databse", "there is no command and no file 'databse'; did you mean 'database'?"},
           {"help", "there is no command 'help'; did you mean '--help'?"},
           {"database dif a b", "; did you mean 'diff'?"},
           {"explain www www", "not expected"},
           {"--output r.txt --output ./r.txt application.wgt", "--output './r.txt' is given twice"},
           {"-x.wgt", "there is no option -x.wgt; the file is ./-x.wgt"},
           {"--baseline www application.wgt", "the baseline 'www' cannot be read: Is a directory\n"},
           {"explain www >/dev/full", "cannot write all to standard output"},
           {"--help >/dev/full", "cannot write all to standard output"},
           {"--config no.toml application.wgt", "cannot read the config file 'no.toml'"},
           {"explain --database no.xml application.wgt", "no database at 'no.xml'; pass --database FILE, or install"},
       }) {
    const Output output = check("2>&1 " + row.arguments);
    EXPECT_NE(output.text.find(row.part), std::string::npos) << output.text;
    EXPECT_EQ(output.status, 2) << row.arguments;
  }
  EXPECT_NE(check("check --help").text.find("Examples:"), std::string::npos);
  EXPECT_EQ(check("--version").text.find("tarvo-check 1."), 0U);
  EXPECT_NE(check("--version").text.find("\nrules: engine"), std::string::npos);
}

TEST_F(CommandLine, FilesOfReportsAreWholeOrAsBefore) {
  write("www/index.html", kPage + "<script>" + kCall + "</script>");
  const std::string report = check("www").text;
  write("target.txt", "as before");
  fs::permissions("target.txt", fs::perms::owner_read | fs::perms::owner_write);
  fs::create_symlink("target.txt", "link.txt");
  const std::string two = "--output link.txt --output new.txt www";
  EXPECT_EQ(check("--output no/such.txt " + two + " 2>&1").status, 2);
  EXPECT_EQ(content("target.txt"), "as before");
  EXPECT_EQ(check(two).text, "1 application: 1 with findings; 1 use of undocumented APIs\n");
  EXPECT_EQ(content("target.txt"), report);
  EXPECT_EQ(content("new.txt"), report);
  EXPECT_TRUE(fs::is_symlink("link.txt"));
  EXPECT_EQ(runCommand("stat -c %a target.txt").text, "600\n");
  EXPECT_EQ(check("--quiet " + two + " 2>&1").text, "");
  EXPECT_EQ(check("--quiet www").status, 1);
  EXPECT_EQ(check("--format text " + two).text, report);
  EXPECT_EQ(check("--quiet --output /dev/fd/1 --format text www | cat").text, report);  // a pipe
  EXPECT_EQ(runCommand("ls -A").text, "link.txt\nnew.txt\ntarget.txt\nwww\n") << "nothing half done is left";
}

TEST_F(CommandLine, ADirectoryOfPackagesIsAPile) {
  fs::create_directories("shop/sub");
  fs::copy_file(kExamples + "/clean.wgt", "shop/clean.wgt");
  fs::copy_file(kExamples + "/undocumented.wgt", "shop/sub/renamed.bin");
  write("shop/readme.txt", "text");
  write("shop/broken.wgt", "text");
  fs::create_directory_symlink("sub", "shop/again");
  const std::string clean = "shop/clean.wgt: clean: 9 calls on 2 plug-ins, all documented";
  const std::string broken = "shop/broken.wgt: could not check: it is not a zip package, although its name says so\n";
  const std::string line = "tarvo-check: 'shop' holds 3 packages and no web source of its own: each is checked as an ";
  const auto expect = [&](const std::string& arguments, int status, const std::vector<std::string>& parts) {
    const Output output = check(arguments + " 2>&1");
    EXPECT_EQ(output.status, status) << arguments;
    for (const std::string& part : parts)
      EXPECT_NE(output.text.find(part), std::string::npos) << part << " in\n" << output.text;
  };
  expect("shop", 2, {line, clean, broken, "shop/sub/renamed.bin: 1 use of", "3 applications: "});
  EXPECT_EQ(check("--quiet shop 2>&1").text, "");
  expect("--as-one shop", 1, {"shop: 1 use of"});
  fs::remove("shop/broken.wgt");
  expect("shop", 1, {"'shop' holds 2 packages", "2 applications: "});
  fs::create_directory_symlink("../www", "shop/outside");
  expect("shop", 2, {"shop/outside: could not check: it is a link to a directory; name the directory itself\n"});
  fs::remove("shop/outside");
  write("shop/sub/page.HTML", kPage);  // now the packages may be parts of one application
  expect("shop", 1, {"shop: 1 use of"});
  expect("shop/sub/page.HTML shop/broken.wgt", 2, {"shop/broken.wgt: could not check: no such file"});
}

TEST_F(CommandLine, NamesThatMatchNothingAreToldOnlyIfAllCallsWereLookedAt) {
  write("www/index.html", kPage + "<script>" + kCall + "</script>");
  const std::string line = "tarvo-check: no finding is of 'GetX', which is accepted\n";
  EXPECT_EQ(check("--accept GetX www 2>&1 >/dev/null").text, "");
  EXPECT_EQ(check("--accept GetX --all www 2>&1 >/dev/null").text, line);
}

// Examples, each by itself with several threads, and all at once.
TEST_F(CommandLine, JobsChangeNoReport) {
  for (const std::string applications :
       {EXAMPLES "/undocumented.wgt", EXAMPLES "/nested.wgt", EXAMPLES "/flash-undocumented.wgt", EXAMPLES}) {
    for (const char* wanted : {"--device --all ", "--all --trace "}) {
      const Output expected = check(wanted + ("--jobs 1 " + applications) + " 2>&1");
      EXPECT_NE(expected.text, "");
      for (const char* jobs : {"2", "4", "9"}) {
        const Output found = check(wanted + ("--jobs " + std::string(jobs) + ' ' + applications) + " 2>&1");
        EXPECT_EQ(found.text, expected.text) << jobs;
        EXPECT_EQ(found.status, expected.status) << jobs;
      }
    }
  }
}

}  // namespace

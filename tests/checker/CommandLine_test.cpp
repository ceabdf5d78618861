// What the user can ask for, where, and what is said when that goes wrong.

#include "CheckerFixture.h"

namespace {

class CommandLine : public Checker {
 protected:
  static std::string content(const std::string& file) { return runCommand("cat " + file).text; }
};

TEST_F(CommandLine, ListsNameApplications) {
  const std::string a = "a b.js: only documented APIs\n", b = "b.js: only documented APIs\n";
  const std::string page = "www/index.html: only documented APIs\n";
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
           {"--format jsno application.wgt", "no format is called 'jsno'; there are text, json,"},
           {"--output report.odt application.wgt", "no format is known by the name of 'report.odt'; call it .txt"},
           {"--output no/r.txt application.wgt", "cannot write 'no/r.txt': No such file or directory"},
           {"--format text --output www application.wgt", "cannot write 'www': Is a directory"},
           {"--timeout 0 application.wgt", "--timeout: Value 0 not in range 1 to"},
           {"--color sometimes application.wgt", "--color: sometimes not in {auto,always,never}"},
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

TEST_F(CommandLine, ConfigFilesAreFoundAboveAndOverridden) {
  const std::string name = ".tarvo-check.toml";
  write("../" + name, "# for all\njobs = 3\ntimeout = 7\nall = true\noutput = [\"a.txt\", \"sub/b.txt\"]\n");
  write("other.toml", "database = 'db.xml'\n");
  const auto config = [](const std::string& arguments) { return check(arguments + " --print-config 2>&1").text; };
  const auto has = [&](const std::string& arguments, const std::string& lines) {
    EXPECT_NE(config(arguments).find(lines), std::string::npos) << lines << " in\n" << config(arguments);
  };
  has("", "all = true\nallow-incomplete = false\njobs = 3\ntimeout = 7\n");
  has("", "output = [\"" + directory_ + "/a.txt\", \"" + directory_ + "/sub/b.txt\"]\n");
  has("--jobs 5 --timeout 8", "jobs = 5\ntimeout = 8\n");
  has("--no-config", "timeout = 60\n");
  has("--config other.toml", "timeout = 60\n");
  has("--config other.toml", "database = \"" + directory_ + "/cwd/db.xml\"\n");
  has("--config other.toml --database x.xml", "database = \"" + directory_ + "/cwd/x.xml\"\n");
  write("printed.toml", config("--jobs 5"));
  EXPECT_EQ(config("--config printed.toml"), config("--jobs 5"));
  write(name, "timeout = 9");  // the nearest counts, alone
  has("", "timeout = 9\n");
  EXPECT_EQ(config("").find("jobs = 3\n"), std::string::npos);
  EXPECT_EQ(check("explain --config other.toml www 2>&1").status, 2);

  const std::string file = "tarvo-check: " + directory_ + "/cwd/" + name + ": ";
  struct Row {
    std::string text, message;
  };
  for (const Row& row : std::vector<Row>{
           {"jbos = 3", "no option is called 'jbos'; did you mean 'jobs'?"},
           {"print-config = true", "no option is called 'print-config'"},
           {"[check]\njobs = 3", "there are no sections, but [check]"},
           {"jobs = many", "jobs: --jobs: Value many not in range 1 to 1024"},
           {"timeout = 0", "timeout: --timeout: Value 0 not in range 1 to 1000000"},
           {"all = perhaps", "all: "},
           {"jobs = 1\nall = true\njobs = 2", "'jobs' stands there twice"},
           {"jobs = 1\njobs = 2", "jobs: "},
           {"database = \"a#b.xml\"", "the quotes of 'database' are not closed; '#' begins a comment"},
       }) {
    write(name, row.text);
    const Output output = check("www 2>&1");
    EXPECT_EQ(output.text.find(file + row.message), 0U) << output.text;
    EXPECT_EQ(output.status, 2);
  }
}

}  // namespace

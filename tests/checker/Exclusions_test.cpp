// Files that the user excludes: not looked at by anybody, and never silently so.

#include "checker/run/Exclusions.h"

#include <nlohmann/json.hpp>

#include "CheckerFixture.h"
#include "support/CraftedZip.h"

namespace {

using Json = nlohmann::json;

class Excluding : public Checker {
 protected:
  Excluding() {
    fs::create_directories("www/node_modules/lib");
    fs::create_directories("www/js");
    write("www/index.html", kPage + "<script src='node_modules/lib/a.js'></script><script src='js/b.js'></script>");
    write("www/node_modules/lib/a.js", kCall);
    write("www/node_modules/read.me", "x");
    write("www/js/b.js", "function g() {\n var t = document.getElementById('tv');\n t.GetVersion();\n}\n");
  }

  static Output check(const std::string& arguments) {
    return Checker::check("--no-config --database " DATABASE " " + arguments + " 2>&1");
  }
};

TEST_F(Excluding, FilesAreCountedAndNamed) {
  const std::string none = "www: clean: 1 call on 1 plug-in, documented";
  const std::string finding = "www/node_modules/lib/a.js:3:2: undocumented API 'GetSerial'";
  struct Row {
    std::string arguments;
    int status;
    std::string text;
  };
  for (const Row& row : std::vector<Row>{
           {"www", 1, finding},
           {"--exclude other www", 1, finding},
           {"--exclude node_modules www", 0,
            "excluded: 2 files: www/node_modules (2)\n" + none + "; 2 files were excluded\n"},
           {"--exclude node_modules ./www/", 0,
            "excluded: 2 files: ./www/node_modules (2)\n./www/: clean: 1 call on 1 plug-in, documented; 2 files were "
            "excluded\n"},
           {"--exclude js --device www", 1, finding},
           {"--exclude '/node_modules/lib/*.js' --exclude lib/ www", 0,
            "excluded: 1 file: www/node_modules/lib\n" + none + "; 1 file was excluded\n"},
           {"--exclude '/node_modules/lib/*.js' www", 0,
            "excluded: 1 file: www/node_modules/lib/a.js\n" + none + "; 1 file was excluded\n"},
           {"--exclude lib --exclude '*.js' www", 0,
            "excluded: 2 files: www/js/b.js, www/node_modules/lib\n"
            "www: clean: no call on a plug-in object was found; 2 files were excluded\n"},
           {"--exclude '**' www", 2,
            "excluded: 4 files: www/index.html, www/js, www/node_modules (2)\nwww: could not check: there is neither a "
            "web "
            "source nor a Flash file in it; 4 files were excluded\n"},
           {"--exclude node_modules www/node_modules/lib/a.js", 0, "www/node_modules/lib/a.js: "},
           {"--exclude www www", 1, finding},
           {"--exclude 'a/**/b' www", 2, "tarvo-check: --exclude 'a/**/b': '**' can stand at its beginning"},
           {"--exclude x --store s www", 2, "tarvo-check: a store keeps what is in an application"},
       }) {
    const Output output = check(row.arguments);
    EXPECT_EQ(output.status, row.status) << row.arguments << '\n' << output.text;
    expectReports(output.text, row.text);
  }
  for (const char* format : {"text", "json", "jsonl", "sarif", "junit", "html", "github", "gitlab"}) {
    const Output output = check(std::string("--exclude node_modules --format ") + format + " www");
    EXPECT_NE(output.text.find("node_modules"), std::string::npos) << format << '\n' << output.text;
  }
  const Json report = Json::parse(check("--exclude node_modules --format json www").text);
  EXPECT_EQ(report["applications"][0]["excluded"], (Json{{{"path", "www/node_modules"}, {"files", 2}}}));
  EXPECT_EQ(report["summary"]["excluded"], 2);
}

// What is shipped is checked, unless somebody says otherwise twice.
TEST_F(Excluding, PackagesAreCheckedWhole) {
  write("app.wgt",
        craftedZip({{"index.html", kPage}, {"node_modules/lib/a.js", kCall}, {"node_modules/lib/b.js", "x"}}));
  fs::copy("app.wgt", "www/js/inner.wgt");
  fs::remove_all("www/node_modules");
  write("www/index.html", kPage);
  for (const std::string& name : {std::string("app.wgt"), std::string("www/js/inner.wgt")}) {
    const std::string application = name == "app.wgt" ? name : "www";
    const Output whole = check("--exclude node_modules " + application);
    EXPECT_EQ(whole.status, 1) << whole.text;
    expectReports(whole.text, name + "!/node_modules/lib/a.js:3:2: undocumented API");
    for (const char* rules : {"", "--device "}) {
      const Output cut = check(rules + ("--exclude node_modules --exclude-in-packages " + application));
      EXPECT_EQ(cut.status, 0) << cut.text;
      expectReports(cut.text, "excluded: 2 files: " + name + "!/node_modules (2)\n");
    }
  }
}

TEST_F(Excluding, AnApplicationExcludesNothingOfItself) {
  const std::string config = "exclude = ['node_modules']\nexclude-in-packages = true\ndeny-deprecated = true\n";
  write("www/.tarvo-check.toml", config);
  const Output own = runCommand("cd www; " CHECKER " --database " DATABASE " . 2>&1");
  EXPECT_EQ(own.status, 1) << own.text;
  EXPECT_NE(own.text.find("not used: "), std::string::npos) << own.text;
  fs::rename("www/.tarvo-check.toml", ".tarvo-check.toml");
  EXPECT_EQ(Checker::check("--database " DATABASE " www").status, 0);
}

}  // namespace

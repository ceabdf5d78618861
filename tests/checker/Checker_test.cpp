// tarvo-check as a user runs it.

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <nlohmann/json.hpp>
#include <thread>

#include "CheckerFixture.h"
#include "support/CraftedZip.h"

namespace {

TEST_F(Checker, ReportsExamplesWithTheirStatus) {
  fs::create_directory("packages");
  for (const char* name : {"clean", "undocumented", "nested"}) {
    fs::copy_file(kExamples + "/" + name + ".wgt", std::string("packages/") + name + ".wgt");
  }
  struct Row {
    std::string arguments;
    int status;
    std::string text;
  };
  const std::string undocumented =
      "packages/undocumented.wgt!/www/js/main.js:57:16: undocumented API 'GetSerial' on MORVANE-NAVERTIX-TUNER "
      "(variable)\n"
      "packages/undocumented.wgt: 1 use of undocumented APIs\n";
  for (const Row& row : std::vector<Row>{
           {"packages/clean.wgt", 0, "packages/clean.wgt: clean: 9 calls on 2 plug-ins, all documented\n"},
           {"packages/undocumented.wgt", 1, undocumented},
           {"packages/nested.wgt", 1,
            "packages/nested.wgt!/inner.wgt!/www/js/player.js:20:16: undocumented API 'GetSerial' on "
            "MORVANE-NAVERTIX-PLAYER (variable)\n"
            "packages/nested.wgt!/inner.wgt!/www/js/player.js:14:3: could not determine: player.Open(TRAILER) on "
            "MORVANE-NAVERTIX-PLAYER (variable; calls with '.Open' are not judged)\npackages/nested.wgt: 1 use of "
            "undocumented APIs\n"},
           {"packages/clean.wgt packages/undocumented.wgt", 1,
            "packages/clean.wgt: clean: 9 calls on 2 plug-ins, all documented\n" + undocumented +
                "2 applications: 1 clean, 1 with findings; 1 use of undocumented APIs\n"},
           {"--engine-lines packages/undocumented.wgt", 1,
            "../main.js(57) : UndocumentedAPI 'GetSerial' used\npackages/undocumented.wgt: 1 use of undocumented "
            "APIs\n"},
       }) {
    const Output output = check("--device " + row.arguments);
    EXPECT_EQ(output.status, row.status) << row.arguments;
    const bool hasRules = row.arguments.find("--engine-lines") == std::string::npos;
    EXPECT_EQ(output.text, row.text + (hasRules ? kDeviceRules : "")) << row.arguments;
  }
}

TEST_F(Checker, ChecksDirectoriesAndSingleFiles) {
  write("www/index.html", kPage);
  write("www/b.js", kCall);
  fs::create_directory("app.flash");  // the engine itself passes over packages below such a name
  fs::copy_file(kExamples + "/undocumented.wgt", "app.flash/inner.wgt");
  fs::copy_file(kExamples + "/undocumented.wgt", "www/" + std::string(250, 'n') + ".wgt");
  const std::string inner =
      "/www/js/main.js:57:16: undocumented API 'GetSerial' on MORVANE-NAVERTIX-TUNER (variable)\n";
  EXPECT_EQ(check("--device www").text,
            "www/b.js:3:2: undocumented API 'GetSerial' on MORVANE-NAVERTIX-TUNER (variable)\nwww/" +
                std::string(250, 'n') + ".wgt!" + inner + "www: 2 uses of undocumented APIs\n" + kDeviceRules);
  EXPECT_EQ(check("--device app.flash/inner.wgt").text,
            "app.flash/inner.wgt!" + inner + "app.flash/inner.wgt: 1 use of undocumented APIs\n" + kDeviceRules);
  EXPECT_EQ(check("--device ./www/b.js").text,
            "./www/b.js: nothing could be judged: calls look like plug-in calls, but no plug-in element is known; "
            "check the whole application\nrules: engine\n");
}

TEST_F(Checker, SaysWhyItCouldNotCheck) {
  write("www/index.html", kPage);
  write("noroot.xml", "<x/>");
  write("empty.xml", "");
  write("nothing.xml", "<?xml version='1.0'?>\n<APIAnalysisDB><g/></APIAnalysisDB>");
  write("movie.swf", "FWS");
  write("page.txt", "text");
  write("cut.wgt", "PK\3\4 cut in the middle");
  const std::string undocumented = kExamples + "/undocumented.wgt";
  struct Row {
    std::string arguments, part;
    int status;
  } rows[] = {
      {"missing.wgt", "missing.wgt: could not check: no such file or directory\n", 2},
      {"/dev/null", "could not check: neither a file nor a directory\n", 2},
      {"--database missing.xml www 2>&1", "no database at 'missing.xml'; pass --database FILE", 2},
      {"--database /dev/null www 2>&1", "the database '/dev/null' cannot be read; pass --database FILE", 2},
      {"--database . www 2>&1", "the database '.' cannot be read; pass --database FILE", 2},
      {"--database noroot.xml www 2>&1", "noroot.xml:1:1: the first element must be 'APIAnalysisDB'\n", 2},
      {"--database empty.xml www 2>&1", "empty.xml:1:1: there is no element in it\n", 2},
      {"explain --database nothing.xml www 2>&1", "nothing.xml:2:1: no method is documented in it\n", 2},
      {"explain movie.swf", "\"verdict\": \"incomplete\"", 0},
      {"explain cut.wgt", "\"verdict\": \"could not check\"", 2},
      {"cut.wgt",
       "not checked: cut.wgt: could not be opened as a package\n"
       "cut.wgt: could not check: there is neither a web source nor a Flash file in it\n",
       2},
      {"page.txt", "page.txt: could not check: there is neither a web source nor a Flash file in it\n", 2},
      {"movie.swf",
       "not checked: movie.swf: its tags are damaged or cut short\nmovie.swf: incomplete, 1 part was not checked\n", 3},
      {"--allow-incomplete movie.swf", "movie.swf: incomplete, 1 part was not checked\n", 0},
      {"--allow-incomplete movie.swf " + undocumented, "movie.swf: incomplete", 1},
      {"movie.swf " + undocumented, "1 use of", 1},
      {"www movie.swf", "movie.swf: incomplete", 3},
      {"missing.wgt " + undocumented, "1 use of", 2},
      {"www explain www 2>&1", "www", 2},
      {"missing.wgt www", "www: clean: no call on a plug-in object was found\n", 2},
      {"2>&1", "APPLICATION is required", 2},
      {"--no-such-option www 2>&1", "--no-such-option", 2},
      {"--help", "Exit status", 0},
  };
  for (const Row& row : rows) {
    const Output output = check(row.arguments);
    EXPECT_EQ(output.status, row.status) << row.arguments;
    EXPECT_NE(output.text.find(row.part), std::string::npos) << output.text;
  }
}

TEST_F(Checker, NamesCannotForgeLines) {
  write("www/index.html", kPage);
  write("www/%s%n [x] \xFF\n\x1B.js", kCall);
  EXPECT_EQ(check("--device www").text,
            "www/%s%n [x] \\xff\\x0a\\x1b.js:3:2: undocumented API 'GetSerial' on MORVANE-NAVERTIX-TUNER (variable)\n"
            "www: 1 use of undocumented APIs\n" +
                kDeviceRules);
}

TEST_F(Checker, ExplainsAllThatTheEngineKnows) {
  write("www/index.html", kPage);
  write("www/a.js", kCall + "x.\xE4 = 1; $('tv').Run(1); /* */ function g(b) { var o = $('tv'); (o.Open()); }");
  fs::copy_file(kExamples + "/nested.wgt", "www/nested.wgt");
  write("www/\xE4.swf", "");
  const Output output = check("explain www");
  EXPECT_EQ(output.status, 0);
  const auto json = nlohmann::json::parse(output.text);
  EXPECT_EQ(json["code"], 1001);
  EXPECT_EQ(json["findings"].size(), 3U);  // on a variable, in the package, on a look-up
  EXPECT_EQ(json["findings"], json["resultList"]);
  EXPECT_EQ(json["verdict"], "findings");
  EXPECT_EQ(json["notChecked"][0]["part"], "www/\xC3\xA4.swf");
  EXPECT_NE(json["notChecked"][0]["reason"].get<std::string>().find("not a Flash file"), std::string::npos);
  EXPECT_EQ(json["log"][0]["function"], "APIAnalysis");
  EXPECT_EQ(json["log"][0]["text"], "Engine Version [140808_QX_1.30] ");
  EXPECT_EQ(json["extractedDirList"], (std::vector<std::string>{"/tmp/0", "/tmp/1"}));
  EXPECT_EQ(json["objectClassList"][0]["expression"], "MORVANE-NAVERTIX-TUNER");
  EXPECT_NE(json["worthfulSourceList"][0].get<std::string>().find("x.\xC3\xA4 = 1;"), std::string::npos);
  EXPECT_EQ(json["functionBlockList"][0]["header"], "function f()");
  bool nullExpression = false;
  for (const auto& call : json["foundCallList"])
    nullExpression = nullExpression || call["expression"].is_null();
  EXPECT_TRUE(nullExpression);
  for (const char* list : {"whiteAPIList", "worthfulExtList", "worthfulPathList", "cleanedSourceList", "objectTagList",
                           "objectIdList", "declareList", "embedsDeclareList", "objectVariableList", "flashCallList",
                           "lookupCandidateList", "objectAccessList", "embedsAccessList", "extractedFileList"}) {
    EXPECT_TRUE(json[list].is_array()) << list;
  }
}

TEST_F(Checker, NothingOfAnApplicationIsWritten) {
  const std::string inner =
      craftedZip({{"main.js", "function f() { var tv = document.getElementById('tv'); tv.GetSerial(); }", true}});
  const std::string page = "<object id='tv' classid='clsid:MORVANE-NAVERTIX-TUNER'></object>";
  write("app.wgt", craftedZip({{"www/index.html", page}, {"www/inner.zip", inner}}));
#ifdef TARVO_EMULATED
  const std::string bound;  // an emulator has files of its own
#else
  const std::string bound = "ulimit -f 0; ";
#endif
  for (const std::string command : {"", "--device --all ", "explain "}) {
    const Output output = runCommand(bound + "TMPDIR=/dev/null/none " CHECKER " " + command + "app.wgt 2>&1");
    EXPECT_EQ(output.status, command == "explain " ? 0 : 1) << output.text;
    EXPECT_NE(output.text.find("GetSerial"), std::string::npos);
  }
}

TEST_F(Checker, ADirectoryOfAKilledRunIsRemovedToo) {
  write("fault-hang.wgt", "");
  const pid_t checker = fork();
  if (checker == 0) {
    execl(CHECKER, CHECKER, "fault-hang.wgt", nullptr);
    _exit(127);
  }
  awaitRuns(1);
  kill(checker, SIGKILL);
  waitpid(checker, nullptr, 0);
  EXPECT_TRUE(isTidy());
}

}  // namespace

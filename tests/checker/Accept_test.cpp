// Methods and calls that are excepted for a run, and baselines: as a user gives them.

#include "checker/options/Accept.h"

#include <gtest/gtest.h>

#include <ctime>
#include <stdexcept>

#include "OwnDirectory.h"
#include "RunCommand.h"
#include "checker/formats/Wording.h"
#include "checker/options/UserError.h"
#include "checker/report/Characters.h"
#include "checker/report/ReportJson.h"
#include "checker/run/Inspection.h"

using Names = std::set<std::string>;
using Texts = std::vector<std::string>;

namespace {

using Accept = OwnDirectory;

TEST_F(Accept, TakesNamesFromListsAndFiles) {
  write("names", "\xEF\xBB\xBFGetC\r\n\r\n# GetX\n \tGetD  # why\n'Play'");
  write("empty", "");
  const Accepted accepted = readAccepted({"GetA", "GetB, 'Stop',"}, {"names", "empty"});
  EXPECT_EQ(accepted.names, (Names{"GetA", "GetB", "'Stop'", "GetC", "GetD", "'Play'"}));
  EXPECT_TRUE(accepted.calls.isEmpty());
  EXPECT_EQ(readAccepted({}, {}).names, Names{});
  EXPECT_THROW(readAccepted({" ,"}, {}), std::runtime_error);
  EXPECT_THROW(readAccepted({}, {"missing"}), std::runtime_error);
  EXPECT_THROW(readAccepted({}, {"/"}), std::runtime_error);
}

Finding callOf(const std::string& method, const std::string& plugin, const std::string& path) {
  Finding finding;
  finding.call.method = method;
  finding.call.plugin = plugin;
  finding.call.path = path;
  return finding;
}

TEST(AcceptedCalls, ExceptWhatTheyMeanAndNothingElse) {
  struct Row {
    std::string keys;
    Texts accepted;  // of the calls below
  };
  ApplicationReport report;
  report.application = "dist/\x1B[a].wgt";
  for (const char* path : {"/x.js", "/js/x.js"}) {
    for (const char* call : {"Get P", "Get Q", "Put P"})
      report.findings.push_back(
          callOf(std::string(call, 3), std::string(call + 4), report.application + "!" + std::string(path)));
  }
  const Texts all{"Get P x.js", "Get P js/x.js"};
  for (const Row& row : std::vector<Row>{
           {"plugin = 'P'", all},
           {"plugin = 'p'", {}},
           {"plugin = 'P'\nfile = '/x.js'", {all[0]}},
           {"plugin = 'P'\nfile = 'js/*'", {all[1]}},
           {"plugin = 'P'\nfile = '*.js'", all},
           {"plugin = 'P'\napplication = 'dist/\\\\x1b\\[a\\].wgt'", all},  // as the page of a report writes it
           {"plugin = 'P'\napplication = '*.wgt'", all},
           {"plugin = 'P'\napplication = 'dist/[a].wgt'", {}},
           {"plugin = 'P'\napplication = '/*.wgt'", {}},
           {"", {"Get P x.js", "Get Q x.js", "Get P js/x.js", "Get Q js/x.js"}},
           {"plugin = 'P'\nexpires = 2026-11-22", all},
           {"plugin = 'P'\nexpires = 2026-11-21", {}},
       }) {
    AcceptedCalls exceptions;
    exceptions.add("f.toml", "[[accept]]\nmethod = 'Get'\n" + row.keys, "2026-11-22");
    ApplicationReport judged = report;
    conclude(judged);
    exceptions.apply(judged);
    Texts accepted;
    for (const Finding& finding : judged.findings) {
      if (finding.status == Finding::Status::accepted)
        accepted.push_back(finding.call.method + " " + finding.call.plugin + " " +
                           pathIn(judged.application, finding.call.path));
    }
    EXPECT_EQ(Names(accepted.begin(), accepted.end()), Names(row.accepted.begin(), row.accepted.end())) << row.keys;
    EXPECT_EQ(exceptions.unused().size() + exceptions.expired().size(), row.accepted.empty() ? 1U : 0U) << row.keys;
  }
}

TEST(AcceptedCalls, OfFilesThatAreWrongAreRefusedWithTheirPlace) {
  for (const auto& [text, message] : std::vector<std::pair<std::string, std::string>>{
           {"[[accept]]\nmethod = 'A'\nexpires = '2026-01-01'", "f:3:11: 'expires' must be a date without quotes"},
           {"[[accept]]\nmethod = 3", "f:2:10: 'method' must be text"},
           {"[[accept]]\nplugin = 'P'", "f:1:1: an exception names a 'method'"},
           {"[[accept]]\nmethod = 'A'\nreasn = 'x'", "f:3:9: an exception has no 'reasn'; did you mean 'reason'?"},
           {"[[accept]]\nmethod = 'A'\nfile = 'a/**/b'", "f:3:8: 'file': '**' can stand at"},
           {"[[accept]]\nmethod = 'A'\napplication = ''", "f:3:15: 'application': it names no file"},
           {"[accept]\nmethod = 'A'", "f:1:1: there are [[accept]] tables only, and 'accept' is none"},
           {"all = true", "f:1:7: there are [[accept]] tables only, and 'all' is none"},
           {"GetA\n[[accept]]", "f:1:5: "},
           {"accept = [1]", "f:1:11: an exception is a table"},
       }) {
    AcceptedCalls exceptions;
    try {
      exceptions.add("f", text, "2026-11-22");
      ADD_FAILURE() << text;
    } catch (const UserError& error) {
      EXPECT_EQ(std::string(error.what()).substr(0, message.size()), message);
    }
  }
}

TEST(AcceptedCalls, ManyForManyApplicationsTakeNoTime) {
  std::string text;
  for (int i = 0; i < 10'000; ++i)
    text += "[[accept]]\nmethod = 'Get'\nplugin = 'P'\napplication = 'dist/app" + std::to_string(i / 20) +
            ".wgt'\nfile = '/" + std::to_string(i % 20) + ".js'\n";
  AcceptedCalls exceptions;
  exceptions.add("f", text, "2026-11-22");
  const std::clock_t start = std::clock();
  for (int i = 0; i < 500; ++i) {
    ApplicationReport report;
    report.application = "dist/app" + std::to_string(i) + ".wgt";
    for (int j = 0; j < 20; ++j)
      report.findings.push_back(callOf("Get", "P", report.application + "!/" + std::to_string(j) + ".js"));
    exceptions.apply(report);
    ASSERT_EQ(countOf(report, Finding::Status::accepted), 20U);
  }
  EXPECT_TRUE(exceptions.unused().empty());
  EXPECT_LT(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC, 30) << "every call asks every exception?";
}

// What stands behind an accepted call is not lost: an exception for one place makes no method a documented one.
TEST_F(Accept, ExceptionsStayInEveryReportWithTheirReason) {
  write("www/index.html",
        "<object id='tv' classid='MORVANE-NAVERTIX-TUNER'></object>\n"
        "<object id='av' classid='MORVANE-NAVERTIX-PLAYER'></object>\n");
  write("www/a.js",
        "function f() { var tv = $('tv'); tv.GetA(); tv.GetB(); }\n"
        "function g() { var av = $('av'); av.GetA(); }");
  const std::string entry = "[[accept]]\nmethod = 'GetA'\nplugin = 'MORVANE-NAVERTIX-TUNER'\n";
  write("tuner.toml", entry + "reason = 'agreed for \"F12\"'\nowner = 'Kim'\nexpires = 9999-12-31\n");
  write("old.toml", entry + "expires = 2001-01-01\n");
  write("other.toml", entry + "application = 'other'\n[[accept]]\nmethod = 'GetX'\nfile = 'a.js'\n");
  const std::string reason = "agreed for \"F12\" (Kim, until 9999-12-31)";
  struct Row {
    std::string options;
    int status;
    Texts parts;
  };
  for (const Row& row : std::vector<Row>{
           {"--accept-file tuner.toml www",
            1,
            {"www/a.js:1:34: note: undocumented API 'GetA' on MORVANE-NAVERTIX-TUNER (variable; accepted: " + reason,
             "www/a.js:1:45: undocumented API 'GetB'",
             "www/a.js:2:34: undocumented API 'GetA' on MORVANE-NAVERTIX-PLAYER (variable)",
             "www: 2 uses of undocumented APIs (1 accepted not counted)\n"}},
           {"--accept-file tuner.toml --accept GetA,GetB www", 0, {reason, "3 accepted\n"}},
           {"--accept-file old.toml www",
            1,
            {"tarvo-check: old.toml:1: the exception for 'GetA' expired on 2001-01-01\n",
             "; its exception expired on 2001-01-01)\n", "www: 3 uses"}},
           {"--accept-file other.toml www",
            1,
            {"tarvo-check: other.toml:5: no finding is of 'GetX', which is accepted\n",
             "tarvo-check: other.toml: 1 exception is for applications that were not checked\n", "www: 3 uses"}},
           {"--accept-file tuner.toml www", 1, {reason, "(1 accepted not counted)"}},
           {"--accept-file tuner.toml --store s www", 1, {reason, "(1 accepted not counted)"}},
           {"--accept-file tuner.toml --store s www", 1, {reason, "(1 accepted not counted)"}},  // from the store
           {"judge --store s --accept-file tuner.toml", 2, {"judge takes names of methods only"}},
       }) {
    const std::string command = row.options.rfind("judge", 0) == 0
                                    ? "judge --database " DATABASE + row.options.substr(5)
                                    : "--database " DATABASE " " + row.options;
    const Output output = runCommand(CHECKER " " + command + " 2>&1");
    EXPECT_EQ(output.status, row.status) << row.options << '\n' << output.text;
    for (const std::string& part : row.parts)
      EXPECT_NE(output.text.find(part), std::string::npos) << row.options << '\n' << part << '\n' << output.text;
  }
  for (const char* format : {"text", "json", "jsonl", "sarif", "junit", "html", "github", "gitlab"}) {
    const Output output = runCommand(CHECKER " --database " DATABASE " --accept-file tuner.toml --format " +
                                     std::string(format) + " www");
    EXPECT_NE(output.text.find("agreed for "), std::string::npos) << format << '\n' << output.text;
  }
  write("base.json", runCommand(CHECKER " --database " DATABASE " --accept-file tuner.toml --format json www").text);
  const Output withdrawn = runCommand(CHECKER " --database " DATABASE " --baseline base.json www");
  EXPECT_NE(withdrawn.text.find("www: 1 use of undocumented APIs (2 in the baseline"), std::string::npos);
}

TEST_F(Accept, AcceptedAndKnownCallsDoNotFail) {
  write("www/index.html", "<object id='tv' classid='MORVANE-NAVERTIX-TUNER'></object>\n");
  write("www/a.js", "function f() { var tv = $('tv'); tv.GetA(); tv.GetB(); }");
  nlohmann::ordered_json json = toJson(inspect("www", {DATABASE, false, false, {}}));
  write("stops.jsonl", json.dump());
  json = {{"version", 1}, {"applications", {toJson(inspect("www", {DATABASE, true, false, {}}))}}};
  write("all.json", json.dump());
  write("names", "GetB\n");
  struct Row {
    std::string options;
    int status;
    std::string part;
  } rows[] = {
      {"--accept GetA www", 1, "1 use of"},
      {"--accept GetA --accept-file names www", 0, "clean: 2 calls on 1 plug-in: 0 documented, 2 accepted\n"},
      {"--accept geta --all www", 1, "no finding is of 'geta', which is accepted\n"},
      {"--accept GetA,GetB www", 0, "2 accepted\n"},
      {"--accept , www", 2, "names no method"},
      {"--accept-file names --accept-file missing www", 2, "--accept-file 'missing' cannot be read: No such file"},
      {"--baseline all.json www", 0, "2 in the baseline\n"},
      {"--baseline stops.jsonl www", 1, "1 use of"},  // GetB is new: it stands behind a known one
      {"--baseline stops.jsonl --accept GetB www", 0, "1 accepted, 1 in the baseline\n"},
      {"--baseline names www", 2, "the baseline 'names' is no report"},
  };
  for (const Row& row : rows) {
    const Output output = runCommand(CHECKER " --database " DATABASE " " + row.options + " 2>&1");
    EXPECT_EQ(output.status, row.status) << row.options << '\n' << output.text;
    EXPECT_NE(output.text.find(row.part), std::string::npos) << row.options << '\n' << output.text;
  }
}

}  // namespace

// Methods that are excepted for a run, and baselines: as a user gives them.

#include "checker/options/Accept.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "OwnDirectory.h"
#include "RunCommand.h"
#include "checker/report/ReportJson.h"
#include "checker/run/Inspection.h"

using Names = std::set<std::string>;

namespace {

using Accept = OwnDirectory;

TEST_F(Accept, TakesNamesFromListsAndFiles) {
  write("names", "\xEF\xBB\xBFGetC\r\n\r\n# GetX\n \tGetD  # why\n'Play'");
  write("empty", "");
  EXPECT_EQ(acceptedNames({"GetA", "GetB, 'Stop',"}, {"names", "empty"}),
            (Names{"GetA", "GetB", "'Stop'", "GetC", "GetD", "'Play'"}));
  EXPECT_EQ(acceptedNames({}, {}), Names{});
  EXPECT_THROW(acceptedNames({" ,"}, {}), std::runtime_error);
  EXPECT_THROW(acceptedNames({}, {"missing"}), std::runtime_error);
  EXPECT_THROW(acceptedNames({}, {"/"}), std::runtime_error);
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
      {"--accept-file missing www", 2, "--accept-file 'missing' cannot be read: No such file"},
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

// Flow analysis in the program: what it adds to a report, and what it leaves alone. What it follows is tested in
// tests/flow.

#include <map>
#include <nlohmann/json.hpp>

#include "CheckerFixture.h"
#include "swf-assembler/Assembler.h"

namespace {

using Json = nlohmann::json;

constexpr const char* kScript =
    "function device() {\n var tv = document.getElementById('tv');\n tv.GetSerial();\n}\n"
    "var own = { GetModel: function () {} };\nown.GetModel();\n"
    "function ask(name) { return document.getElementById('tv')[name](); }\n"
    "ask('Get' + 'Uuid');\nask('GetChannel');\nask(new XMLHttpRequest().responseText);\n";

class FlowRun : public Checker {
 protected:
  FlowRun() {
    write("www/index.html", kPage + "<script src='a.js'></script>\n");
    write("www/a.js", kScript);
  }

  static Json reportOf(const std::string& options) {
    const Output output = check("--no-config --format json " + options + " www");
    EXPECT_EQ(output.status, 1) << output.text;
    return Json::parse(output.text)["applications"][0];
  }
};

TEST_F(FlowRun, AddsToWhatTheEngineFinds) {
  const Json engine = reportOf("--device --all");
  ASSERT_EQ(engine["findings"].size(), 1U);
  EXPECT_EQ(engine["findings"][0]["confidence"], "likely");
  const Json both = reportOf("--all");
  ASSERT_EQ(both["findings"].size(), 2U) << both;
  const Json& known = both["findings"][0];
  EXPECT_EQ(known["method"], "GetSerial");
  EXPECT_EQ(known["confidence"], "certain");
  EXPECT_EQ(known["onDevice"], true);
  EXPECT_EQ(known["fingerprint"], engine["findings"][0]["fingerprint"]);
  const Json& added = both["findings"][1];
  EXPECT_EQ(added["method"], "GetUuid");
  EXPECT_EQ(added["found"], "flow");
  EXPECT_EQ(added["onDevice"], false);
  EXPECT_EQ(added["line"], 7);
  EXPECT_EQ(added["trace"].front()["path"], "www/index.html");
  EXPECT_EQ(added["trace"].back()["path"], "www/a.js");
  EXPECT_EQ(both["rules"], (Json{"engine", "flow"}));
}

TEST_F(FlowRun, SaysThatNoPageLoadsAScript) {
  write("www/two.html", "<object id='player' classid='clsid:MORVANE-NAVERTIX-PLAYER'></object>\n");
  write("www/spare.js", "function f() { return document.getElementById('player').GetOld(); }\n");
  const Json findings = reportOf("")["findings"];
  std::map<std::string, bool> isSpare;
  for (const Json& finding : findings)
    isSpare[finding["method"]] = finding.dump().find("no page loads this script") != std::string::npos;
  EXPECT_EQ(isSpare, (std::map<std::string, bool>{{"GetOld", true}, {"GetSerial", false}, {"GetUuid", false}}));
}

TEST_F(FlowRun, SaysWhatNobodyCanTell) {
  const Json report = reportOf("");
  ASSERT_FALSE(report["undetermined"].empty());
  EXPECT_EQ(report["undetermined"][0]["line"], 7);
  EXPECT_NE(report["notChecked"].dump().find("a method is called whose name cannot be told"), std::string::npos);
}

TEST_F(FlowRun, ReadsWhatTheEngineDoesNotListOfMovies) {
  write("www/a.js", "");
  write("www/movie.swf",
        swf_assembler::assemble(
            "tag 59 bytes 46 00 {\nPush 0 \"tv\"\nGetVariable\nPush \"GetOld\"\nCallMethod\nPop\n"
            "Push \"location\"\nGetVariable\nPush \"hash\"\nGetMember\nPush \"\"\nGetURL2 0\n}\nend\n"));
  EXPECT_EQ(check("--no-config --device www").status, 3);
  const Json report = reportOf("");
  EXPECT_EQ(report["notChecked"], Json::array());
  ASSERT_EQ(report["findings"].size(), 1U) << report;
  EXPECT_EQ(report["findings"][0]["path"], "www/movie.swf");
  EXPECT_EQ(report["findings"][0]["code"], "tv.GetOld()");
  EXPECT_FALSE(report["findings"][0].contains("line"));
}

TEST_F(FlowRun, AcceptsAndKnowsLikeTheEngine) {
  EXPECT_EQ(check("--no-config --allow-incomplete --accept GetSerial,GetUuid www").status, 0);
  ASSERT_EQ(check("--no-config --output base.json www").status, 1);
  EXPECT_EQ(check("--no-config --allow-incomplete --baseline base.json www").status, 0);
}

// The second report is made of what the store has.
TEST_F(FlowRun, FindsTheSameInAStore) {
  for (const char* run : {"checked", "stored"}) {
    const Json report = reportOf("--store s");
    EXPECT_EQ(report["rules"], (Json{"engine", "flow"})) << run;
    ASSERT_EQ(report["findings"].size(), 2U) << run << report;
    EXPECT_EQ(report["findings"][0]["confidence"], "certain") << run;
    EXPECT_EQ(report["findings"][1]["method"], "GetUuid") << run;
    EXPECT_EQ(report["findings"][1]["found"], "flow") << run;
    EXPECT_EQ(report["undetermined"].size(), 1U) << run;
  }
  EXPECT_NE(check("catalogue --store s --uses TUNER.GetChannel").text.find("www"), std::string::npos);
  EXPECT_EQ(reportOf("--device --store s")["findings"].size(), 1U) << "other rules, another result";
}

// Where the engine stops, a call counts if it is confirmed; of what only the engine sees there, the number is told.
TEST_F(FlowRun, ConfirmsCallsBehindStops) {
  write("www/a.js",
        "function f() {\n var tv = document.getElementById('tv');\n tv.GetA();\n tv.GetB();\n"
        " return ' tv.GetC(); ';\n}\n");
  const Json report = reportOf("");
  std::map<std::string, bool> isOnDevice;
  for (const Json& finding : report["findings"])
    isOnDevice[finding["method"]] = finding["onDevice"];
  EXPECT_EQ(isOnDevice, (std::map<std::string, bool>{{"GetA", true}, {"GetB", false}})) << report;
  EXPECT_EQ(report["behindStops"], 1);
  EXPECT_EQ(reportOf("--all")["findings"].size(), 3U);
}

TEST_F(FlowRun, TellsCallsOnOneLineApart) {
  write("www/a.js", "var a = document.getElementById('tv'), b = [a]; b[0].GetOld(1); b[0].GetOld(2);\n");
  const Json report = reportOf("");
  ASSERT_EQ(report["findings"].size(), 2U) << report;
  EXPECT_NE(report["findings"][0]["column"], report["findings"][1]["column"]);
}

}  // namespace

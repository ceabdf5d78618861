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
  const Json engine = reportOf("--all");
  ASSERT_EQ(engine["findings"].size(), 1U);
  EXPECT_EQ(engine["findings"][0]["confidence"], "likely");
  const Json both = reportOf("--all --flow");
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
  const Json findings = reportOf("--flow")["findings"];
  std::map<std::string, bool> isSpare;
  for (const Json& finding : findings)
    isSpare[finding["method"]] = finding.dump().find("no page loads this script") != std::string::npos;
  EXPECT_EQ(isSpare, (std::map<std::string, bool>{{"GetOld", true}, {"GetSerial", false}, {"GetUuid", false}}));
}

TEST_F(FlowRun, SaysWhatNobodyCanTell) {
  const Json report = reportOf("--flow");
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
  EXPECT_EQ(check("--no-config www").status, 3);
  const Json report = reportOf("--flow");
  EXPECT_EQ(report["notChecked"], Json::array());
  ASSERT_EQ(report["findings"].size(), 1U) << report;
  EXPECT_EQ(report["findings"][0]["path"], "www/movie.swf");
  EXPECT_EQ(report["findings"][0]["code"], "tv.GetOld()");
  EXPECT_FALSE(report["findings"][0].contains("line"));
}

TEST_F(FlowRun, AcceptsAndKnowsLikeTheEngine) {
  EXPECT_EQ(check("--no-config --flow --allow-incomplete --accept GetSerial,GetUuid www").status, 0);
  ASSERT_EQ(check("--no-config --flow --output base.json www").status, 1);
  EXPECT_EQ(check("--no-config --flow --allow-incomplete --baseline base.json www").status, 0);
  EXPECT_EQ(check("--no-config --flow --store s www").status, 2) << "a store has what the engine finds, and no more";
}

}  // namespace

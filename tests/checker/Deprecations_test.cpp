// Methods that a database documents and advises against: shown, and counted if that is asked for.

#include "checker/run/Deprecations.h"

#include <nlohmann/json.hpp>

#include "CheckerFixture.h"

namespace {

using Json = nlohmann::json;

class Deprecated : public Checker {
 protected:
  Deprecated() {
    write("db.xml",
          "<APIAnalysisDB><g classid='MORVANE-NAVERTIX-TUNER'>\n"
          "<Function since='1.0' deprecated='4.0' replacement='GetLevel'>GetVolume</Function>\n"
          "<Function deprecated='no'>GetLevel</Function><Function>Tune</Function></g>\n"
          "<g classid='MORVANE-NAVERTIX-AUDIO'><Function>GetVolume</Function>\n"
          "<Function deprecated='yes'>GetMute</Function></g></APIAnalysisDB>\n");
    write("www/index.html",
          kPage + "<object id='av' classid='MORVANE-NAVERTIX-AUDIO'></object>\n<script src='a.js'></script>");
    write("www/a.js",
          "function f() {\n var tv = document.getElementById('tv');\n tv.GetVolume(); tv.GetLevel(); tv.GetMute();\n"
          " var av = document.getElementById('av');\n av.GetVolume();\n}\n");
  }

  static Output check(const std::string& arguments) {
    return Checker::check("--no-config --database db.xml " + arguments + " 2>&1");
  }
};

// A method is deprecated for the plug-in whose group says so; for one that has no such method, if all groups say so.
TEST_F(Deprecated, CallsAreShownAndCountedOnlyIfThatIsAskedFor) {
  const std::string volume = "deprecated API 'GetVolume' on MORVANE-NAVERTIX-TUNER (variable";
  const std::string advice = "; deprecated since 4.0; call 'GetLevel' instead)\n";
  const std::string mute = "deprecated API 'GetMute' on MORVANE-NAVERTIX-TUNER (variable";
  const std::string shown = "www/a.js:3:2: note: " + volume + advice + "www/a.js:3:33: note: " + mute + ")\n";
  struct Row {
    std::string arguments;
    int status;
    std::string text;
  };
  std::vector<Row> rows{
      {"--device www", 0, shown + "www: clean: 4 calls on 2 plug-ins, all documented; 2 deprecated\n"},
      {"--device --deny-deprecated www", 1,
       "www/a.js:3:2: " + volume + advice + "www/a.js:3:33: " + mute + ")\nwww: 2 uses of deprecated APIs\n"},
      {"--device --deny-deprecated --accept GetVolume,GetMute www", 0,
       "www/a.js:3:2: note: " + volume + "; accepted" + advice + "www/a.js:3:33: note: " + mute +
           "; accepted)\nwww: clean: 4 calls on 2 plug-ins: 2 documented, 2 accepted\n"},
      {"--device --store s www", 0, shown + "www: clean: 4 calls on 2 plug-ins, all documented; 2 deprecated\n"},
      {"--device --store s www", 0, shown + "www: clean: 4 calls on 2 plug-ins, all documented; 2 deprecated\n"},
      {"--device --store s --deny-deprecated www", 1, "www/a.js:3:2: " + volume + advice},
  };
  if (kHasFlow) {
    rows.push_back({"www", 0,
                    "www/a.js:3:2: note: " + volume + "; certain" + advice + "www/a.js:3:33: note: " + mute +
                        "; certain; documented for MORVANE-NAVERTIX-AUDIO, not for"});
    rows.push_back(
        {"--deny-deprecated --per-plugin www", 1,
         "www/a.js:3:2: " + volume + "; certain" + advice +
             "www/a.js:3:33: API 'GetMute' is documented for another plug-in, not for MORVANE-NAVERTIX-TUNER"});
  }
  for (const Row& row : rows) {
    const Output output = check(row.arguments);
    EXPECT_EQ(output.status, row.status) << row.arguments;
    expectReports(output.text, row.text);
  }
  if (!kHasFlow) return;
  write("www/b.js", "function g(el) { el.GetVolume(); }\ng(document.getElementById('tv'));\n");
  write("www/index.html", kPage + "<script src='b.js'></script>");
  write("www/a.js", kCall);
  const Output flow = check("--deny-deprecated www");
  EXPECT_NE(flow.text.find("www/b.js:1:18: " + volume.substr(0, volume.rfind('(')) + "(flow; certain" + advice),
            std::string::npos)
      << flow.text;
  EXPECT_NE(flow.text.find("www: 1 use of undocumented APIs, 1 use of deprecated APIs\n"), std::string::npos)
      << flow.text;
}

TEST_F(Deprecated, CallsAreInEveryReportAndKnownInBaselines) {
  for (const char* format : {"json", "jsonl", "sarif", "junit", "html", "github"})
    EXPECT_NE(check(std::string("--format ") + format + " www").text.find("deprecated since 4.0; call "),
              std::string::npos)
        << format;
  const Json sarif = Json::parse(check("--format sarif www").text)["runs"][0];
  const Json& result = sarif["results"][0];
  EXPECT_EQ(result["level"], "note");
  EXPECT_EQ(sarif["tool"]["driver"]["rules"][result["ruleIndex"].get<std::size_t>()]["id"], result["ruleId"]);
  EXPECT_NE(result["ruleId"], "TARVO1");
  EXPECT_EQ(check("--format gitlab www").text, "[]\n");
  EXPECT_EQ(Json::parse(check("--deny-deprecated --format gitlab www").text)[0]["check_name"], "deprecated-api");
  write("base.json", check("--deny-deprecated --format json www").text);
  EXPECT_EQ(check("--deny-deprecated --baseline base.json www").status, 0);
}

// The browser tells of every call whose name is deprecated for any plug-in; reports have those that are.
TEST(Deprecations, AreThoseOfThePlugin) {
  DatabaseListing database;
  DatabaseFunction old{"Get", 1};
  old.isDeprecated = true;
  database.groups = {{"P", 1, {old, {"Put", 1}}}, {"Q", 1, {{"Get", 1}}}, {"R", 1, {{"Run", 1}}}};
  const Deprecations deprecations(database, true);
  EXPECT_TRUE(deprecations.has("P", "Get"));
  for (const auto& [plugin, method] : {std::pair{"Q", "Get"}, {"R", "Get"}, {"P", "Put"}, {"P", "None"}})
    EXPECT_FALSE(deprecations.has(plugin, method)) << plugin << ' ' << method;
  EXPECT_EQ(deprecations.methods(), std::set<std::string>{"Get"});
  Finding finding;
  finding.call.plugin = "P";
  finding.call.method = "Get";
  finding.confidence = Finding::Confidence::possible;
  deprecations.judge(finding);
  EXPECT_EQ(finding.kind, Finding::Kind::deprecated);
  EXPECT_EQ(finding.status, Finding::Status::noted) << "what is only possible never counts";
}

}  // namespace

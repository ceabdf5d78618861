#include "trial/Places.h"

#include "trial/Coverage.h"
#include "trial/Findings.h"
#include "trial/TrialFixture.h"

namespace {

using trial::Json;

class PlacesOfStacks : public testing::Test {
 protected:
  trial::Input input_ =
      applicationOf("<p>\n<b onclick='x.Call()'\n>", {{"www/a.js", "one\n  x.Call();\n"}, {"www/jquery.js", "$"}});
  trial::PackageServer server_{input_, "MARK"};
  trial::Places places_{server_};

  void parsed(const char* id, const std::string& url, Json stack = Json()) {
    places_.add({{"scriptId", id},
                 {"embedderName", url},
                 {"startLine", 0},
                 {"stackTrace", {{"callFrames", std::move(stack)}}}});
  }
  static Json frame(const char* id, int line, int column, const char* function = "") {
    return {{"scriptId", id}, {"lineNumber", line}, {"columnNumber", column}, {"functionName", function}};
  }
  static std::string textOf(const trial::Frame& frame) {
    return frame.path + ':' + std::to_string(frame.line) + ':' + std::to_string(frame.column);
  }
  std::string placed(const Json& frames) { return textOf(trial::placeOf(places_.frames(frames, "Call"))); }
};

TEST_F(PlacesOfStacks, AreInnermostInOwnCode) {
  parsed("1", server_.urlOf("www/a.js"));
  parsed("2", server_.urlOf("www/jquery.js"));
  parsed("3", "");
  parsed("4", "", Json::array({frame("1", 1, 2)}));
  parsed("5", server_.urlOf("www/index.html"));
  EXPECT_EQ(placed(Json::array({frame("9", 0, 0), frame("2", 0, 0), frame("1", 1, 4)})), "www/a.js:2:5");
  EXPECT_EQ(placed(Json::array({frame("2", 0, 0)})), "www/jquery.js:1:1");
  EXPECT_EQ(placed(Json::array({frame("3", 5, 5), frame("1", 0, 0)})), "www/a.js:1:1");
  EXPECT_EQ(placed(Json::array({frame("4", 7, 7)})), "www/a.js:2:3");
  EXPECT_EQ(placed(Json::array({frame("5", 2, 1, "onclick")})), "www/index.html:2:15");
  EXPECT_EQ(placed(Json::array({frame("1", 0, 0), frame("1", 1, 4)})), "www/a.js:2:5");  // through a helper
  EXPECT_EQ(placed(Json("nonsense")), ":0:0");
  EXPECT_EQ(placed(Json::array({1, Json::object(), {{"scriptId", 1}}, frame("1", -5, -5)})), "www/a.js:1:1");
}

TEST_F(PlacesOfStacks, CodeThatMadeItselfEnds) {
  parsed("1", "", Json::array({frame("2", 0, 0)}));
  parsed("2", "", Json::array({frame("1", 0, 0), frame("2", 0, 0)}));
  EXPECT_EQ(placed(Json::array({frame("1", 0, 0)})), ":0:0");
}

TEST_F(PlacesOfStacks, TellWhatWasMade) {
  parsed("1", server_.urlOf("www/index.html"));
  parsed("2", "", Json::array({frame("1", 0, 0)}));
  const auto isMade = [&](const Json& frame, const char* method) {
    return places_.frames(Json::array({frame}), method).at(0).isMade;
  };
  EXPECT_TRUE(isMade(frame("2", 0, 0), "Call"));
  EXPECT_TRUE(isMade(frame("1", 0, 1, "onclick"), "Other"));   // no tag there has one
  EXPECT_FALSE(isMade(frame("1", 2, 0, "onclick"), "Other"));  // one that computes the name
}

TEST(WrittenPlace, IsTheBestOne) {
  struct Row {
    const char* code;
    int line;  // 0: none
    int user = 0;
  };
  for (const Row& row : {
           Row{"x.Call();\ny.Call(2);", 1},
           Row{"x.Call();\nlater(x.Call);", 2},
           Row{"later(x.Call);\nbox.innerHTML = '<a onclick=x.Call()>';", 2},
           Row{"// x.Call()\n/* x.Call() */ one();\n'//'; x.Call();", 3},
           Row{"var it = 'Call';\nx.Callx(); xCall();", 0},
           Row{"\nx.Execute('Call');", 2},
           Row{"run('x.Call()');\nrun(text);\n'x.Call()'", 1, 2},
           Row{"run(text);\n'x.Call()'", 0, 1},
       }) {
    const std::vector<trial::File> files{{"a.js", row.code}, {"vendor/b.js", "'x.Call()'"}};
    const trial::Frame user{"", row.user == 0 ? "" : "a.js", row.user, 1};
    EXPECT_EQ(trial::writtenPlace(files, "Call", user).line, row.line) << row.code;
  }
  const std::string page = "<!-- x.Call() -->\n<script>x.Call()</script>\n<b ng-click='x.Call()'>";
  EXPECT_EQ(trial::writtenPlace({{"a.html", page}}, "Call", {}).line, 3);
}

TEST(Columns, CountCharactersOfUtf8) {
  EXPECT_EQ(trial::characterColumn("ab", 1, ""), 2);
  EXPECT_EQ(trial::characterColumn("\xC3\xA4x", 1, "x"), 2);
  EXPECT_EQ(trial::characterColumn("\xC3\xA4x", 2, "x"), 2);          // a page that is read byte by byte
  EXPECT_EQ(trial::characterColumn("\xF0\x9F\x98\x80x", 2, "x"), 2);  // two units
  EXPECT_EQ(trial::characterColumn("\xF0", 1000, "x"), 2);
}

TEST(Libraries, AreKnownByName) {
  for (const char* path : {"js/jquery-1.8.min.js", "lib/Backbone.js", "node_modules/own/index.js", "a/vendor/x.js"})
    EXPECT_TRUE(trial::isLibrary(path)) << path;
  for (const char* path : {"js/main.js", "js/reactor.js", "angular/index.html", "js/myjquery.js", "devendor/x.js"})
    EXPECT_FALSE(trial::isLibrary(path)) << path;
}

TEST(Messages, AreTheRecordersOnly) {
  const auto kindOf = [](const std::string& text) { return trial::messageOf(text, "SECRET").kind; };
  EXPECT_EQ(kindOf("SECRETcall\n\"P\"\n\"M\"\n1, 2"), trial::Message::Kind::call);
  EXPECT_EQ(kindOf("call\n\"P\"\n\"M\"\n"), trial::Message::Kind::none);
  EXPECT_EQ(kindOf("SECRET"), trial::Message::Kind::none);
  EXPECT_EQ(kindOf("SECRETother\n"), trial::Message::Kind::none);
  EXPECT_EQ(trial::messageOf("SECRETcall\n{\n[]\n", "SECRET").method, "");
}

TEST_F(PlacesOfStacks, CallsAreToldOncePerPlaceAndMarksAreHidden) {
  parsed("1", server_.urlOf("www/a.js"));
  trial::Findings findings("MARK", input_.files);
  const auto add = [&](trial::Message::Kind kind, const char* method, const char* arguments, int line) {
    findings.add({kind, "P", method, arguments}, Json::array({frame("1", line, 0)}), places_);
  };
  add(trial::Message::Kind::call, "B", "2", 1);
  add(trial::Message::Kind::call, "B", "1", 1);
  add(trial::Message::Kind::call, "A", "", 1);
  add(trial::Message::Kind::call, "B", "\"MARK\"", 0);
  add(trial::Message::Kind::call, "Get", "", 0);  // the next one, with nothing put in
  add(trial::Message::Kind::unknown, "GetMARK", "", 0);
  add(trial::Message::Kind::unknown, "MARKGet", "", 0);
  std::string text;
  for (const trial::Call& call : findings.calls())
    text += call.method + '(' + call.arguments + ") " + std::to_string(call.place.line) + '\n';
  EXPECT_EQ(text, "B(\"…\") 1\nA() 2\nB(1) 2\n");
  ASSERT_EQ(findings.undetermined().size(), 1U);
  EXPECT_EQ(findings.undetermined()[0].method, "Get…");
  for (int i = 0; i < 6000; ++i)
    add(trial::Message::Kind::call, std::to_string(i).c_str(), "", 0);
  EXPECT_TRUE(findings.isCut());
  EXPECT_EQ(findings.calls().size(), 4999U);  // without "Get"
}

TEST_F(PlacesOfStacks, CoverageAddsUpAndStandsNonsense) {
  parsed("1", server_.urlOf("www/a.js"));
  trial::Coverage coverage;
  const auto function = [](int begin, int end, int count) {
    return Json{{"ranges", Json::array({{{"startOffset", begin}, {"endOffset", end}, {"count", count}}})}};
  };
  const auto scripts = [&](Json functions) {
    return Json::array({{{"scriptId", "1"}, {"functions", std::move(functions)}}});
  };
  EXPECT_EQ(
      coverage.add(
          scripts(Json::array({function(0, 100, 1), function(10, 30, 0), function(15, 20, 0), function(40, 50, 0)})),
          places_),
      1U);
  EXPECT_EQ(coverage.add(scripts(Json::array({function(40, 50, 2), 7, Json::object()})), places_), 1U);
  EXPECT_EQ(coverage.add(Json("x"), places_), 0U);
  EXPECT_EQ(coverage.add(Json::array({1, Json::object(), {{"scriptId", 3}, {"functions", Json::array()}}}), places_),
            0U);
  const auto files = coverage.files(input_.files);
  ASSERT_EQ(files.size(), 2U);
  EXPECT_EQ(files[0].functions, 4U);
  EXPECT_EQ(files[0].functionsRun, 2U);
  EXPECT_EQ(files[0].bytes, 100U);
  EXPECT_EQ(files[0].bytesRun, 80U);
  EXPECT_EQ(files[1].bytesRun, 0U);  // never loaded
}

}  // namespace

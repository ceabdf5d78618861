// What a trial adds to a report.

#include "checker/run/TrialRun.h"

#include <gtest/gtest.h>

namespace {

const std::string kScript = "one();\n  var x = tv.Get(\n1);\n  tv.New(2);\n";

ReportedFiles files() {
  ReportedFiles files;
  files.add("www/a.js", "app.wgt!/www/a.js", kScript);
  return files;
}

trial::Call seen(const char* method, int line, int column) {
  const trial::Frame place{"show", "www/a.js", line, column};
  return {"P", method, "1", place, {place, {"", "www/a.js", 1, 1}}};
}

ApplicationReport withEngineFinding() {
  ApplicationReport report;
  report.application = "app.wgt";
  Finding finding;
  finding.call.path = "app.wgt!/www/a.js";
  finding.call.place = {2, 11};
  finding.call.method = "Get";
  finding.call.code = "tv.Get(\n1)";
  finding.engineText = "../www/a.js(2)\n";
  report.findings.push_back(finding);
  return report;
}

TEST(TrialRun, ConfirmsAndAdds) {
  ApplicationReport report = withEngineFinding();
  trial::Result result;
  result.browser = "Chrome/1";
  result.calls = {seen("Get", 2, 14), seen("New", 4, 6)};
  result.undetermined = {seen("…", 4, 6)};
  result.incomplete = {{"www/a.js", "its time was up"}, {"", "more"}};
  result.coverage = {{"www/a.js", 2, 1, 20, 10}};
  addTrial(result, files(), {}, {}, report);
  ASSERT_EQ(report.findings.size(), 2U);
  const Finding& old = report.findings[0];
  EXPECT_EQ(old.confidence, Finding::Confidence::confirmed);
  EXPECT_EQ(old.engineText, "../www/a.js(2)\n");
  EXPECT_TRUE(old.isOnDevice);
  EXPECT_EQ(old.arguments, "1");
  const Finding& added = report.findings[1];
  EXPECT_EQ(added.call.found, Call::Found::trial);
  EXPECT_EQ(added.call.path, "app.wgt!/www/a.js");
  EXPECT_EQ(added.call.code, "New(2)");
  EXPECT_EQ(added.call.excerpt.text.substr(added.call.mark, added.call.markLength), "New(2)");
  EXPECT_EQ(added.call.before.size(), 2U);
  EXPECT_FALSE(added.isOnDevice);
  ASSERT_EQ(added.trace.size(), 2U);
  EXPECT_EQ(added.trace[0].text, "outside of any named function");
  EXPECT_EQ(added.trace[1].source, "  tv.New(2);");
  EXPECT_EQ(report.undetermined.size(), 1U);
  ASSERT_EQ(report.notChecked.size(), 2U);
  EXPECT_EQ(report.notChecked[0].part + ": " + report.notChecked[0].reason,
            "app.wgt!/www/a.js: trial incomplete: its time was up");
  EXPECT_EQ(report.notChecked[1].part, "app.wgt");
  EXPECT_EQ(report.coverage[0].path, "app.wgt!/www/a.js");
  EXPECT_EQ(report.rules.back(), "trial");
}

// What only the trial's own calls led to is a finding, marked, and confirms nothing.
TEST(TrialRun, CallsOfUncalledCodeAreMarked) {
  ApplicationReport report = withEngineFinding();
  trial::Result result;
  result.calls = {seen("Get", 2, 14), seen("New", 4, 6)};
  for (trial::Call& call : result.calls)
    call.isForced = true;
  addTrial(result, files(), {}, {}, report);
  ASSERT_EQ(report.findings.size(), 2U);
  EXPECT_EQ(report.findings[0].confidence, Finding::Confidence::likely);
  EXPECT_EQ(report.findings[0].call.found, Call::Found::variable);
  EXPECT_TRUE(report.findings[0].trace.empty());
  EXPECT_EQ(report.findings[1].confidence, Finding::Confidence::likely);
  EXPECT_EQ(report.findings[1].call.found, Call::Found::trialUncalled);
  EXPECT_NE(report.findings[1].trace.front().text.find("nobody showed"), std::string::npos);
}

TEST(TrialRun, OnlyAdds) {
  ApplicationReport report = withEngineFinding();
  trial::Result result;
  addTrial(result, files(), {}, {}, report);
  EXPECT_EQ(report.findings.size(), 1U);
  EXPECT_EQ(report.findings[0].confidence, Finding::Confidence::likely);
  result.failure = "no browser";
  addTrial(result, files(), {}, {}, report);
  EXPECT_EQ(report.findings.size(), 1U);
  ASSERT_EQ(report.notChecked.size(), 1U);
  EXPECT_EQ(report.notChecked[0].reason, "no trial run: no browser");
}

TEST(TrialRun, AcceptedMethodsStayAccepted) {
  ApplicationReport report;
  trial::Result result;
  result.calls = {seen("New", 4, 6), seen("Far", 400, 600)};
  addTrial(result, files(), {"New"}, {}, report);
  ASSERT_EQ(report.findings.size(), 2U);
  EXPECT_EQ(report.findings[0].status, Finding::Status::accepted);
  EXPECT_EQ(report.findings[1].status, Finding::Status::reported);
  EXPECT_EQ(report.findings[1].call.code, "");
}

TEST(TrialRun, BeginsWhereTheApplicationDoes) {
  using Pages = std::vector<std::string>;
  const auto pages = [](std::vector<trial::File> files) { return startPages(files); };
  EXPECT_EQ(pages({{"config.xml", "<widget><content src='www/main.html'/><content src=\"../x\"/></widget>"},
                   {"www/main.html", ""},
                   {"a/b/index.html", ""},
                   {"z/index.html", ""}}),
            (Pages{"www/main.html", "z/index.html", "a/b/index.html"}));
  EXPECT_EQ(pages({{"b.html", ""}, {"a.htm", ""}}), (Pages{"a.htm"}));
  EXPECT_EQ(pages({{"config.xml", "<content src='"}, {"a.js", ""}}), (Pages{}));
}

}  // namespace

// Findings that an earlier report has need not fail a check; anything else must.

#include "checker/options/Baseline.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>
#include <stdexcept>

#include "checker/report/ReportJson.h"

using Status = Finding::Status;

namespace {

Finding finding(const std::string& fingerprint, const std::string& method = "GetA", Status status = Status::reported,
                const std::string& plugin = "TUNER") {
  Finding made;
  made.call.method = method;
  made.call.plugin = plugin;
  made.fingerprint = fingerprint;
  made.status = status;
  return made;
}

ApplicationReport report(const std::string& application, const std::vector<Finding>& findings) {
  ApplicationReport made;
  made.application = application;
  made.findings = findings;
  conclude(made);
  return made;
}

class Baselines : public ::testing::Test {
 protected:
  ~Baselines() override { std::remove(path_.c_str()); }

  Baseline read(const std::string& text) const {
    std::ofstream(path_, std::ios::binary) << text;
    return Baseline(path_);
  }

  Baseline baseline(const std::vector<ApplicationReport>& reports) const {
    nlohmann::ordered_json json{{"version", 1}, {"applications", nlohmann::json::array()}};
    for (const ApplicationReport& made : reports)
      json["applications"].push_back(toJson(made));
    return read(json.dump());
  }

  std::string path_ = testing::TempDir() + "tarvo-baseline-test-" + std::to_string(getpid());
};

TEST_F(Baselines, MarkWhatTheyHaveAndNothingElse) {
  struct Row {
    const char* what;
    std::vector<ApplicationReport> known;
    ApplicationReport now;
    bool isOnly;
    std::vector<bool> isKnown;
  } rows[] = {
      {"equal", {report("a/x.wgt", {finding("1")})}, report("b/x.wgt", {finding("1"), finding("2")}), false, {1, 0}},
      {"another method", {report("x", {finding("1")})}, report("x", {finding("1", "GetB")}), true, {0}},
      {"another plug-in",
       {report("x", {finding("1")})},
       report("x", {finding("1", "GetA", Status::reported, "PLAYER")}),
       true,
       {0}},
      {"one excuses one", {report("x", {finding("1")})}, report("x", {finding("1"), finding("1")}), true, {1, 0}},
      {"a folder", {report("a/www/", {finding("1")}), report("b", {})}, report("www", {finding("1")}), true, {1}},
      {"another name", {report("v1.wgt", {finding("1")})}, report("v2.wgt", {finding("1")}), true, {1}},
      {"another name of several", {report("v1.wgt", {finding("1")})}, report("v2.wgt", {finding("1")}), false, {0}},
      {"another name than several",
       {report("v1.wgt", {finding("1")}), report("v3.wgt", {})},
       report("v2.wgt", {finding("1")}),
       true,
       {0}},
      {"the very name counts before others",
       {report("a/x.wgt", {finding("1")}), report("b/x.wgt", {finding("2")})},
       report("b/x.wgt", {finding("1"), finding("2")}),
       false,
       {0, 1}},
      {"of several of that name, the one with most",
       {report("a/x.wgt", {finding("1")}), report("b/x.wgt", {finding("1")})},
       report("x.wgt", {finding("1"), finding("1")}),
       false,
       {1, 0}},
      {"known then", {report("x", {finding("1", "GetA", Status::known)})}, report("x", {finding("1")}), true, {1}},
      {"accepted then",
       {report("x", {finding("1", "GetA", Status::accepted)})},
       report("x", {finding("1")}),
       true,
       {0}},
  };
  for (Row& row : rows) {
    baseline(row.known).apply(row.now, row.isOnly);
    bool hasNew = false;
    for (std::size_t i = 0; i < row.isKnown.size(); ++i) {
      EXPECT_EQ(row.now.findings[i].status == Status::known, row.isKnown[i]) << row.what << i;
      hasNew = hasNew || !row.isKnown[i];
    }
    EXPECT_EQ(row.now.verdict, hasNew ? Verdict::findings : Verdict::clean) << row.what;
  }
  ApplicationReport accepted = report("x", {finding("1", "GetA", Status::accepted)});
  baseline({report("x", {finding("1")})}).apply(accepted, true);
  EXPECT_EQ(accepted.findings[0].status, Status::accepted);
}

TEST_F(Baselines, AreReadFromBothFormats) {
  const std::string line = toJson(report("x", {finding("1")})).dump();
  for (const std::string& text : {"{\"version\": 1, \"applications\": [" + line + "]}", line, line + "\r\n\n",
                                  "{\"version\": 1}\n" + line + "\n{\"summary\": {}}\n"}) {
    ApplicationReport now = report("x", {finding("1")});
    read(text).apply(now, true);
    EXPECT_EQ(now.verdict, Verdict::clean) << text;
  }
  EXPECT_THROW(const Baseline missing("/no/such/file"), std::runtime_error);
  for (const std::string& text :
       {std::string(), std::string("{}"), std::string("[1]"), std::string("3"), std::string("<html>"),
        "{\"applications\": [" + line + "]}", "{\"version\": 2, \"applications\": [" + line + "]}",
        std::string("{\"version\": 1, \"applications\": 3}"),
        std::string("{\"version\": 1, \"applications\": [{\"application\": 1}]}"), line.substr(0, line.size() / 2),
        line + "\n" + line.substr(1), std::string(1'000'000, '[')}) {
    EXPECT_THROW(read(text), std::runtime_error) << text.substr(0, 100);
  }
}

}  // namespace

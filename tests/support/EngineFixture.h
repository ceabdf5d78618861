#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "APICheckEngine/APIAnalysis.h"
#include "platform/Paths.h"

using FlashEngine_1_00::APIAnalysis;
using FlashEngine_1_00::SWFStateMentInfo;
using Texts = std::vector<std::string>;

// One application and one engine in a directory of the test's own, removed after it.
//
//   addHtml("<object id='tv' classid='clsid:MORVANE-NAVERTIX-TUNER'></object>");
//   addScript("function f() { var tv = document.getElementById('tv'); tv.GetSerial(); }");
//   EXPECT_EQ(run(), RUN_UNDOCUMENTED_API);
//   expectFindings({"../main.js(1) : UndocumentedAPI 'GetSerial' used\n"});
class EngineTest : public ::testing::Test {
 protected:
  EngineTest();
  ~EngineTest() override;

  // The files of the application, under <directory>/app/www, in the order first added; each returns its
  // path.
  std::string addHtml(const std::string& text) { return addFile("index.html", text); }
  std::string addScript(const std::string& text) { return addFile("main.js", text); }
  std::string addFile(const std::string& name, const std::string& bytes);
  std::string addZip(const std::string& name, const std::vector<std::pair<std::string, std::string>>& entries);

  // Replaces the database: the documented names, or any text.
  void setDatabase(const Texts& documented);
  void setDatabaseText(const std::string& xml);

  // StartAnalysis over the files added so far.
  RunResult run();

  APIAnalysis& engine() { return *engine_; }
  void destroyEngine() { engine_.reset(); }
  const std::string& directory() const { return directory_; }
  std::string resultFile() const;

  // The lines of the result list, which the result file must hold as well.
  void expectFindings(const Texts& lines) const;

  // Log lines as "function: text", clock readings left out; all of them, or those that contain `part`.
  static Texts log(const std::string& part = "");
  static void clearLog();

  // Calls `watcher` with each log line from now on, until the fixture is gone.
  static void onLog(std::function<void(const std::string& line)> watcher);

  // Other places than in the test's directory.
  static void setExtractionRoot(const std::string& path);
  static void setResultFile(const std::string& path);
  static void setPlace(FlashEngine_1_00::FilePlace* place);

  // "expression [scope] line" of each record; "null" for a null expression.
  static Texts shown(const APIAnalysis::Records& records);
  static Texts expressions(const APIAnalysis::Records& records);

 private:
  std::string directory_;
  Texts files_;
  std::unique_ptr<APIAnalysis> engine_;
};

// An observer that keeps what was not read, "path" or "path!entry".
class GapList : public FlashEngine_1_00::Observer {
 public:
  void notRead(const FlashEngine_1_00::NotRead& part) override {
    texts.push_back(part.path + (part.entry.empty() ? "" : "!" + std::string(part.entry)));
  }
  Texts texts;
};

// The bytes of a zip package with these entries, stored or deflated, in this order.
std::string zipBytes(const std::vector<std::pair<std::string, std::string>>& entries);
std::string readFile(const std::string& path);
void writeFile(const std::string& path, const std::string& bytes);

// Whole runs of the engine, in one thread and in several: everything that a run shows is the same.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>

#include "bench/PlugInUse.h"
#include "checker/run/EngineRun.h"
#include "support/CraftedZip.h"

namespace fs = std::filesystem;

namespace {

using Texts = std::vector<std::string>;

void add(Texts& shown, const std::string& name, const std::vector<std::string*>& list) {
  for (const std::string* text : list)
    shown.push_back(name + ": " + *text);
}

void add(Texts& shown, const std::string& name, const FlashEngine_1_00::APIAnalysis::Records& list) {
  for (const FlashEngine_1_00::SWFStateMentInfo* record : list)
    shown.push_back(name + ": " + (record->expression == nullptr ? "-" : *record->expression) + '|' +
                    std::string(record->scope) + '|' + std::string(record->text) + '|' + std::string(record->path) +
                    '|' + std::string(record->access) + '|' + std::to_string(record->line));
}

// All that a run comes to, but the clock in its log.
Texts shownOf(const Outcome& run) {
  const FlashEngine_1_00::APIAnalysis& engine = *run.engine;
  Texts shown{std::to_string(run.code), run.failure, std::to_string(run.webSources), std::to_string(run.flashFiles)};
  shown.insert(shown.end(), run.findingLines.begin(), run.findingLines.end());
  shown.insert(shown.end(), run.files.begin(), run.files.end());
  for (const NotChecked& gap : run.notChecked)
    shown.push_back("gap: " + gap.part + '|' + gap.reason);
  for (const LogLine& line : run.log)
    shown.push_back("log: " + line.function + '|' +
                    line.text.substr(0, line.text.find("sec]")).substr(0, line.text.find("]:")));
  add(shown, "path", engine.worthfulPathList);
  add(shown, "extension", engine.worthfulExtList);
  add(shown, "source", engine.worthfulSourceList);
  add(shown, "cleaned", engine.cleanedSourceList);
  add(shown, "object", engine.objectTagList);
  add(shown, "class", engine.objectClassList);
  add(shown, "id", engine.objectIdList);
  add(shown, "declared", engine.declareList);
  add(shown, "embedded", engine.embedsDeclareList);
  add(shown, "variable", engine.objectVariableList);
  add(shown, "call", engine.foundCallList);
  add(shown, "flash", engine.flashCallList);
  add(shown, "look-up", engine.lookupCandidateList);
  add(shown, "access", engine.objectAccessList);
  add(shown, "embeds", engine.embedsAccessList);
  for (const FlashEngine_1_00::FlashFunctionInfo* function : engine.functionBlockList)
    shown.push_back("function: " + std::string(function->header) + '|' + std::string(function->body) + '|' +
                    std::string(function->path));
  return shown;
}

// A package that uses its plug-ins in many files, some of them odd.
std::string package() {
  std::vector<CraftedEntry> entries;
  for (auto& [name, text] : bench::plugInUse(120))
    entries.push_back({name, std::move(text), true});
  entries.push_back({"nested.zip", craftedZip({{"inside.js", "var inside = document.getElementById('tv');", true}})});
  entries.push_back({"zero.js", std::string("var a; \0 var b;", 15), true});
  entries.push_back({"empty.html", "", true});
  entries.push_back({"stored.js", "function stored(a) { return a.GetVersion(); }"});
  entries.push_back({"../unsafe.js", std::string(3000, 'u'), true});
  entries.push_back({"zero.js", "again /* never closed", true});
  return craftedZip(entries);
}

class Runs : public ::testing::Test {
 protected:
  Runs() {
    char name[] = "/tmp/tarvo-threads-test-XXXXXX";
    directory_ = mkdtemp(name);
  }
  ~Runs() override { fs::remove_all(directory_); }

  void expectSame(const std::string& application) {
    SCOPED_TRACE(application);
    const Texts expected = run(application, 1);
    for (const unsigned threads : {2U, 4U}) {
      const Texts shown = run(application, threads);
      const auto [is, should] = std::mismatch(shown.begin(), shown.end(), expected.begin(), expected.end());
      if (is == shown.end() && should == expected.end()) continue;
      ADD_FAILURE() << threads << " threads: " << (is == shown.end() ? "nothing" : *is) << "\nnot\n"
                    << (should == expected.end() ? "nothing" : *should);
    }
  }

  static Texts run(const std::string& application, unsigned threads) {
    EngineRunOptions options{DATABASE};
    options.all = true;
    options.threads = threads;
    return shownOf(runEngine(application, options));
  }

  std::string write(const std::string& name, const std::string& bytes) const {
    const std::string path = directory_ + '/' + name;
    fs::create_directories(fs::path(path).parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
  }

  std::string directory_;
};

TEST_F(Runs, PackagesAreTheSameInAnyNumberOfThreads) {
  const std::string application = write("app.wgt", package());
  const Texts shown = run(application, 4);
  for (const char* list : {"object: ", "variable: ", "call: ", "function: ", "access: ", "gap: "}) {
    const auto isOfList = [&](const std::string& text) { return text.compare(0, std::strlen(list), list) == 0; };
    EXPECT_GT(std::count_if(shown.begin(), shown.end(), isOfList), 1) << list;
  }
  expectSame(application);
}

TEST_F(Runs, FoldersAreTheSameInAnyNumberOfThreads) {
  for (const auto& [name, text] : bench::plugInUse(60))
    (void)write("www/" + name, text);
  (void)write("www/app.wgt", package());
  (void)write("www/packed.js", package());
  expectSame(directory_ + "/www");
}

TEST_F(Runs, DamagedPackagesAreTheSameInAnyNumberOfThreads) {
  const std::string whole = package();
  std::mt19937 random(5);
  for (int i = 0; i < 25; ++i) {
    SCOPED_TRACE(i);
    std::string bytes = whole;
    for (int flips = 0; flips < 3; ++flips)
      bytes[random() % bytes.size()] = static_cast<char>(random() % 256);
    if (i % 5 == 0) bytes.resize(bytes.size() - random() % 4000);
    expectSame(write("damaged.wgt", bytes));
  }
}

}  // namespace

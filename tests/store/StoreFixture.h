#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <string>
#include <vector>

#include "store/Store.h"

namespace store {

constexpr const char* kTuner = "MORVANE-NAVERTIX-TUNER";
constexpr const char* kAudio = "MORVANE-NAVERTIX-AUDIO";

// A directory for stores, and reports as a check would make them.
class StoreTest : public ::testing::Test {
 protected:
  StoreTest() {
    char name[] = "/tmp/tarvo-store-test-XXXXXX";
    directory_ = mkdtemp(name);
  }
  ~StoreTest() override { std::filesystem::remove_all(directory_); }

  std::string file(const std::string& name) const { return directory_ + "/" + name; }

  // The application at `path`, whose bytes are `content`: it calls GetSerial on a tuner, and GetVolume.
  static ApplicationReport report(const std::string& path, const std::string& content) {
    ApplicationReport report;
    report.application = path;
    report.content = hexOf(sha256(content));
    report.contentSuffix = ".wgt";
    report.size = content.size();
    report.findings.push_back(call(path, kTuner, "GetSerial", 3));
    report.documented.push_back(call(path, kAudio, "GetVolume", 7));
    report.judgedCalls = 2;
    report.judgedPlugins = 2;
    report.sources = 1;
    report.seconds = 0.5;
    conclude(report);
    return report;
  }

  static Finding call(const std::string& path, const std::string& plugin, const std::string& method, int line) {
    Finding finding{};
    finding.call.path = path + "!/www/js/main.js";
    finding.call.place = {line, 5};
    finding.call.engineLine = line - 1;
    finding.call.plugin = plugin;
    finding.call.method = method;
    finding.call.code = "tv." + method + "()";
    finding.isOnDevice = true;
    finding.fingerprint = "89abcdef0123456" + std::to_string(line % 10);
    return finding;
  }

  static Settings settings() { return {"1.30", "engine", "rules=engine"}; }
  static Database database() { return {"api.xml", sha256("api.xml"), {{kAudio, "GetVolume"}, {kTuner, "Tune"}}}; }

  static Documented judge(const std::string&, const std::string& method) {
    return method == "GetVolume" || method == "Tune" ? Documented::forIt : Documented::no;
  }

  // Writes these reports to the store of that name, as a run that ends.
  void write(const std::string& name, const std::vector<ApplicationReport>& reports,
             const std::string& runName = "first") const {
    Store store(file(name), Store::Mode::write);
    RunWriter run(store, settings(), database(), runName);
    for (const ApplicationReport& each : reports)
      run.add(each);
    run.finish();
  }

  // The rows that a query gives, as "a|b" each.
  std::vector<std::string> rows(const std::string& name, const std::string& query) const {
    Connection connection(file(name), Connection::Mode::read, 0);
    Statement statement(connection, query);
    std::vector<std::string> rows;
    while (statement.next()) {
      std::string row;
      for (int i = 0; i < sqlite3_column_count(statement.get()); ++i)
        row += (i == 0 ? "" : "|") + statement.bytes(i);
      rows.push_back(row);
    }
    return rows;
  }

  std::string directory_;
};

using Rows = std::vector<std::string>;

}  // namespace store

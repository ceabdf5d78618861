#include "store/Judge.h"

#include "StoreFixture.h"

namespace store {
namespace {

std::string textOf(const Change& change) {
  std::string text = change.path + ": " + nameOf(change.before) + " -> " + nameOf(change.after);
  for (const ChangedMethod& method : change.methods)
    text += (method.isDocumented ? " +" : " -") + method.name + " " + std::to_string(method.calls);
  return text;
}

Rows changesBy(const std::string& path, const Database& database,
               const std::unordered_set<std::string>& accepted = {}) {
  Store store(path, Store::Mode::read);
  Rows texts;
  const Judgement judgement =
      judge(store, database, accepted, [&](const Change& change) { texts.push_back(textOf(change)); });
  EXPECT_EQ(judgement.changes, texts.size());
  return texts;
}

// Each of these is under both databases what a check would have found.
TEST_F(StoreTest, ApplicationsChangeInBothDirections) {
  ApplicationReport both = report("both.wgt", "both");
  ApplicationReport clean = report("clean.wgt", "clean");
  clean.findings.clear();
  ApplicationReport incomplete = report("incomplete.wgt", "incomplete");
  incomplete.documented.clear();
  incomplete.notChecked.push_back({"incomplete.wgt!/a.swf", "damaged"});
  ApplicationReport possible = report("possible.wgt", "possible");
  possible.findings.clear();
  possible.documented.front().confidence = Finding::Confidence::possible;
  ApplicationReport other = report("other.wgt", "other");
  other.findings.clear();
  other.documented.front().call.method = "Tune";
  other.undetermined.push_back({call("other.wgt", kAudio, "GetVolume", 4).call, "calls with '.Open' are not judged"});
  ApplicationReport failed = report("failed.wgt", "failed");
  failed.failure = "there is neither a web source nor a Flash file in it";
  write("s", {both, clean, incomplete, possible, other, failed});
  const Database newer{"new.xml", sha256("new.xml"), {{kTuner, "GetSerial"}, {kTuner, "Tune"}}};
  EXPECT_EQ(changesBy(file("s"), newer),
            (Rows{"both.wgt: findings -> findings +GetSerial 1 -GetVolume 1",
                  "clean.wgt: clean -> findings -GetVolume 1", "incomplete.wgt: findings -> incomplete +GetSerial 1"}));
  EXPECT_EQ(changesBy(file("s"), database()), Rows{});
  EXPECT_EQ(changesBy(file("s"), newer, {"GetVolume", "GetSerial"}), Rows{});
}

// Of the same application two runs are there, each with a database of its own.
TEST_F(StoreTest, TheLastRunIsWhatCounts) {
  write("s", {report("a.wgt", "old"), report("gone.wgt", "gone")});
  const Database newer{"new.xml", sha256("new.xml"), {{kTuner, "GetSerial"}, {kAudio, "GetVolume"}}};
  {
    Store store(file("s"), Store::Mode::write);
    RunWriter run(store, settings(), newer, "second");
    run.add(report("a.wgt", "new"));
  }
  EXPECT_EQ(changesBy(file("s"), newer), Rows{"gone.wgt: findings -> clean +GetSerial 1"});
  EXPECT_EQ(changesBy(file("s"), database()), Rows{"a.wgt: clean -> findings -GetSerial 1"});
  Store store(file("s"), Store::Mode::read);
  EXPECT_EQ(lastDatabase(store)->path, "new.xml");
  EXPECT_EQ(lastDatabase(store)->methods.size(), 2U);
}

TEST_F(StoreTest, AReportIsMadeForEachApplication) {
  write("s", {report("a.wgt", "a")});
  Store store(file("s"), Store::Mode::read);
  Results results(store.connection());
  const Database newer{"new.xml", sha256("new.xml"), {{kTuner, "GetSerial"}}};
  std::vector<ApplicationReport> reports;
  eachApplication(
      store, [&](std::int64_t number) { reports.push_back(latestReport(store, results, number, judgeBy(newer))); });
  ASSERT_EQ(reports.size(), 1U);
  ASSERT_EQ(reports.front().findings.size(), 1U);
  EXPECT_EQ(reports.front().findings.front().call.method, "GetVolume");
  EXPECT_EQ(reports.front().findings.front().call.path, "a.wgt!/www/js/main.js");
  EXPECT_EQ(reports.front().verdict, Verdict::findings);
}

}  // namespace
}  // namespace store

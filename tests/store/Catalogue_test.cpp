#include "store/Catalogue.h"

#include "StoreFixture.h"

namespace store {
namespace {

TEST_F(StoreTest, ACatalogueCountsWhatEachApplicationIsNow) {
  ApplicationReport twice = report("twice.wgt", "twice");
  twice.findings.push_back(call("twice.wgt", kTuner, "GetSerial", 8));
  twice.notChecked.push_back({"twice.wgt!/a.swf", "damaged"});
  twice.libraries.push_back({"jquery 1.8", "twice.wgt!/j.js"});
  twice.libraries.push_back({"jquery 1.8", "twice.wgt!/k.js"});
  ApplicationReport clean = report("clean.wgt", "clean");
  clean.findings.clear();
  ApplicationReport failed;
  failed.application = "failed.wgt";
  failed.failure = "no such file or directory";
  write("s", {report("a.wgt", "a"), report("copy.wgt", "a"), twice, clean, failed, report("moved.wgt", "old")});
  ApplicationReport moved = clean;
  moved.application = "moved.wgt";
  write("s", {moved}, "second");

  Store store(file("s"), Store::Mode::read);
  const Catalogue catalogue = catalogueOf(store, database());
  EXPECT_EQ(catalogue.applications, 6U);
  EXPECT_EQ(std::vector<std::uint64_t>(catalogue.verdicts, catalogue.verdicts + 4),
            (std::vector<std::uint64_t>{2, 0, 3, 1}));
  ASSERT_EQ(catalogue.methods.size(), 2U);
  EXPECT_EQ(catalogue.methods[0].name, "GetVolume");
  EXPECT_EQ(catalogue.methods[0].applications, 5U);
  EXPECT_TRUE(catalogue.methods[0].isDocumented);
  EXPECT_EQ(catalogue.methods[1].applications, 3U);
  EXPECT_EQ(catalogue.methods[1].calls, 4U);
  EXPECT_FALSE(catalogue.methods[1].isDocumented);
  EXPECT_EQ(catalogue.calls, 9U);
  ASSERT_EQ(catalogue.reasons.size(), 1U);
  EXPECT_EQ(catalogue.reasons[0].name, "damaged");
  ASSERT_EQ(catalogue.libraries.size(), 1U);
  EXPECT_EQ(catalogue.libraries[0].applications, 1U);
  ASSERT_EQ(catalogue.failures.size(), 1U);
  ASSERT_EQ(catalogue.runs.size(), 2U);
  EXPECT_EQ(catalogue.runs[0].verdicts[2], 4U);
  EXPECT_EQ(catalogue.runs[1].applications, 1U);
}

TEST_F(StoreTest, WhoUsesAMethodIsToldWithThePlaces) {
  write("s", {report("b.wgt", "b"), report("a.wgt", "a"), report("gone.wgt", "gone")});
  ApplicationReport without = report("gone.wgt", "without");
  without.findings.clear();
  write("s", {without}, "second");
  Store store(file("s"), Store::Mode::read);
  const auto uses = usesOf(store, "TUNER", "GetSerial");
  ASSERT_EQ(uses.size(), 2U);
  EXPECT_EQ(uses[0].path, "a.wgt!/www/js/main.js");
  EXPECT_EQ(uses[0].place.line, 3);
  EXPECT_EQ(uses[1].application, "b.wgt");
  EXPECT_EQ(usesOf(store, "", "GetSerial").size(), 2U);
  EXPECT_EQ(usesOf(store, kTuner, "GetSerial").size(), 2U);
  EXPECT_TRUE(usesOf(store, "AUDIO", "GetSerial").empty());
  EXPECT_TRUE(usesOf(store, "UNER", "GetSerial").empty());
}

}  // namespace
}  // namespace store

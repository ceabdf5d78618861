// Parts that are prepared ahead, and whole runs in several threads: the same as in one. Preset `threads` has these
// tests watched by a sanitizer.

#include "checker/run/Threads.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <stdexcept>

#include "flow/Relevance.h"

namespace {

class Squares : public FlashEngine_1_00::PartWork {
 public:
  Squares(std::size_t count, std::size_t lanes, std::size_t thrower = SIZE_MAX)
      : prepared_(count), isBusy_(lanes), thrower_(thrower) {}

  void prepare(std::size_t part, std::size_t lane) override {
    EXPECT_FALSE(isBusy_.at(lane).exchange(true)) << "two parts in lane " << lane;
    if (part == thrower_) {
      isBusy_[lane] = false;
      throw std::runtime_error("part");
    }
    prepared_[part] += part * part + 1;
    isBusy_[lane] = false;
  }
  void take(std::size_t part) override { taken.push_back(prepared_[part]); }

  std::vector<std::size_t> taken;

 private:
  std::vector<std::size_t> prepared_;  // each more than 0, and once
  std::vector<std::atomic<bool>> isBusy_;
  std::size_t thrower_;
};

TEST(Threads, PartsAreTakenInTheirOrder) {
  for (const std::size_t lanes : {1U, 2U, 4U, 16U}) {
    for (const std::size_t count : {0U, 1U, 7U, 3000U}) {
      SCOPED_TRACE(std::to_string(lanes) + " lanes, parts: " + std::to_string(count));
      Squares work(count, lanes);
      Threads(lanes).run(count, work);
      std::vector<std::size_t> expected(count);
      for (std::size_t i = 0; i < count; ++i)
        expected[i] = i * i + 1;
      EXPECT_EQ(work.taken, expected);
    }
  }
}

TEST(Threads, WhatAPartThrowsIsThrownInItsTurn) {
  for (const std::size_t lanes : {1U, 2U, 4U}) {
    Squares work(3000, lanes, 1000);
    EXPECT_THROW(Threads(lanes).run(3000, work), std::runtime_error);
    EXPECT_EQ(work.taken.size(), 1000U);
  }
}

// Every third part is asked for, parts weigh up to 10, and 25 may be ahead.
TEST(Threads, NoMoreIsAheadThanMayBe) {
  constexpr std::size_t kParts = 5000;
  constexpr std::size_t kMost = 25;
  const auto weight = [](std::size_t part) { return part % 10 + 1; };
  for (const std::size_t lanes : {2U, 4U}) {
    std::vector<std::atomic<bool>> isHeld(kParts);
    std::atomic<std::size_t> held = 0;
    std::atomic<std::size_t> mostHeld = 0;
    const auto let = [&](std::size_t part) {
      if (isHeld[part].exchange(false)) held -= weight(part);
    };
    {
      Ahead ahead(lanes, {kParts,
                          [&](std::size_t part, std::size_t) {
                            isHeld[part] = true;
                            const std::size_t now = held += weight(part);
                            for (std::size_t most = mostHeld;
                                 now > most && !mostHeld.compare_exchange_weak(most, now);) {
                            }
                          },
                          weight, kMost, let});
      for (std::size_t part = 0; part < kParts; part += 3) {
        ahead.await(part);
        EXPECT_TRUE(isHeld[part]);
        let(part);
      }
    }
    EXPECT_LE(mostHeld, kMost + 10 * lanes)
        << "those that are passed over while they are prepared, and what is asked for";
    for (std::size_t part = 0; part + 3 < kParts; ++part)
      EXPECT_FALSE(isHeld[part]) << "passed over, and kept: " << part;
  }
}

// What flow analysis has told of each script at the same time.
TEST(Threads, ScriptsHaveTheSameRelevanceInAnyNumberOfThreads) {
  std::vector<std::string> texts;
  for (std::size_t i = 0; i < 60; ++i) {
    const std::string number = std::to_string(i);
    texts.push_back("var GlobalOf" + number + " = " + (i % 7 == 0 ? "document.getElementById('tv');" : "0;") +
                    std::string(70'000, ' ') +
                    (i % 3 == 0 ? "window.use(GlobalOf" + std::to_string(i + 7) + ");" : ""));
  }
  std::vector<flow::Script> scripts;
  for (std::size_t i = 0; i < texts.size(); ++i)
    scripts.push_back({texts[i], i == 3, i % 11 == 0, {}});
  const std::vector<flow::Relevance> expected = flow::relevanceOf(scripts, {}, {"tv"});
  for (const flow::Relevance each : {flow::Relevance::none, flow::Relevance::shared, flow::Relevance::own})
    EXPECT_GT(std::count(expected.begin(), expected.end(), each), 0);
  for (const std::size_t lanes : {2U, 4U}) {
    const auto forEach = [&](std::size_t count, const auto& work) { Threads(lanes).forEach(count, work); };
    EXPECT_EQ(flow::relevanceOf(scripts, {}, {"tv"}, forEach), expected);
  }
}

}  // namespace

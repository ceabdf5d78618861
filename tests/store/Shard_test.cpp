#include "store/Shard.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <map>
#include <vector>

namespace store {
namespace {

using Environment = std::map<std::string, std::string>;

// "3/16", or the message.
std::string shardIn(const Environment& environment, const std::string& text = "auto") {
  for (const auto& [name, value] : environment)
    setenv(name.c_str(), value.c_str(), 1);
  std::string shown;
  try {
    const Shard shard = shardOf(text);
    shown = std::to_string(shard.index) + "/" + std::to_string(shard.count);
  } catch (const std::invalid_argument& error) {
    shown = error.what();
  }
  for (const auto& [name, value] : environment)
    unsetenv(name.c_str());
  return shown;
}

Environment slurm(const char* task, const char* first, const char* last, const char* count) {
  return {{"SLURM_ARRAY_TASK_ID", task},
          {"SLURM_ARRAY_TASK_MIN", first},
          {"SLURM_ARRAY_TASK_MAX", last},
          {"SLURM_ARRAY_TASK_COUNT", count}};
}

TEST(Shard, PartsAreNamedInManyWays) {
  EXPECT_EQ(shardIn({}, "3/16"), "3/16");
  EXPECT_EQ(shardIn(slurm("1", "1", "16", "16")), "1/16");
  EXPECT_EQ(shardIn(slurm("0", "0", "15", "16")), "1/16");
  EXPECT_EQ(shardIn(slurm("14", "0", "14", "8")), "8/8") << "every second number";
  EXPECT_EQ(shardIn({{"AWS_BATCH_JOB_ARRAY_INDEX", "9"}, {"AWS_BATCH_JOB_ARRAY_SIZE", "10"}}), "10/10");
  EXPECT_EQ(shardIn({{"JOB_COMPLETION_INDEX", "0"}, {"TARVO_SHARDS", "4"}}), "1/4");
  for (const char* wrong : {"0/4", "5/4", "4", "/4", "1/", "1/0", "-1/4", "a/b", "1/9999999", "1/99999999999", ""})
    EXPECT_NE(shardIn({}, wrong).find("--shard"), std::string::npos) << wrong;
  EXPECT_NE(shardIn({}).find("the environment is that of no"), std::string::npos);
  EXPECT_NE(shardIn({{"JOB_COMPLETION_INDEX", "0"}}).find("TARVO_SHARDS"), std::string::npos);
  EXPECT_EQ(shardIn(slurm("7", "3", "7", "3")), "3/3") << "3, 5 and 7";
  EXPECT_NE(shardIn(slurm("4", "3", "8", "3")).find("holes"), std::string::npos) << "3, 4 and 8";
}

// The numbers are part of what is promised: a list is split the same way by every version and on every machine.
TEST(Shard, EveryPathIsInOnePart) {
  std::vector<int> sizes(16);
  for (int i = 0; i < 4800; ++i) {
    const std::string path = "/packages/app-" + std::to_string(i) + ".wgt";
    int parts = 0;
    for (unsigned index = 1; index <= 16; ++index) {
      const bool isIn = Shard{index, 16}.has(path);
      parts += isIn ? 1 : 0;
      sizes[index - 1] += isIn ? 1 : 0;
    }
    EXPECT_EQ(parts, 1);
  }
  for (const int size : sizes)
    EXPECT_NEAR(size, 300, 75);
  EXPECT_TRUE((Shard{4, 16}.has("app.wgt")));
  EXPECT_TRUE((Shard{14, 16}.has("\xff/app.wgt")));
}

}  // namespace
}  // namespace store

// A path's part is the remainder of its hash. The scheduler's variables stand in a table.
// Test: tests/store/Shard_test.cpp.

#include "store/Shard.h"

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <stdexcept>

namespace store {
namespace {

constexpr unsigned kMaxShards = 1'000'000;

[[noreturn]] void refuse(const std::string& why) {
  throw std::invalid_argument("--shard: " + why);
}

std::optional<unsigned> numberIn(const std::string& text) {
  if (text.empty() || text.size() > 7 || text.find_first_not_of("0123456789") != std::string::npos) return std::nullopt;
  return static_cast<unsigned>(std::stoul(text));
}

const char* valueOf(const char* name) {
  return std::getenv(name);
}

unsigned numberOf(const char* name) {
  const char* value = valueOf(name);
  if (value == nullptr) refuse(std::string("the environment has no ") + name);
  const auto number = numberIn(value);
  if (!number) refuse(std::string(name) + " is '" + value + "', no number");
  return *number;
}

Shard checked(unsigned index, unsigned count) {
  if (count < 1 || count > kMaxShards || index < 1 || index > count)
    refuse("there is no part " + std::to_string(index) + " of " + std::to_string(count));
  return {index, count};
}

// Numbers of an array need not begin at 0, nor follow each other; one with holes, as of jobs that are submitted again,
// does not tell which part each had.
Shard slurmShard() {
  const unsigned first = numberOf("SLURM_ARRAY_TASK_MIN");
  const unsigned last = numberOf("SLURM_ARRAY_TASK_MAX");
  const unsigned count = numberOf("SLURM_ARRAY_TASK_COUNT");
  const unsigned task = numberOf("SLURM_ARRAY_TASK_ID");
  const unsigned step = count > 1 ? (last - first) / (count - 1) : 1;
  if (last < first || task < first || step < 1 || (last - first) != step * (count - 1) || (task - first) % step != 0)
    refuse("the numbers of the Slurm array have holes; name the part: --shard I/N");
  return checked((task - first) / step + 1, count);
}

Shard environmentShard() {
  if (valueOf("SLURM_ARRAY_TASK_ID") != nullptr) return slurmShard();
  if (valueOf("AWS_BATCH_JOB_ARRAY_INDEX") != nullptr)
    return checked(numberOf("AWS_BATCH_JOB_ARRAY_INDEX") + 1, numberOf("AWS_BATCH_JOB_ARRAY_SIZE"));
  if (valueOf("JOB_COMPLETION_INDEX") != nullptr)
    return checked(numberOf("JOB_COMPLETION_INDEX") + 1, numberOf("TARVO_SHARDS"));
  refuse("auto: the environment is that of no Slurm array, AWS Batch array or Kubernetes indexed job");
}

}  // namespace

bool Shard::has(const std::string& path) const {
  std::uint64_t hash = 0xCBF29CE484222325U;  // FNV-1a
  for (const char c : path)
    hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
  hash ^= hash >> 32;  // its low bits alone are weak
  return hash % count == index - 1;
}

Shard shardOf(const std::string& text) {
  if (text == "auto") return environmentShard();
  const std::size_t slash = text.find('/');
  const auto index = numberIn(text.substr(0, slash));
  const auto count = slash == std::string::npos ? std::nullopt : numberIn(text.substr(slash + 1));
  if (!index || !count) refuse("'" + text + "' is neither a part like 3/16 nor auto");
  return checked(*index, *count);
}

}  // namespace store

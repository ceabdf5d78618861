// What was probably meant: the candidate with the smallest edit distance, if that is small for the length of the name.
// Test: tests/checker/CommandLine_test.cpp.

#include "checker/options/Suggestion.h"

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kMaxName = 255;
constexpr std::size_t kMaxFiles = 10'000;
constexpr std::size_t kLettersPerEdit = 3;

// The number of letters that are wrong, missing or too many, and of neighbours that changed places.
std::size_t editDistance(const std::string& one, const std::string& other) {
  std::vector<std::vector<std::size_t>> cost(one.size() + 1, std::vector<std::size_t>(other.size() + 1));
  for (std::size_t i = 0; i <= one.size(); ++i) {
    for (std::size_t j = 0; j <= other.size(); ++j) {
      if (i == 0 || j == 0) {
        cost[i][j] = i + j;
        continue;
      }
      const std::size_t wrong = one[i - 1] == other[j - 1] ? 0 : 1;
      cost[i][j] = std::min({cost[i - 1][j] + 1, cost[i][j - 1] + 1, cost[i - 1][j - 1] + wrong});
      if (i > 1 && j > 1 && one[i - 1] == other[j - 2] && one[i - 2] == other[j - 1])
        cost[i][j] = std::min(cost[i][j], cost[i - 2][j - 2] + 1);
    }
  }
  return cost.back().back();
}

}  // namespace

std::string didYouMean(const std::string& name, const std::vector<std::string>& candidates) {
  if (name.size() > kMaxName) return "";
  std::size_t fewest = std::max<std::size_t>(1, name.size() / kLettersPerEdit) + 1;
  std::string nearest;
  for (const std::string& candidate : candidates) {
    if (candidate.size() >= name.size() + fewest) continue;
    const std::size_t count = editDistance(name, candidate);
    if (count == 0) return "";  // it was meant
    if (count >= fewest) continue;
    fewest = count;
    nearest = candidate;
  }
  return nearest.empty() ? "" : "; did you mean '" + nearest + "'?";
}

std::string didYouMeanFile(const std::string& path) {
  const fs::path parent = fs::path(path).parent_path();
  std::vector<std::string> candidates;
  std::error_code error;
  fs::directory_iterator entry(parent.empty() ? fs::path(".") : parent, error);
  for (; !error && entry != fs::directory_iterator() && candidates.size() < kMaxFiles; entry.increment(error))
    candidates.push_back((parent / entry->path().filename()).string());
  std::sort(candidates.begin(), candidates.end());
  return didYouMean(path, candidates);
}

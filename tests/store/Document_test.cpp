#include <fstream>
#include <iterator>

#include "StoreFixture.h"

namespace store {
namespace {

std::vector<std::string> queriesIn(const std::string& path) {
  std::ifstream file(path);
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  const std::string begin = "```sql\n";
  std::vector<std::string> queries;
  for (std::size_t at = text.find(begin); at != std::string::npos; at = text.find(begin, at)) {
    at += begin.size();
    queries.push_back(text.substr(at, text.find("```", at) - at));
  }
  return queries;
}

// Each of the ten has an answer in this store.
TEST_F(StoreTest, TheQuestionsOfTheDocumentHaveAnswers) {
  ApplicationReport whole = report("a.wgt", "a");
  whole.notChecked.push_back({"a.wgt!/a.swf", "damaged"});
  whole.libraries.push_back({"jquery 1.8", "a.wgt!/jquery.js"});
  ApplicationReport failed;
  failed.application = "failed.wgt";
  failed.failure = "no such file or directory";
  write("s", {whole, report("copy.wgt", "b"), report("other.wgt", "b"), failed});
  const std::vector<std::string> queries = queriesIn(DOCUMENT);
  EXPECT_EQ(queries.size(), 10U);
  for (const std::string& query : queries)
    EXPECT_FALSE(rows("s", query).empty()) << query;
  EXPECT_EQ(rows("s", queries.front()), (Rows{"a.wgt|1", "copy.wgt|1", "other.wgt|1"}));
}

}  // namespace
}  // namespace store

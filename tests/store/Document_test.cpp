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

// The answers to all ten, in their order.
TEST_F(StoreTest, TheQuestionsOfTheDocumentAreAnswered) {
  ApplicationReport whole = report("a.wgt", "a");
  whole.findings.push_back(call("a.wgt", kTuner, "GetUuid", 9));
  whole.notChecked.push_back({"a.wgt!/a.swf", "damaged"});
  whole.notChecked.push_back({"a.wgt!/b.swf", "damaged"});
  whole.libraries.push_back({"jquery 1.8", "a.wgt!/jquery.js"});
  whole.seconds = 2.5;
  whole.size = 1000;
  ApplicationReport clean = report("clean.wgt", "clean");
  clean.findings.clear();
  clean.libraries.push_back({"lodash 4", "clean.wgt!/lodash.js"});
  clean.size = 10;
  ApplicationReport failed;
  failed.application = "failed.wgt";
  failed.failure = "no such file or directory";
  write("s", {whole, report("copy.wgt", "b"), report("other.wgt", "b"), clean, failed});
  write("s", {report("other.wgt", "b")}, "second");
  {
    Store store(file("s"), Store::Mode::write);
    store.connection().execute("UPDATE run SET started = id * 86400, finished = id * 86400 + 60");
  }
  const std::string b = hexOf(sha256("b"));
  const std::vector<Rows> answers{
      {"a.wgt|2", "copy.wgt|1", "other.wgt|1"},
      {"a.wgt", "copy.wgt", "other.wgt"},
      {std::string(kTuner) + "|GetSerial|3", std::string(kTuner) + "|GetUuid|1"},
      {std::string(kTuner) + "|Tune"},
      {"no such file or directory|1"},
      {"damaged|1|2"},
      {b + "|2"},
      {"a.wgt|2.5|1000", "clean.wgt|0.5|10", "copy.wgt|0.5|1", "other.wgt|0.5|1", "failed.wgt||"},
      {"first|1970-01-02 00:00:00|1970-01-02 00:01:00|5", "second|1970-01-03 00:00:00|1970-01-03 00:01:00|1"},
      {"jquery 1.8|1"},
  };
  const std::vector<std::string> queries = queriesIn(DOCUMENT);
  ASSERT_EQ(queries.size(), answers.size());
  for (std::size_t i = 0; i < queries.size(); ++i)
    EXPECT_EQ(rows("s", queries[i]), answers[i]) << queries[i];
}

}  // namespace
}  // namespace store

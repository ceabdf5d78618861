#include "trial/PackageServer.h"

#include <algorithm>

#include "trial/Settings.h"
#include "trial/TrialFixture.h"

namespace {

using trial::World;

constexpr const char* kSite = "http://application.invalid/";

class Package : public testing::Test {
 protected:
  trial::Input input_ =
      applicationOf("<p>", {{"www/js/a b.js", "1"}, {"www/sub/index.html", "s"}, {"inner.zip!/x.css", "c"}});
  trial::PackageServer server_{input_, "MARK"};

  std::string found(const std::string& url) const {
    const trial::File* file = server_.fileOf(url);
    return file == nullptr ? "" : file->path;
  }
};

TEST_F(Package, AddressesMeanFiles) {
  const std::string site = kSite;
  const std::vector<std::pair<std::string, std::string>> rows{{"www/index.html?a=/b#c", "www/index.html"},
                                                              {"www/js/a%20b.js", "www/js/a b.js"},
                                                              {"js/a b.js", "www/js/a b.js"},
                                                              {"www/sub/", "www/sub/index.html"},
                                                              {"inner.zip!/x.css", "inner.zip!/x.css"},
                                                              {"", "www/index.html"},
                                                              {"../../etc/passwd", ""},
                                                              {"%2e%2e/%2e%2e/etc/passwd", ""},
                                                              {"www/js/a%", ""},
                                                              {"www/js", ""}};
  for (const auto& [address, path] : rows)
    EXPECT_EQ(found(site + address), path) << address;
  for (const char* other : {"", "http://application.invalid", "http://application.invalid.example/www/index.html",
                            "https://application.invalid/www/index.html", "file:///www/index.html"})
    EXPECT_EQ(found(other), "") << other;
  for (const trial::File& file : input_.files)
    EXPECT_EQ(found(server_.urlOf(file.path)), file.path);
}

TEST_F(Package, WorldsAnswerAsTheyAre) {
  const auto answer = [&](const std::string& url, const char* type, World world) {
    const trial::Response response = server_.answer(url, "GET", type, world);
    return response.isServed ? std::to_string(response.status) + ' ' + response.body : "fails";
  };
  const std::string here = kSite;
  const std::string far = "http://far.example/x";
  EXPECT_EQ(answer(here + "www/js/a%20b.js", "Script", World::unreachable), "200 1");
  EXPECT_EQ(answer(here + "none", "XHR", World::unreachable), "404 ");
  EXPECT_EQ(answer(far, "XHR", World::unreachable), "fails");
  EXPECT_EQ(answer(far, "Document", World::unreachable), "fails");
  EXPECT_EQ(answer(here + "none", "XHR", World::made), "200 \"MARK\"");
  EXPECT_EQ(answer(here + "none.js", "Script", World::made), "404 ");
  EXPECT_EQ(answer(far + "?callback=show.it&y", "Script", World::made), "200 show.it(\"MARK\");");
  EXPECT_EQ(answer(far + "?callback=alert(1)//", "Script", World::made), "200 ");
  EXPECT_EQ(answer("callback=x", "Script", World::made), "200 ");
}

TEST(Vocabulary, IsWhatScriptsCompareWith) {
  const trial::Vocabulary vocabulary = trial::vocabularyOf(
      {{"a.js",
        "if (e.ctrlKey && code == '1379') f([38, 38,40], [1, 2, 3], [1e3, x, 3]); g('12', \"ab\", e.key === 's');"
        "switch (type) { case 'volume:up': case'it\\'s': } if (e !== \"muted\" && 'left' == e) ;"
        "var keys = {BACK: 0x1F4, X: 3, Y: 1.5}; if (e.keyCode === 7001) ; case 'Play':"
        "a = b + 8888; f('NoKey'); a[99999999999999999999]; if (e.key == \"ColorRed\") ;"}});
  const auto& keys = vocabulary.keys;
  EXPECT_EQ(vocabulary.sequences, (std::vector<std::string>{"[49,51,55,57]", "[38,38,40]"}));
  EXPECT_EQ(vocabulary.modifiers, (std::vector<std::string>{"\"ctrlKey\""}));
  EXPECT_EQ(vocabulary.words,
            (std::vector<std::string>{"\"1379\"", "\"s\"", "\"volume:up\"", "\"muted\"", "\"Play\"", "\"ColorRed\""}));
  EXPECT_EQ(std::count(keys.begin(), keys.end(), "\"s\""), 1);
  const auto has = [&](const char* key) { return std::count(keys.begin(), keys.end(), key); };
  EXPECT_EQ(has("500"), 1);
  EXPECT_EQ(has("7001"), 1);
  EXPECT_EQ(has("\"Play\""), 1);
  EXPECT_EQ(has("\"ColorRed\""), 1);
  EXPECT_EQ(has("13"), 1);
  EXPECT_EQ(has("8888") + has("\"NoKey\""), 0);
  EXPECT_LE(keys.size(), 160U);
}

TEST(Vocabulary, HasWhatAnswersAreComparedWith) {
  const trial::Vocabulary vocabulary = trial::vocabularyOf(
      {{"a.js",
        "if (reply.kind === 'set' || reply.kind != \"get\" && typeof reply.x == 'string') ; if (tv.GetState() == 3) ;"
        "var mode = await tv.GetMode(1); switch (mode) { case 'on': case 2: } table[reply.action](reply);"
        "var table = {play: function () { return {no: 1}; }, 'stop': 2, pause() {} }; e.keyCode === 13; n == 1.5;"
        "open('https://care.example/x'); new WebSocket(\"wss://care.example:8080\");"}});
  const trial::Answers expected{{"GetMode()", {"\"on\"", "2"}},
                                {"GetState()", {"3"}},
                                {"action", {"\"play\"", "\"stop\"", "\"pause\""}},
                                {"kind", {"\"set\"", "\"get\""}},
                                {"mode", {"\"on\"", "2"}}};
  EXPECT_EQ(vocabulary.answers, expected);
  EXPECT_EQ(vocabulary.origins, (std::vector<std::string>{"https://care.example", "https://care.example:8080"}));
}

TEST(RecorderScript, HoldsNamesAsData) {
  trial::Input input = applicationOf("");
  input.documented = {"a\"};alert(1)//", "__proto__", "\xff"};
  const std::string script =
      trial::recorderScript(input, {"secret", "mark", World::made}, {{"13"}, {}, {}, {}, {}, {}, {}});
  EXPECT_NE(script.find(R"("a\"};alert(1)//":1)"), std::string::npos);
  EXPECT_EQ(script.find("\"__proto__\":1"), std::string::npos);
}

}  // namespace

// Browsers that are none: what comes back is a clear message, in time, and nothing stays behind.

#include "trial/Trial.h"

#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <ostream>

#include "trial/Browser.h"
#include "trial/TrialFixture.h"

namespace {

struct Fake {
  const char* name;
  const char* script;  // of a shell: commands come on 3, answers go to 4
  const char* failure;
  const char* incomplete;
};

constexpr const char* kVersion = R"(printf '{"id":1,"result":{"product":"Chrome/1","userAgent":"x"}}\0' >&4;)";

// Its bytes are no part of a test's name.
void PrintTo(const Fake& fake, std::ostream* stream) {
  *stream << fake.name;
}

class FakeBrowser : public testing::TestWithParam<Fake> {};

TEST_P(FakeBrowser, IsTold) {
  // Not in /tmp: the browser has another one.
  const std::string program = std::string(FAKE_BROWSERS) + "/fake-browser-" + GetParam().name;
  std::ofstream(program) << "#!/bin/sh\nversion() { " << kVersion << " }\n" << GetParam().script << '\n';
  ASSERT_EQ(chmod(program.c_str(), 0755), 0);
  const TrialDirectory directory;
  trial::Options options;
  options.browser = program;
  options.directory = directory.path();
  options.secondsPerPage = 2;
  options.memory = 100;
  const trial::Result result = trial::run(applicationOf("<p>"), options);
  std::filesystem::remove(program);
  if (result.failure.find("namespaces of its own") != std::string::npos) GTEST_SKIP() << result.failure;
  const auto holds = [](const std::string& text, const std::string& part) {
    return part.empty() ? text.empty() : text.find(part) != std::string::npos;
  };
  EXPECT_TRUE(holds(result.failure, GetParam().failure)) << result.failure;
  std::string incomplete;
  for (const trial::Incomplete& one : result.incomplete)
    incomplete += one.page + ": " + one.reason + '\n';
  EXPECT_TRUE(holds(incomplete, GetParam().incomplete)) << incomplete;
  EXPECT_LT(result.seconds, 90);  // the bounds come to some 25; who waits for one of these waits for 100
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, FakeBrowser,
    testing::Values(
        Fake{"Dies", "exit 3", "the browser has ended", ""},
        Fake{"SaysWhy", "echo no display >&2; exit 1", "it said: no display", ""},
        Fake{"Hangs", "exec sleep 100", "does not answer", ""},
        Fake{"TalksNonsense", R"(printf 'hello\0' >&4; exec sleep 100)", "none of its protocol", ""},
        Fake{"IsAnother", R"(printf '{"id":1,"result":{"product":"Other/1"}}\0' >&4; exec sleep 100)",
             "calls itself 'Other/1'", ""},
        Fake{"HasNoVersion", R"(printf '{"id":1,"error":{"message":"no such"}}\0' >&4; exec sleep 100)",
             "does not tell its version: no such", ""},
        Fake{"DiesLater", "head -c 1 <&3 >/dev/null; version; exit 1", "", "www/index.html: the browser has ended"},
        Fake{"OpensNothing", "version; exec sleep 100", "", "www/index.html: it did not load in time"},
        Fake{
            "RefusesAll",
            R"(version; sleep 1; for i in 2 3 4 5; do printf '{"id":%s,"error":{"message":"not known"}}\0' $i >&4; done; exec sleep 100)",
            "", "no browser context: not known"},
        Fake{"Floods", "version; tr '\\0' x </dev/zero >&4", "", "sent more at once than is read"},
        Fake{"Forks", "version; for i in 1 2 3 4 5 6 7 8 9; do for j in 1 2 3 4 5 6; do sleep 100 & done; done; wait",
             "", "too many processes"},
        Fake{"TakesMemory", "version; head -c 300000000 /dev/zero | tail -c 299000000; sleep 100", "",
             "more than 100 MiB"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(Browser, IsFoundOrNot) {
  EXPECT_EQ(trial::findBrowser("/nowhere/chromium"), "");
  EXPECT_EQ(trial::findBrowser("/etc/passwd"), "");
  EXPECT_EQ(trial::findBrowser("/bin/sh").front(), '/');
  const TrialDirectory directory;
  trial::Options options;
  options.browser = "/nowhere/chromium";
  options.directory = directory.path();
  EXPECT_EQ(trial::run(applicationOf("<p>"), options).failure, "there is no browser at '/nowhere/chromium'");
}

TEST(Browser, TakesAllItsProcessesWithIt) {
  const std::string program = std::string(FAKE_BROWSERS) + "/fake-browser-family";
  std::ofstream(program) << "#!/bin/sh\n(setsid sleep 1000 &) & sleep 1000 & wait\n";
  ASSERT_EQ(chmod(program.c_str(), 0755), 0);
  const TrialDirectory directory;
  try {
    trial::Browser browser(program, directory.path());
    trial::ProcessSum sum;
    for (int i = 0; i < 100 && (sum = browser.measure()).processes < 4; ++i)
      usleep(50'000);
    EXPECT_GE(sum.processes, 4U);
    EXPECT_GT(sum.memory, 0U);
    browser.endProcess(getpid());  // none of its own
    browser.end();
    EXPECT_EQ(browser.measure().processes, 0U);
  } catch (const trial::BrowserError& error) {
    GTEST_SKIP() << error.what();
  }
  std::filesystem::remove(program);
}

}  // namespace

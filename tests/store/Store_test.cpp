#include "store/Store.h"

#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>

#include "StoreFixture.h"
#include "checker/report/ReportJson.h"

namespace fs = std::filesystem;

namespace store {
namespace {

constexpr const char* kVerdicts = "SELECT application, verdict, findings, calls FROM applications ORDER BY application";

std::string messageOf(const std::function<void()>& work) {
  try {
    work();
  } catch (const StoreError& error) {
    return error.what();
  }
  return "";
}

// ---- what goes in comes out ----------------------------------------------------------------------------------------

TEST_F(StoreTest, VerdictsAreMadeOfCallsAndDatabase) {
  ApplicationReport clean = report("clean.wgt", "clean");
  clean.findings.clear();
  ApplicationReport incomplete = clean;
  incomplete.application = "incomplete.wgt";
  incomplete.content = hexOf(sha256("incomplete"));
  incomplete.notChecked.push_back({"incomplete.wgt!/a.swf", "damaged"});
  ApplicationReport possible = report("possible.wgt", "possible");
  possible.findings.front().confidence = Finding::Confidence::possible;
  ApplicationReport failed;
  failed.application = "failed.wgt";
  failed.failure = "no such file or directory";
  write("s", {report("a.wgt", "a"), clean, incomplete, possible, failed});
  EXPECT_EQ(rows("s", kVerdicts), (Rows{"a.wgt|findings|1|2", "clean.wgt|clean|0|1", "failed.wgt|could not check|0|0",
                                        "incomplete.wgt|incomplete|0|1", "possible.wgt|clean|0|2"}));
  EXPECT_EQ(rows("s",
                 "SELECT application, file, line, method, found, documented, fingerprint FROM calls "
                 "WHERE application = 'a.wgt' ORDER BY line"),
            (Rows{"a.wgt|!/www/js/main.js|3|GetSerial|variable|0|89abcdef01234563",
                  "a.wgt|!/www/js/main.js|7|GetVolume|variable|1|89abcdef01234567"}));
}

TEST_F(StoreTest, ReportsComeOutAsTheyWentIn) {
  ApplicationReport report = StoreTest::report("dir/\xff.wgt", "bytes");
  report.findings.front().call.method = std::string("Get\0Serial\xfe", 11);
  report.findings.front().confidence = Finding::Confidence::certain;
  report.undetermined.push_back(
      {call(report.application, kTuner, "Open", 9).call, "calls with '.Open' are not judged"});
  report.notChecked.push_back({report.application, "only a part"});
  report.elements.push_back({kTuner, "tv\n", report.application + "!/www/index.html"});
  report.libraries.push_back({"jquery 1.8", report.application + "!/www/jquery.js"});
  report.hasCallsWithoutPlugin = true;
  report.isStored = true;
  report.sha256 = report.content;
  report.rules = {"engine"};
  for (std::vector<Finding>* list : {&report.findings, &report.documented}) {
    for (Finding& finding : *list)
      finding.call.excerpt.number = finding.call.place.line;
  }
  report.undetermined.front().call.excerpt.number = 9;
  conclude(report);

  Store store(file("s"), Store::Mode::write);
  RunWriter run(store, settings(), database(), "first");
  ApplicationReport checked = report;
  checked.isStored = false;
  run.add(checked);
  const auto stored = run.stored(report.application, bytesOfHex(report.content), ".wgt", {"engine"}, judge);
  ASSERT_TRUE(stored);
  EXPECT_EQ(toJson(*stored), toJson(report));
  // The same content at another path.
  const auto moved = run.stored("b.wgt", bytesOfHex(report.content), ".wgt", {"engine"}, judge);
  EXPECT_EQ(moved->findings.front().call.path, "b.wgt!/www/js/main.js");
  EXPECT_EQ(moved->notChecked.front().part, "b.wgt");
}

TEST(Result, PathsAreTakenApartAndPutTogether) {
  const char* const kRows[][3] = {{"a.wgt", "a.wgt!/x.js", "!/x.js"},
                                  {"a.js", "a.js", ""},
                                  {"www/", "www/x.js", "/x.js"},
                                  {"a", "ab/x.js", "ab/x.js"},
                                  {"/", "/x.js", "/x.js"}};
  for (const auto& [application, path, file] : kRows) {
    EXPECT_EQ(inside(application, path), file) << path;
    if (std::string(application) != "/") {
      EXPECT_EQ(outside(application, file), path);
    }
  }
}

// ---- runs ----------------------------------------------------------------------------------------------------------

TEST_F(StoreTest, AnUnfinishedRunGoesOnAndKnowsWhatItHas) {
  const Content known{sha256("a"), 1, ".wgt", ""};
  {
    Store store(file("s"), Store::Mode::write);
    RunWriter run(store, settings(), database(), "");
    EXPECT_FALSE(run.knownContents().contains(known));
    run.add(report("a.wgt", "a"));
  }
  Store store(file("s"), Store::Mode::write);
  {
    RunWriter run(store, settings(), database(), "");
    EXPECT_TRUE(run.knownContents().contains(known));
    EXPECT_FALSE(run.knownContents().contains({sha256("a"), 1, ".js", ""})) << "another kind of file";
    ApplicationReport again;
    again.application = "copy.wgt";
    again.content = hexOf(known.sha256);
    again.contentSuffix = known.suffix;
    again.isStored = true;
    run.add(again);
    run.finish();
  }
  Settings newer = settings();
  newer.tool = "1.31";
  RunWriter run(store, newer, database(), "");
  EXPECT_EQ(run.knownContents().size(), 0U);
  EXPECT_EQ(rows("s", "SELECT tool, applications, finished IS NULL FROM runs ORDER BY tool"),
            (Rows{"1.30|2|0", "1.31|0|1"}));
  EXPECT_EQ(rows("s", kVerdicts), (Rows{"a.wgt|findings|1|2", "copy.wgt|findings|1|2"}));
}

TEST_F(StoreTest, OfResultsThatDifferTheSameOneIsKeptInAnyOrder) {
  ApplicationReport one = report("a.wgt", "a");
  ApplicationReport other = one;
  other.findings.front().call.place.line = 99;
  ApplicationReport failed = one;
  failed.failure = "it takes more memory than there is";
  std::vector<ApplicationReport> order{one, other, failed};
  std::set<Rows> outcomes;
  std::sort(order.begin(), order.end(), [](const auto& a, const auto& b) { return a.failure < b.failure; });
  for (int i = 0; i < 3; ++i) {
    std::rotate(order.begin(), order.begin() + 1, order.end());
    const std::string name = "s" + std::to_string(i);
    write(name, order);
    Rows outcome = rows(name, "SELECT hex(digest) FROM result UNION ALL SELECT hex(digest) FROM conflict");
    for (const std::string& row : rows(name, "SELECT line, failure FROM calls JOIN applications USING(application)"))
      outcome.push_back(row);
    EXPECT_EQ(outcome.size(), 5U);
    outcomes.insert(outcome);
  }
  EXPECT_EQ(outcomes.size(), 1U);
  EXPECT_EQ(rows("s0", "SELECT other_results FROM conflicts"), Rows{"2"});
}

// ---- what can go wrong ---------------------------------------------------------------------------------------------

TEST_F(StoreTest, FilesThatAreNoStoresAreRefusedAndStayAsTheyAre) {
  write("newer", {report("a.wgt", "a")});
  Connection(file("newer"), Connection::Mode::write).execute("PRAGMA user_version = 99");
  Connection(file("foreign"), Connection::Mode::write).execute("CREATE TABLE mine(x)");
  std::ofstream(file("text")) << std::string(5000, 'x');
  write("damaged", {report("a.wgt", "a")});
  {
    std::fstream damaged(file("damaged"), std::ios::in | std::ios::out | std::ios::binary);
    damaged.seekp(4096) << std::string(std::size_t{4096} * 8, '\x55');
  }
  const struct {
    const char* name;
    const char* expected;
  } kRows[] = {{"newer", "version 99, which a newer tarvo-check wrote; this one knows version"},
               {"foreign", "is a database of another program, not a store"},
               {"text", "it is no store, or a damaged one"},
               {"damaged", "damaged"}};
  for (const auto& row : kRows) {
    const std::string name = row.name;
    std::ifstream before(file(name), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(before), {}};
    const std::string message = messageOf([&] {
      Store store(file(name), Store::Mode::write);
      RunWriter run(store, settings(), database(), "first");
      run.add(report("b.wgt", "b"));
    });
    EXPECT_NE(message.find(row.expected), std::string::npos) << name << ": " << message;
    EXPECT_NE(message.find(file(name)), std::string::npos) << message;
    std::ifstream after(file(name), std::ios::binary);
    if (name != "damaged") {
      EXPECT_TRUE((std::string{std::istreambuf_iterator<char>(after), {}}) == bytes) << name;
    }
  }
  EXPECT_NE(messageOf([&] { Store(file("none"), Store::Mode::read); }).find("cannot be opened"), std::string::npos);
  EXPECT_FALSE(fs::exists(file("none")));
}

TEST_F(StoreTest, AStoreThatIsLockedSaysSo) {
  write("s", {report("a.wgt", "a")});
  Connection other(file("s"), Connection::Mode::write);
  const Transaction held(other);
  EXPECT_NE(messageOf([&] { Store(file("s"), Store::Mode::write, 1); }).find("it is locked"), std::string::npos);
  EXPECT_EQ(rows("s", kVerdicts), Rows{"a.wgt|findings|1|2"}) << "who reads is not kept waiting";
}

TEST_F(StoreTest, AMigrationIsDoneWholeOrNotAtAll) {
  write("s", {report("a.wgt", "a")});
  std::vector<const char*> steps = schemaSteps();
  steps.push_back("ALTER TABLE result ADD COLUMN notes; UPDATE result SET notes = 'new'; SELECT no_such_function();");
  Connection connection(file("s"), Connection::Mode::write);
  EXPECT_NE(messageOf([&] { migrate(connection, steps); }), "");
  EXPECT_EQ(connection.integer("SELECT count(*) FROM pragma_table_info('result') WHERE name = 'notes'"), 0);
  EXPECT_EQ(connection.integer("PRAGMA user_version"), static_cast<std::int64_t>(schemaSteps().size()));
  steps.back() = "ALTER TABLE result ADD COLUMN notes; UPDATE result SET notes = 'new'";
  migrate(connection, steps);
  migrate(connection, steps);
  EXPECT_EQ(connection.integer("SELECT count(*) FROM result WHERE notes = 'new'"), 1);
  EXPECT_EQ(rows("s", kVerdicts), Rows{"a.wgt|findings|1|2"});
  EXPECT_NE(messageOf([&] { requireCurrent(connection); }).find("newer"), std::string::npos);
}

// A store may grow to `limit` bytes: returns what was told, and leaves how many applications could be written.
TEST_F(StoreTest, WithoutRoomWhatWasWrittenStays) {
  for (const rlim_t limit : {20'000U, 400'000U, 3'000'000U}) {
    const std::string name = "s" + std::to_string(limit);
    int pipe[2];
    ASSERT_EQ(::pipe(pipe), 0);
    const pid_t child = fork();
    if (child == 0) {
      (void)signal(SIGXFSZ, SIG_IGN);
      const rlimit room{limit, limit};
      (void)setrlimit(RLIMIT_FSIZE, &room);
      int written = 0;
      const std::string message = messageOf([&] {
        Store store(file(name), Store::Mode::write);
        RunWriter run(store, settings(), database(), "first");
        for (;; ++written)
          run.add(report("a" + std::to_string(written), std::to_string(written)));
      });
      const std::string told = std::to_string(written) + " " + message;
      _exit(::write(pipe[1], told.data(), told.size()) < 0 ? 1 : 0);
    }
    close(pipe[1]);
    char text[400] = {};
    ASSERT_GT(read(pipe[0], text, sizeof text - 1), 0);
    close(pipe[0]);
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_EQ(status, 0);
    EXPECT_NE(std::string(text).find("there is no room left"), std::string::npos) << text;
    const int written = std::stoi(text);
    if (limit > 100'000) {
      EXPECT_GT(written, 5);
    }
    if (written > 0) {
      EXPECT_EQ(rows(name, "SELECT count(*) FROM applications"), Rows{std::to_string(written)});
    }
    // With room again it goes on.
    write(name, {report("later", "later")});
    EXPECT_EQ(rows(name, "SELECT count(*) FROM applications"), Rows{std::to_string(written + 1)});
    EXPECT_EQ(rows(name, "PRAGMA integrity_check"), Rows{"ok"});
  }
}

TEST_F(StoreTest, AKilledWriterLeavesWholeApplications) {
  for (int i = 1; i <= 10; ++i) {
    int pipe[2];
    ASSERT_EQ(::pipe(pipe), 0);
    const pid_t child = fork();
    if (child == 0) {
      Store store(file("s"), Store::Mode::write);
      RunWriter run(store, settings(), database(), "first");
      for (int written = 0;; ++written) {
        run.add(report("a" + std::to_string(written), std::to_string(written)));
        if (::write(pipe[1], ".", 1) != 1) _exit(1);
      }
    }
    close(pipe[1]);
    // So many are written, and the next one is begun.
    char byte = 0;
    for (int written = 0; written < 10 * i; ++written)
      ASSERT_EQ(read(pipe[0], &byte, 1), 1);
    usleep(static_cast<useconds_t>(37 * i));
    (void)kill(child, SIGKILL);
    ASSERT_EQ(waitpid(child, nullptr, 0), child);
    close(pipe[0]);
    EXPECT_EQ(rows("s", "PRAGMA integrity_check"), Rows{"ok"});
    EXPECT_EQ(rows("s", "SELECT count(*) FROM applications WHERE calls != 2"), Rows{"0"});
    EXPECT_GE(std::stoi(rows("s", "SELECT count(*) FROM applications").front()), 10 * i) << "what was written is there";
  }
}

}  // namespace
}  // namespace store

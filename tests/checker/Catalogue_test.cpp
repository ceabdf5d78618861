// Many applications at once: what happens in one worker is no other's concern.

#include <signal.h>
#include <unistd.h>

#include <algorithm>

#include "CheckerFixture.h"
#include "checker/run/SentReport.h"
#include "support/CraftedZip.h"

namespace {

class Catalogue : public Checker {
 protected:
  // A checker that goes on while the test does.
  struct Started {
    pid_t process;
    std::string output;  // file
    std::string text() const {
      std::ifstream stream(output);
      return {std::istreambuf_iterator<char>(stream), {}};
    }
    int status() const {
      int status = 0;
      waitpid(process, &status, 0);
      return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }
    std::vector<pid_t> children() const {
      const std::string id = std::to_string(process);
      std::ifstream stream("/proc/" + id + "/task/" + id + "/children");
      return {std::istream_iterator<pid_t>(stream), {}};
    }
  };
  static Started start(const std::string& arguments, const std::string& before = "") {
    const std::string command = before + "exec " CHECKER " " + arguments + " >output 2>&1";
    const pid_t process = fork();
    if (process == 0) {
      execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
      _exit(127);
    }
    return {process, "output"};
  }
};

const std::string kClean = kExamples + "/clean.wgt";
const std::string kProcess = "could not check: the process that checked it ";

TEST_F(Catalogue, EachBoundAndEachEndOfAWorkerIsAReason) {
  write("bomb.wgt", craftedZip({{"a.js", std::string(3 << 20, '\0'), true}}));
  write("fits.wgt", craftedZip({{"a.js", std::string(2 << 20, ' '), true}}));
  struct Row {
    std::string name, options, reason;
  };
  for (const Row& row : std::vector<Row>{
           {"bomb", "--unpacked 2", "could not check: its packages unpack to more than the 2 MiB of --unpacked"},
           {"fits", "--unpacked 2", "clean: no plug-in object is used"},
           {"fault-hang", "--timeout 1", "could not check: it takes longer than the 1 second of --timeout"},
           {"fault-memory", "--memory 300", "could not check: it takes more memory than the 300 MiB of --memory"},
           {"fault-crash", "", kProcess + "was ended by SIGSEGV (Segmentation fault)"},
           {"fault-exit", "", kProcess + "ended with status 7"},
           {"fault-silent", "", kProcess + "gave no report that can be read"},
           {"fault-garbage", "", kProcess + "gave no report that can be read"},
           {"fault-deep", "", kProcess + "gave no report that can be read"},
           {"fault-flood", "", "could not check: its report is larger than 256 MiB"},
       }) {
    if (row.name == "fault-memory" && !kIsMemoryBounded) continue;
    const std::string name = row.name + ".wgt";
    std::ofstream(name, std::ios::app).flush();
    const Output output = check(row.options + " --jobs 2 " + name + " " + kClean);
    expectReports(output.text,
                  name + ": " + row.reason + "\n" + kClean + ": clean: 9 calls on 2 plug-ins, all documented\n");
    EXPECT_EQ(output.status, row.name == "fits" ? 0 : 2) << name;
    EXPECT_TRUE(fs::is_empty(directory_ + "/tmp")) << name;
  }
}

// What the engine has found stays, whatever the rules behind it come to.
TEST_F(Catalogue, AnEndOfAWorkerBehindTheEngineLosesNoFinding) {
  if (!kHasFlow) return;
  const std::string broken = ": no other rules than these came to an end: engine; ";
  struct Row {
    std::string name, options, reason;
  };
  for (const Row& row : std::vector<Row>{
           {"late-fault-hang", "--timeout 1", "it takes longer than the 1 second of --timeout"},
           {"late-fault-crash", "", "the process that checked it was ended by SIGSEGV (Segmentation fault)"},
           {"late-fault-memory", "--memory 300", "it takes more memory than the 300 MiB of --memory"},
       }) {
    if (row.name == "late-fault-memory" && !kIsMemoryBounded) continue;
    const std::string name = row.name + ".wgt";
    fs::copy_file(kExamples + "/undocumented.wgt", name);
    const Output found = check(row.options + " " + name);
    EXPECT_EQ(found.status, 1) << found.text;
    expectReports(found.text, name + "!/www/js/main.js:57:16: undocumented API 'GetSerial' on MORVANE-NAVERTIX-TUNER " +
                                  "(variable)\nnot checked: " + name + broken + row.reason + "\n");
    fs::copy_file(kClean, name, fs::copy_options::overwrite_existing);
    EXPECT_EQ(check(row.options + " " + name).status, 3);
    EXPECT_EQ(check(row.options + " --device " + name).status, 0);
    const Output stored = check(row.options + " --store s " + name + "; " CHECKER " catalogue --store s");
    EXPECT_NE(stored.text.find("could not check"), std::string::npos) << stored.text;
  }
}

TEST_F(Catalogue, OtherCommandsAreBoundedToo) {
  write("bomb.wgt", craftedZip({{"a.js", std::string(3 << 20, '\0'), true}}));
  const std::string process = "the process that checked it ";
  struct Row {
    std::string arguments, reason;
  };
  for (const Row& row : std::vector<Row>{
           {"explain --unpacked 2 bomb.wgt", "its packages unpack to more than the 2 MiB of --unpacked"},
           {"explain --timeout 1 fault-hang.wgt", "it takes longer than the 1 second of --timeout"},
           {"disassemble --timeout 1 fault-hang.wgt", "it takes longer than the 1 second of --timeout"},
           {"decompile --memory 300 fault-memory.wgt", "it takes more memory than the 300 MiB of --memory"},
           {"explain --memory 300 fault-memory.wgt", "it takes more memory than the 300 MiB of --memory"},
           {"disassemble fault-crash.wgt", process + "was ended by SIGSEGV (Segmentation fault)"},
           {"explain fault-exit.wgt", process + "ended with status 7"},
           {"explain fault-silent.wgt", "the process that worked on it gave nothing that can be read"},
           {"explain fault-deep.wgt", "the process that worked on it gave nothing that can be read"},
           {"explain --memory 200 fault-flood.wgt", "its report is larger than 200 MiB"},
       }) {
    if (row.arguments.find("fault-memory") != std::string::npos && !kIsMemoryBounded) continue;
    const std::string name = row.arguments.substr(row.arguments.rfind(' ') + 1);
    std::ofstream(name, std::ios::app).flush();
    const Output output = check(row.arguments + " 2>&1");
    const std::string expected =
        "tarvo-check: " + name + ": " + row.reason + "\n";  // an emulator adds a line before it
    EXPECT_EQ(output.text.substr(output.text.size() - std::min(output.text.size(), expected.size())), expected);
    EXPECT_EQ(output.status, 2) << row.arguments;
    EXPECT_TRUE(fs::is_empty(directory_ + "/tmp")) << row.arguments;
  }
}

TEST_F(Catalogue, ReportsComeInTheOrderOfTheArguments) {
  std::string arguments = "--jobs 4 --timeout 1", expected;
  const auto add = [&](const std::string& name, const std::string& package, const std::string& verdict) {
    if (!package.empty()) fs::copy_file(package, name);
    arguments += " " + name;
    expected += name + ": " + verdict + "\n";
  };
  for (int i = 0; i < 60; ++i) {
    if (i == 3) {
      write("fault-hang.wgt", "");
      add("fault-hang.wgt", "", "could not check: it takes longer than the 1 second of --timeout");
    }
    if (i == 15) {
      write("fault-crash.wgt", "");
      add("fault-crash.wgt", "", kProcess + "was ended by SIGSEGV (Segmentation fault)");
    }
    if (i == 20) add("missing.wgt", "", "could not check: no such file or directory");
    add("app-" + std::to_string(i) + ".wgt", kClean, "clean: 9 calls on 2 plug-ins, all documented");
  }
  const Output output = check(arguments);
  expectReports(output.text, expected);
  EXPECT_EQ(output.status, 2);
}

TEST_F(Catalogue, AKilledWorkerIsToldOf) {
  write("fault-hang.wgt", "");
  const Started run = start("--jobs 1 fault-hang.wgt " + kClean);
  awaitRuns(1);
  ASSERT_EQ(run.children().size(), 1U);
  kill(run.children().front(), SIGKILL);
  EXPECT_EQ(run.status(), 2);
  expectReports(run.text(),
                "fault-hang.wgt: could not check: the process that checked it was ended by SIGKILL (Killed)\n" +
                    kClean + ": clean: 9 calls on 2 plug-ins, all documented\n");
}

TEST_F(Catalogue, AnInterruptedRunPrintsWhatWasDone) {
  for (const char* name : {"fault-hang.wgt", "fault-hang.zip"})
    write(name, "");
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    const Started run =
        start("--jobs 2 --output r.txt " + kClean + " fault-hang.wgt missing.wgt fault-hang.zip missing.wgt");
    awaitRuns(2);
    // The terminal sends its signal to the workers, too.
    for (const pid_t worker : run.children())
      kill(worker, signal);
    kill(run.process, signal);
    EXPECT_EQ(run.status(), 128 + signal);
    EXPECT_EQ(run.text(), "2 applications: 1 clean, 1 could not be checked; 0 uses of undocumented APIs\n");
    expectReports(runCommand("cat r.txt").text, kClean +
                                                    ": clean: 9 calls on 2 plug-ins, all documented\nmissing.wgt: "
                                                    "could not check: no such file or directory\n");
    EXPECT_TRUE(fs::is_empty(directory_ + "/tmp"));
  }
  const Started ignoring = start("--timeout 3 fault-hang.wgt", "trap '' INT; ");
  awaitRuns(1);
  kill(ignoring.process, SIGINT);
  EXPECT_EQ(ignoring.status(), 2) << "as with nohup";
}

TEST_F(Catalogue, WorkersEndWithTheCheckerWhateverEndsIt) {
  for (const char* name : {"fault-hang.wgt", "fault-hang.zip", "fault-hang.js"})
    write(name, "");
  const Started run = start("--jobs 3 fault-hang.wgt fault-hang.zip fault-hang.js");
  awaitRuns(3);
  const std::vector<pid_t> workers = run.children();
  EXPECT_EQ(workers.size(), 3U);
  kill(run.process, SIGKILL);
  EXPECT_EQ(run.status(), -SIGKILL);
  EXPECT_TRUE(isTidy());
  for (const pid_t worker : workers) {
    std::string state;
    for (int tries = 0; tries < 1000 && state != "gone" && state != "Z"; ++tries) {  // the kernel takes its time
      if (tries > 0) std::this_thread::sleep_for(std::chrono::milliseconds(10));
      std::ifstream stat("/proc/" + std::to_string(worker) + "/stat");
      std::string id, name;
      state = "gone";
      stat >> id >> name >> state;
    }
    EXPECT_TRUE(state == "gone" || state == "Z") << state;
  }
}

TEST_F(Catalogue, SurvivesStandardOutputThatIsGone) {
  const std::string many = kClean + " " + kClean + " " + kClean;
  EXPECT_EQ(runCommand("(" CHECKER " --jobs 1 " + many + " 2>&1; echo $? >status) | true; sleep 0.1; cat status").text,
            "141\n");
  const Output full = runCommand(CHECKER " " + many + " 2>&1 >/dev/full");
  EXPECT_EQ(full.text, "tarvo-check: cannot write to standard output: No space left on device\n");
  EXPECT_EQ(full.status, 2);
  EXPECT_EQ(runCommand(CHECKER " --device --output r.txt " + kClean + " <&- >&- 2>&-; echo $?; cat r.txt").text,
            "0\n" + kClean + ": clean: 9 calls on 2 plug-ins, all documented\nrules: engine\n");
}

TEST(WorkerReports, AreTakenOnlyIfTheyAreSound) {
  ApplicationReport report;
  report.application = "other.wgt";
  report.notChecked.push_back({"part \xFF", "reason"});
  report.findings.emplace_back().call.excerpt = {3, "tv.GetSerial()"};
  const std::string sent = bytesOf(report);
  const auto taken = [](const std::string& bytes) { return reportOf("app.wgt", {bytes, "", 0}); };
  const ApplicationReport sound = taken(sent);
  EXPECT_EQ(sound.application, "app.wgt") << "whatever the worker calls it";
  EXPECT_EQ(sound.verdict, Verdict::findings) << "and whatever it concludes";
  EXPECT_EQ(sound.notChecked.at(0).part, "part \xFF");
  for (std::size_t i = 0; i < sent.size(); ++i) {
    EXPECT_EQ(taken(sent.substr(0, i)).verdict, Verdict::notChecked);
    for (const char byte : {'\0', '\x5B', '\x7F', '\x9B', '\xBF', '\xFF'}) {
      std::string damaged = sent;
      damaged[i] = byte;
      EXPECT_EQ(taken(damaged).application, "app.wgt");
    }
  }
}

}  // namespace

// A machine that fails while an application is checked: whatever happens, the run ends with a code of its own and
// leaves no descriptor and no directory behind.

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

#include "support/Child.h"
#include "support/EngineFixture.h"
#include "swf-assembler/Assembler.h"
#include "tarvo/api_check_engine.h"

namespace fs = std::filesystem;

namespace {

class Faults : public EngineTest {
 protected:
  Faults() {
    const std::string movie = swf_assembler::assemble(
        "signature CWS\ndoaction {\nPush 0 \"tv\" 1 \"getObj\"\nCallFunction\nPush \"GetModel\"\nCallMethod\n}\nend\n");
    addHtml("<object id='tv' classid='MORVANE-NAVERTIX-TUNER'></object>");
    addZip("app.wgt", {{"a/b/c/d/e/f/g/h/i/j/k/l/first.js", "var a;"},
                       {"www/js/main.js", "function f() { document.getElementById('tv').Play(); }"},
                       {"inner.zip", zipBytes({{"movie.swf", movie}})}});
  }

  // A run that has nothing of an earlier one to remember.
  RunResult runAfresh() {
    engine().extractedFileList.clear();
    engine().extractedDirList.clear();
    clearLog();
    return run();
  }

  // After a fault: what a run over the application above must leave as it was.
  void expectNothingLeft() {
    for (const auto& entry : fs::directory_iterator(directory())) {
      const std::string name = entry.path().filename();
      EXPECT_TRUE(name == "app" || name == "database.xml" || name == "AnalysisResult") << name;
    }
    EXPECT_EQ(openDescriptors(), descriptors_);
  }

  static std::ptrdiff_t openDescriptors() { return std::distance(fs::directory_iterator("/proc/self/fd"), {}); }

  const Texts finding_{"../(0) : UndocumentedAPI 'GetModel' used\n"};

 private:
  const std::ptrdiff_t descriptors_ = openDescriptors();
};

TEST_F(Faults, NoneIsTheFindingOfAllTests) {
  EXPECT_EQ(run(), RUN_UNDOCUMENTED_API);
  expectFindings(finding_);
  expectNothingLeft();
}

TEST_F(Faults, ADiskThatFillsUpCostsTheRestOfThePackage) {
  child::run([&] {
    child::enterMountNamespace();
    child::mountEmpty(directory(), "size=1m");
    setDatabase({"Play"});
    addZip("app.wgt", {{"a.js", "a"}, {"big.js", std::string(2 << 20, ' ')}, {"b.js", "b"}});
    addFile("index.html", "<html/>");
    EXPECT_EQ(run(), RUN_SUCCESS);
    EXPECT_EQ(log("not extracted"), (Texts{"do_extract:  entry [big.js] not extracted [-1] "}));
    EXPECT_EQ(engine().extractedFileList.size(), 2U);
    expectNothingLeft();
  });
}

TEST_F(Faults, AFullDiskCostsTheResultFileOnly) {
  child::run([&] {
    child::enterMountNamespace();
    child::mountEmpty(directory(), "size=1m");
    setDatabase({});
    addHtml("<object id='tv' classid='MORVANE-NAVERTIX-TUNER'></object>");
    addScript("function f() { var tv = document.getElementById('tv'); tv.Play(); }");
    writeFile(directory() + "/app/filler", std::string(2 << 20, 'x'));
    EXPECT_EQ(run(), RUN_UNDOCUMENTED_API);
    EXPECT_EQ(*g_SWFResultVector, (Texts{"../main.js(1) : UndocumentedAPI 'Play' used\n"}));
    EXPECT_EQ(resultFile(), "");
    EXPECT_EQ(log("Write Error"), (Texts{"StartAnalysis:  file[" + directory() + "/AnalysisResult] Write Error "}));
  });
}

TEST_F(Faults, AResultFileThatIsNotOursStaysAsItIs) {
  const fs::path victim = addFile("victim", "kept");
  const fs::path place = directory() + "/AnalysisResult";
  const std::function<void()> plants[] = {
      [&] { fs::create_symlink(victim, place); },
      [&] { fs::create_symlink(directory() + "/app/missing", place); },
      [&] { fs::create_hard_link(victim, place); },
      [&] { mkfifo(place.c_str(), 0666); },
      [&] { setResultFile(directory() + "/missing/AnalysisResult"); },
  };
  for (const auto& plant : plants) {
    plant();
    EXPECT_EQ(runAfresh(), RUN_UNDOCUMENTED_API);
    EXPECT_EQ(*g_SWFResultVector, finding_);
    EXPECT_EQ(log("Open Error ").size(), 1U);
    EXPECT_EQ(readFile(victim), "kept");
    EXPECT_FALSE(fs::exists(directory() + "/app/missing"));
    fs::remove(place);
    expectNothingLeft();
  }
}

TEST_F(Faults, WithoutAnExtractionRootThePackagesAreMissing) {
  for (const std::string& root : {directory() + "/missing", std::string("/proc/sys")}) {
    setExtractionRoot(root);
    EXPECT_EQ(runAfresh(), RUN_SUCCESS);
    EXPECT_EQ(log(" [" + root + "/").size(), 1U) << root;
    expectNothingLeft();
  }
}

TEST_F(Faults, FilesThatChangeBetweenListingAndReading) {
  const std::function<void(const fs::path&)> changes[] = {
      [](const fs::path& file) { fs::remove(file); },
      [](const fs::path& file) { fs::resize_file(file, 0); },
      [](const fs::path& file) { fs::resize_file(file, fs::file_size(file) / 2); },
      [](const fs::path& file) { fs::remove(file), fs::create_directory(file); },
      [](const fs::path& file) { fs::remove_all(file.parent_path()); },
  };
  for (const auto& change : changes) {
    onLog([&](const std::string& line) {
      const std::size_t path = line.find("added path : [");
      if (path == std::string::npos) return;
      const fs::path file = line.substr(path + 14, line.size() - path - 15);
      if (fs::exists(file)) change(file);
    });
    EXPECT_EQ(runAfresh(), RUN_SUCCESS);
    expectNothingLeft();
  }
}

TEST_F(Faults, FewDescriptorsCostFilesButNothingElse) {
  EXPECT_EQ(runAfresh(),
            RUN_UNDOCUMENTED_API);  // a sanitizer needs descriptors where it meets a type for the first time
  const int next = dup(0);
  close(next);
  rlimit before{};
  getrlimit(RLIMIT_NOFILE, &before);
  for (rlim_t spare = 0; spare < 12; ++spare) {
    SCOPED_TRACE(spare);
    const rlimit few{static_cast<rlim_t>(next) + spare, before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &few);
    const RunResult code = runAfresh();
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(code, spare == 0 ? RUN_DB_LOAD_FAILED : spare < 3 ? RUN_SUCCESS : RUN_UNDOCUMENTED_API);
    EXPECT_EQ(log("Open Error").empty() && log("not extracted").empty(), spare >= 3);
    expectNothingLeft();
  }
}

TEST_F(Faults, SignalsDoNotInterruptARun) {
  struct sigaction action {};
  action.sa_handler = [](int) {};
  struct sigaction before {};
  sigaction(SIGALRM, &action, &before);
  const itimerval often{{0, 100}, {0, 100}};
  setitimer(ITIMER_REAL, &often, nullptr);
  const RunResult code = run();
  const itimerval never{};
  setitimer(ITIMER_REAL, &never, nullptr);
  sigaction(SIGALRM, &before, nullptr);
  EXPECT_EQ(code, RUN_UNDOCUMENTED_API);
  expectFindings(finding_);
  expectNothingLeft();
}

TEST_F(Faults, AWorkingDirectoryThatIsGoneIsNotMissed) {
  const std::string gone = directory() + "/gone";
  fs::create_directory(gone);
  fs::current_path(gone);
  fs::remove(gone);
  EXPECT_EQ(run(), RUN_UNDOCUMENTED_API);
  expectFindings(finding_);
  expectNothingLeft();
}

}  // namespace

// The library as a host loads it: opened at run time, at the device's paths, with the host's own Print_Log.
//
// Every case is a process of its own, in namespaces in which /tmp and /usr/share are empty and private to it. So the
// suite needs no root and leaves nothing behind. What a case takes from the build is read or opened before, because the
// build itself may be somewhere under /tmp.

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <malloc.h>
#include <minizip/zip.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/Child.h"
#include "tarvo/Print_Log.h"
#include "tarvo/api_check_engine.h"

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

namespace {

constexpr const char* kDatabase = "/usr/share/lumeric/APIAnalEngineDB.xml";
constexpr const char* kResultFile = "/tmp/AnalysisResult";
constexpr const char* kPackage = "/tmp/app.wgt";

Texts hostLog;
int linesUntilThrow = -1;  // the host's log function throws where this is 0

}  // namespace

// The host's: it must be this one that the library calls, not the weak one of its own.
void Print_Log(const char* function, unsigned, char* format, ...) {
  char text[4096];
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  hostLog.push_back(std::string(function) + ": " + text);
  if (linesUntilThrow-- == 0) throw std::runtime_error("the log is full");
}

namespace {

std::string readFile(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

void writeFile(const std::string& path, const std::string& bytes) {
  EXPECT_TRUE(std::ofstream(path, std::ios::binary) << bytes << std::flush) << path;
}

void zipOneFile(const char* entry, const std::string& bytes) {
  const zipFile zip = zipOpen(kPackage, APPEND_STATUS_CREATE);
  zipOpenNewFileInZip(zip, entry, nullptr, nullptr, 0, nullptr, 0, nullptr, Z_DEFLATED, Z_DEFAULT_COMPRESSION);
  zipWriteInFileInZip(zip, bytes.data(), static_cast<unsigned>(bytes.size()));
  zipCloseFileInZip(zip);
  zipClose(zip, nullptr);
}

Texts filesInTmp() {
  Texts names;
  for (const fs::directory_entry& entry : fs::directory_iterator("/tmp")) {
    names.push_back(entry.path().filename());
  }
  std::sort(names.begin(), names.end());
  return names;
}

// From here on, this process has a /tmp and a /usr/share of its own, both empty but for the database's directory.
void enterDevice() {
  child::enterMountNamespace();
  child::mountEmpty("/tmp");
  child::mountEmpty("/usr/share");
  fs::create_directory(fs::path(kDatabase).parent_path());
}

// The library, opened, and a host's use of it.
class Host {
 public:
  Host() : library_(dlopen(LIBRARY, RTLD_NOW)) { EXPECT_NE(library_, nullptr) << dlerror(); }

  template <typename T>
  T* symbol(const char* name) const {
    void* found = dlsym(library_, name);
    EXPECT_NE(found, nullptr) << name;
    return reinterpret_cast<T*>(found);
  }

  void close() { EXPECT_EQ(dlclose(library_), 0); }

  // One application from the first call to the last; its findings are in `findings` afterwards.
  RunResult analyse(Texts files) {
    symbol<decltype(createResultVector)>("createResultVector")()->push_back("of an earlier run");
    IAppAnalysis* engine = symbol<decltype(createInstance)>("createInstance")();
    const Texts given = files;
    const RunResult code = engine->StartAnalysis(&files);
    EXPECT_EQ(files, given);
    findings = **symbol<Texts*>("g_SWFResultVector");
    symbol<decltype(destoryInstance)>("destoryInstance")(engine);
    symbol<decltype(destoryResultVector)>("destoryResultVector")();
    return code;
  }

  Texts findings;

 private:
  void* library_;
};

// A page whose call stands on line 12.
constexpr const char* kPage = R"html(<html>
<head>
<title>Model</title>
</head>
<body onload="start()">
<object id="tv" classid="clsid:MORVANE-NAVERTIX-KOB"></object>
<p id="model"></p>
<script type="text/javascript">
function start() {
  var t = document.getElementById("tv");

  t.GetModel();
}
</script>
)html";

TEST(HostLoads, AnalysesPackagesAtTheDevicesPaths) {
  const struct {
    const char* example;  // null: a package of kPage
    RunResult code;
    Texts findings;
    int webSources;
  } rows[] = {
      {"undocumented.wgt", RUN_UNDOCUMENTED_API, {"../main.js(57) : UndocumentedAPI 'GetSerial' used\n"}, 3},
      {"clean.wgt", RUN_SUCCESS, {}, 5},
      {"flash-undocumented.wgt", RUN_UNDOCUMENTED_API, {"../(-1) : UndocumentedAPI 'GetSerial' used\n"}, 2},
      {"flash-clean.wgt", RUN_SUCCESS, {}, 2},
      {"nested.wgt", RUN_UNDOCUMENTED_API, {"../player.js(20) : UndocumentedAPI 'GetSerial' used\n"}, 7},
      {nullptr, RUN_UNDOCUMENTED_API, {"../index.html(12) : UndocumentedAPI 'GetModel' used\n"}, 1},
  };
  const std::string database = readFile(DATABASE);
  for (const auto& row : rows) {
    SCOPED_TRACE(row.example == nullptr ? "page" : row.example);
    const std::string package = row.example == nullptr ? "" : readFile(std::string(EXAMPLES "/") + row.example);
    child::run([&] {
      Host host;
      enterDevice();
      writeFile(kDatabase, database);
      row.example == nullptr ? zipOneFile("app/www/index.html", kPage) : writeFile(kPackage, package);
      EXPECT_EQ(host.analyse({kPackage}), row.code);
      EXPECT_EQ(host.findings, row.findings);
      EXPECT_EQ(readFile(kResultFile), row.findings.empty() ? "" : row.findings[0]);
      const std::string scanned = "FirstScanSource:  WorthFul File [" + std::to_string(row.webSources) + "] EA";
      EXPECT_EQ(std::count(hostLog.begin(), hostLog.end(), scanned), 1) << scanned;
      EXPECT_EQ(filesInTmp(), (Texts{"AnalysisResult", "app.wgt"}));
      char directory[4096];
      EXPECT_EQ(getcwd(directory, sizeof directory), nullptr) << "still in " << directory;
      EXPECT_EQ(errno, ENOENT);  // the process was left in the extraction directory, which is gone
    });
  }
}

// The whole log of an engine that is built, runs over no files and is destroyed; "#" stands for clock readings.
Texts logOfAnEmptyRun(RunResult code, bool resultFileOpens) {
  const std::string number = std::to_string(static_cast<int>(code));
  Texts log{"APIAnalysis: Engine Version [140808_QX_1.30] ", "APIAnalysis: [APIAnalysis] [sec:usec] : # ",
            "addFilePathbyUnzipping:  \n [addFilePathbyUnzipping] [0]"};
  const auto add = [&log](const Texts& lines) { log.insert(log.end(), lines.begin(), lines.end()); };
  if (code != RUN_SUCCESS) add({"Init:  loadDeviceAPIInfo Error [" + number + "] "});
  add({"PrintProcessingTime: Time [Init]:# "});
  if (code != RUN_SUCCESS) {
    add({"StartAnalysis: [StartAnalysis] Init-returnCode [" + number + "] "});
  } else {
    add({"FirstScanSource:  WorthFul File [0] EA", "PrintProcessingTime: Time [FirstScanSource]:# ",
         "PrintProcessingTime: Time [Prepare]:# ", "PrintProcessingTime: Time [GetDeviceAPIsFromSWFMain]:# ",
         "PrintProcessingTime: Time [AfterFindObjectTagToken]:# ",
         "PrintProcessingTime: Time [AfterFindAPIFunctionName4JS]:# ", "PrintProcessingTime: Time [Finished]:# "});
  }
  add({"StartAnalysis:  outPutFileFullPath [/tmp/AnalysisResult]"});
  if (!resultFileOpens) add({"StartAnalysis:  file[/tmp/AnalysisResult] Open Error "});
  if (code != RUN_SUCCESS) add({"StartAnalysis: [0][StartAnalysis] returnCode [" + number + "] "});
  add({"~APIAnalysis: [~APIAnalysis] ", "~APIAnalysis: [~APIAnalysis] [sec:nsec] : # ",
       "~APIAnalysis: [DeviceAPI]==============================================================",
       "~APIAnalysis: ### All Symbol Table data is Successfully deleted!! ###"});
  return log;
}

TEST(HostLoads, HostsLogGetsEveryLineWhateverTheCode) {
  const std::string database = readFile(DATABASE);
  const struct {
    const char* name;
    const char* database;  // null: no such file
    bool resultFileOpens;
    RunResult code;
  } rows[] = {
      {"complete", database.c_str(), true, RUN_SUCCESS},
      {"complete, result file blocked", database.c_str(), false, RUN_SUCCESS},
      {"no database", nullptr, true, RUN_DB_LOAD_FAILED},
      {"no database, result file blocked", nullptr, false, RUN_DB_LOAD_FAILED},
      {"database without root", "<Other><Plugin><Function>Play</Function></Plugin></Other>", true, RUN_DB_NO_ROOT},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    child::run([&] {
      Host host;
      enterDevice();
      if (row.database != nullptr) writeFile(kDatabase, row.database);
      if (row.resultFileOpens) {
        writeFile(kResultFile, "of an earlier run");
      } else {
        fs::create_directory(kResultFile);
      }
      EXPECT_EQ(host.analyse({}), row.code);
      EXPECT_EQ(host.findings, Texts{});
      EXPECT_TRUE(fs::is_directory(kResultFile) || readFile(kResultFile).empty());
      for (std::string& line : hostLog)
        line = std::regex_replace(line, std::regex("[0-9]+:[0-9]+ $"), "# ");
      EXPECT_EQ(hostLog, logOfAnEmptyRun(row.code, row.resultFileOpens));
    });
  }
}

TEST(HostLoads, DestroyingNothingDoesNothing) {
  child::run([] {
    Host host;
    host.symbol<decltype(destoryInstance)>("destoryInstance")(nullptr);
    host.symbol<decltype(destoryResultVector)>("destoryResultVector")();
    EXPECT_EQ(*host.symbol<Texts*>("g_SWFResultVector"), nullptr);
    EXPECT_EQ(hostLog, Texts{});
  });
}

TEST(HostLoads, LinesOfAHostWithoutALogAreDiscarded) {
  std::FILE* pipe = popen("'" PLAIN_HOST "' '" LIBRARY "' 2>&1", "r");
  ASSERT_NE(pipe, nullptr);
  char output[4096];
  const std::string printed(output, std::fread(output, 1, sizeof output, pipe));
  EXPECT_EQ(pclose(pipe), 0);
  EXPECT_EQ(printed, "");
}

// ---- hosts that misuse the interface (docs/device.md) --------------------------------------------------------------

// A device with the page as a package; its run has one finding, kFinding.
const Texts kFinding = {"../index.html(12) : UndocumentedAPI 'GetModel' used\n"};

void enterDeviceWithPage() {
  const std::string database = readFile(DATABASE);
  enterDevice();
  writeFile(kDatabase, database);
  zipOneFile("app/www/index.html", kPage);
}

TEST(HostMisuses, SecondRunsAndSecondEnginesShareOneList) {
  child::run([] {
    const Host host;
    enterDeviceWithPage();
    const Texts& list = *host.symbol<decltype(createResultVector)>("createResultVector")();
    Texts files{kPackage};
    Texts noFiles;
    IAppAnalysis* engines[2];
    for (IAppAnalysis*& engine : engines)
      engine = host.symbol<decltype(createInstance)>("createInstance")();
    EXPECT_EQ(engines[0]->StartAnalysis(&files), RUN_UNDOCUMENTED_API);
    EXPECT_EQ(list, kFinding);
    EXPECT_EQ(engines[0]->StartAnalysis(&files), RUN_UNDOCUMENTED_API);
    EXPECT_EQ(list, (Texts{"../index.html(-1) : UndocumentedAPI 'GetModel' used\n"}));  // paths of both, texts of one
    EXPECT_EQ(engines[1]->StartAnalysis(&noFiles), RUN_SUCCESS);
    EXPECT_EQ(list, Texts{});
    host.symbol<decltype(destoryInstance)>("destoryInstance")(engines[0]);
    EXPECT_EQ(engines[1]->StartAnalysis(&files), RUN_UNDOCUMENTED_API);
    EXPECT_EQ(list, kFinding);
    host.symbol<decltype(destoryInstance)>("destoryInstance")(engines[1]);
    host.symbol<decltype(destoryResultVector)>("destoryResultVector")();
  });
}

TEST(HostMisuses, AnExceptionOfTheLogReachesTheHostAndLeavesNothing) {
  child::run([] {
    Host host;
    enterDeviceWithPage();
    EXPECT_EQ(host.analyse({kPackage}), RUN_UNDOCUMENTED_API);
    const auto isOfRun = [](const std::string& line) { return line.rfind("~APIAnalysis", 0) != 0; };
    const auto lines = static_cast<int>(std::count_if(hostLog.begin(), hostLog.end(), isOfRun));
    ASSERT_GT(lines, 10);
    host.symbol<decltype(createResultVector)>("createResultVector")();
    for (int line = 0; line < lines; ++line) {
      SCOPED_TRACE(line);
      IAppAnalysis* engine = nullptr;
      Texts files{kPackage};
      linesUntilThrow = line;
      EXPECT_THROW(
          {
            engine = host.symbol<decltype(createInstance)>("createInstance")();
            engine->StartAnalysis(&files);
          },
          std::runtime_error);
      linesUntilThrow = -1;
      host.symbol<decltype(destoryInstance)>("destoryInstance")(engine);
      EXPECT_EQ(filesInTmp(), (Texts{"AnalysisResult", "app.wgt"}));
    }
    host.symbol<decltype(destoryResultVector)>("destoryResultVector")();
    EXPECT_EQ(host.analyse({kPackage}), RUN_UNDOCUMENTED_API);
    EXPECT_EQ(host.findings, kFinding);
  });
}

// The two uses of the list that end the process, in a process for which that is no news.
TEST(HostMisuses, RunningWithoutAListOrDestroyingItTwiceEndsTheProcess) {
  constexpr int kSurvived = 42;
  const auto withoutList = [](const Host& host) {
    Texts files;
    (void)host.symbol<decltype(createInstance)>("createInstance")()->StartAnalysis(&files);
  };
  const auto listDestroyedTwice = [](const Host& host) {
    host.symbol<decltype(createResultVector)>("createResultVector")()->push_back("of a run");
    for (int i = 0; i < 2; ++i)
      host.symbol<decltype(destoryResultVector)>("destoryResultVector")();
  };
  void (*const misuses[])(const Host&) = {withoutList, listDestroyedTwice};
  for (const auto misuse : misuses) {
    child::run([&] {
      const Host host;
      enterDevice();
      const pid_t process = fork();
      if (process == 0) {
        const rlimit noCore{};
        setrlimit(RLIMIT_CORE, &noCore);
        std::fclose(stderr);  // what an emulator or a sanitizer says of it
        misuse(host);
        _exit(kSurvived);
      }
      int status = 0;
      EXPECT_EQ(waitpid(process, &status, 0), process);
      EXPECT_FALSE(WIFEXITED(status) && (WEXITSTATUS(status) == kSurvived || WEXITSTATUS(status) == 0));
    });
  }
}

TEST(HostMisuses, LoadingAThousandTimesLeavesNothing) {
  child::run([] {
    const auto useOnce = [] {
      Host host;
      host.symbol<decltype(createResultVector)>("createResultVector")();
      host.symbol<decltype(destoryInstance)>("destoryInstance")(
          host.symbol<decltype(createInstance)>("createInstance")());
      host.symbol<decltype(destoryResultVector)>("destoryResultVector")();
      host.close();
      hostLog = {};
    };
    useOnce();  // what the loader keeps for itself
    const std::string name = fs::path(LIBRARY).filename();
    const std::size_t before = mallinfo2().uordblks;
    for (int i = 0; i < 1000; ++i)
      useOnce();
    EXPECT_LE(mallinfo2().uordblks, before + 16'384);  // less than the smallest block for each time
    EXPECT_EQ(readFile("/proc/self/maps").find(name), std::string::npos) << "still mapped";
  });
}

// ---- what a host compiled long ago relies on -----------------------------------------------------------------------

static_assert(sizeof(RunResult) == 4 && RUN_SUCCESS == 1000 && RUN_TIME_LIMIT == 1027);

// A host's own idea of the object: its first word leads to the slots.
struct EngineView {
  struct Slots {
    void (*destroyInPlace)(EngineView*);
    void (*destroy)(EngineView*);
    std::int32_t (*startAnalysis)(EngineView*, Texts*);
  };
  const Slots* slots;
};

#if defined(__clang__)
__attribute__((no_sanitize("function", "vptr")))
#endif
void runThroughSlots(EngineView* engine) {
  Texts files;
  EXPECT_EQ(engine->slots->startAnalysis(engine, &files), RUN_DB_LOAD_FAILED);
  EXPECT_EQ(hostLog.back(), "StartAnalysis: [0][StartAnalysis] returnCode [1010] ");
  engine->slots->destroy(engine);
  EXPECT_EQ(hostLog.back(), "~APIAnalysis: ### All Symbol Table data is Successfully deleted!! ###");
}

TEST(HostReliesOn, SlotsAndClockOfTheObject) {
  child::run([] {
    const Host host;
    enterDevice();
    host.symbol<decltype(createResultVector)>("createResultVector")();
    IAppAnalysis* engine = host.symbol<decltype(createInstance)>("createInstance")();
    const auto& start = *host.symbol<timespec>("firstCheckTime");
    char line[128];
    std::snprintf(line, sizeof line, "APIAnalysis: [APIAnalysis] [sec:usec] : %lld:%lld ",
                  static_cast<long long>(start.tv_sec), static_cast<long long>(start.tv_nsec));
    EXPECT_EQ(hostLog.back(), line);
    const long long microseconds = start.tv_nsec / 1000 + 1'000'000LL * start.tv_sec;
    EXPECT_EQ(*host.symbol<std::uint32_t>("firstTimeVal"), static_cast<std::uint32_t>(microseconds));
    runThroughSlots(reinterpret_cast<EngineView*>(engine));
    host.symbol<decltype(destoryResultVector)>("destoryResultVector")();
  });
}

}  // namespace

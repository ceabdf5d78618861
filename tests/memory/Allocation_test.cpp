// Memory that runs out: every allocation of a run fails once, by turns.
//
// A program of its own, because it replaces the allocation functions: all of malloc's, so that those of zlib, minizip
// and the C library fail too; under a sanitizer, which needs malloc for itself, operator new only.

#include <dlfcn.h>
#include <execinfo.h>
#include <gtest/gtest.h>
#include <malloc.h>
#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <new>
#include <optional>

#include "platform/Limits.h"
#include "platform/Paths.h"
#include "support/CraftedZip.h"
#include "swf-assembler/Assembler.h"
#include "swf/DeAssembler.h"
#include "tarvo/Print_Log.h"
#include "tarvo/api_check_engine.h"

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TARVO_ONLY_NEW
#endif
#endif

namespace fs = std::filesystem;

namespace {

long liveBlocks = 0;
std::size_t liveBytes = 0;
std::size_t mostBytes = 0;
long allocations = 0;
long failing = 0;           // the number of the allocation that fails, counted from 1; 0: none
bool leakOfOthers = false;  // it failed where a library that is not ours leaks
int troubles = 0;           // log lines about something that could not be done

// On 32-bit ARM the frames end where C begins: each allocation of zlib's then passes for one of minizip's.
bool isUnseenZlib(const void* caller) {
#ifdef __arm__
  Dl_info info{};
  return dladdr(caller, &info) != 0 && std::strstr(info.dli_fname, "libz.so") != nullptr;
#else
  return caller == nullptr;
#endif
}

// TinyXML forgets the nodes that it is parsing, minizip its buffer if zlib has no memory.
bool isInALeakyPlace(void* caller) {
  if (isUnseenZlib(caller)) return true;
  void* frames[64];
  const int count = backtrace(frames, static_cast<int>(std::size(frames)));
  return std::any_of(frames, frames + count, [](void* frame) {
    Dl_info info{};
    if (dladdr(frame, &info) == 0) return false;
    const bool inflateInit = info.dli_sname != nullptr && std::strcmp(info.dli_sname, "unzOpenCurrentFile3") == 0;
    return inflateInit || std::strstr(info.dli_fname, "libtinyxml") != nullptr;
  });
}

bool fails(void* caller) {
  if (++allocations != failing) return false;
  leakOfOthers = isInALeakyPlace(caller);
  errno = ENOMEM;
  return true;
}

void* counted(void* block) {
  if (block == nullptr) return block;
  ++liveBlocks;
  liveBytes += malloc_usable_size(block);
  mostBytes = std::max(mostBytes, liveBytes);
  return block;
}

void uncount(void* block) {
  if (block == nullptr) return;
  --liveBlocks;
  liveBytes -= malloc_usable_size(block);
}

FlashEngine_1_00::EnginePaths paths;

}  // namespace

#ifdef TARVO_ONLY_NEW
void* operator new(std::size_t size) {
  void* block = fails(__builtin_return_address(0)) ? nullptr : std::malloc(size);
  if (block == nullptr) throw std::bad_alloc();
  return counted(block);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  void* block = fails(__builtin_return_address(0)) ? nullptr : std::malloc(size);
  return block == nullptr ? nullptr : counted(block);
}
void operator delete(void* block) noexcept {
  uncount(block);
  std::free(block);
}
// For what the libraries leak, of which the leak checker would tell.
extern "C" const char* __lsan_default_suppressions() {
  return "leak:libtinyxml\n";
}
void operator delete(void* block, std::size_t) noexcept {
  operator delete(block);
}
#else
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void __libc_free(void* block);

void* malloc(std::size_t size) noexcept {
  return fails(__builtin_return_address(0)) ? nullptr : counted(__libc_malloc(size));
}
void* calloc(std::size_t count, std::size_t size) noexcept {
  return fails(__builtin_return_address(0)) ? nullptr : counted(__libc_calloc(count, size));
}
void* realloc(void* block, std::size_t size) noexcept {
  if (fails(__builtin_return_address(0))) return nullptr;
  uncount(block);
  void* moved = __libc_realloc(block, size);
  return counted(moved == nullptr ? block : moved);
}
void free(void* block) noexcept {
  uncount(block);
  __libc_free(block);
}
}
#endif

const FlashEngine_1_00::EnginePaths& FlashEngine_1_00::enginePaths() {
  return paths;
}

void Print_Log(const char*, unsigned, char* format, ...) {
  for (const char* trouble : {"Error", "not extracted", "not read whole"}) {
    if (std::strstr(format, trouble) != nullptr) ++troubles;
  }
}

namespace {

void write(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

class Allocation : public ::testing::Test {
 protected:
  Allocation() {
    char name[] = "/tmp/tarvo-memory-XXXXXX";
    directory_ = mkdtemp(name);
    paths = {directory_ + "/database.xml", directory_, directory_ + "/AnalysisResult"};
    write(paths.database, "<APIAnalysisDB><Tuner><Function>Play</Function></Tuner></APIAnalysisDB>");
    const std::string movie = swf_assembler::assemble(
        "signature CWS\ndoaction {\nPush 0 \"tv\" 1 \"getObj\"\nCallFunction\nPush \"GetModel\"\nCallMethod\n}\nend\n");
    const std::string page =
        "<object id='tv' classid='MORVANE-NAVERTIX-TUNER'></object><script>\nfunction f() { "
        "var t = document.getElementById('tv'); t.Play(1); }</script>";
    files_ = {directory_ + "/app.wgt"};
    write(files_[0], craftedZip({{"a/index.html", page, true}, {"inner.zip", craftedZip({{"movie.swf", movie}})}}));
    // What is made once for all is made now.
    (void)isInALeakyPlace(__builtin_return_address(0));
    EXPECT_EQ(runWithFailure(0), RUN_UNDOCUMENTED_API);
  }
  ~Allocation() override {
    (void)!chdir("/");
    fs::remove_all(directory_);
  }

  // A host's whole use of the engine; nothing if that ended with std::bad_alloc.
  std::optional<RunResult> runEngine() {
    IAppAnalysis* engine = nullptr;
    std::optional<RunResult> code;
    bool results = false;
    try {
      createResultVector();
      results = true;
      engine = createInstance();
      code = engine->StartAnalysis(&files_);
    } catch (const std::bad_alloc&) {
    }
    destoryInstance(engine);
    if (results) destoryResultVector();
    return code;
  }

  // Runs it with the allocation of this number failing.
  std::optional<RunResult> runWithFailure(long number) {
    troubles = 0;
    leakOfOthers = false;
    allocations = 0;
    failing = number;
    const std::optional<RunResult> code = runEngine();
    failing = 0;
    tzset();  // the C library gave its time zone up if it had no memory for it
    return code;
  }

  std::string directory_;
  std::vector<std::string> files_;
};

std::ptrdiff_t openDescriptors() {
  return std::distance(fs::directory_iterator("/proc/self/fd"), {});
}

TEST_F(Allocation, FailuresEndARunCleanlyOrReachTheHost) {
  const std::ptrdiff_t descriptors = openDescriptors();
  const long all = allocations;
  EXPECT_GT(all, 500);
  for (long number = 1; number <= all; ++number) {
    SCOPED_TRACE(std::to_string(number) + " of " + std::to_string(all));
    const long before = liveBlocks;
    const std::optional<RunResult> code = runWithFailure(number);
    ASSERT_TRUE(leakOfOthers || liveBlocks == before) << liveBlocks - before << " blocks leaked";
    ASSERT_TRUE(code != RUN_SUCCESS || troubles > 0) << "a finding is missed in silence";
    ASSERT_EQ(openDescriptors(), descriptors);
    ASSERT_NE(access((directory_ + "/0").c_str(), F_OK), 0);
    ASSERT_NE(access((directory_ + "/1").c_str(), F_OK), 0);
  }
}

TEST_F(Allocation, AMovieIsHeldOnce) {
  constexpr std::size_t kImage = 20 << 20;
  const std::string body(kImage, '\0');
  uLongf size = compressBound(kImage);
  std::string packed(size, '\0');
  compress(reinterpret_cast<Bytef*>(packed.data()), &size, reinterpret_cast<const Bytef*>(body.data()), kImage);
  write(directory_ + "/movie.swf", "CWS\6    " + packed.substr(0, size));
  std::vector<std::string> lines;
  const std::size_t before = mostBytes = liveBytes;
  EXPECT_EQ(FlashEngine_1_00::DeAssembler().SWFDeAssemblerMain(directory_ + "/movie.swf", lines), RUN_SUCCESS);
  EXPECT_LT(mostBytes - before, kImage + (4 << 20));
}

// Records that are a byte each and a line of 12. The first script makes the list that must grow for the second one.
TEST_F(Allocation, AListingTakesNoMoreMemoryThanItsBound) {
  const std::string movie = "FWS\6" + std::string(9, '\0') +  // header, then two long DoAction tags
                            std::string("\x3F\x03\0\x09\x3D\0", 6) + std::string(4'000'000, '\x07') +
                            std::string("\x3F\x03\x7F\x96\x98\0", 6) + std::string(9'999'999, '\x07');
  write(directory_ + "/movie.swf", movie);
  FlashEngine_1_00::DeAssembler listing;
  std::vector<std::string> lines;
  const std::size_t before = mostBytes = liveBytes;
  EXPECT_EQ(listing.SWFDeAssemblerMain(directory_ + "/movie.swf", lines), RUN_SUCCESS);
  EXPECT_TRUE(listing.isCut());
  constexpr std::size_t kGrowing = FlashEngine_1_00::kMaxListingBytes / 2;  // a vector's old block beside the new one
  EXPECT_LT(mostBytes - before, FlashEngine_1_00::kMaxListingBytes + kGrowing + movie.size() + (1 << 20));
}

}  // namespace

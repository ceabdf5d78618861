// Package extraction over minizip. Test: tests/APICheckEngine/PackageExpansion_test.cpp.

#include "unzip/unzip_job.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <ctime>
#include <memory>
#include <new>
#include <string>
#include <string_view>

#include "platform/File.h"
#include "platform/Limits.h"
#include "platform/Log.h"
#include "unzip/expansion_budget.h"
#include "unzip/no_follow.h"

namespace FlashEngine_1_00 {
namespace {

constexpr std::size_t kWriteBuffer = 65536;  // a write for each chunk would cost more than inflating it
constexpr std::size_t kEntryBuffer = kCopyChunk + kWriteBuffer;
constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr const char* kExtractEntry = "do_extract_currentfile";

// An open package. minizip forgets the file that it has opened if it gets no memory after that: it is closed here.
class Package {
 public:
  // Opens the package at `path`, or at `path`.zip.
  explicit Package(const char* path) {
    fill_fopen64_filefunc(&stdio_);
    const std::string name = std::string(path).substr(0, kMaxPackageName);
    if (!open(name)) (void)open(name + ".zip");
  }
  ~Package() { unzClose(package_); }
  Package(const Package&) = delete;
  Package& operator=(const Package&) = delete;

  unzFile get() const { return package_; }
  // The package's file: that is what minizip's stdio functions open.
  std::FILE* stream() const { return static_cast<std::FILE*>(file_); }

 private:
  bool open(const std::string& name) {
    zlib_filefunc64_def functions = stdio_;
    functions.opaque = this;
    functions.zopen64_file = [](voidpf self, const void* path, int mode) {
      auto& package = *static_cast<Package*>(self);
      return package.file_ = package.stdio_.zopen64_file(nullptr, path, mode);
    };
    functions.zclose_file = [](voidpf self, voidpf file) {
      auto& package = *static_cast<Package*>(self);
      package.file_ = nullptr;
      return package.stdio_.zclose_file(nullptr, file);
    };
    package_ = unzOpen2_64(name.c_str(), &functions);
    if (package_ == nullptr && file_ != nullptr) (void)functions.zclose_file(this, file_);
    return package_ != nullptr;
  }

  zlib_filefunc64_def stdio_{};
  voidpf file_ = nullptr;
  unzFile package_ = nullptr;
};

struct Job {
  ExtractOptions options{false, false, nullptr, nullptr};
  bool list = false;
  const char* directory = nullptr;
  const char* package = nullptr;
  const char* entry = nullptr;
};

Job parseArguments(int argc, char** argv) {
  Job job;
  for (int i = 1; i < argc; ++i) {
    const char* argument = argv[i];
    if (*argument != '-') {
      if (job.package == nullptr) {
        job.package = argument;
      } else if (job.entry == nullptr) {
        job.entry = argument;
      }
      continue;
    }
    for (const char* letter = argument + 1; *letter != '\0'; ++letter) {
      const int option = std::tolower(static_cast<unsigned char>(*letter));
      if (option == 'l' || option == 'v') job.list = true;
      if (option == 'e') job.options.withoutDirectories = true;
      if (option == 'o') job.options.overwrite = true;
      if (option == 'd' && i + 1 < argc) job.directory = argv[++i];
      if (option == 'p' && i + 1 < argc) job.options.password = argv[++i];
    }
  }
  return job;
}

bool isSlash(char c) {
  return c == '/' || c == '\\';
}

// Whether an entry of this name could be written outside the extraction directory.
bool isUnsafe(std::string_view name) {
  if (!name.empty() && isSlash(name.front())) return true;
  while (!name.empty()) {
    const std::size_t slash = name.find_first_of("/\\");
    if (name.substr(0, slash) == "..") return true;
    name.remove_prefix(slash == std::string_view::npos ? name.size() : slash + 1);
  }
  return false;
}

constexpr uLong kEncryptedFlag = 1;  // ZIP APPNOTE 4.4.4, general purpose bit flag

struct Entry {
  std::string name;  // cut at kMaxEntryName bytes and at its first zero byte
  unz_file_info64 info{};
};

int readEntry(unzFile package, Entry& entry) {
  std::array<char, kMaxEntryName + 1> name{};
  const int code = unzGetCurrentFileInfo64(package, &entry.info, name.data(), kMaxEntryName, nullptr, 0, nullptr, 0);
  entry.name = name.data();
  return code;
}

// Copies the open entry to `output` by way of `buffer`, of kEntryBuffer bytes. UNZ_OK, UNZ_ERRNO if writing fails,
// kBoundPassed, or minizip's code.
int copyEntry(unzFile package, File output, char* buffer) {
  (void)std::setvbuf(output.get(), buffer + kCopyChunk, _IOFBF, kWriteBuffer);
  int length = 0;
  while ((length = unzReadCurrentFile(package, buffer, kCopyChunk)) > 0) {
    const auto bytes = static_cast<std::size_t>(length);
    if (!takeBytes(bytes)) return kBoundPassed;
    if (std::fwrite(buffer, 1, bytes, output.get()) != bytes) return UNZ_ERRNO;
  }
  if (std::fclose(output.release()) != 0) return UNZ_ERRNO;
  return length;
}

// Whether the open entry has no more data than its directory's size lets us read. Of deflated data, less than a block
// of minizip's may be left unseen.
bool readWhole(unzFile package, const unz_file_info64& info, ZPOS64_T begin) {
  const bool stored = info.compression_method == 0;
  if (stored && info.compressed_size > info.uncompressed_size) return false;
  return unzGetCurrentFileZStreamPos64(package) - begin >= info.compressed_size;
}

// The name in the open entry's own header, which ends where its data begin; as readEntry would have it.
std::string localName(unzFile package, const Entry& entry, ZPOS64_T data, std::FILE* stream) {
  const auto extra = static_cast<off_t>(unzGetLocalExtrafield(package, nullptr, 0));
  std::string name(entry.info.size_filename, '\0');
  const off_t begin = static_cast<off_t>(data) - extra - static_cast<off_t>(name.size());
  if (fseeko(stream, begin, SEEK_SET) != 0) return std::string();
  name.resize(std::min(std::fread(name.data(), 1, name.size(), stream), kMaxEntryName));
  return name.substr(0, name.find('\0'));
}

// Tells of an entry that readers which go by the entries' own headers take for another one. minizip has compared all
// but the name.
void reportOtherName(unzFile package, const Entry& entry, ZPOS64_T data, const ExtractOptions& options) {
  if (options.stream == nullptr || options.password != nullptr) return;
  const std::string name = localName(package, entry, data, options.stream);
  if (name == entry.name) return;
  TARVO_LOG_AS(kExtractEntry, " entry [%s] is named [%s] in its own header ", entry.name.c_str(), name.c_str());
}

int extractFile(unzFile package, const Entry& entry, const std::string& path, const ExtractOptions& options,
                char* buffer) {
  if (!options.overwrite && isThere(path)) return UNZ_OK;
  int code = unzOpenCurrentFilePassword(package, options.password);
  if (code != UNZ_OK) return code;
  const ZPOS64_T begin = unzGetCurrentFileZStreamPos64(package);
  reportOtherName(package, entry, begin, options);
  bool replaced = false;
  File output = createFile(path, replaced);
  if (replaced) TARVO_LOG_AS(kExtractEntry, " entry [%s] replaces an earlier one ", entry.name.c_str());
  code = output == nullptr ? UNZ_ERRNO : copyEntry(package, std::move(output), buffer);
  const bool whole = readWhole(package, entry.info, begin) || options.password != nullptr;
  const int closed = unzCloseCurrentFile(package);  // a wrong checksum shows here
  if (code != UNZ_OK) return code;
  change_file_date(path.c_str(), entry.info.tmu_date);
  if (closed == UNZ_OK && !whole) {
    TARVO_LOG_AS(kExtractEntry, " entry [%s] holds more than the [%llu] bytes of its header ", entry.name.c_str(),
                 static_cast<unsigned long long>(entry.info.uncompressed_size));
  }
  return closed;
}

// The package's end record says how many entries it has. Tells of the first one behind these, if there is one.
void reportEntriesBehind(unzFile package, uLong count) {
  Entry last;
  ZPOS64_T behind = unzGetOffset64(package);
  if (count > 0) {
    if (readEntry(package, last) != UNZ_OK) return;
    constexpr ZPOS64_T kCentralHeader = 46;  // ZIP APPNOTE 4.3.12
    behind += kCentralHeader + last.info.size_filename + last.info.size_file_extra + last.info.size_file_comment;
  }
  if (unzSetOffset64(package, behind) != UNZ_OK || readEntry(package, last) != UNZ_OK) return;
  TARVO_LOG_AS("do_extract", " entry [%s] not extracted [%d] ", last.name.c_str(), UNZ_END_OF_LIST_OF_FILE);
}

}  // namespace

int do_UnzipJob(int argc, char** argv) {
  if (argc == 1) return kDone;
  if (argc < 1) return kFailed;
  Job job = parseArguments(argc, argv);
  if (job.package == nullptr) return kFailed;
  const Package package(job.package);
  if (package.get() == nullptr) return kFailed;
  if (job.list) return do_list(package.get());
  job.options.stream = package.stream();
  // KEPT: the working directory stays in the extraction directory. Hosts pass absolute paths because of it.
  // (test WorkingDirectoryStaysInTheLastExtractionDirectory)
  if (job.directory != nullptr && enterDirectory(job.directory) != 0) return kFailed;
  return job.entry == nullptr ? do_extract(package.get(), job.options)
                              : do_extract_onefile(package.get(), job.entry, job.options);
}

int do_extract(unzFile package, const ExtractOptions& options) {
  unz_global_info info{};
  int code = unzGetGlobalInfo(package, &info);
  for (uLong i = 0; code == UNZ_OK && i < info.number_entry; ++i) {
    if (i > 0) code = unzGoToNextFile(package);
    if (code == UNZ_OK) code = do_extract_currentfile(package, options);
  }
  if (code != UNZ_OK) {
    Entry entry;  // its name stays empty where the package's directory is damaged
    (void)readEntry(package, entry);
    const bool isEncrypted = (entry.info.flag & kEncryptedFlag) != 0 && code != UNZ_ERRNO && code != kBoundPassed;
    TARVO_LOG(" entry [%s] not extracted [%d] ", entry.name.c_str(), isEncrypted ? kEncrypted : code);
  } else {
    reportEntriesBehind(package, info.number_entry);
  }
  return kDone;
}

int do_extract_onefile(unzFile package, const char* name, const ExtractOptions& options) {
  const int code = unzLocateFile(package, name, 1);  // 1: case-sensitive
  return code == UNZ_OK ? do_extract_currentfile(package, options) : code;
}

int do_extract_currentfile(unzFile package, const ExtractOptions& options) {
  Entry entry;
  const int code = readEntry(package, entry);
  if (code != UNZ_OK) return code;
  if (!takeEntry()) return kBoundPassed;
  const std::unique_ptr<char[]> buffer(new (std::nothrow) char[kEntryBuffer]);
  if (buffer == nullptr) return UNZ_INTERNALERROR;
  if (isUnsafe(entry.name)) {
    TARVO_LOG(" unsafe entry [%s] skipped ", entry.name.c_str());
    return UNZ_OK;
  }
  if (entry.info.size_filename > entry.name.size()) TARVO_LOG(" entry [%s] has a longer name ", entry.name.c_str());
  if (!entry.name.empty() && isSlash(entry.name.back())) {
    if (!options.withoutDirectories) (void)mymkdir(entry.name.c_str());
    return UNZ_OK;
  }
  const std::size_t slash = entry.name.find_last_of("/\\");
  const bool drop = options.withoutDirectories && slash != std::string::npos;
  return extractFile(package, entry, drop ? entry.name.substr(slash + 1) : entry.name, options, buffer.get());
}

int do_list(unzFile package) {
  unz_global_info info{};
  int code = unzGetGlobalInfo(package, &info);
  for (uLong i = 0; code == UNZ_OK && i < info.number_entry; ++i) {
    Entry entry;
    code = i == 0 ? UNZ_OK : unzGoToNextFile(package);
    if (code == UNZ_OK) code = readEntry(package, entry);
    if (code == UNZ_OK)
      TARVO_LOG(" entry [%s] [%lu] ", entry.name.c_str(), static_cast<unsigned long>(entry.info.uncompressed_size));
  }
  return code;
}

int makedir(const char* path) {
  return createDirectories(path) == 0 ? 1 : 0;
}

int mymkdir(const char* path) {
  return createDirectory(path);
}

void change_file_date(const char* path, const tm_unz& date) {
  std::tm local{};
  local.tm_sec = static_cast<int>(date.tm_sec);
  local.tm_min = static_cast<int>(date.tm_min);
  local.tm_hour = static_cast<int>(date.tm_hour);
  local.tm_mday = static_cast<int>(date.tm_mday);
  local.tm_mon = static_cast<int>(date.tm_mon);
  local.tm_year = static_cast<int>(date.tm_year) - 1900;
  local.tm_isdst = -1;
  timespec times[2]{};
  times[0].tv_sec = times[1].tv_sec = std::mktime(&local);
  (void)utimensat(AT_FDCWD, path, times, AT_SYMLINK_NOFOLLOW);
}

}  // namespace FlashEngine_1_00

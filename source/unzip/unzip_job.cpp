// Package extraction over minizip. Test: tests/APICheckEngine/PackageExpansion_test.cpp.

#include "unzip/unzip_job.h"

#include <sys/stat.h>
#include <unistd.h>
#include <utime.h>

#include <array>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <memory>
#include <new>
#include <string>
#include <string_view>

#include "platform/File.h"
#include "platform/Limits.h"
#include "platform/Log.h"

namespace FlashEngine_1_00 {
namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;

struct PackageCloser {
  void operator()(void* package) const { unzClose(package); }
};
using Package = std::unique_ptr<void, PackageCloser>;

struct Job {
  ExtractOptions options{false, false, nullptr};
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

Package openPackage(const char* path) {
  const std::string name = std::string(path).substr(0, kMaxPackageName);
  Package package(unzOpen(name.c_str()));
  if (package == nullptr) package.reset(unzOpen((name + ".zip").c_str()));
  return package;
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

struct Entry {
  std::string name;  // cut at kMaxEntryName bytes and at its first zero byte
  unz_file_info info{};
};

int readEntry(unzFile package, Entry& entry) {
  std::array<char, kMaxEntryName + 1> name{};
  const int code = unzGetCurrentFileInfo(package, &entry.info, name.data(), kMaxEntryName, nullptr, 0, nullptr, 0);
  entry.name = name.data();
  return code;
}

// Creates or truncates the output file, with its parent directories if need be.
File createOutput(const std::string& path) {
  File file = openFile(path, "wb");
  const std::size_t slash = path.rfind('/');
  if (file != nullptr || slash == std::string::npos) return file;
  makedir(path.substr(0, slash).c_str());
  return openFile(path, "wb");
}

// Copies the open entry to `output`. UNZ_OK, UNZ_ERRNO if writing fails, or minizip's code.
int copyEntry(unzFile package, File output, char* buffer) {
  int length = 0;
  while ((length = unzReadCurrentFile(package, buffer, kCopyChunk)) > 0) {
    const auto bytes = static_cast<std::size_t>(length);
    if (std::fwrite(buffer, 1, bytes, output.get()) != bytes) return UNZ_ERRNO;
  }
  if (std::fclose(output.release()) != 0) return UNZ_ERRNO;
  return length;
}

int extractFile(unzFile package, const Entry& entry, const std::string& path, const ExtractOptions& options,
                char* buffer) {
  if (!options.overwrite && access(path.c_str(), F_OK) == 0) return UNZ_OK;
  int code = unzOpenCurrentFilePassword(package, options.password);
  if (code != UNZ_OK) return code;
  File output = createOutput(path);
  code = output == nullptr ? UNZ_ERRNO : copyEntry(package, std::move(output), buffer);
  const int closed = unzCloseCurrentFile(package);  // a wrong checksum shows here
  if (code != UNZ_OK) return code;
  change_file_date(path.c_str(), entry.info.tmu_date);
  return closed;
}

}  // namespace

int do_UnzipJob(int argc, char** argv) {
  if (argc == 1) return kDone;
  if (argc < 1) return kFailed;
  const Job job = parseArguments(argc, argv);
  if (job.package == nullptr) return kFailed;
  const Package package = openPackage(job.package);
  if (package == nullptr) return kFailed;
  if (job.list) return do_list(package.get());
  // KEPT: the working directory stays in the extraction directory. Hosts pass absolute paths because of it.
  // (test WorkingDirectoryStaysInTheLastExtractionDirectory)
  if (job.directory != nullptr && chdir(job.directory) != 0) return kFailed;
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
    TARVO_LOG(" entry [%s] not extracted [%d] ", entry.name.c_str(), code);
  }
  return kDone;
}

int do_extract_onefile(unzFile package, const char* name, const ExtractOptions& options) {
  const int code = unzLocateFile(package, name, 1);  // 1: case-sensitive
  return code == UNZ_OK ? do_extract_currentfile(package, options) : code;
}

int do_extract_currentfile(unzFile package, const ExtractOptions& options) {
  Entry entry;
  int code = readEntry(package, entry);
  if (code != UNZ_OK) return code;
  const std::unique_ptr<char[]> buffer(new (std::nothrow) char[kCopyChunk]);
  if (buffer == nullptr) return UNZ_INTERNALERROR;
  if (isUnsafe(entry.name)) {
    TARVO_LOG(" unsafe entry [%s] skipped ", entry.name.c_str());
    return UNZ_OK;
  }
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
    if (code == UNZ_OK) TARVO_LOG(" entry [%s] [%lu] ", entry.name.c_str(), entry.info.uncompressed_size);
  }
  return code;
}

int makedir(const char* path) {
  std::string whole(path);
  if (whole.empty()) return 0;
  if (whole.back() == '/') whole.pop_back();
  if (mymkdir(whole.c_str()) == 0) return 1;
  for (std::size_t slash = whole.find('/', 1);; slash = whole.find('/', slash + 1)) {
    if (mymkdir(whole.substr(0, slash).c_str()) != 0 && errno != EEXIST && errno != ENOENT) return 0;
    if (slash == std::string::npos) return 1;
  }
}

int mymkdir(const char* path) {
  return mkdir(path, 0775);
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
  utimbuf times{};
  times.actime = times.modtime = std::mktime(&local);
  (void)utime(path, &times);
}

}  // namespace FlashEngine_1_00

// Package extraction over minizip.
//
// minizip walks the package's directory, compares it with the headers of the entries and opens them; deflated data are
// inflated here (deflated_entry.h). The job goes on to the first entry that cannot be extracted. What of an entry does
// not fit, or leads other readers to another file, is logged, and told to whoever observes the run.
// Tests: tests/APICheckEngine/PackageExpansion_test.cpp, HostilePackages_test.cpp.

#include "unzip/unzip_job.h"

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
#include "unzip/deflated_entry.h"
#include "unzip/no_follow.h"
#include "unzip/package_layout.h"

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
  // Opens the package at `path` of `place`, or at `path`.zip.
  Package(const char* path, FilePlace& place) : place_(place) {
    fill_fopen64_filefunc(&stdio_);
    const std::string name = std::string(path).substr(0, kMaxPackageName);
    if (!open(name)) (void)open(name + ".zip");
  }
  ~Package() { unzClose(package_); }
  Package(const Package&) = delete;
  Package& operator=(const Package&) = delete;

  unzFile get() const { return package_; }
  const std::string& path() const { return path_; }
  // The package's file: that is what minizip's stdio functions open.
  std::FILE* stream() const { return static_cast<std::FILE*>(file_); }

 private:
  // The file is opened before minizip asks for it: no exception may pass through C code.
  bool open(const std::string& name) {
    path_ = name;  // before there is anything to be closed
    file_ = place_.open(name).release();
    if (file_ == nullptr) return false;
    zlib_filefunc64_def functions = stdio_;
    functions.opaque = this;
    functions.zopen64_file = [](voidpf self, const void*, int) { return static_cast<Package*>(self)->file_; };
    functions.zclose_file = [](voidpf self, voidpf file) {
      auto& package = *static_cast<Package*>(self);
      package.file_ = nullptr;
      return package.stdio_.zclose_file(nullptr, file);
    };
    package_ = unzOpen2_64(name.c_str(), &functions);
    if (package_ == nullptr && file_ != nullptr) (void)functions.zclose_file(this, file_);
    return package_ != nullptr;
  }

  FilePlace& place_;
  zlib_filefunc64_def stdio_{};
  voidpf file_ = nullptr;
  unzFile package_ = nullptr;
  std::string path_;
};

// Tells the place for how long a package is extracted.
class Extracting {
 public:
  Extracting(FilePlace& place, const std::string& package) : place_(place) { place_.beginExtraction(package); }
  ~Extracting() { place_.endExtraction(); }
  Extracting(const Extracting&) = delete;
  Extracting& operator=(const Extracting&) = delete;

 private:
  FilePlace& place_;
};

struct Job {
  ExtractOptions options{false, false, nullptr, nullptr, nullptr};
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

// ZIP APPNOTE 4.4.2 and 4.4.15: systems whose file modes stand in the upper half of the external attributes.
constexpr uLong kUnix = 3;
constexpr uLong kDarwin = 19;

bool isLink(const unz_file_info64& info) {
  const uLong system = info.version >> 8 & 0xFF;
  return (system == kUnix || system == kDarwin) && S_ISLNK(info.external_fa >> 16);
}

// Whether the entry of a directory has data; two bytes are a deflate stream of none.
bool holdsData(const unz_file_info64& info) {
  const ZPOS64_T empty = info.compression_method == Z_DEFLATED ? 2 : 0;
  return info.uncompressed_size > 0 || info.compressed_size > empty;
}

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

void emit(const ExtractOptions& options, Gap gap, const Entry& entry, int code = 0) {
  PartObserver* const observer = options.run->observer;
  if (observer != nullptr) observer->notRead({gap, options.run->package, entry.name, code});
}

// Copies what `read` gives to `output` by way of `buffer`, of kEntryBuffer bytes. UNZ_OK, UNZ_ERRNO if writing fails,
// kBoundPassed, or the code of `read`.
template <typename Read>
int copyEntry(const Read& read, ExpansionBudget& budget, FileSink& output, char* buffer) {
  output.useBuffer(buffer + kCopyChunk, kWriteBuffer);
  int length = 0;
  while ((length = read(buffer, kCopyChunk)) > 0) {
    const auto bytes = static_cast<std::size_t>(length);
    if (!budget.takeBytes(bytes)) return kBoundPassed;
    if (!output.write(buffer, bytes)) return UNZ_ERRNO;
  }
  if (!output.finish()) return UNZ_ERRNO;
  return length;
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
  emit(options, Gap::entryOtherName, entry);
}

// Tells of an entry with another name in a field for names in Unicode, in the directory or in its own header.
void emitOtherUnicodeName(unzFile package, const Entry& entry, const ExtractOptions& options) {
  if (options.run->observer == nullptr) return;
  std::string extra(entry.info.size_file_extra, '\0');
  (void)unzGetCurrentFileInfo64(package, nullptr, nullptr, 0, extra.data(), extra.size(), nullptr, 0);
  const int size = unzGetLocalExtrafield(package, nullptr, 0);
  std::string local(static_cast<std::size_t>(std::max(size, 0)), '\0');
  if (!local.empty()) (void)unzGetLocalExtrafield(package, local.data(), static_cast<unsigned>(local.size()));
  for (const std::string& name : {unicodeName(extra), unicodeName(local)}) {
    if (!name.empty() && !areOneName(entry.name, name)) return emit(options, Gap::entryOtherUnicode, entry);
  }
}

std::tm asTime(const tm_unz& date) {
  std::tm local{};
  local.tm_sec = static_cast<int>(date.tm_sec);
  local.tm_min = static_cast<int>(date.tm_min);
  local.tm_hour = static_cast<int>(date.tm_hour);
  local.tm_mday = static_cast<int>(date.tm_mday);
  local.tm_mon = static_cast<int>(date.tm_mon);
  local.tm_year = static_cast<int>(date.tm_year) - 1900;
  local.tm_isdst = -1;
  return local;
}

// How the data of an entry came out.
struct Copied {
  int code;
  bool isWhole;  // there are no more of them than the headers say
};

// Whether the sizes of a deflated entry are ones that it can have: what is read and inflated at once has to be worth
// it.
bool hasSaneSizes(const unz_file_info64& info) {
  constexpr ZPOS64_T kMost = ZPOS64_T{64} << 20;
  constexpr ZPOS64_T kMostRatio = 1032;  // of deflate
  const ZPOS64_T packed = info.compressed_size;
  const ZPOS64_T size = info.uncompressed_size;
  return packed <= kMost && size <= kMost && size <= kMostRatio * packed && packed <= size + size / 8 + 64;
}

// Writes the data of a deflated entry, which begin at `begin`, to `output` at once, if all of them are as the headers
// say. False if they are not, or the place has no way to do that: nothing was written then.
bool writeAtOnce(const Entry& entry, ZPOS64_T begin, FileSink& output, const ExtractOptions& options) {
  const DeflateStream stream{begin, entry.info.compressed_size, entry.info.uncompressed_size, entry.info.crc};
  return hasSaneSizes(entry.info) && options.run->budget.hasBytes(stream.size) &&
         output.inflate(options.stream, stream) && options.run->budget.takeBytes(stream.size);
}

// Writes the data of the open entry, which begin at `begin`, to `output`. Deflated ones are inflated here, to know
// where their stream ends.
Copied writeEntry(unzFile package, const Entry& entry, ZPOS64_T begin, FileSink& output, const ExtractOptions& options,
                  char* buffer) {
  ExpansionBudget& budget = options.run->budget;
  if (entry.info.compression_method == Z_DEFLATED && options.password == nullptr && options.stream != nullptr) {
    if (writeAtOnce(entry, begin, output, options)) return {UNZ_OK, true};
    const std::unique_ptr<DeflatedEntry> data(new (std::nothrow) DeflatedEntry(options.stream, begin, entry.info));
    if (data == nullptr) return {Z_MEM_ERROR, true};
    const auto inflateNext = [&](char* piece, unsigned room) { return data->read(piece, room); };
    const int code = copyEntry(inflateNext, budget, output, buffer);
    if (code != UNZ_OK) return {code, true};
    return {data->checksum(), data->endsWithItsSizes()};
  }
  const auto readNext = [&](char* piece, unsigned room) { return unzReadCurrentFile(package, piece, room); };
  const int code = copyEntry(readNext, budget, output, buffer);
  const bool holdsMore =
      entry.info.compression_method == 0 && entry.info.compressed_size > entry.info.uncompressed_size;
  return {code, options.password != nullptr || !holdsMore};
}

int extractFile(unzFile package, const Entry& entry, const std::string& path, const ExtractOptions& options,
                char* buffer) {
  if (!options.overwrite && options.run->place.isThere(path)) return UNZ_OK;
  int code = unzOpenCurrentFilePassword(package, options.password);
  if (code != UNZ_OK) return code;
  const ZPOS64_T begin = unzGetCurrentFileZStreamPos64(package);
  reportOtherName(package, entry, begin, options);
  emitOtherUnicodeName(package, entry, options);
  bool replaced = false;
  std::unique_ptr<FileSink> output = options.run->place.createFile(path, options.run->budget, replaced);
  if (replaced) {
    TARVO_LOG_AS(kExtractEntry, " entry [%s] replaces an earlier one ", entry.name.c_str());
    emit(options, Gap::entryReplaced, entry);
  }
  if (output == nullptr) {
    (void)unzCloseCurrentFile(package);
    return UNZ_ERRNO;
  }
  const Copied copied = writeEntry(package, entry, begin, *output, options, buffer);
  output.reset();
  const int closed = unzCloseCurrentFile(package);  // a wrong checksum shows here, or before
  if (copied.code != UNZ_OK && copied.code != UNZ_CRCERROR) return copied.code;
  options.run->place.setDate(path, asTime(entry.info.tmu_date));
  code = copied.code != UNZ_OK ? copied.code : closed;
  if (code == UNZ_OK && !copied.isWhole) {
    TARVO_LOG_AS(kExtractEntry, " entry [%s] holds more than the [%llu] bytes of its header ", entry.name.c_str(),
                 static_cast<unsigned long long>(entry.info.uncompressed_size));
    emit(options, Gap::entryHoldsMore, entry);
  }
  if (options.run->observer != nullptr) {
    if (isLink(entry.info)) emit(options, Gap::entryIsLink, entry);
    options.run->observer->entryExtracted(options.run->package, entry.name, path);
  }
  return code;
}

// Tells of an entry after which extraction ended, by the code for which it did.
void emitEnd(const ExtractOptions& options, const Entry& entry, int code) {
  const Gap gap = code == UNZ_ERRNO                   ? Gap::entryUnwritable
                  : code == kEncrypted                ? Gap::entryEncrypted
                  : code == UNZ_END_OF_LIST_OF_FILE   ? Gap::entryUncounted
                  : code != kBoundPassed              ? Gap::entryDamaged
                  : options.run->budget.passedBytes() ? Gap::entryPastBytes
                                                      : Gap::entryPastEntries;
  emit(options, gap, entry, code);
}

// The package's end record says how many entries it has. Tells of the first one behind these, if there is one.
void reportEntriesBehind(unzFile package, uLong count, const ExtractOptions& options) {
  Entry last;
  ZPOS64_T behind = unzGetOffset64(package);
  if (count > 0) {
    if (readEntry(package, last) != UNZ_OK) return;
    constexpr ZPOS64_T kCentralHeader = 46;  // ZIP APPNOTE 4.3.12
    behind += kCentralHeader + last.info.size_filename + last.info.size_file_extra + last.info.size_file_comment;
  }
  if (unzSetOffset64(package, behind) != UNZ_OK || readEntry(package, last) != UNZ_OK) return;
  TARVO_LOG_AS("do_extract", " entry [%s] not extracted [%d] ", last.name.c_str(), UNZ_END_OF_LIST_OF_FILE);
  emitEnd(options, last, UNZ_END_OF_LIST_OF_FILE);
}

}  // namespace

int do_UnzipJob(int argc, char** argv) {
  Extraction extraction;
  return runUnzipJob(argc, argv, extraction);
}

int runUnzipJob(int argc, char** argv, Extraction& extraction) {
  if (argc == 1) return kDone;
  if (argc < 1) return kFailed;
  Job job = parseArguments(argc, argv);
  if (job.package == nullptr) return kFailed;
  const Package package(job.package, extraction.place);
  if (package.get() == nullptr) return kFailed;
  if (job.list) return do_list(package.get());
  job.options.stream = package.stream();
  job.options.run = &extraction;
  extraction.package = job.package;
  // KEPT: the working directory stays in the extraction directory. Hosts pass absolute paths because of it.
  // (test WorkingDirectoryStaysInTheLastExtractionDirectory)
  if (job.directory != nullptr && extraction.place.enterDirectory(job.directory) != 0) return kFailed;
  if (job.entry != nullptr) return do_extract_onefile(package.get(), job.entry, job.options);
  const Extracting extracting(extraction.place, package.path());
  return do_extract(package.get(), job.options);
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
    code = isEncrypted ? kEncrypted : code;
    TARVO_LOG(" entry [%s] not extracted [%d] ", entry.name.c_str(), code);
    emitEnd(options, entry, code);
  } else {
    reportEntriesBehind(package, info.number_entry, options);
    if (options.run->observer != nullptr && options.stream != nullptr && holdsMoreThanItsEntries(options.stream))
      options.run->observer->notRead({Gap::packageHoldsMore, options.run->package});
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
  if (!options.run->budget.takeEntry()) return kBoundPassed;
  const std::unique_ptr<char[]> buffer(new (std::nothrow) char[kEntryBuffer]);
  if (buffer == nullptr) return UNZ_INTERNALERROR;
  if (isUnsafe(entry.name)) {
    TARVO_LOG(" unsafe entry [%s] skipped ", entry.name.c_str());
    emit(options, Gap::entryUnsafe, entry);
    return UNZ_OK;
  }
  if (entry.info.size_filename > entry.name.size()) {
    TARVO_LOG(" entry [%s] has a longer name ", entry.name.c_str());
    emit(options, Gap::entryNameCut, entry);
  }
  if (!entry.name.empty() && isSlash(entry.name.back())) {
    if (holdsData(entry.info)) emit(options, Gap::directoryHoldsData, entry);
    if (!options.withoutDirectories) (void)options.run->place.createDirectory(entry.name);
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
  ExpansionBudget budget;
  return createDirectories(path, budget) == 0 ? 1 : 0;
}

int mymkdir(const char* path) {
  return createDirectory(path);
}

void change_file_date(const char* path, const tm_unz& date) {
  diskPlace().setDate(path, asTime(date));
}

}  // namespace FlashEngine_1_00

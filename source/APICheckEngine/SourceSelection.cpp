// Source selection: which files are web sources, their text without comments, and the first pass over it.
//
// Fills worthfulExtList, worthfulPathList, worthfulSourceList, cleanedSourceList, objectAccessList, embedsAccessList
// and functionBlockList. No later stage opens a web source again. Test: tests/APICheckEngine/SourceSelection_test.cpp.

#include <sys/stat.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <iterator>
#include <vector>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/CommentStripping.h"
#include "APICheckEngine/Knowledge.h"
#include "APICheckEngine/Tables.h"
#include "APICheckEngine/search/ExcerptAccesses.h"
#include "APICheckEngine/search/Excerpts.h"
#include "APICheckEngine/search/ScriptFunctions.h"
#include "platform/FilePlace.h"
#include "platform/Limits.h"
#include "platform/Log.h"
#include "platform/PartWork.h"
#include "regex/Pattern.h"

namespace FlashEngine_1_00 {

// A web source, before anything was made of it.
struct detail::ReadSource {
  enum class Kind { none, unreadable, source };

  Kind kind = Kind::none;
  bool isCut = false;                              // a part of it was left out, or all of it
  std::unique_ptr<std::string> cleaned = nullptr;  // null where there is nothing to be looked at
};

namespace {

constexpr const char* kScanned[] = {"html", "HTML", "htm", "HTM", "js", "JS", "xml", "XML"};

constexpr off_t kMostAtOnce = 64 << 20;  // bytes of a file that are asked for by its size

// "tv = document.getElementById('tv').GetVolume("; not "document.getElementById(id + 1)".
constexpr const char* kGetElementById =
    R"((([\w\_]+)[\.]*)*\s*=*\s*document\s*\.\s*getElementById\s*[(][\"'\s]*[\w\_]+[\"'\s]*\)\s*\.*[\w\d\s\_]*\(*[\"'\s]*[\w\_]*[\"'\s]*)";

// "tv = $('tv')", "$_(tv).Play("; not "$('#tv')".
constexpr const char* kDollar =
    R"((([\w\_]+)[\.]*)*\s*=*\s*[\$]\s*[\_]*\s*[(]["'\s]*[\w\_]+["'\s]*\)\s*\.*[\w\d\s\_]*\(*[\"'\s]*[\w\_]*[\"'\s]*)";

// "tv = document.embeds[1]"; not "document.embeds['tv']".
constexpr const char* kEmbeds =
    R"((([\w\_]+)[\.]*)*\s*=*\s*document\s*\.\s*embeds\s*\[\s*[\d]*\s*\]\s*\.*[\w\d\s\_]*\(*[\"'\s]*[\w\_]*[\"'\s]*)";

std::string lookUpPattern() {
  return std::string("(") + kGetElementById + ")|(" + kDollar + ")";
}

template <std::size_t N>
bool isOneOf(const std::string& text, const char* const (&words)[N]) {
  return std::any_of(std::begin(words), std::end(words), [&](const char* word) { return text == word; });
}

std::unique_ptr<SWFStateMentInfo> makeAccess(std::string_view text, std::string_view path) {
  auto record = std::make_unique<SWFStateMentInfo>();
  record->expression = std::make_unique<std::string>(text);
  record->scope = "Global";
  record->path = path;
  return record;
}

// Collects the records of the accesses of one form in one source: equal ones are one.
class AccessRecords {
 public:
  // Which places of equal records stay, if they have too many.
  enum class Kept { first, last };

  AccessRecords(const Pattern& pattern, std::string_view source, const std::vector<detail::Excerpt>& excerpts,
                std::string_view path, APIAnalysis::Records& list, Kept kept)
      : finder_(pattern, source, excerpts), path_(path), list_(list), kept_(kept), before_(list.size()) {}

  // Appends the accesses in an excerpt, as often as that was hit.
  void append(const detail::Excerpt& excerpt) {
    const std::vector<std::size_t> accesses = finder_.in(excerpt.text);
    while (records_.size() < finder_.texts().size())
      records_.emplace_back(makeAccess(finder_.texts()[records_.size()], path_));
    for (int hit = 0; hit < std::min(excerpt.hits, kMaxEqualRecords); ++hit) {
      for (const std::size_t access : accesses)
        (void)(kept_ == Kept::first ? records_[access].addTo(list_) : records_[access].addBeyondTo(list_));
    }
  }

  // After the last excerpt.
  void finish() {
    if (kept_ == Kept::last) detail::keepLastPlaces(list_, before_);
  }

 private:
  detail::ExcerptAccesses finder_;
  const std::string_view path_;
  APIAnalysis::Records& list_;
  const Kept kept_;
  const std::size_t before_;
  std::vector<detail::EqualRecords<SWFStateMentInfo>> records_;  // of the finder's texts
};

// The whole file up to its first zero byte, which is not part of it; what could be read of it if reading fails.
std::string readText(std::FILE* file) {
  constexpr std::size_t kFirstRead = 65536;
  std::string text;
  struct stat status {};
  const off_t bytes = fstat(fileno(file), &status) == 0 ? status.st_size : sizeOf(file);  // in memory: no descriptor
  text.resize(bytes > 0 && bytes < kMostAtOnce ? static_cast<std::size_t>(bytes) + 1 : kFirstRead);
  for (std::size_t size = 0;; text.resize(std::min<std::size_t>(2 * size, INT_MAX))) {
    const std::size_t read = std::fread(text.data() + size, 1, text.size() - size, file);
    const void* zero = std::memchr(text.data() + size, '\0', read);
    size += read;
    if (zero != nullptr) size = static_cast<std::size_t>(static_cast<const char*>(zero) - text.data());
    if (zero != nullptr || size < text.size() || size >= INT_MAX) {
      text.resize(size);
      return text;
    }
  }
}

// Reads and cleans the file at `path`, if it is named as a web source.
detail::ReadSource readSource(const std::string& path) {
  detail::ReadSource read;
  if (!isOneOf(CStringUtil().findFileExtention(path), kScanned)) return read;
  const File file = openInput(path);
  read.kind = file == nullptr ? detail::ReadSource::Kind::unreadable : detail::ReadSource::Kind::source;
  if (file == nullptr) return read;
  auto text = std::make_unique<std::string>(readText(file.get()));
  const bool isTooLong = text->size() >= INT_MAX;
  read.isCut = isTooLong || ftello(file.get()) > static_cast<off_t>(text->size());
  if (text->empty() || isTooLong) return read;

  // With its terminating zero: the cleaned text ends with one, as an unfinished comment's does.
  text->push_back('\0');
  const int length = delete_comment(text->data(), static_cast<int>(text->size()), text->data());
  text->resize(static_cast<std::size_t>(length));
  read.cleaned = std::move(text);
  return read;
}

}  // namespace

// Goes through all files. What a source holds by itself is found ahead, its records are made in its turn.
class APIAnalysis::SourceScan : public PartWork {
 public:
  SourceScan(APIAnalysis& engine, const std::vector<std::string>& files)
      : engine_(engine), files_(files), headers_(partLanes()), scanned_(files.size()) {}

  void prepare(std::size_t part, std::size_t lane) override {
    auto scanned = std::make_unique<Scanned>();
    scanned->read = readSource(files_[part]);
    if (scanned->read.cleaned != nullptr) {
      const char* const text = scanned->read.cleaned->c_str();
      scanned->excerpts = detail::findExcerpts(text);
      scanned->functions = detail::findFunctions(text, headers_[lane]);
    }
    scanned_[part] = std::move(scanned);
  }

  void take(std::size_t part) override {
    const std::unique_ptr<Scanned> scanned = std::move(scanned_[part]);
    const std::string& path = files_[part];
    if (!engine_.keepSource(path, scanned->read)) return;
    std::string* const cleaned = engine_.cleanedSourceList.back();
    appendAccesses(cleaned->c_str(), scanned->excerpts, engine_.known_->pathOfRecords(path));
    engine_.worthfulSourceList.push_back(cleaned);
    append(engine_.worthfulPathList, std::make_unique<std::string>(path));
    engine_.appendScriptFunctions(scanned->functions, *cleaned, *engine_.worthfulPathList.back());
    append(engine_.worthfulExtList, std::make_unique<std::string>(CStringUtil().findFileExtention(path)));
  }

 private:
  struct Scanned {
    detail::ReadSource read;
    std::vector<detail::Excerpt> excerpts;
    detail::ScriptFunctions functions;
  };

  void appendAccesses(std::string_view text, const std::vector<detail::Excerpt>& excerpts, std::string_view path) {
    AccessRecords accesses(lookUps_, text, excerpts, path, engine_.objectAccessList, AccessRecords::Kept::first);
    // These are read from the last one on: which of equal ones is the last decides their order.
    AccessRecords embedsAccesses(embeds_, text, excerpts, path, engine_.embedsAccessList, AccessRecords::Kept::last);
    for (const detail::Excerpt& excerpt : excerpts) {
      accesses.append(excerpt);
      embedsAccesses.append(excerpt);
    }
    embedsAccesses.finish();
  }

  APIAnalysis& engine_;
  const std::vector<std::string>& files_;
  const Pattern lookUps_{lookUpPattern()};
  const Pattern embeds_{kEmbeds};
  std::vector<detail::FunctionHeaders> headers_;  // of each lane
  std::vector<std::unique_ptr<Scanned>> scanned_;
};

RunResult APIAnalysis::FirstScanSource(std::vector<std::string>* files) {
  SourceScan scan(*this, *files);
  runParts(files->size(), scan);
  TARVO_LOG(" WorthFul File [%d] EA", static_cast<int>(worthfulSourceList.size()));
  PrintProcessingTime("FirstScanSource");
  return RUN_SUCCESS;
}

// Appends the functions that a cleaned source defines.
void APIAnalysis::appendScriptFunctions(const detail::ScriptFunctions& found, const std::string& cleaned,
                                        const std::string& path) {
  std::vector<FlashFunctionInfo*> records(found.functions.size());
  const std::size_t needed = functionBlockList.size() + found.finds.size();
  if (needed > functionBlockList.capacity()) {
    functionBlockList.reserve(std::max(needed, 2 * functionBlockList.capacity()));
  }
  for (const std::uint32_t find : found.finds) {
    const detail::ScriptFunction& function = found.functions[find];
    if (records[find] != nullptr) {
      functionBlockList.push_back(records[find]);
    } else {
      append(functionBlockList,
             std::make_unique<FlashFunctionInfo>(FlashFunctionInfo{function.header, function.body, path, &cleaned}));
      records[find] = functionBlockList.back();
    }
  }
}

int APIAnalysis::CheckFileAnalysisWorth(std::string path, std::string*& cleaned) {
  detail::ReadSource read = readSource(path);
  if (!keepSource(path, read)) return 0;
  cleaned = cleanedSourceList.back();
  return 1;
}

// Tells of what could not be read of the file at `path`. Whether there is a cleaned text, which is then kept.
bool APIAnalysis::keepSource(const std::string& path, detail::ReadSource& read) {
  if (read.kind == detail::ReadSource::Kind::unreadable) {
    TARVO_LOG_AS("CheckFileAnalysisWorth", " file[%s] Open Error ", path.c_str());
    notRead(Gap::fileUnreadable, path);
  }
  if (read.isCut) notRead(Gap::sourceCut, path);
  if (read.cleaned == nullptr) return false;
  append(cleanedSourceList, std::move(read.cleaned));
  return true;
}

int APIAnalysis::documentExtentionChecker(std::string extension) {
  return isOneOf(extension, documentExtention) ? 1 : 0;
}

}  // namespace FlashEngine_1_00

// Source selection: which files are web sources, their text without comments, and the first pass over it.
//
// Fills worthfulExtList, worthfulPathList, worthfulSourceList, cleanedSourceList, objectAccessList, embedsAccessList
// and functionBlockList. No later stage opens a web source again. Test: tests/APICheckEngine/SourceSelection_test.cpp.

#include <sys/stat.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <iterator>
#include <unordered_map>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/CommentStripping.h"
#include "APICheckEngine/SourceScan.h"
#include "APICheckEngine/Tables.h"
#include "platform/File.h"
#include "platform/Limits.h"
#include "platform/Log.h"
#include "regex/Pattern.h"

namespace FlashEngine_1_00 {
namespace {

constexpr const char* kNeverScanned[] = {"jpg", "JPG", "gif", "GIF", "so", "SO", "png", "PNG", "pcm", "PCM"};
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

std::string accessPattern() {
  return std::string("(") + kGetElementById + ")|(" + kDollar + ")";
}

template <std::size_t N>
bool isOneOf(const std::string& text, const char* const (&words)[N]) {
  return std::any_of(std::begin(words), std::end(words), [&](const char* word) { return text == word; });
}

// The element accesses in one source, excerpt by excerpt. Excerpts overlap; the source is searched once for all of
// them.
//
// An excerpt is searched as a text of its own, with a terminator where the source goes on. That makes a difference for
// an access that the excerpt's end cuts off, and for no other: what the access patterns match never goes by what stands
// behind it.
class AccessFinder {
 public:
  // One record is made of a text, however often it is found.
  struct Access {
    SWFStateMentInfo* record = nullptr;
    int kept = 0;
  };
  using Found = std::pair<const std::string, Access>;  // by text

  // The excerpts come in the order of their places.
  AccessFinder(const Pattern& pattern, std::string_view source)
      : pattern_(pattern), cursor_(pattern, source, nullptr), searchedTo_(source.data()) {}

  std::vector<Found*> accessesIn(std::string_view excerpt) {
    const char* const end = excerpt.data() + excerpt.size();
    search(excerpt.data(), end);
    std::vector<Found*> accesses;
    auto place = std::partition_point(places_.begin(), places_.end(),
                                      [&](const Place& p) { return p.text.data() < excerpt.data(); });
    for (const char* at = excerpt.data(); place != places_.end() && place->text.data() < end; ++place) {
      if (place->text.data() < at) continue;
      at = place->text.data() + place->text.size();
      if (at >= end) {
        const std::string rest(place->text.data(), end);
        for (MatchCursor last(pattern_, rest.c_str()); last.next();)
          accesses.push_back(&accessOf(last.view()));
        break;
      }
      if (place->access == nullptr) place->access = &accessOf(place->text);
      accesses.push_back(place->access);
    }
    return accesses;
  }

 private:
  // Where an access starts in the source. They lie inside each other: "a.b = $('tv')", "b = $('tv')", "= $('tv')".
  struct Place {
    std::string_view text;
    Found* access;
  };

  // Finds the places in [begin, end).
  void search(const char* begin, const char* end) {
    if (begin >= searchedTo_) {
      places_.clear();
      searchedTo_ = begin;
    }
    while (searchedTo_ < end) {
      const bool isThere = cursor_.nextIn(searchedTo_, end);
      if (isThere) places_.push_back({cursor_.view(), nullptr});
      searchedTo_ = isThere ? cursor_.view().data() + 1 : end;
    }
  }

  Found& accessOf(std::string_view text) { return *accesses_.try_emplace(std::string(text)).first; }

  const Pattern& pattern_;
  MatchCursor cursor_;
  const char* searchedTo_;
  std::vector<Place> places_;
  std::unordered_map<std::string, Access> accesses_;
};

// Appends the accesses found in an excerpt, as often as that was hit; `most` equal ones in the whole file.
void appendAccesses(const std::vector<AccessFinder::Found*>& accesses, int hits, int most, const std::string& path,
                    APIAnalysis::Records& list) {
  for (int hit = 0; hit < std::min(hits, kMaxEqualRecords); ++hit) {
    for (AccessFinder::Found* found : accesses) {
      auto& [text, access] = *found;
      if (access.kept == most) continue;
      if (access.kept++ > 0) {
        list.push_back(access.record);
        continue;
      }
      auto record = std::make_unique<SWFStateMentInfo>();
      record->expression = std::make_unique<std::string>(text);
      record->scope = "Global";
      record->path = path;
      access.record = record.get();
      append(list, std::move(record));
    }
  }
}

// Of the equal ones among the records from position `from` on, drops all but the last kMaxEqualRecords.
void keepLast(APIAnalysis::Records& list, std::size_t from) {
  std::unordered_map<const SWFStateMentInfo*, int> seen;
  const auto first = list.begin() + static_cast<std::ptrdiff_t>(from);
  auto kept = list.end();
  for (auto record = list.end(); record != first;) {
    --record;
    if (++seen[*record] <= kMaxEqualRecords) *--kept = *record;
  }
  list.erase(first, kept);
}

// The whole file up to its first zero byte, which is not part of it; what could be read of it if reading fails.
std::string readText(std::FILE* file) {
  constexpr std::size_t kFirstRead = 65536;
  std::string text;
  struct stat status {};
  const bool hasSize = fstat(fileno(file), &status) == 0 && status.st_size > 0 && status.st_size < kMostAtOnce;
  text.resize(hasSize ? static_cast<std::size_t>(status.st_size) + 1 : kFirstRead);
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

}  // namespace

RunResult APIAnalysis::FirstScanSource(std::vector<std::string>* files) {
  const Pattern accesses(accessPattern());
  const Pattern embeds(kEmbeds);
  for (const std::string& path : *files) {
    std::string* cleaned = nullptr;
    if (CheckFileAnalysisWorth(path, cleaned) == 0) continue;
    const std::string_view text = cleaned->c_str();
    AccessFinder accessFinder(accesses, text);
    AccessFinder embedsFinder(embeds, text);
    const std::size_t firstEmbeds = embedsAccessList.size();
    for (const detail::Excerpt& excerpt : detail::findExcerpts(text)) {
      appendAccesses(accessFinder.accessesIn(excerpt.text), excerpt.hits, kMaxEqualRecords, path, objectAccessList);
      appendAccesses(embedsFinder.accessesIn(excerpt.text), excerpt.hits, INT_MAX, path, embedsAccessList);
    }
    // These are read from the last one on: which of equal ones is the last decides their order.
    keepLast(embedsAccessList, firstEmbeds);
    worthfulSourceList.push_back(cleaned);
    append(worthfulPathList, std::make_unique<std::string>(path));
    appendScriptFunctions(*cleaned, *worthfulPathList.back());
    append(worthfulExtList, std::make_unique<std::string>(stringUtil_.findFileExtention(path)));
  }
  TARVO_LOG(" WorthFul File [%d] EA", static_cast<int>(worthfulSourceList.size()));
  PrintProcessingTime("FirstScanSource");
  return RUN_SUCCESS;
}

// Appends the functions that a cleaned source defines.
void APIAnalysis::appendScriptFunctions(const std::string& cleaned, const std::string& path) {
  const detail::ScriptFunctions found = detail::findFunctions(cleaned.c_str());
  std::vector<FlashFunctionInfo*> records(found.functions.size());
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
  const std::string extension = stringUtil_.findFileExtention(path);
  if (isOneOf(extension, kNeverScanned) || !isOneOf(extension, kScanned)) return 0;
  const File file = openFile(path, "r");
  if (file == nullptr) {
    TARVO_LOG(" file[%s] Open Error ", path.c_str());
    return 0;
  }
  auto owned = std::make_unique<std::string>(readText(file.get()));
  const bool isTooLong = owned->size() >= INT_MAX;
  if (isTooLong || ftello(file.get()) > static_cast<off_t>(owned->size())) cutFiles.push_back(path);
  if (owned->empty() || isTooLong) return 0;

  // With its terminating zero: the cleaned text ends with one, as an unfinished comment's does.
  owned->push_back('\0');
  const int length = delete_comment(owned->data(), static_cast<int>(owned->size()), owned->data());
  owned->resize(static_cast<std::size_t>(length));
  cleaned = owned.get();
  append(cleanedSourceList, std::move(owned));
  return 1;
}

int APIAnalysis::documentExtentionChecker(std::string extension) {
  return isOneOf(extension, documentExtention) ? 1 : 0;
}

}  // namespace FlashEngine_1_00

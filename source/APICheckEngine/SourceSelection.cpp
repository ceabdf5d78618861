// Source selection: which files are web sources, their text without comments, and the first pass over it.
//
// Fills worthfulExtList, worthfulPathList, worthfulSourceList, cleanedSourceList, objectAccessList, embedsAccessList
// and functionBlockList. No later stage opens a web source again. Test: tests/APICheckEngine/SourceSelection_test.cpp.

#include <sys/stat.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <iterator>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/CommentStripping.h"
#include "APICheckEngine/EqualRecords.h"
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
const std::string kGetElementById =
    R"((([\w\_]+)[\.]*)*\s*=*\s*document\s*\.\s*getElementById\s*[(][\"'\s]*[\w\_]+[\"'\s]*\)\s*\.*[\w\d\s\_]*\(*[\"'\s]*[\w\_]*[\"'\s]*)";

// "tv = $('tv')", "$_(tv).Play("; not "$('#tv')".
const std::string kDollar =
    R"((([\w\_]+)[\.]*)*\s*=*\s*[\$]\s*[\_]*\s*[(]["'\s]*[\w\_]+["'\s]*\)\s*\.*[\w\d\s\_]*\(*[\"'\s]*[\w\_]*[\"'\s]*)";

// "tv = document.embeds[1]"; not "document.embeds['tv']".
const std::string kEmbeds =
    R"((([\w\_]+)[\.]*)*\s*=*\s*document\s*\.\s*embeds\s*\[\s*[\d]*\s*\]\s*\.*[\w\d\s\_]*\(*[\"'\s]*[\w\_]*[\"'\s]*)";

std::string accessPattern() {
  return "(" + kGetElementById + ")|(" + kDollar + ")";
}

template <std::size_t N>
bool isOneOf(const std::string& text, const char* const (&words)[N]) {
  return std::any_of(std::begin(words), std::end(words), [&](const char* word) { return text == word; });
}

// One record for each match in the text of an excerpt, as often as that was hit. `kept` counts equal ones of the whole
// file, if given.
void appendAccesses(const Pattern& pattern, const std::string& text, int hits, const std::string& path,
                    APIAnalysis::Records& list, detail::EqualRecords* kept) {
  std::vector<std::string> matches;
  for (MatchCursor at(pattern, text.c_str()); at.next();)
    matches.push_back(at.match());
  for (int hit = 0; hit < std::min(hits, kMaxEqualRecords); ++hit) {
    for (const std::string& match : matches) {
      if (kept != nullptr && !kept->keep(match)) continue;
      auto record = std::make_unique<SWFStateMentInfo>();
      record->expression = std::make_unique<std::string>(match);
      record->scope = "Global";
      record->path = path;
      append(list, std::move(record));
    }
  }
}

// The whole file up to its first zero byte, which is not part of it; what could be read of it if reading fails.
std::string readText(std::FILE* file) {
  constexpr std::size_t kFirstRead = 65536;
  std::string text;
  struct stat status {};
  const bool hasSize = fstat(fileno(file), &status) == 0 && status.st_size > 0 && status.st_size < kMostAtOnce;
  text.resize(hasSize ? static_cast<std::size_t>(status.st_size) + 1 : kFirstRead);
  for (std::size_t size = 0;; text.resize(2 * size)) {
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
    detail::EqualRecords keptAccesses;
    for (const detail::Excerpt& excerpt : detail::findExcerpts(text)) {
      const std::string copy(excerpt.text);  // with a terminator, which patterns can see, in the place of what follows
      appendAccesses(accesses, copy, excerpt.hits, path, objectAccessList, &keptAccesses);
      // Embeds records are read from the last one on: which of equal ones is the last decides their order.
      appendAccesses(embeds, copy, excerpt.hits, path, embedsAccessList, nullptr);
    }
    worthfulSourceList.push_back(cleaned);
    append(worthfulPathList, std::make_unique<std::string>(path));
    for (const detail::ScriptFunction& function : detail::findFunctions(text)) {
      append(functionBlockList, std::make_unique<FlashFunctionInfo>(FlashFunctionInfo{
                                    function.header, function.body, *worthfulPathList.back(), cleaned}));
    }
    append(worthfulExtList, std::make_unique<std::string>(stringUtil_.findFileExtention(path)));
  }
  TARVO_LOG(" WorthFul File [%d] EA", static_cast<int>(worthfulSourceList.size()));
  PrintProcessingTime("FirstScanSource");
  return RUN_SUCCESS;
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
  if (owned->empty() || owned->size() >= INT_MAX) return 0;

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

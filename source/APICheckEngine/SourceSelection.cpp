// Source selection: which files are web sources, their text without comments, and the first pass over it.
//
// Fills worthfulExtList, worthfulPathList, worthfulSourceList, cleanedSourceList, objectAccessList, embedsAccessList
// and functionBlockList. No later stage opens a web source again. Test: tests/APICheckEngine/SourceSelection_test.cpp.

#include <algorithm>
#include <array>
#include <climits>
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

// One record for each match, as often as the excerpt was hit. `kept` counts equal ones of the whole file, if given.
void appendAccesses(const Pattern& pattern, const detail::Excerpt& excerpt, const std::string& path,
                    APIAnalysis::Records& list, detail::EqualRecords* kept) {
  std::vector<std::string> matches;
  for (MatchCursor at(pattern, excerpt.text.c_str()); at.next();)
    matches.push_back(at.match());
  for (int hit = 0; hit < std::min(excerpt.hits, kMaxEqualRecords); ++hit) {
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

// The whole file up to its first zero byte; what could be read of it if reading fails.
std::string readText(std::FILE* file) {
  std::string text;
  std::array<char, 65536> chunk;
  for (std::size_t n; (n = std::fread(chunk.data(), 1, chunk.size(), file)) > 0;)
    text.append(chunk.data(), n);
  text.resize(std::min(text.find('\0'), text.size()));
  return text;
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
      appendAccesses(accesses, excerpt, path, objectAccessList, &keptAccesses);
      // Embeds records are read from the last one on: which of equal ones is the last decides their order.
      appendAccesses(embeds, excerpt, path, embedsAccessList, nullptr);
    }
    for (const detail::ScriptFunction& function : detail::findFunctions(text)) {
      append(functionBlockList,
             std::make_unique<FlashFunctionInfo>(FlashFunctionInfo{std::string(function.header), function.body, path}));
    }
    worthfulSourceList.push_back(cleaned);
    append(worthfulPathList, std::make_unique<std::string>(path));
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
  const std::string source = readText(file.get());
  if (source.empty() || source.size() >= INT_MAX) return 0;

  // With its terminating zero: the cleaned text ends with one, as an unfinished comment's does.
  std::string text(source.size() + 1, '\0');
  const int length = delete_comment(source.c_str(), static_cast<int>(source.size() + 1), text.data());
  text.resize(static_cast<std::size_t>(length));
  auto owned = std::make_unique<std::string>(std::move(text));
  cleaned = owned.get();
  append(cleanedSourceList, std::move(owned));
  return 1;
}

int APIAnalysis::documentExtentionChecker(std::string extension) {
  return isOneOf(extension, documentExtention) ? 1 : 0;
}

}  // namespace FlashEngine_1_00

// The API database: XML in, documented API names out.
//
// The file's top-level element APIAnalysisDB holds groups of any name; each Function element in a group is one
// documented API. Fills whiteAPIList; Init also empties the lists of the last run.
// Test: tests/APICheckEngine/Database_test.cpp.

// The assertions below hold in every build.
#undef NDEBUG
#include "APICheckEngine/Database.h"

#include <assert.h>
#include <sys/stat.h>

#include <algorithm>
#include <cctype>
#include <climits>
#include <cstring>
#include <new>
#include <string_view>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/DatabaseXml.h"
#include "platform/File.h"
#include "platform/Limits.h"
#include "platform/Log.h"
#include "platform/Paths.h"

namespace FlashEngine_1_00 {
namespace {

// Aborts under the engine's own texts, whatever the build calls its files.
void verify(bool holds, const char* assertion) {
  if (!holds) __assert_fail(assertion, "APICheckEngine/APIAnalysis", __LINE__, "swfloadWhiteAPIInfo");
}

// Makes each CR LF and each lone CR of the zero-terminated `dbBuff` (`ftellLen` bytes and the zero) one LF, in place.
// False if the text grew, which it cannot.
bool normaliseLineEnds(char* dbBuff, std::size_t ftellLen) {
  const char* p = dbBuff;
  char* q = dbBuff;
  while (*p != '\0') {
    verify(p < dbBuff + ftellLen, "p < (dbBuff+ftellLen)");
    verify(q <= dbBuff + ftellLen, "q <= (dbBuff+ftellLen)");
    verify(q <= p, "q <= p");
    const bool carriageReturn = *p == '\r';
    *q++ = carriageReturn ? '\n' : *p;
    ++p;
    if (carriageReturn && *p == '\n') ++p;
  }
  if (q > dbBuff + ftellLen) return false;
  *q = '\0';
  return true;
}

bool isDirectory(std::FILE* file) {
  struct stat status {};
  return fstat(fileno(file), &status) == 0 && S_ISDIR(status.st_mode);
}

// How deep the elements of a text nest, as far as a parser that gives up at the first error would get. Where two
// readings are possible it must not see less than the parser does: its stack depends on it.
class Nesting {
 public:
  explicit Nesting(std::string_view xml) : rest_(xml) {}

  bool isDeeperThan(int most) {
    while (depth_ <= most && skipTextBehind('<')) {
      if (startsWith("!--")) {
        rest_.remove_prefix(3);  // "<!-->" is no whole comment
        skipBehind("-->");
      } else if (startsWith("![CDATA[")) {
        skipBehind("]]>");
      } else if (startsWith("?")) {
        skipDeclaration();
      } else if (startsWith("/")) {
        depth_ = std::max(depth_ - 1, 0);
        skipBehind(">");
      } else if (!startsName()) {
        skipBehind(">");  // quotes mean nothing in what is no element
      } else if (!tagClosesItself()) {
        ++depth_;
      }
    }
    return depth_ > most || isUnclear_;
  }

 private:
  bool startsWith(std::string_view prefix) const { return rest_.substr(0, prefix.size()) == prefix; }

  bool skipBehind(std::string_view mark) {
    const std::size_t at = rest_.find(mark);
    rest_.remove_prefix(at == std::string_view::npos ? rest_.size() : at + mark.size());
    return at != std::string_view::npos;
  }

  // The same in text and quoted values, where the parser takes all up to the next ";" for one numeric reference.
  bool skipTextBehind(char mark) {
    const char stops[] = {mark, '&'};
    for (std::size_t at; (at = rest_.find_first_of(stops, 0, 2)) != std::string_view::npos;) {
      const bool isMark = rest_[at] == mark;
      rest_.remove_prefix(at + 1);
      if (isMark) return true;
      if (startsWith("#")) skipBehind(";");
    }
    rest_ = {};
    return false;
  }

  bool startsName() const {
    const auto c = static_cast<unsigned char>(rest_.empty() ? 0 : rest_.front());
    return std::isalpha(c) != 0 || c == '_' || c > 126;
  }

  static bool isBlank(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

  // To the parser, three characters of UTF-8 are blanks, too, but not in every encoding.
  void skipBlanks() {
    while (!rest_.empty() && isBlank(rest_.front()))
      rest_.remove_prefix(1);
    isUnclear_ = isUnclear_ || startsWith("\xEF");
  }

  // Skips what may be a name: letters, digits, "_", "-", "." and ":", all bytes above 126 with them.
  void skipName() {
    const auto belongs = [](char c) {
      const auto byte = static_cast<unsigned char>(c);
      return std::isalnum(byte) != 0 || byte > 126 || std::strchr("_-.:", c) != nullptr;
    };
    while (!rest_.empty() && belongs(rest_.front()))
      rest_.remove_prefix(1);
  }

  bool startsWithWord(std::string_view small) const {
    const auto isSame = [](char a, char b) { return a == std::tolower(static_cast<unsigned char>(b)); };
    return rest_.size() >= small.size() && std::equal(small.begin(), small.end(), rest_.begin(), isSame);
  }

  // Skips a declaration, in which quotes count for three attributes only, or an instruction, in which they count for
  // none. As the parser does it: "<?xml-stylesheet" is a declaration to it.
  void skipDeclaration() {
    if (!startsWithWord("?xml")) {
      skipBehind(">");
      return;
    }
    rest_.remove_prefix(std::strlen("?xml"));
    while (!rest_.empty() && rest_.front() != '>') {
      skipBlanks();
      if (startsWithWord("version") || startsWithWord("encoding") || startsWithWord("standalone")) {
        if (!skipAttribute()) rest_ = {};  // the parser gives up
      } else {
        while (!rest_.empty() && rest_.front() != '>' && !isBlank(rest_.front()))
          rest_.remove_prefix(1);
      }
    }
    rest_.remove_prefix(std::min<std::size_t>(rest_.size(), 1));
  }

  // Skips a name, "=" and a value. False if they are none.
  bool skipAttribute() {
    skipName();
    skipBlanks();
    if (!startsWith("=")) return false;
    rest_.remove_prefix(1);
    skipBlanks();
    if (startsWith("\"") || startsWith("'")) {
      const char quote = rest_.front();
      rest_.remove_prefix(1);
      return skipTextBehind(quote);
    }
    while (!rest_.empty() && !isBlank(rest_.front()) && rest_.front() != '/' && rest_.front() != '>') {
      if (rest_.front() == '"' || rest_.front() == '\'') return false;
      rest_.remove_prefix(1);
    }
    return true;
  }

  // Skips the rest of a tag with its quoted attributes.
  bool tagClosesItself() {
    bool slash = false;
    while (!rest_.empty()) {
      const char c = rest_.front();
      rest_.remove_prefix(1);
      if (c == '>') return slash;
      if (c == '"' || c == '\'') skipTextBehind(c);
      slash = c == '/';
    }
    return false;
  }

  std::string_view rest_;
  int depth_ = 0;
  bool isUnclear_ = false;
};

// Whether each byte that begins a UTF-8 character has the others behind it.
bool holdsWholeCharacters(std::string_view text) {
  for (; !text.empty(); text.remove_prefix(1)) {
    const auto first = static_cast<unsigned char>(text.front());
    const std::size_t others = first < 0xC0 ? 0 : first < 0xE0 ? 1 : first < 0xF0 ? 2 : 3;
    const std::string_view rest = text.substr(1, others);
    const auto isOther = [](char c) { return static_cast<unsigned char>(c) > 0x7F; };
    if (rest.size() < others || !std::all_of(rest.begin(), rest.end(), isOther)) return false;
  }
  return true;
}

}  // namespace

RunResult detail::readDatabase(std::FILE* file, DatabaseText& text) {
  if (file == nullptr || isDirectory(file)) return RUN_DB_LOAD_FAILED;
  (void)fseeko(file, 0, SEEK_END);
  const off_t length = ftello(file);
  if (length < 1) return RUN_SUCCESS;                // an empty database documents nothing
  if (length >= INT_MAX) return RUN_DB_LOAD_FAILED;  // more than a process of 32 bits can hold
  const auto ftellLen = static_cast<std::size_t>(length);
  text.dbBuff.reset(new (std::nothrow) char[ftellLen + 1]);
  char* const dbBuff = text.dbBuff.get();
  if (dbBuff == nullptr) return RUN_DB_LOAD_FAILED;
  std::rewind(file);
  if (std::fread(dbBuff, 1, ftellLen, file) != ftellLen) return RUN_DB_LOAD_FAILED;
  dbBuff[ftellLen] = '\0';
  text.isCut = std::strlen(dbBuff) < ftellLen;
  if (!normaliseLineEnds(dbBuff, ftellLen)) return RUN_DB_LOAD_FAILED;

  text.isTooDeep = Nesting(dbBuff).isDeeperThan(kMaxDatabaseDepth);
  if (text.isTooDeep) return RUN_DB_NO_ROOT;
  // The parser passes over as many bytes as the first one of a UTF-8 character announces, be they markup or behind the
  // end of the text. A text with such bytes is read byte by byte, whatever it says about its encoding.
  static constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  const std::string_view view = dbBuff;
  text.detectsEncoding = holdsWholeCharacters(view);
  const bool skipsMark = !text.detectsEncoding && view.substr(0, kByteOrderMark.size()) == kByteOrderMark;
  text.xml = dbBuff + (skipsMark ? kByteOrderMark.size() : 0);
  return RUN_SUCCESS;
}

RunResult APIAnalysis::Init() {
  emptyWorkingLists();
  const RunResult code = swfloadWhiteAPIInfo(whiteAPIList);
  if (code != RUN_SUCCESS) TARVO_LOG(" loadDeviceAPIInfo Error [%d] ", static_cast<int>(code));
  PrintProcessingTime("Init");
  return code;
}

RunResult APIAnalysis::swfloadWhiteAPIInfo(Strings& list) {
  const File file = openFile(enginePaths().database, "r");
  detail::DatabaseText text;
  const RunResult code = detail::readDatabase(file.get(), text);
  if (code != RUN_SUCCESS || text.xml == nullptr) return code;
  const auto appendName = [](void* names, const char* name) {
    append(*static_cast<Strings*>(names), std::make_unique<std::string>(name));
  };
  const bool hasRoot = detail::readFunctions(text.xml, text.detectsEncoding, appendName, &list);
  return hasRoot ? RUN_SUCCESS : RUN_DB_NO_ROOT;
}

}  // namespace FlashEngine_1_00

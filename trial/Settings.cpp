// The recorder's and the driver's script with their settings in front, as JSON; and the keys that an application's
// scripts compare with, found by looking for comparisons, not by running anything.
// Test: tests/trial/PackageServer_test.cpp.

#include "trial/Settings.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <set>
#include <sstream>

#include "trial/Places.h"
#include "trial/Protocol.h"
#include "trial/ScriptParts.h"

namespace trial {

namespace {

// Of a remote control, in the numbers that televisions have in common: arrows and enter, back, digits, letters for
// colours, transport, channels and volume.
constexpr int kRemote[] = {13,  37,  38, 39, 40, 8,  27, 461, 10009, 403, 404, 405, 406, 48,  49,  50,  51,  52,
                           53,  54,  55, 56, 57, 33, 34, 32,  19,    412, 413, 415, 417, 427, 428, 447, 448, 449,
                           457, 458, 36, 35, 77, 73, 82, 71,  89,    66,  112, 113, 9,   46,  176, 177, 178, 179};
constexpr std::size_t kMaxKeys = 160;
constexpr std::size_t kMaxCompared = 48;
constexpr std::size_t kMoves = 8;  // of the remote's first ones: arrows, enter, back
constexpr std::size_t kMaxKeyName = 24;
constexpr std::size_t kMinSequence = 3;
constexpr std::size_t kMaxSequence = 12;
constexpr std::size_t kMaxSequences = 20;
constexpr std::size_t kMaxWords = 40;
constexpr const char* kModifiers[] = {"shiftKey", "ctrlKey", "altKey", "metaKey"};

std::string dumped(const Json& value) {
  return value.dump(-1, ' ', true, Json::error_handler_t::replace);
}

bool isWordByte(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '$';
}

// What stands in front of `at`, blanks passed over: a comparison, a case, or the start of a value.
bool isCompared(const std::string& text, std::size_t at) {
  while (at > 0 && std::isspace(static_cast<unsigned char>(text[at - 1])) != 0)
    --at;
  if (at == 0) return false;
  const char before = text[at - 1];
  if (before == '=' || before == ':' || before == ',' || before == '[' || before == '{') return true;
  return at >= 4 && text.compare(at - 4, 4, "case") == 0;
}

// Where the text ends that is quoted from `at` on; npos if that is not in the same line.
std::size_t endOfQuoted(const std::string& text, std::size_t at) {
  const char ends[] = {text[at], '\\', '\n', '\0'};
  std::size_t end = text.find_first_of(ends, at + 1);
  while (end != std::string::npos && text[end] == '\\')
    end = text.find_first_of(ends, end + 2);
  return end != std::string::npos && text[end] == text[at] ? end : std::string::npos;
}

// The word in quotes that begins at `at`; empty if it is none, or too long.
std::string quotedWord(const std::string& text, std::size_t at) {
  const std::size_t end = endOfQuoted(text, at);
  if (end == std::string::npos || end - at - 1 > kMaxKeyName) return {};
  return text.substr(at + 1, end - at - 1);
}

// Whether what begins at `at` stands behind "case", "==" or "!==", or is what somebody listens to: on("ready").
bool isAwaited(const std::string& text, std::size_t at) {
  while (at > 0 && std::isspace(static_cast<unsigned char>(text[at - 1])) != 0)
    --at;
  if (at < 4) return false;
  return text.compare(at - 4, 4, "case") == 0 || text.compare(at - 2, 2, "==") == 0 ||
         text.compare(at - 3, 3, "on(") == 0;
}

void addOnce(std::vector<std::string>& list, const std::string& text, std::size_t most) {
  if (list.size() < most && std::find(list.begin(), list.end(), text) == list.end()) list.push_back(text);
}

// The digits of '1379' as the codes of their keys; empty if it is no such text.
std::string keysOfDigits(const std::string& word) {
  if (word.size() < kMinSequence || word.size() > kMaxSequence ||
      !std::all_of(word.begin(), word.end(), [](unsigned char c) { return std::isdigit(c) != 0; }))
    return {};
  std::string codes;
  for (const char digit : word)
    codes += (codes.empty() ? "" : ",") + std::to_string(static_cast<int>(digit));
  return '[' + codes + ']';
}

// [38,38,40] as it stands at `at`; empty if it holds anything but numbers that keys may have.
std::string keysOfList(const std::string& text, std::size_t at) {
  const std::size_t end = text.find_first_not_of("0123456789, ", at + 1);
  if (end == std::string::npos || text[end] != ']' || end - at > 8 * kMaxSequence) return {};
  std::istringstream numbers(text.substr(at + 1, end - at - 1));
  std::string codes;
  std::size_t count = 0;
  for (std::string number; std::getline(numbers, number, ','); ++count) {
    const long code = std::strtol(number.c_str(), nullptr, 10);
    if (code < 8 || code > 20000) return {};
    codes += (codes.empty() ? "" : ",") + std::to_string(code);
  }
  return count < kMinSequence || count > kMaxSequence ? std::string() : '[' + codes + ']';
}

void addSequencesAndWords(const std::string& text, Vocabulary& vocabulary) {
  const auto isWordCharacter = [](char c) { return isWordByte(c) || c == '-' || c == '.' || c == ':'; };
  for (std::size_t i = text.find_first_of("'\"["); i != std::string::npos; i = text.find_first_of("'\"[", i + 1)) {
    std::string sequence;
    if (text[i] == '[') {
      sequence = keysOfList(text, i);
    } else {
      const std::string word = quotedWord(text, i);
      sequence = keysOfDigits(word);
      if (!word.empty() && std::all_of(word.begin(), word.end(), isWordCharacter) && isAwaited(text, i))
        addOnce(vocabulary.words, dumped(word), kMaxWords);
    }
    if (!sequence.empty()) addOnce(vocabulary.sequences, sequence, kMaxSequences);
  }
}

std::string listOf(const std::vector<std::string>& texts) {
  std::string list;
  for (const std::string& text : texts)
    list += (list.empty() ? "" : ",") + text;
  return '[' + list + ']';
}

std::string tableOf(const Answers& answers) {
  std::string table = "{__proto__: null";
  for (const auto& [name, values] : answers)
    table += ", " + dumped(name) + ": " + listOf(values);
  return table + '}';
}

class Keys {
 public:
  Keys() {
    for (const int key : kRemote)
      keys_.push_back(std::to_string(key));
    known_.insert(keys_.begin(), keys_.end());
    compared_.assign(keys_.begin(), keys_.begin() + kMoves);
  }

  void add(const std::string& key) {
    addOnce(compared_, key, kMaxCompared);
    if (keys_.size() < kMaxKeys && known_.insert(key).second) keys_.push_back(key);
  }

  void addFrom(const std::string& text) {
    for (std::size_t i = 0; i < text.size() && keys_.size() < kMaxKeys; ++i) {
      const bool isStart = i == 0 || !isWordByte(text[i - 1]);
      if (isStart && std::isdigit(static_cast<unsigned char>(text[i])) != 0 && isCompared(text, i)) {
        char* end = nullptr;
        const long number = std::strtol(text.c_str() + i, &end, 0);
        const auto length = static_cast<std::size_t>(end - (text.c_str() + i));
        const char behind = i + length < text.size() ? text[i + length] : ' ';
        if (number > 5 && number < 20000 && behind != '.' && !isWordByte(behind)) add(std::to_string(number));
        i += std::max<std::size_t>(length, 1) - 1;
      }
    }
  }

  // Names behind "case" or a comparison: "ArrowLeft".
  void addNames(const std::string& text) {
    for (std::size_t i = text.find_first_of("'\""); i != std::string::npos; i = text.find_first_of("'\"", i + 1)) {
      const std::size_t end = endOfQuoted(text, i);
      if (end == std::string::npos) continue;
      const std::string name = text.substr(i + 1, std::min(end - i - 1, kMaxKeyName + 1));
      const bool isName = !name.empty() && name.size() <= kMaxKeyName &&
                          std::isupper(static_cast<unsigned char>(name[0])) != 0 &&
                          std::all_of(name.begin(), name.end(), isWordByte);
      const bool isValue = isCompared(text, i) && (text.find_last_of(",:[{", i) != i - 1 || i == 0);
      const bool isCharacter = name.size() == 1 && name[0] > ' ' && name[0] <= '~' && isAwaited(text, i);
      if ((isName && isValue) || isCharacter) add(dumped(name));
      i = end;
    }
  }

  void giveTo(Vocabulary& vocabulary) {
    vocabulary.keys = std::move(keys_);
    vocabulary.compared = std::move(compared_);
  }

 private:
  std::vector<std::string> keys_;
  std::vector<std::string> compared_;
  std::set<std::string> known_;
};

}  // namespace

std::string recorderScript(const Input& input, const Settings& settings, const Vocabulary& vocabulary) {
  std::string documented = "{\"__proto__\":null";
  for (const std::string& method : input.documented)
    if (method != "__proto__") documented += ',' + dumped(method) + ":1";
  documented += '}';
  return std::string("(function recorder(settings) {'use strict';\n") + kRecorder + kUncalled + kDriver +
         "\n})({__proto__: null, secret: " + dumped(settings.secret) + ", mark: " + dumped(settings.mark) +
         ", world: " + std::to_string(static_cast<int>(settings.world)) + ", plugins: " + dumped(input.classIds) +
         ", extension: " + dumped(input.extension) + ", documented: " + documented +
         ", keys: " + listOf(vocabulary.keys) + ", sequences: " + listOf(vocabulary.sequences) +
         ", modifiers: " + listOf(vocabulary.modifiers) + ", words: " + listOf(vocabulary.words) +
         ", compared: " + listOf(vocabulary.compared) + ", origins: " + dumped(vocabulary.origins) +
         ", answers: " + tableOf(vocabulary.answers) + "});";
}

Vocabulary vocabularyOf(const std::vector<File>& files) {
  Keys keys;
  Vocabulary vocabulary;
  const auto isCode = [](const File& file) {
    return isPage(file.path) || contentTypeOf(file.path) == "text/javascript";
  };
  for (const File& file : files)
    if (isCode(file) && !isLibrary(file.path) && file.bytes.find("key") != std::string::npos) keys.addNames(file.bytes);
  for (const File& file : files)
    if (isCode(file) && !isLibrary(file.path) && file.bytes.find("ey") != std::string::npos) keys.addFrom(file.bytes);
  keys.giveTo(vocabulary);
  for (const File& file : files) {
    if (!isCode(file) || isLibrary(file.path)) continue;
    addSequencesAndWords(file.bytes, vocabulary);
    addAnswers(file.bytes, vocabulary.answers);
    addOrigins(file.bytes, vocabulary.origins);
    for (const char* modifier : kModifiers)
      if (file.bytes.find(modifier) != std::string::npos) addOnce(vocabulary.modifiers, dumped(modifier), 4);
  }
  return vocabulary;
}

}  // namespace trial

// The recorder's and the driver's script with their settings in front, as JSON; and the keys that an application's
// scripts compare with, found by looking for comparisons, not by running anything.
// Test: tests/trial/PackageServer_test.cpp.

#include "trial/Settings.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <set>

#include "trial/Places.h"
#include "trial/Protocol.h"
#include "trial/ScriptParts.h"

namespace trial {

namespace {

// Of a remote control, in the numbers that televisions have in common: arrows and enter, back, digits, letters for
// colours, transport, channels and volume.
constexpr int kRemote[] = {13,  37,  38,  39,  40, 8,  27, 461, 10009, 403, 404, 405, 406, 48,  49,  50,  51,
                           52,  53,  54,  55,  56, 57, 33, 34,  32,    19,  412, 413, 415, 417, 427, 428, 447,
                           448, 449, 457, 458, 36, 35, 77, 73,  82,    71,  89,  66,  112, 113, 9,   46};
constexpr std::size_t kMaxKeys = 160;
constexpr std::size_t kMaxKeyName = 24;

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

class Keys {
 public:
  void add(const std::string& key) {
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
      const std::size_t end = text.find(text[i], i + 1);
      if (end == std::string::npos) return;
      const std::string name = text.substr(i + 1, std::min(end - i - 1, kMaxKeyName + 1));
      const bool isName = !name.empty() && name.size() <= kMaxKeyName &&
                          std::isupper(static_cast<unsigned char>(name[0])) != 0 &&
                          std::all_of(name.begin(), name.end(), isWordByte);
      const bool isCase = isCompared(text, i) && (text.find_last_of(",:[{", i) != i - 1 || i == 0);
      if (isName && isCase) add('"' + name + '"');
      i = end;
    }
  }

  std::vector<std::string> take() { return std::move(keys_); }

 private:
  std::vector<std::string> keys_;
  std::set<std::string> known_;
};

}  // namespace

std::string recorderScript(const Input& input, const Settings& settings, const std::vector<std::string>& keys) {
  std::string documented = "{\"__proto__\":null";
  for (const std::string& method : input.documented)
    if (method != "__proto__") documented += ',' + dumped(method) + ":1";
  documented += '}';
  std::string keyList;
  for (const std::string& key : keys)
    keyList += (keyList.empty() ? "" : ",") + key;
  return std::string("(function recorder(settings) {'use strict';\n") + kRecorder + kUncalled + kDriver +
         "\n})({__proto__: null, secret: " + dumped(settings.secret) + ", mark: " + dumped(settings.mark) +
         ", world: " + (settings.world == World::unreachable ? "0" : "1") + ", plugins: " + dumped(input.classIds) +
         ", extension: " + dumped(input.extension) + ", documented: " + documented + ", keys: [" + keyList + "]});";
}

std::vector<std::string> keysOf(const std::vector<File>& files) {
  Keys keys;
  for (const int key : kRemote)
    keys.add(std::to_string(key));
  const auto isCode = [](const File& file) {
    return isPage(file.path) || contentTypeOf(file.path) == "text/javascript";
  };
  for (const File& file : files)
    if (isCode(file) && !isLibrary(file.path) && file.bytes.find("key") != std::string::npos) keys.addNames(file.bytes);
  for (const File& file : files)
    if (isCode(file) && !isLibrary(file.path) && file.bytes.find("ey") != std::string::npos) keys.addFrom(file.bytes);
  return keys.take();
}

}  // namespace trial

// What the engine passes over because of a name. Test: tests/checker/NotChecked_test.cpp.

#include "checker/run/FileGaps.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <string_view>

#include "APICheckEngine/Facade.h"

namespace {

constexpr const char* kSourceExtensions[] = {"html", "htm", "js", "xml"};
constexpr const char* kFlashExtension = "swf";

std::string mapped(std::string text, int (*toCase)(int)) {
  for (char& c : text)
    c = static_cast<char>(toCase(static_cast<unsigned char>(c)));
  return text;
}

bool isSourceExtension(const std::string& small) {
  const auto isSmall = [&](const char* known) { return small == known; };
  return std::any_of(std::begin(kSourceExtensions), std::end(kSourceExtensions), isSmall);
}

}  // namespace

bool beginsAsFlash(std::string_view head) {
  constexpr std::size_t kVersion = 3;
  if (head.size() <= kVersion || std::string_view("FCZ").find(head[0]) == std::string_view::npos) return false;
  if (head.substr(1, 2) != "WS") return false;
  const auto isControl = [](char c) {
    return static_cast<unsigned char>(c) < ' ' && std::string_view("\t\n\r\f").find(c) == std::string_view::npos;
  };
  return static_cast<unsigned char>(head[kVersion]) < ' ' ||
         std::any_of(head.begin() + kVersion, head.end(), isControl);
}

std::vector<std::string> fileGaps(const std::string& path) {
  // The engine knows an extension in small or in capital letters, not in both.
  const std::string extension = CStringUtil().findFileExtention(path);
  const std::string small = mapped(extension, std::tolower);
  const bool isKnown = extension == small || extension == mapped(extension, std::toupper);
  const FlashEngine_1_00::File file = FlashEngine_1_00::openInput(path);
  if (file == nullptr) return {};
  if (!isKnown && isSourceExtension(small)) return {"its extension is written neither in small nor in capital letters"};
  if (isKnown && small == kFlashExtension) return {};
  char head[64];
  const std::size_t length = std::fread(head, 1, sizeof head, file.get());
  if (beginsAsFlash({head, length})) return {"a Flash file by its content that has another extension"};
  return {};
}

bool isNamedAsSource(const std::string& path) {
  const std::string small = mapped(CStringUtil().findFileExtention(path), std::tolower);
  return small == kFlashExtension || isSourceExtension(small);
}

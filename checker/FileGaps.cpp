// What the engine passes over without a word. Test: tests/checker/NotChecked_test.cpp.

#include "checker/FileGaps.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <iterator>

#include "checker/FlashGaps.h"
#include "platform/File.h"
#include "tarvo/CStringUtil.h"

namespace {

constexpr const char* kSourceExtensions[] = {"html", "htm", "js", "xml"};

std::string mapped(std::string text, int (*toCase)(int)) {
  for (char& c : text)
    c = static_cast<char>(toCase(static_cast<unsigned char>(c)));
  return text;
}

}  // namespace

std::vector<std::string> fileGaps(const std::string& path) {
  const FlashEngine_1_00::File file = FlashEngine_1_00::openFile(path, "rb");
  if (file == nullptr) return {};
  std::array<unsigned char, 4> head{};
  (void)!std::fread(head.data(), 1, head.size(), file.get());

  // The engine expands no package below such a name.
  if (head[0] == 'P' && head[1] == 'K' && path.find(".fla") != std::string::npos) {
    return {"a package below a name with '.fla', which is not unpacked"};
  }
  // The engine knows an extension in small or in capital letters, not in both.
  const std::string extension = CStringUtil().findFileExtention(path);
  const std::string small = mapped(extension, std::tolower);
  const bool isKnown = extension == small || extension == mapped(extension, std::toupper);
  const auto isSmall = [&](const char* known) { return small == known; };
  if (!isKnown && std::any_of(std::begin(kSourceExtensions), std::end(kSourceExtensions), isSmall)) {
    return {"its extension is written neither in small nor in capital letters"};
  }
  if (small == "swf" && isKnown) return flashGaps(path);
  const bool isFlash =
      std::strchr("FCZ", head[0]) != nullptr && head[1] == 'W' && head[2] == 'S' && head[3] < ' ';  // its version
  if (isFlash) return {"a Flash file by its content that has another extension"};
  return {};
}

// What the engine passes over in a Flash file, found by a walk of our own (SWF file format: header, tags).
//
// The engine lists DoAction tags only, and its walk can lose its way. Both walks are made here, that of a player and
// the engine's: a script that a player meets and the engine does not is a gap. Test: tests/checker/NotChecked_test.cpp.

#include "checker/FlashGaps.h"

#include <algorithm>
#include <utility>

#include "platform/File.h"
#include "platform/Limits.h"
#include "swf/DeAssembler.h"

using FlashEngine_1_00::ByteView;
using FlashEngine_1_00::DeAssembler;
using FlashEngine_1_00::Position;

namespace {

constexpr int kEnd = 0;
constexpr int kDoAction = 12;
constexpr int kSprite = 39;
constexpr int kHighestKnownTag = 91;
constexpr Position kShortHeader = 2;
constexpr Position kSpriteHead = 4;  // its id and its frame count

bool always(const ByteView&, Position) {
  return true;
}
bool hasActionOffset(const ByteView& image, Position body) {
  return image.at(body + 3) != 0 || image.at(body + 4) != 0;
}
bool hasClipActions(const ByteView& image, Position body) {
  return (image.at(body) & 0x80) != 0;
}

// Tags with script that is never listed. A DefineButton always has room for some.
struct ScriptTag {
  int code;
  bool (*holdsScript)(const ByteView& image, Position body);
  const char* reason;
};
constexpr const char* kAvm2 = "ActionScript 3 (DoABC) is not read";
constexpr const char* kButton = "button actions are not read";
constexpr const char* kClip = "clip actions are not read";
constexpr ScriptTag kScriptTags[] = {
    {7, always, kButton},
    {26, hasClipActions, kClip},
    {34, hasActionOffset, kButton},
    {59, always, "DoInitAction is not read"},
    {70, hasClipActions, kClip},
    {72, always, kAvm2},
    {82, always, kAvm2},
};
constexpr const char* kUnknown = "a tag of an unknown kind, where the engine stops";
constexpr const char* kDamaged = "its tags are damaged or cut short";
constexpr const char* kLost = "the engine loses its way among the tags and passes over a script";

// The engine's walk. A sprite's id and frame count are a tag header to it.
class EngineWalk {
 public:
  EngineWalk(const ByteView& image, Position begin) : image_(image), position_(begin) {}

  // Whether the script at `place` is listed; the places ascend.
  bool lists(Position place) {
    while (script_ < place && next()) {
    }
    return script_ == place;
  }

 private:
  // Goes behind the next tag; false at the end.
  bool next() {
    if (position_ >= image_.size()) return false;
    reader_.TagHeaderParsing(image_, position_, &code_, &length_);
    if (code_ == kEnd || code_ > kHighestKnownTag) return std::exchange(inSprite_, false);
    const bool entersSprite = code_ == kSprite && !inSprite_;
    const bool isPassedOver = code_ == kDoAction && (length_ == 0 || length_ > FlashEngine_1_00::kMaxScriptBlock);
    inSprite_ = inSprite_ || entersSprite;
    if (entersSprite || isPassedOver) return true;
    if (code_ == kDoAction) script_ = position_;
    position_ += length_;
    return true;
  }

  DeAssembler reader_;
  const ByteView& image_;
  Position position_;
  Position script_ = 0;
  bool inSprite_ = false;
  int code_ = 0;
  std::uint32_t length_ = 0;
};

// As the header has it.
Position fileLength(const ByteView& image) {
  Position at = 4;
  return FlashEngine_1_00::Util().getDoubleWord(image, at);
}

// The walk of a player, which goes into sprites.
std::vector<std::string> gapsFrom(const ByteView& image, Position position) {
  std::vector<std::string> gaps;
  const auto add = [&](const char* reason) {
    if (std::find(gaps.begin(), gaps.end(), reason) == gaps.end()) gaps.emplace_back(reason);
  };
  DeAssembler reader;
  EngineWalk engine(image, position);
  Position spriteEnd = 0;  // 0: in none
  int code = 0;
  std::uint32_t length = 0;
  for (;;) {
    const Position end = spriteEnd > 0 ? spriteEnd : image.size();
    // Where nothing is missing, there are movies and sprites without an end tag.
    const bool isOver = position == end && (spriteEnd > 0 || fileLength(image) <= end);
    const bool isThere = position + kShortHeader <= end;
    if (isThere) reader.TagHeaderParsing(image, position, &code, &length);
    // The last tag is longer than what it stands in, or a sprite holds a sprite.
    if (!isOver && (!isThere || (code == kSprite && spriteEnd > 0))) {
      add(kDamaged);
      return gaps;
    }
    if (isOver || code == kEnd) {
      if (spriteEnd == 0) return gaps;
      position = std::exchange(spriteEnd, 0);
      continue;
    }
    if (code == kSprite) {
      spriteEnd = position + length;
      position += kSpriteHead;
      continue;
    }
    if (code > kHighestKnownTag) add(kUnknown);
    if (code == kDoAction && length > 0 && !engine.lists(position)) add(kLost);
    for (const ScriptTag& row : kScriptTags) {
      if (code == row.code && row.holdsScript(image, position)) add(row.reason);
    }
    position += length;
  }
}

// Behind the signature, version and file length, the frame's rectangle of five fields of bits, rate and frame count.
Position firstTag(const ByteView& image) {
  constexpr Position kHead = 8;
  const Position bits = 5 + 4 * (image.at(kHead) >> 3);
  return kHead + (bits + 7) / 8 + 4;
}

// What the engine reads of a plain file.
std::vector<unsigned char> readPlain(std::FILE* file) {
  (void)fseeko(file, 0, SEEK_END);
  std::vector<unsigned char> image(
      static_cast<std::size_t>(std::clamp<Position>(ftello(file), 0, FlashEngine_1_00::kMaxSwfBytes)));
  std::rewind(file);
  image.resize(std::fread(image.data(), 1, image.size(), file));
  return image;
}

}  // namespace

std::vector<std::string> flashGaps(const std::string& path) {
  const FlashEngine_1_00::File file = FlashEngine_1_00::openFile(path, "rb");
  if (file == nullptr) return {};
  DeAssembler reader;
  const std::string signature = reader.getSWFHeader(file.get());
  std::vector<unsigned char> bytes;
  if (signature == "ZWS") return {"compressed with LZMA, which the engine does not read"};
  if (signature == "CWS") {
    (void)reader.unCompressSWF(file.get(), bytes);
  } else if (signature == "FWS") {
    bytes = readPlain(file.get());
  } else {
    return {"not a Flash file that the engine reads: its first bytes are neither FWS nor CWS"};
  }
  const ByteView image(bytes.data(), static_cast<Position>(bytes.size()));
  return gapsFrom(image, firstTag(image));
}

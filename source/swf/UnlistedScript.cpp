// Script of a Flash file that is in no listing (SWF file format: header, tags).
//
// The engine lists DoAction tags only, and its walk over the tags can lose its way. That walk is made here again,
// without a listing, and beside it the walk of a player, which goes into sprites: a script that the player meets and
// the engine does not is lost. Both go forward through the file, so that neither keeps what it met. Test:
// tests/checker/NotChecked_test.cpp.

#include "swf/UnlistedScript.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/FilePlace.h"
#include "platform/Limits.h"
#include "swf/DeAssembler.h"

namespace FlashEngine_1_00 {
namespace {

constexpr int kEnd = 0;
constexpr int kDoAction = 12;
constexpr int kSprite = 39;
constexpr int kHighestKnownTag = 91;
constexpr Position kShortHeader = 2;
constexpr Position kSpriteHead = 4;  // its id and its frame count
constexpr Position kSignature = 3;

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
  Gap gap;
};
constexpr ScriptTag kScriptTags[] = {
    {7, always, Gap::scriptOfButton},           {26, hasClipActions, Gap::scriptOfClip},
    {34, hasActionOffset, Gap::scriptOfButton}, {59, always, Gap::scriptOfInit},
    {70, hasClipActions, Gap::scriptOfClip},    {72, always, Gap::scriptOfVersion3},
    {82, always, Gap::scriptOfVersion3},
};

class Gaps {
 public:
  void add(Gap gap) {
    if (std::find(list_.begin(), list_.end(), gap) == list_.end()) list_.push_back(gap);
  }
  std::vector<Gap> take() { return std::move(list_); }

 private:
  std::vector<Gap> list_;
};

// The walk of a player, from one DoAction tag to the next.
class PlayerWalk {
 public:
  PlayerWalk(const ByteView& image, Position firstTag, Gaps& gaps) : image_(image), position_(firstTag), gaps_(gaps) {
    findScript();
  }

  // The engine lists the script at `place`, and none between that and the one before.
  void engineLists(Position place) {
    while (script_ && *script_ < place)
      passOver();
    if (script_ == place) findScript();
  }

  // It lists no more.
  void engineEnds() {
    while (script_)
      passOver();
  }

 private:
  void passOver() {
    gaps_.add(Gap::scriptPassedOver);
    findScript();
  }

  // Goes to the next script; there is none behind the last one, and where the tags are damaged.
  void findScript() {
    script_.reset();
    while (!script_ && nextTag()) {
    }
  }

  // As the header has it.
  Position fileLength() {
    Position at = 4;
    return Util().getDoubleWord(image_, at);
  }

  // Goes behind the next tag, or out of a sprite; false at the end.
  bool nextTag() {
    const Position end = spriteEnd_ > 0 ? spriteEnd_ : image_.size();
    int code = 0;
    std::uint32_t length = 0;
    // Where nothing is missing, there are movies and sprites without an end tag.
    const bool isOver = position_ == end && (spriteEnd_ > 0 || fileLength() <= end);
    const bool isThere = position_ + kShortHeader <= end;
    if (isThere) reader_.TagHeaderParsing(image_, position_, &code, &length);
    // The last tag is longer than what it stands in, or a sprite holds a sprite.
    if (!isOver && (!isThere || (code == kSprite && spriteEnd_ > 0))) {
      gaps_.add(Gap::tagsDamaged);
      return false;
    }
    if (isOver || code == kEnd) {
      if (spriteEnd_ == 0) return false;
      position_ = std::exchange(spriteEnd_, 0);
    } else if (code == kSprite) {
      spriteEnd_ = position_ + length;
      position_ += kSpriteHead;
    } else {
      takeTag(code, length);
    }
    return true;
  }

  void takeTag(int code, std::uint32_t length) {
    if (code > kHighestKnownTag) gaps_.add(Gap::tagUnknown);
    if (code == kDoAction && length > 0) script_ = position_;
    for (const ScriptTag& row : kScriptTags) {
      if (code == row.code && row.holdsScript(image_, position_)) gaps_.add(row.gap);
    }
    position_ += length;
  }

  const ByteView& image_;
  DeAssembler reader_;
  Position position_;
  Position spriteEnd_ = 0;  // 0: in none
  std::optional<Position> script_;
  Gaps& gaps_;
};

// Behind the signature, version and file length, the frame's rectangle of five fields of bits, rate and frame count.
Position firstTag(const ByteView& image) {
  constexpr Position kHead = 8;
  const Position bits = 5 + 4 * (image.at(kHead) >> 3);
  return kHead + (bits + 7) / 8 + 4;
}

std::vector<Gap> unlistedIn(const ByteView& image) {
  Gaps gaps;
  bool branches = false;
  PlayerWalk player(image, firstTag(image), gaps);
  DeAssembler().visitScripts(image.slice(kSignature, image.size()), [&](Position place, const ByteView& block) {
    player.engineLists(place + kSignature);
    branches = branches || branchesIntoRecord(block);
  });
  player.engineEnds();
  if (branches) gaps.add(Gap::scriptBranch);
  return gaps.take();
}

// What the engine reads of a plain file, as far as it goes.
std::vector<unsigned char> readPlain(std::FILE* file) {
  (void)fseeko(file, 0, SEEK_END);
  std::vector<unsigned char> image(static_cast<std::size_t>(std::clamp<Position>(ftello(file), 0, kMaxSwfBytes)));
  std::rewind(file);
  image.resize(std::fread(image.data(), 1, image.size(), file));
  return image;
}

}  // namespace

std::vector<Gap> unlistedScript(const std::string& path) {
  const File file = openInput(path);
  if (file == nullptr) return {};
  DeAssembler reader;
  const std::string signature = reader.getSWFHeader(file.get());
  std::vector<unsigned char> bytes;
  if (signature == "ZWS") return {Gap::flashLzma};
  if (signature == "CWS") {
    (void)reader.unCompressSWF(file.get(), bytes);
  } else if (signature == "FWS") {
    bytes = readPlain(file.get());
  } else {
    return {Gap::flashFormat};
  }
  return unlistedIn(ByteView(bytes.data(), static_cast<Position>(bytes.size())));
}

}  // namespace FlashEngine_1_00

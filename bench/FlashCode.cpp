#include "bench/FlashCode.h"

#include <zlib.h>

#include <algorithm>
#include <vector>

#include "bench/ScriptText.h"
#include "swf-assembler/Assembler.h"
#include "swf-assembler/Bytes.h"

namespace bench {
namespace {

using swf_assembler::little;

constexpr unsigned kDoAction = 12;
constexpr unsigned kDefineSprite = 39;
constexpr unsigned kLongLength = 0x3F;
constexpr std::size_t kHeadBytes = 8;  // signature, version and file length

constexpr int kPoolSize = 200;
constexpr std::size_t kBlocks = 24;  // different ones; a longer movie repeats them

constexpr const char* kLiterals[] = {
    "The list could not be loaded.", "_root.menu.entries", "onRelease", "FF3A7C", "visible", "x", "url", "http://",
};

class Block {
 public:
  explicit Block(unsigned seed) : picks_(seed) {}

  std::string code() {
    text_ = "ConstantPool";
    for (int i = 0; i < kPoolSize; ++i)
      text_ += " \"member" + std::to_string(i * 37 % 1000) + "\"";
    text_ += '\n';
    for (int functions = 0; functions < 60; ++functions)
      function();
    text_ += "End\n";
    return swf_assembler::assembleActions(text_);
  }

 private:
  std::string constant() { return "const8 " + std::to_string(picks_.below(kPoolSize)); }
  std::string literal() { return '"' + std::string(picks_.oneOf(kLiterals)) + '"'; }

  void function() {
    text_ += "Push " + constant() + "\nGetVariable\nPush " + constant() + '\n';
    text_ += "function2 \"\" registers 6 flags 0x002A (2:event 3:target) {\n";
    for (std::size_t n = 4 + picks_.below(8); n > 0; --n)
      statement();
    text_ += "Push reg 2\nReturn\n}\nSetMember\n";
  }

  void statement() {
    switch (picks_.below(8)) {
      case 0:
      case 1:  // object.member = "..."
        text_ += "Push reg 3, " + constant() + ", " + literal() + "\nSetMember\n";
        break;
      case 2:  // object.method("...", 12)
        text_ += "Push 12, " + literal() + ", 2, " + constant() + "\nGetVariable\nPush " + constant() +
                 "\nCallMethod\nPop\n";
        break;
      case 3:  // object.member.method("...")
        text_ += "Push " + literal() + ", 1, reg 2, " + constant() + "\nGetMember\nPush " + constant() +
                 "\nCallMethod\nPop\n";
        break;
      case 4: {  // if (value < 100) call()
        const std::string label = "skip" + std::to_string(++labels_);
        text_ += "Push reg 2, double 100\nLess2\nNot\nIf " + label + "\nPush " + literal() + ", 1, " + constant() +
                 "\nCallFunction\nPop\n" + label + ":\n";
        break;
      }
      case 5:  // count = count + 1, in a register
        text_ += "Push reg 4\nIncrement\nStoreRegister 4\nPop\n";
        break;
      case 6:  // object.member = member * 2 - value
        text_ += "Push reg 3, " + constant() + ", reg 3, " + constant() +
                 "\nGetMember\nPush 2\nMultiply\nPush reg 2\nSubtract\nSetMember\n";
        break;
      default:  // variable = "..." + value
        text_ += "Push " + constant() + ", " + literal() + ", " + literal() + "\nAdd2\nSetVariable\n";
    }
  }

  Picks picks_;
  std::string text_;
  int labels_ = 0;
};

std::string scriptTag(const std::string& code) {
  return little(kDoAction << 6 | kLongLength, 2) + little(code.size(), 4) + code;
}

// The `bytes` lowest-first bytes at `at`; past the end, zero.
std::size_t number(const std::string& image, std::size_t at, std::size_t bytes) {
  std::size_t value = 0;
  for (std::size_t i = 0; i < bytes && at + i < image.size(); ++i)
    value |= static_cast<std::size_t>(static_cast<unsigned char>(image[at + i])) << (8 * i);
  return value;
}

std::string movie(const std::string& tags) {
  const std::string body =
      swf_assembler::frameSize(15, {0, 11000, 0, 8000}) + little(12 << 8, 2) + little(1, 2) + tags + little(0, 2);
  return "FWS\x08" + little(body.size() + kHeadBytes, 4) + body;
}

}  // namespace

std::string flashMovie(std::size_t bytes) {
  std::vector<std::string> blocks;
  std::string tags;
  for (std::size_t n = 0; tags.size() < bytes; ++n) {
    if (blocks.size() < kBlocks) blocks.push_back(scriptTag(Block(static_cast<unsigned>(n + 1)).code()));
    tags += blocks[n % kBlocks];
  }
  return movie(tags + scriptTag(swf_assembler::assembleActions("Push 0, \"allReplayed\"\nCallFunction\nEnd\n")));
}

std::string plainMovie(const std::string& file) {
  if (file.size() < kHeadBytes || file.compare(0, 3, "CWS") != 0) return file;
  std::string image(number(file, 4, 4), '\0');
  uLongf length = static_cast<uLongf>(image.size() - std::min(image.size(), kHeadBytes));
  const auto* packed = reinterpret_cast<const Bytef*>(file.data() + kHeadBytes);
  auto* plain = reinterpret_cast<Bytef*>(image.data() + image.size() - length);
  return uncompress(plain, &length, packed, static_cast<uLong>(file.size() - kHeadBytes)) == Z_OK ? image : "";
}

std::size_t scriptBytes(const std::string& image) {
  const std::size_t frameBits = 5 + 4 * (number(image, kHeadBytes, 1) >> 3);
  std::size_t total = 0;
  for (std::size_t at = kHeadBytes + (frameBits + 7) / 8 + 4; at < image.size();) {
    const std::size_t header = number(image, at, 2);
    const bool isLong = (header & kLongLength) == kLongLength;
    const std::size_t length = isLong ? number(image, at + 2, 4) : header & kLongLength;
    if (header >> 6 == kDefineSprite) break;
    at += isLong ? 6 : 2;
    if (header >> 6 == kDoAction) total += std::min(length, image.size() - std::min(at, image.size()));
    at += length;
  }
  return total;
}

std::string movieOf(const std::string& code) {
  return movie(scriptTag(code));
}

std::string jumps(std::size_t count) {
  constexpr char kJump = '\x99';
  std::string code;
  for (std::size_t i = 0; i < count; ++i)
    code += kJump + little(2, 2) + little(0, 2);
  return code;
}

}  // namespace bench

#include "bench/FlashCode.h"

#include <vector>

#include "bench/ScriptText.h"
#include "swf-assembler/Assembler.h"
#include "swf-assembler/Bytes.h"

namespace bench {
namespace {

using swf_assembler::little;

constexpr int kPoolSize = 200;
constexpr std::size_t kBlocks = 24;  // different ones; a longer movie repeats them

constexpr const char* kLiterals[] = {"The list could not be loaded from the server, please try again later.",
                                     "_root.stage.menu.entries.highlighted",
                                     "application/x-www-form-urlencoded; charset=utf-8",
                                     "FF3A7C",
                                     "onRelease",
                                     "http://example.invalid/feed.xml?page="};

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
    switch (picks_.below(6)) {
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
      default:  // variable = "..." + value
        text_ += "Push " + constant() + ", " + literal() + ", " + literal() + "\nAdd2\nSetVariable\n";
    }
  }

  Picks picks_;
  std::string text_;
  int labels_ = 0;
};

std::string scriptTag(const std::string& code) {
  constexpr int kDoAction = 12;
  constexpr int kLongLength = 0x3F;
  return little(kDoAction << 6 | kLongLength, 2) + little(code.size(), 4) + code;
}

std::string movie(const std::string& tags) {
  const std::string body =
      swf_assembler::frameSize(15, {0, 11000, 0, 8000}) + little(12 << 8, 2) + little(1, 2) + tags + little(0, 2);
  return "FWS\x08" + little(body.size() + 8, 4) + body;
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

// The movie and its tags; ActionRecords.cpp does what stands inside a doaction block.

#include "swf-assembler/Assembler.h"

#include <algorithm>

#include "swf-assembler/ActionRecords.h"
#include "swf-assembler/Bytes.h"
#include "swf-assembler/TokenReader.h"

namespace swf_assembler {
namespace {

constexpr long long kLongestShortTag = 62;
constexpr int kCodeInText = -1;
constexpr int kTwipsPerPixel = 20;

class MovieParser {
 public:
  explicit MovieParser(const std::string& text) : in_(text) {}

  std::string movie();

 private:
  struct Cut {
    long long bytes = 0;
    int line = 0;
  };
  struct Setting {
    const char* name;
    void (MovieParser::*read)();
  };
  struct Tag {
    const char* name;
    int code;
    const char* operands;                // letters that TokenReader::fields knows
    std::string (MovieParser::*list)();  // what a block of the tag holds; null: it has no block
  };
  static const Setting kSettings[];
  static const Tag kTags[];

  void signature();
  void version() { version_ = in_.field('b'); }
  void frame();
  void rate();
  void frames() { frames_ = in_.field('w'); }
  void fileLength() { fileLength_ = in_.integer(32); }
  void cut();

  std::string tags();
  std::string actions() { return readActions(in_).linked(); }
  std::string tagOrSetting();
  std::string tag(const Tag& tag);

  static void drop(const Cut& cut, std::string& bytes);

  TokenReader in_;
  std::string signature_ = "FWS";
  std::string version_ = little(8, 1);
  std::string frameSize_ = frameSize(15, {0, 550LL * kTwipsPerPixel, 0, 400LL * kTwipsPerPixel});
  std::string rate_ = little(12 << 8, 2);
  std::string frames_ = little(1, 2);
  Override fileLength_;
  Cut cut_;
  Cut plainCut_;
};

const MovieParser::Setting MovieParser::kSettings[] = {
    {"signature", &MovieParser::signature},
    {"version", &MovieParser::version},
    {"frame", &MovieParser::frame},
    {"rate", &MovieParser::rate},
    {"frames", &MovieParser::frames},
    {"filelength", &MovieParser::fileLength},
    {"cut", &MovieParser::cut},
};

const MovieParser::Tag MovieParser::kTags[] = {
    {"end", 0, "", nullptr},
    {"showframe", 1, "", nullptr},
    {"doaction", 12, "", &MovieParser::actions},
    {"sprite", 39, "ww", &MovieParser::tags},
    {"tag", kCodeInText, "", &MovieParser::actions},
};

std::string MovieParser::movie() {
  const std::string tagList = tags();
  if (!in_.at(Kind::kFileEnd)) in_.failExpected("a tag");
  std::string plain = frameSize_ + rate_ + frames_ + tagList;
  std::string file = signature_ + version_;
  file += fileLength_ ? little(*fileLength_, 4) : little(file.size() + 4 + plain.size(), 4);
  drop(plainCut_, plain);
  file += signature_ == "CWS" ? compressed(plain) : plain;
  drop(cut_, file);
  return file;
}

void MovieParser::signature() {
  const int line = in_.line();
  signature_ = in_.text("a signature");
  if (signature_.size() != 3) throw AssemblyError(line, "a signature has three letters");
}

void MovieParser::frame() {
  const int line = in_.line();
  std::vector<long long> edges;
  edges.reserve(4);
  for (int i = 0; i < 4; ++i)
    edges.push_back(in_.integer(30));
  int needed = 0;
  for (const long long edge : edges)
    needed = std::max(needed, signedBits(edge));
  const Override bits = in_.option("bits", 5);
  if (bits && *bits < needed) throw AssemblyError(line, "this frame size needs " + std::to_string(needed) + " bits");
  frameSize_ = frameSize(static_cast<int>(bits.value_or(needed)), edges);
}

void MovieParser::rate() {
  const int line = in_.line();
  const double perSecond = in_.decimal();
  if (!(perSecond >= 0 && perSecond < 256)) throw AssemblyError(line, "a rate is at least 0 and below 256");
  rate_ = little(static_cast<int>(perSecond * 256), 2);
}

void MovieParser::cut() {
  Cut& cut = in_.accept("plain") ? plainCut_ : cut_;
  cut.line = in_.line();
  cut.bytes = in_.integer(32);
}

void MovieParser::drop(const Cut& cut, std::string& bytes) {
  const auto size = static_cast<long long>(bytes.size());
  if (cut.bytes < 0 || cut.bytes > size)
    throw AssemblyError(cut.line, "there are " + std::to_string(size) + " bytes to cut from");
  bytes.resize(static_cast<std::size_t>(size - cut.bytes));
}

std::string MovieParser::tags() {
  std::string tags;
  for (in_.skipLineEnds(); !in_.atListEnd(); in_.skipLineEnds()) {
    tags += tagOrSetting();
    in_.expectRecordEnd();
  }
  return tags;
}

std::string MovieParser::tagOrSetting() {
  if (in_.accept("bytes")) return in_.hexWords();
  if (const Tag* row = in_.acceptRowOf(kTags)) return tag(*row);
  const Setting* setting = in_.depth() == 0 ? in_.acceptRowOf(kSettings) : nullptr;
  if (setting == nullptr) in_.fail("unknown tag " + in_.shown());
  (this->*setting->read)();
  return std::string();
}

std::string MovieParser::tag(const Tag& tag) {
  const long long code = tag.code == kCodeInText ? in_.integer(10) & 0x3FF : tag.code;
  std::string body = in_.fields(tag.operands);
  const bool wantsLong = in_.accept("long");
  const Override wantsLength = in_.option("length", 32);
  if (in_.accept("bytes")) body += in_.hexWords();
  if (tag.list != nullptr && in_.atMark('{')) body += in_.block([&] { return (this->*tag.list)(); });
  const long long length = wantsLength.value_or(static_cast<long long>(body.size()));
  const bool isLong = wantsLong || length < 0 || length > kLongestShortTag;
  const std::string header = little(code << 6 | (isLong ? kLongestShortTag + 1 : length), 2);
  return header + (isLong ? little(length, 4) : std::string()) + body;
}

}  // namespace

std::string assemble(const std::string& text) {
  return MovieParser(text).movie();
}

std::string assembleActions(const std::string& text) {
  TokenReader reader(text);
  std::string bytes = readActions(reader).linked();
  if (!reader.at(Kind::kFileEnd)) reader.failExpected("an action");
  return bytes;
}

}  // namespace swf_assembler

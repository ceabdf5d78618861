// SWF reader: from the file to its script blocks (SWF file format: header, tags).
//
// A plain or inflated file is an image in memory; its tags are skipped by their lengths until a script block comes.
// Test: tests/swf/DeAssembler_test.cpp, tests/swf/Golden_test.cpp.

#include "swf/DeAssembler.h"

#include <zlib.h>

#include <array>
#include <new>

#include "platform/FilePlace.h"
#include "platform/Limits.h"
#include "platform/Log.h"
#include "platform/TimeBudget.h"
#include "swf/LineList.h"
#include "swf/TagNames.h"

namespace FlashEngine_1_00 {
namespace {

constexpr int kTagDoAction = 12;
constexpr int kTagSprite = 39;
constexpr int kLowestTag = 1;
constexpr int kHighestTag = 91;
constexpr std::uint32_t kLongLength = 63;
constexpr std::size_t kSignatureBytes = 3;
constexpr std::size_t kHeadBytes = 8;  // signature, version and file length, which are never compressed

constexpr const char* kDoActionStart = " ------------ ActionScript ASM Code From TAG_DOACTION Start ------------- \r";
constexpr const char* kDoActionEnd = " ------------ ActionScript ASM Code From TAG_DOACTION End   ------------- \r";
constexpr const char* kSpriteStart =
    " ------------ ActionScript ASM Code From TAG_DEFINEMOVIECLIP Start ------------- \r";
constexpr const char* kSpriteEnd =
    " ------------ ActionScript ASM Code From TAG_DEFINEMOVIECLIP End   ------------- \r";

// What `line` takes in memory.
std::size_t bytesOf(const ListedLine& line) {
  static_assert(sizeof(std::string) <= kLineBytes);
  const std::size_t size = line.size();
  return kLineBytes + (size > kMaxShortLine ? size + kLineBlockBytes : 0);
}

// For a walk that lists nothing.
class NoLines : public ListingTaker {
 public:
  void expect(std::size_t) override {}
  void take(const ListedLine&) override {}
};

// An open zlib stream.
class Inflater {
 public:
  Inflater() : open_(inflateInit(&stream_) == Z_OK) {}
  ~Inflater() { (void)close(); }
  Inflater(const Inflater&) = delete;
  Inflater& operator=(const Inflater&) = delete;

  explicit operator bool() const { return open_; }
  z_stream& stream() { return stream_; }
  bool close() {
    const bool wasOpen = open_;
    open_ = false;
    return !wasOpen || inflateEnd(&stream_) == Z_OK;
  }

 private:
  z_stream stream_{};
  bool open_;
};

// Gives `use` each piece of what `file` inflates to from its current place on, as far as it goes and `use` wants more.
// A status of zlib's: Z_OK or Z_STREAM_END, or what is wrong with the stream.
template <typename Use>
int inflateRest(std::FILE* file, const Use& use) {
  Inflater inflater;
  if (!inflater) return Z_MEM_ERROR;
  std::vector<unsigned char> input(kSwfChunk);
  std::vector<unsigned char> output(kSwfChunk);
  z_stream& stream = inflater.stream();
  stream.avail_out = static_cast<uInt>(output.size());
  int status = Z_OK;
  while (status == Z_OK) {
    // A full output may have left more of it inside zlib, so that input comes next only where it was not full.
    if (stream.avail_in == 0 && stream.avail_out > 0) {
      stream.next_in = input.data();
      stream.avail_in = static_cast<uInt>(std::fread(input.data(), 1, input.size(), file));
      if (stream.avail_in == 0) break;
    }
    stream.next_out = output.data();
    stream.avail_out = static_cast<uInt>(output.size());
    status = inflate(&stream, Z_SYNC_FLUSH);
    const std::size_t made = output.size() - stream.avail_out;
    if (status == Z_BUF_ERROR && stream.avail_in == 0) status = Z_OK;  // nothing was left
    if (!use(output.data(), made)) break;
  }
  return inflater.close() || status < Z_OK ? status : Z_STREAM_ERROR;
}

// Appends what `file` inflates to, as far as it goes. False for a damaged stream or one past kMaxSwfBytes. The stream
// is read twice, the first time for its size: an image that grew as it came would take twice its bytes.
bool inflateInto(std::vector<unsigned char>& image, std::FILE* file) {
  constexpr auto kMost = static_cast<std::uint64_t>(kMaxSwfBytes);
  const off_t begin = ftello(file);
  std::uint64_t size = 0;
  const int status = inflateRest(file, [&](const unsigned char*, std::size_t made) { return (size += made) <= kMost; });
  image.reserve(image.size() + static_cast<std::size_t>(std::min(size, kMost)));
  if (fseeko(file, begin, SEEK_SET) != 0) return false;
  const int again = inflateRest(file, [&](const unsigned char* bytes, std::size_t made) {
    const std::size_t kept = std::min(made, image.capacity() - image.size());
    image.insert(image.end(), bytes, bytes + kept);
    return kept == made;
  });
  return size <= kMost && again == status && (status == Z_OK || status == Z_STREAM_END);
}

// Reads a whole plain file, or its first kMaxSwfBytes. Empty if it is shorter than it claims.
std::vector<unsigned char> readPlain(std::FILE* file) {
  (void)fseeko(file, 0, SEEK_END);
  const Position size = std::min<Position>(ftello(file), kMaxSwfBytes);
  std::rewind(file);
  std::vector<unsigned char> image(static_cast<std::size_t>(std::max<Position>(size, 0)));
  if (std::fread(image.data(), 1, image.size(), file) != image.size()) image.clear();
  return image;
}

}  // namespace

DeAssembler::DeAssembler() = default;
DeAssembler::~DeAssembler() = default;

RunResult DeAssembler::SWFDeAssemblerMain(std::string path, std::vector<std::string>& lines) {
  LineList list(lines, listedBytes_);
  return listFile(path, list);
}

RunResult DeAssembler::listFile(const std::string& path, ListingTaker& taker) {
  if (timeBudgetSpent()) return RUN_TIME_LIMIT;
  const File file = openInput(path);
  if (file == nullptr) return RUN_SWF_OPEN_FAILED;
  resetMemberVariable();
  std::vector<unsigned char> image;
  RunResult code = RUN_SUCCESS;
  try {
    image.reserve(kSwfChunk);
    code = readImage(file.get(), image);
  } catch (const std::bad_alloc&) {
    TARVO_LOG_AS("SWFDeAssemblerMain", "[%s] Memory Allocation(malloc) Fail ", "SWFDeAssemblerMain");
    return RUN_SWF_BUFFER_ALLOC_FAILED;
  }
  if (image.size() <= kSignatureBytes) return code;
  const ByteView whole(image.data(), static_cast<Position>(image.size()));
  (void)listTags(whole.slice(kSignatureBytes, whole.size()), taker);
  CheckProcessingTime(" ---->DeAssemble_AfterSWFDeAssemble");
  return code;
}

// Reads the file, from its signature on, to the image of a plain one; empty if there is none.
RunResult DeAssembler::readImage(std::FILE* file, std::vector<unsigned char>& image) {
  const std::string header = getSWFHeader(file);
  TARVO_LOG_AS("SWFDeAssemblerMain", "[%s] [swfHeader] [%s]", "SWFDeAssemblerMain", header.c_str());
  CheckProcessingTime(" ---->DeAssemble_AfterGetHeader");
  if (header == "FWS") {
    image = readPlain(file);
    return RUN_SUCCESS;
  }
  if (header != "CWS") return RUN_SWF_BAD_SIGNATURE;
  const RunResult code = unCompressSWF(file, image);
  CheckProcessingTime(" ---->DeAssemble_AfterUnCompress");
  return code;
}

std::string DeAssembler::getSWFHeader(std::FILE* file) {
  std::array<char, kSignatureBytes> bytes{};
  if (std::fread(bytes.data(), 1, bytes.size(), file) != bytes.size()) return std::string();
  return std::string(bytes.data(), bytes.size());
}

RunResult DeAssembler::unCompressSWF(std::FILE* file, std::vector<unsigned char>& image) {
  image = {'F', 'W', 'S', 0, 0, 0, 0, 0};
  (void)!std::fread(image.data() + kSignatureBytes, 1, kHeadBytes - kSignatureBytes, file);
  return inflateInto(image, file) ? RUN_SUCCESS : RUN_SWF_UNCOMPRESS_FAILED;
}

RunResult DeAssembler::SWFDeAssemble(const ByteView& data, std::vector<std::string>& lines) {
  LineList list(lines, listedBytes_);
  return listTags(data, list);
}

RunResult DeAssembler::listTags(const ByteView& data, ListingTaker& taker) {
  Position position = 1;                      // behind the version
  (void)util_.getDoubleWord(data, position);  // file length
  unsigned current = util_.getByte(data, position);
  int bitsLeft = 8;
  const auto fieldBits = static_cast<int>(util_.getBitsValue(bitsLeft, current, data, position, 5));
  for (int field = 0; field < 4; ++field) {
    (void)util_.getBitsValue(bitsLeft, current, data, position, fieldBits);  // frame size
  }
  (void)util_.getWord(data, position);  // frame rate
  (void)util_.getWord(data, position);  // frame count

  int code = 0;
  std::uint32_t length = 0;
  while (nextTag(data, position, &code, &length)) {
    if (code == kTagDoAction) {
      if (length == 0 || length > kMaxScriptBlock) continue;
      addLine(taker, ListedLine(kDoActionStart));
      listScript(data, position, length, taker);
      addLine(taker, ListedLine(kDoActionEnd));
    } else if (code == kTagSprite) {
      addLine(taker, ListedLine(kSpriteStart));
      listSprite(data, position, taker);
      addLine(taker, ListedLine(kSpriteEnd));
    } else {
      skipTag(data, position, length);
    }
  }
  return RUN_SUCCESS;
}

// Reads the next tag header; false when the walk is over.
bool DeAssembler::nextTag(const ByteView& data, Position& position, int* code, std::uint32_t* length) {
  if (stops() || position >= data.size()) return false;
  TagHeaderParsing(data, position, code, length);
  return *code >= kLowestTag && *code <= kHighestTag;
}

void DeAssembler::TagHeaderParsing(const ByteView& data, Position& position, int* code, std::uint32_t* length) {
  const unsigned word = util_.getWord(data, position);
  *code = static_cast<int>(word >> 6);
  *length = word & kLongLength;
  if (*length == kLongLength) *length = util_.getDoubleWord(data, position);
}

// Lists a script block of `length` bytes, as far as they are there.
void DeAssembler::listScript(const ByteView& data, Position& position, std::uint32_t length, ListingTaker& taker) {
  const ByteView block = data.slice(position, length);
  if (visit_ != nullptr) {
    (*visit_)(position, block);
  } else {
    listBlock(block, position + static_cast<Position>(kSignatureBytes), taker);
  }
  position += length;
}

// Passes over a tag of `length` bytes; told to the log, as the listing does, unless scripts are only visited.
void DeAssembler::skipTag(const ByteView& data, Position& position, std::uint32_t length) {
  if (visit_ != nullptr) {
    position += length;
  } else {
    util_.skipTagLengh(data, position, length, data.size());
  }
}

void DeAssembler::visitScripts(const ByteView& data, const Visit& visit) {
  NoLines none;
  visit_ = &visit;
  (void)listTags(data, none);
  visit_ = nullptr;
}

void DeAssembler::movieClipTagParse(const ByteView& data, Position& position, std::vector<std::string>& lines) {
  LineList list(lines, listedBytes_);
  listSprite(data, position, list);
}

void DeAssembler::listSprite(const ByteView& data, Position& position, ListingTaker& taker) {
  // KEPT: a sprite's own id and frame count are read as its first tag header. Hosts compare listings.
  // (test SpriteIdIsReadAsTag)
  int code = 0;
  std::uint32_t length = 0;
  while (nextTag(data, position, &code, &length)) {
    if (code != kTagDoAction) {
      skipTag(data, position, length);
    } else if (length != 0 && length <= kMaxScriptBlock) {
      listScript(data, position, length, taker);
    }
  }
}

const char* DeAssembler::getTagStr(int code) {
  const auto row = std::lower_bound(kTagNames.begin(), kTagNames.end(), code,
                                    [](const TagName& name, int wanted) { return name.code < wanted; });
  return row != kTagNames.end() && row->code == code ? row->name : nullptr;
}

int DeAssembler::checkByteOrder() {
  return 1;
}

void DeAssembler::CheckProcessingTime(std::string) {}

void DeAssembler::resetMemberVariable() {
  branchTargets_.clear();
  listedBytes_ = 0;
  listingFull_ = false;
  constantPool_.clear();
  poolSeen_ = false;
}

// Whether the listing ends here: time or room is used up.
bool DeAssembler::stops() const {
  return visit_ == nullptr && (listingFull_ || timeBudgetSpent());
}

// Hands on a line if there is room for it; if not, the listing ends with the line before.
void DeAssembler::addLine(ListingTaker& taker, const ListedLine& line) {
  if (visit_ != nullptr) return;
  const std::size_t bytes = bytesOf(line);
  listingFull_ = listingFull_ || bytes > kMaxListingBytes - listedBytes_;
  if (listingFull_) return;
  listedBytes_ += bytes;
  taker.take(line);
}

}  // namespace FlashEngine_1_00

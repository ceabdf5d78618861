// Flash files for flow analysis: the walk of a player over the tags, with all that runs actions.
// Test: tests/checker/FlashMovie_test.cpp.

#include "checker/run/FlashMovie.h"

#include <lzma.h>
#include <zlib.h>

#include <algorithm>
#include <cstdint>
#include <iterator>

#include "checker/run/FlashActions.h"
#include "checker/run/MovieBytes.h"
#include "swf/ByteReader.h"

using FlashEngine_1_00::ByteView;
using FlashEngine_1_00::Gap;
using FlashEngine_1_00::Position;

namespace {

constexpr std::size_t kHead = 8;                          // signature, version and file length
constexpr std::size_t kLzmaHead = 17;                     // and the compressed length and the coder's properties
constexpr std::size_t kMaxImage = std::size_t{64} << 20;  // of one file, without its compression
constexpr std::uint64_t kMaxLzmaMemory = 128ULL << 20;
constexpr int kMaxNesting = 16;  // sprites in sprites, which no player makes
constexpr std::size_t kMaxStrings = 100'000;

const Bytef* bytesOf(std::string_view text) {
  return reinterpret_cast<const Bytef*>(text.data());
}

// Calls `decode` with more room for the image until it has no use for it.
template <typename Decode>
void grow(std::string& image, const Decode& decode) {
  std::size_t used = image.size();
  bool isMore = true;
  while (isMore && used < kMaxImage) {
    image.resize(std::min(std::max(used * 2, std::size_t{1} << 16), kMaxImage));
    const std::size_t made = decode(reinterpret_cast<std::uint8_t*>(image.data()) + used, image.size() - used, isMore);
    used += made;
    isMore = isMore && made > 0;
  }
  image.resize(used);
}

void inflateInto(std::string& image, std::string_view body) {
  z_stream stream{};
  if (inflateInit(&stream) != Z_OK) return;
  stream.next_in = const_cast<Bytef*>(bytesOf(body));
  stream.avail_in = static_cast<uInt>(body.size());
  grow(image, [&](std::uint8_t* room, std::size_t size, bool& isMore) {
    stream.next_out = room;
    stream.avail_out = static_cast<uInt>(size);
    isMore = inflate(&stream, Z_NO_FLUSH) == Z_OK;
    return size - stream.avail_out;
  });
  (void)inflateEnd(&stream);
}

// A file has the coder's properties and then its data; the decoder wants the size between them.
void decodeLzma(std::string& image, std::string_view properties, std::string_view body) {
  lzma_stream stream = LZMA_STREAM_INIT;
  if (lzma_alone_decoder(&stream, kMaxLzmaMemory) != LZMA_OK) return;
  std::string head(properties);
  head.append(8, '\xFF');  // as long as there is more
  const std::string_view pieces[] = {head, body};
  const std::string_view* next = std::begin(pieces);
  grow(image, [&](std::uint8_t* room, std::size_t size, bool& isMore) {
    stream.next_out = room;
    stream.avail_out = size;
    while (isMore && stream.avail_out > 0) {
      if (stream.avail_in == 0 && next != std::end(pieces)) {
        stream.next_in = bytesOf(*next);
        stream.avail_in = (next++)->size();
      }
      const std::size_t before = stream.avail_in + stream.avail_out;
      isMore = lzma_code(&stream, LZMA_RUN) == LZMA_OK &&
               (stream.avail_in + stream.avail_out < before || next != std::end(pieces));
    }
    return size - stream.avail_out;
  });
  lzma_end(&stream);
}

// The file without its compression.
std::string imageOf(std::string_view bytes) {
  std::string image(bytes.substr(0, kHead));
  if (bytes[0] == 'C') {
    inflateInto(image, bytes.substr(kHead));
  } else if (bytes[0] == 'Z' && bytes.size() > kLzmaHead) {
    decodeLzma(image, bytes.substr(kHead + 4, 5), bytes.substr(kLzmaHead));
  } else if (bytes[0] == 'F') {
    image += bytes.substr(kHead);
  }
  return image;
}

// Bytes and bits of a tag, one behind the other.
class Reader : public MovieBytes {
 public:
  using MovieBytes::MovieBytes;

  // A number of one to five bytes with seven bits each.
  std::uint32_t compact() {
    std::uint32_t value = 0;
    for (unsigned shift = 0; shift < 35; shift += 7) {
      const std::uint32_t next = byte();
      value |= shift < 32 ? (next & 0x7F) << shift : 0;
      if ((next & 0x80) == 0) break;
    }
    return value;
  }

  void startBits() { bitsLeft_ = 0; }
  unsigned bits(unsigned count) {
    unsigned value = 0;
    for (; count > 0; --count) {
      if (bitsLeft_ == 0) {
        current_ = byte();
        bitsLeft_ = 8;
      }
      value = value << 1 | (current_ >> --bitsLeft_ & 1);
    }
    return value;
  }
  void skipMatrix() {
    startBits();
    for (int part = 0; part < 2; ++part) {
      if (bits(1) == 0) continue;
      const unsigned size = bits(5);
      (void)bits(size);
      (void)bits(size);
    }
    const unsigned size = bits(5);
    (void)bits(size);
    (void)bits(size);
  }
  void skipColours() {
    startBits();
    const unsigned terms = bits(1) + bits(1);
    const unsigned size = bits(4);
    for (unsigned i = 0; i < terms * 4; ++i)
      (void)bits(size);
  }

 private:
  unsigned bitsLeft_ = 0;
  unsigned current_ = 0;
};

class Walk {
 public:
  Walk(const ByteView& image, FlashMovie& movie) : image_(image), movie_(movie) {}

  void run() {
    Reader header(image_, kHead, image_.size());
    const unsigned size = header.bits(5);
    for (int field = 0; field < 4; ++field)
      (void)header.bits(size);
    isWhole_ = tags(header.at() + 4, image_.size());
    for (const std::string& text : movie_.strings)
      if (text.compare(0, 11, "javascript:") == 0) actions_.addUrl(text);
    movie_.script = actions_.text();
    if (hasVersion3_) movie_.gaps = {Gap::scriptOfVersion3};
    if (actions_.isWhole() && isWhole_) {
      movie_.closed = {Gap::flashLzma,    Gap::scriptOfButton,   Gap::scriptOfClip,
                       Gap::scriptOfInit, Gap::scriptPassedOver, Gap::scriptBranch};
    }
  }

 private:
  // Whether there is an end tag.
  bool tags(Position begin, Position end) {
    Reader reader(image_, begin, end);
    while (!reader.isAtEnd()) {
      const unsigned word = reader.word();
      const std::uint32_t declared = (word & 63) == 63 ? reader.doubleWord() : word & 63;
      const Position last = std::min<Position>(reader.at() + declared, end);
      if (word >> 6 == 0) return true;
      tag(static_cast<int>(word >> 6), reader.at(), last);
      reader.skip(last - reader.at());
    }
    return false;
  }

  void tag(int code, Position begin, Position end) {
    Reader body(image_, begin, end);
    switch (code) {
      case 7:
        return button(body, end);
      case 12:
        return script(begin, end);
      case 26:
        return placed(body, body.byte(), 0, end);
      case 34:
        return secondButton(begin, end);
      case 39:
        return sprite(begin + 4, end);
      case 59:
        return script(begin + 2, end);
      case 70: {
        const unsigned flags = body.byte();
        return placed(body, flags, body.byte(), end);
      }
      case 72:
        return pool(body);
      case 82:
        body.skip(4);
        (void)body.string();
        return pool(body);
      default:
        return;
    }
  }

  void sprite(Position begin, Position end) {
    if (++nesting_ <= kMaxNesting) (void)tags(begin, end);
    --nesting_;
  }

  void script(Position begin, Position end) {
    if (begin < end) actions_.add(image_.slice(begin, end - begin));
  }

  void button(Reader& body, Position end) {
    (void)body.word();
    while (body.byte() != 0) {
      body.skip(4);
      body.skipMatrix();
    }
    script(body.at(), end);
  }

  void secondButton(Position begin, Position end) {
    constexpr Position kOffsetField = 3;  // behind identifier and flags
    Reader head(image_, begin + kOffsetField, end);
    const unsigned offset = head.word();
    if (offset == 0) return;
    for (Position at = begin + kOffsetField + offset; at < end;) {
      Reader condition(image_, at, end);
      const unsigned size = condition.word();
      const Position last = size == 0 ? end : std::min<Position>(at + size, end);
      script(at + 4, last);
      at = size < 4 ? end : last;
    }
  }

  // An object that is put on the stage, with the flags that say what stands there.
  void placed(Reader& body, unsigned flags, unsigned more, Position end) {
    if ((flags & 0x80) == 0) return;
    (void)body.word();  // depth
    const bool hasCharacter = (flags & 2) != 0;
    if ((more & 8) != 0 || ((more & 0x10) != 0 && hasCharacter)) (void)body.string();
    if (hasCharacter) (void)body.word();
    if ((flags & 4) != 0) body.skipMatrix();
    if ((flags & 8) != 0) body.skipColours();
    if ((flags & 0x10) != 0) (void)body.word();
    if ((flags & 0x20) != 0) (void)body.string();
    if ((flags & 0x40) != 0) (void)body.word();
    if ((more & 1) != 0) skipFilters(body);
    if ((more & 2) != 0) (void)body.byte();
    if ((more & 4) != 0) (void)body.byte();
    if ((more & 0x20) != 0) (void)body.byte();
    if ((more & 0x40) != 0) (void)body.doubleWord();
    clipActions(body, end);
  }

  static void skipFilters(Reader& body) {
    static constexpr Position kSizes[] = {23, 9, 15, 27, 19, 0, 80, 19};
    for (unsigned left = body.byte(); left > 0; --left) {
      const unsigned kind = body.byte();
      if (kind == 4 || kind == 7) body.skip(static_cast<Position>(body.byte()) * 5);  // colours of a gradient
      if (kind == 5) {
        const Position columns = body.byte();
        body.skip(13 + 4 * columns * static_cast<Position>(body.byte()));
      }
      body.skip(kind < std::size(kSizes) ? kSizes[kind] : 0);
    }
  }

  void clipActions(Reader& body, Position end) {
    constexpr Position kVersion = 3;
    constexpr std::uint32_t kOnKey = 0x20000;
    const bool isWide = image_.at(kVersion) > 5;
    const auto flags = [&] { return isWide ? body.doubleWord() : body.word(); };
    (void)body.word();
    (void)flags();
    while (!body.isAtEnd()) {
      const std::uint32_t events = flags();
      if (events == 0) return;
      const Position size = body.doubleWord();
      const Position last = std::min(body.at() + size, end);
      script(body.at() + (isWide && (events & kOnKey) != 0 ? 1 : 0), last);
      body.skip(last - body.at());
    }
  }

  // The strings in the constant pool of ActionScript 3.
  void pool(Reader& body) {
    hasVersion3_ = true;
    body.skip(4);  // version
    for (int numbers = 0; numbers < 2; ++numbers)
      for (std::uint32_t left = body.compact(); left > 1 && !body.isAtEnd(); --left)
        (void)body.compact();
    const std::uint32_t doubles = body.compact();
    body.skip(doubles > 1 ? static_cast<Position>(doubles - 1) * 8 : 0);
    for (std::uint32_t left = body.compact(); left > 1 && !body.isAtEnd(); --left) {
      const std::uint32_t size = body.compact();
      const ByteView text = image_.slice(body.at(), size);
      std::string made;
      for (Position i = 0; i < text.size(); ++i)
        made += static_cast<char>(text.at(i));
      body.skip(size);
      if (!made.empty() && movie_.strings.size() < kMaxStrings) movie_.strings.push_back(std::move(made));
    }
  }

  ByteView image_;
  FlashMovie& movie_;
  FlashActions actions_;
  int nesting_ = 0;
  bool isWhole_ = false;
  bool hasVersion3_ = false;
};

}  // namespace

FlashMovie readFlash(std::string_view bytes) {
  FlashMovie movie;
  if (bytes.size() <= kHead) return movie;
  const std::string image = imageOf(bytes);
  const ByteView view(reinterpret_cast<const unsigned char*>(image.data()), static_cast<Position>(image.size()));
  Walk(view, movie).run();
  return movie;
}

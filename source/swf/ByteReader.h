#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace FlashEngine_1_00 {

// A place in a file's bytes, or a number of them; 64 bits everywhere, so that sums of 32-bit lengths never wrap.
using Position = long long;

// A piece of a file's bytes that can be asked for any place: what lies outside it reads as zero, so a count or length
// in the file can be followed wherever it leads. Does not own the bytes.
class ByteView {
 public:
  ByteView(const unsigned char* bytes, Position size) : bytes_(bytes), size_(size) {}

  Position size() const { return size_; }
  unsigned char at(Position place) const { return place >= 0 && place < size_ ? bytes_[place] : 0; }

  // The bytes from `from` to the next zero byte, `end` or the end of the view.
  std::string_view textAt(Position from, Position end) const {
    const ByteView rest = slice(from, std::max<Position>(end - from, 0));
    const void* zero = rest.size_ == 0 ? nullptr : std::memchr(rest.bytes_, 0, static_cast<std::size_t>(rest.size_));
    const Position size = zero == nullptr ? rest.size_ : static_cast<const unsigned char*>(zero) - rest.bytes_;
    return {reinterpret_cast<const char*>(rest.bytes_), static_cast<std::size_t>(size)};
  }

  // `size` bytes from `from` on, or fewer if there are not that many.
  ByteView slice(Position from, Position size) const {
    const Position begin = std::clamp<Position>(from, 0, size_);
    return {bytes_ + begin, std::clamp<Position>(size, 0, size_ - begin)};
  }

 private:
  const unsigned char* bytes_;
  Position size_;
};

// One, two and four bytes, and the bytes up to the next zero byte or to `end`; the position moves behind them. In line,
// for whoever reads many: Util has the same for hosts.
inline unsigned readByte(const ByteView& data, Position& position) {
  return data.at(position++);
}
inline unsigned readWord(const ByteView& data, Position& position) {
  const unsigned low = readByte(data, position);
  return low | readByte(data, position) << 8;
}
inline std::uint32_t readDoubleWord(const ByteView& data, Position& position) {
  const std::uint32_t low = readWord(data, position);
  return low | static_cast<std::uint32_t>(readWord(data, position)) << 16;
}
inline std::string_view readText(const ByteView& data, Position& position, Position end) {
  const std::string_view text = data.textAt(position, end);
  const Position behind = position + static_cast<Position>(text.size());
  position = std::min(behind + 1, std::max(position, end));  // with the zero byte, if that comes before the end
  return text;
}

// Byte and bit reader over a view and a position that the caller holds. Multi-byte integers are little-endian (SWF file
// format, integer types); positions may pass the end of the data, where everything reads as zero.
class Util {
 public:
  Util();
  ~Util();

  // One, two and four bytes; the position moves behind them.
  unsigned getByte(const ByteView& data, Position& position);
  unsigned getWord(const ByteView& data, Position& position);
  std::uint32_t getDoubleWord(const ByteView& data, Position& position);

  // `count` bits, most significant first: those left of `current`, then those of the next bytes, each of which moves
  // the position and leaves eight bits. Prime it with eight bits left and the first byte read. Returns the low 16 bits.
  unsigned getBitsValue(int& bitsLeft, unsigned& current, const ByteView& data, Position& position, int count);

  // The bytes from the position to the next zero byte, or to `end` if none comes before it; the position moves behind
  // both.
  std::string getString(const ByteView& data, Position& position, Position end);

  // Moves the position by `length`; at or past `total` that is logged.
  void skipTagLengh(const ByteView& data, Position& position, std::uint32_t length, Position total);
};

}  // namespace FlashEngine_1_00

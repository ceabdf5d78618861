// Test: tests/swf/DeAssembler_test.cpp.

#include "swf/ByteReader.h"

#include "platform/Log.h"

namespace FlashEngine_1_00 {

Util::Util() = default;
Util::~Util() = default;

unsigned Util::getByte(const ByteView& data, Position& position) {
  return data.at(position++);
}

unsigned Util::getWord(const ByteView& data, Position& position) {
  const unsigned low = getByte(data, position);
  return low | getByte(data, position) << 8;
}

std::uint32_t Util::getDoubleWord(const ByteView& data, Position& position) {
  const std::uint32_t low = getWord(data, position);
  return low | static_cast<std::uint32_t>(getWord(data, position)) << 16;
}

unsigned Util::getBitsValue(int& bitsLeft, unsigned& current, const ByteView& data, Position& position, int count) {
  std::uint32_t value = 0;
  for (; count > 0; --count) {
    if (bitsLeft == 0) {
      current = getByte(data, position);
      bitsLeft = 8;
    }
    value = value << 1 | (current >> --bitsLeft & 1);
  }
  return value & 0xFFFF;
}

std::string Util::getString(const ByteView& data, Position& position, Position end) {
  const std::string_view text = data.textAt(position, end);
  const Position behind = position + static_cast<Position>(text.size());
  position = std::min(behind + 1, std::max(position, end));  // with the zero byte, if that comes before the end
  return std::string(text);
}

void Util::skipTagLengh(const ByteView&, Position& position, std::uint32_t length, Position total) {
  position += length;
  if (position >= total) TARVO_LOG("[%s] Unexpected end of Data  ", __func__);
}

}  // namespace FlashEngine_1_00

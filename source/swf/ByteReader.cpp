// Test: tests/swf/DeAssembler_test.cpp.

#include "swf/ByteReader.h"

#include "platform/Log.h"

namespace FlashEngine_1_00 {

Util::Util() = default;
Util::~Util() = default;

unsigned Util::getByte(const ByteView& data, Position& position) {
  return readByte(data, position);
}

unsigned Util::getWord(const ByteView& data, Position& position) {
  return readWord(data, position);
}

std::uint32_t Util::getDoubleWord(const ByteView& data, Position& position) {
  return readDoubleWord(data, position);
}

unsigned Util::getBitsValue(int& bitsLeft, unsigned& current, const ByteView& data, Position& position, int count) {
  std::uint32_t value = 0;
  for (; count > 0; --count) {
    if (bitsLeft == 0) {
      current = readByte(data, position);
      bitsLeft = 8;
    }
    value = value << 1 | (current >> --bitsLeft & 1);
  }
  return value & 0xFFFF;
}

std::string Util::getString(const ByteView& data, Position& position, Position end) {
  return std::string(readText(data, position, end));
}

void Util::skipTagLengh(const ByteView&, Position& position, std::uint32_t length, Position total) {
  position += length;
  if (position >= total) TARVO_LOG("[%s] Unexpected end of Data  ", __func__);
}

}  // namespace FlashEngine_1_00

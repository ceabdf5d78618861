#include "swf-assembler/Bytes.h"

#include <zlib.h>

#include <cstdlib>
#include <cstring>

#include "swf-assembler/Assembler.h"

namespace swf_assembler {

std::string floatBytes(double value) {
  const float number = static_cast<float>(value);
  std::uint32_t bits;
  static_assert(sizeof bits == sizeof number);
  std::memcpy(&bits, &number, sizeof bits);
  return little(bits, 4);
}

std::string doubleBytes(double value) {
  std::uint64_t bits;
  static_assert(sizeof bits == sizeof value);
  std::memcpy(&bits, &value, sizeof bits);
  return little(bits >> 32, 4) + little(bits, 4);
}

int signedBits(long long value) {
  if (value == 0) return 0;
  int bits = 1;
  while (value < -(1LL << (bits - 1)) || value >= 1LL << (bits - 1))
    ++bits;
  return bits;
}

std::string frameSize(int bits, const std::vector<long long>& fields) {
  std::string digits;
  const auto add = [&digits](long long value, int count) {
    while (count-- > 0)
      digits += (value >> count & 1) != 0 ? '1' : '0';
  };
  add(bits, 5);
  for (const long long field : fields)
    add(field, bits);
  digits.resize((digits.size() + 7) / 8 * 8, '0');
  std::string bytes;
  for (std::size_t i = 0; i < digits.size(); i += 8)
    bytes += static_cast<char>(std::strtoul(digits.substr(i, 8).c_str(), nullptr, 2));
  return bytes;
}

std::string compressed(const std::string& plain) {
  uLongf size = compressBound(static_cast<uLong>(plain.size()));
  std::string stream(size, '\0');
  const int result = compress(reinterpret_cast<Bytef*>(stream.data()), &size,
                              reinterpret_cast<const Bytef*>(plain.data()), static_cast<uLong>(plain.size()));
  if (result != Z_OK) throw std::runtime_error("no memory to compress the movie");
  stream.resize(size);
  return stream;
}

void Code::addLabel(const std::string& name, Label label) {
  const auto [known, isNew] = labels_.try_emplace(name, label);
  if (!isNew)
    throw AssemblyError(label.line,
                        "label '" + name + "' stands in line " + std::to_string(known->second.line) + " already");
}

void Code::append(const Code& block) {
  for (const auto& [name, label] : block.labels_)
    addLabel(name, {bytes.size() + label.place, label.line});
  for (const Branch& branch : block.branches_)
    branches_.push_back({bytes.size() + branch.place, branch.label, branch.line});
  bytes += block.bytes;
}

std::string Code::linked() const {
  std::string linked = bytes;
  for (const Branch& branch : branches_)
    linked.replace(branch.place, 2, offset(branch));
  return linked;
}

std::string Code::offset(const Branch& branch) const {
  const auto label = labels_.find(branch.label);
  if (label == labels_.end()) throw AssemblyError(branch.line, "unknown label '" + branch.label + "'");
  const auto target = static_cast<long long>(label->second.place);
  const long long distance = target - static_cast<long long>(branch.place + 2);
  if (distance < INT16_MIN || distance > INT16_MAX)
    throw AssemblyError(branch.line,
                        "label '" + branch.label + "' is too far away, by " + std::to_string(distance) + " bytes");
  return little(distance, 2);
}

}  // namespace swf_assembler

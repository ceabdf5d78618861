#include "support/CraftedZip.h"

#include <zlib.h>

namespace {

// Little-endian; 8 bytes at most.
std::string number(std::uint64_t value, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i)
    text += static_cast<char>(value >> 8 * i & 0xFF);
  return text;
}

// A raw deflate stream.
std::string deflated(const std::string& content) {
  z_stream stream{};
  deflateInit2(&stream, 9, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
  std::string packed(deflateBound(&stream, static_cast<uLong>(content.size())), '\0');
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(content.data()));
  stream.avail_in = static_cast<uInt>(content.size());
  stream.next_out = reinterpret_cast<Bytef*>(packed.data());
  stream.avail_out = static_cast<uInt>(packed.size());
  deflate(&stream, Z_FINISH);
  packed.resize(stream.total_out);
  deflateEnd(&stream);
  return packed;
}

// What stands behind a local header.
struct Data {
  explicit Data(const CraftedEntry& entry)
      : packed(entry.deflated ? deflated(entry.content) : entry.content),
        crc(crc32(0, reinterpret_cast<const Bytef*>(entry.content.data()), static_cast<uInt>(entry.content.size()))) {}

  std::string packed;
  uLong crc;
  std::size_t at = 0;
};

// ZIP APPNOTE 4.3.7: what the local header and the directory's have in common, from the version on.
std::string common(const CraftedEntry& entry, const Data& data, const std::string& name, std::size_t extraSize) {
  return number(20, 2) + number(entry.flags, 2) + number(entry.deflated ? 8 : 0, 2) + number(0, 4) +
         number(entry.crc.value_or(static_cast<std::uint32_t>(data.crc)), 4) +
         number(entry.packedSize.value_or(static_cast<std::uint32_t>(data.packed.size())), 4) +
         number(entry.size.value_or(static_cast<std::uint32_t>(entry.content.size())), 4) + number(name.size(), 2) +
         number(extraSize, 2);
}

}  // namespace

std::string craftedZip(const std::vector<CraftedEntry>& entries, std::optional<unsigned> count) {
  std::string bytes;
  std::string directory;
  std::vector<Data> all;
  for (const CraftedEntry& entry : entries) {
    const std::size_t owner = entry.dataOf.value_or(all.size());
    all.emplace_back(entry);
    Data& data = all[owner];
    if (!entry.dataOf) {
      data.at = bytes.size();
      const std::string localName = entry.localName.value_or(entry.name);
      bytes += "PK\3\4" + common(entry, data, localName, 0) + localName + data.packed;
    }
    constexpr unsigned kUnix = 3 << 8;
    directory += "PK\1\2" + number(entry.mode == 0 ? 20 : kUnix | 20, 2) +
                 common(entries[owner], data, entry.name, entry.extra.size()) + std::string(6, '\0') +
                 number(std::uint64_t{entry.mode} << 16, 4) + number(data.at, 4) + entry.name + entry.extra;
  }
  const unsigned claimed = count.value_or(static_cast<unsigned>(entries.size()));
  return bytes + directory + std::string("PK\5\6\0\0\0\0", 8) + number(claimed, 2) + number(claimed, 2) +
         number(directory.size(), 4) + number(bytes.size(), 4) + number(0, 2);
}

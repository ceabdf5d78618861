#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// A zip entry whose headers can say what they like; what is not set is as it should be.
struct CraftedEntry {
  std::string name;
  std::string content;
  bool deflated = false;
  unsigned flags = 0;
  std::optional<std::string> localName = {};  // in the local header; `name` stands in the directory
  std::optional<std::uint32_t> crc = {};      // in both headers, as are the sizes
  std::optional<std::uint32_t> size = {};
  std::optional<std::uint32_t> packedSize = {};
  std::optional<std::size_t> dataOf = {};  // no local header of its own: that of the entry with this index
  std::string extra = {};                  // extra fields in the directory
  unsigned mode = 0;                       // of the file, on a Unix system; 0: not said
};

// The bytes of a package of these entries. `count` is what its end record claims, their number if not set.
std::string craftedZip(const std::vector<CraftedEntry>& entries, std::optional<unsigned> count = std::nullopt);

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// What identifies the content of an application, whatever it is called and wherever it is.

namespace store {

// SHA-256 of some bytes: 32 bytes.
std::string sha256(std::string_view bytes);

struct Content {
  std::string sha256;      // 32 bytes: of a file's bytes; of a folder, of its files' names, sizes and hashes
  std::uint64_t size = 0;  // bytes of all files
  std::string suffix;      // by which a file's kind is told: ".wgt"; "/" for a folder
  std::string stamps;      // a hash of the files' numbers and times: another one if a file was written or replaced

  bool operator==(const Content& other) const {
    return sha256 == other.sha256 && size == other.size && suffix == other.suffix && stamps == other.stamps;
  }
  bool operator!=(const Content& other) const { return !(*this == other); }
};

// Of a file, or of a folder's files, recursively; nothing if it cannot be read whole. What was checked between two
// calls that give the same was not changed meanwhile.
std::optional<Content> contentOf(const std::string& path);

// Bytes as lower-case hexadecimal digits, and back; empty if `digits` are none.
std::string hexOf(std::string_view bytes);
std::string bytesOfHex(std::string_view digits);

}  // namespace store

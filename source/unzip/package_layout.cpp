// The layout of a package: which of its bytes belong to what.
//
// The end record is searched as minizip does it, from the end of the file. It leads to the directory, whose records
// lead to the entries. All these are spans of the file; bytes between them belong to nothing that the engine reads.
// Test: tests/APICheckEngine/HostilePackages_test.cpp.

#include "unzip/package_layout.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <utility>
#include <vector>

#include "platform/Limits.h"

namespace FlashEngine_1_00 {
namespace {

using Place = std::uint64_t;
using Span = std::pair<Place, Place>;  // begin and end

// ZIP APPNOTE 4.3: signatures and sizes of the records without their variable parts.
constexpr std::string_view kLocalHeader("PK\3\4", 4);
constexpr std::string_view kDescriptor("PK\7\b", 4);
constexpr std::string_view kCentralHeader("PK\1\2", 4);
constexpr std::string_view kEnd("PK\5\6", 4);
constexpr std::string_view kEnd64("PK\6\6", 4);
constexpr std::string_view kLocator64("PK\6\7", 4);
constexpr std::size_t kLocalSize = 30;
constexpr std::size_t kCentralSize = 46;
constexpr std::size_t kEndSize = 22;
constexpr std::size_t kEnd64Size = 56;
constexpr std::size_t kLocatorSize = 20;
constexpr unsigned kHasDescriptor = 8;
constexpr unsigned kZip64Field = 1;
constexpr unsigned kUnicodePathField = 0x7075;
constexpr std::uint32_t kIn64 = 0xFFFFFFFF;  // the value stands in the field for 64 bits

constexpr std::size_t kLongestField = 0xFFFF;  // whose length stands in two bytes: names, extra fields, comments
constexpr Place kMarker = 4;  // of a package that was split, or of its maker, in front of the first entry

// The `size` low bytes at `at` of a record, least significant first; zeroes behind its end.
std::uint64_t number(std::string_view record, std::size_t at, std::size_t size) {
  std::uint64_t value = 0;
  for (std::size_t i = size; i > 0; --i)
    value = value << 8 | (at + i <= record.size() ? static_cast<unsigned char>(record[at + i - 1]) : 0);
  return value;
}

// A field of two bytes: lengths, mostly.
std::size_t twoBytes(std::string_view bytes, std::size_t at) {
  return static_cast<std::size_t>(number(bytes, at, 2));
}

bool begins(std::string_view record, std::string_view signature) {
  return record.substr(0, signature.size()) == signature;
}

// The content of the extra field `wanted`; empty if there is none.
std::string_view extraField(std::string_view extra, unsigned wanted) {
  constexpr std::size_t kHead = 4;
  while (extra.size() >= kHead) {
    const std::size_t size = std::min<std::size_t>(twoBytes(extra, 2), extra.size() - kHead);
    if (twoBytes(extra, 0) == wanted) return extra.substr(kHead, size);
    extra.remove_prefix(kHead + size);
  }
  return {};
}

class Layout {
 public:
  explicit Layout(std::FILE* package) : file_(package), position_(ftello(package)) {
    if (fseeko(file_, 0, SEEK_END) == 0) size_ = static_cast<Place>(std::max<off_t>(ftello(file_), 0));
  }
  ~Layout() { (void)fseeko(file_, position_, SEEK_SET); }
  Layout(const Layout&) = delete;
  Layout& operator=(const Layout&) = delete;

  bool holdsMore() {
    const bool isKnown = findEnd() && findEntries();
    return !isKnown || commentHoldsPackage() || hasGap();
  }

 private:
  // As many of the bytes at `at` as there are, at most `size`.
  std::string read(Place at, std::size_t size) const {
    std::string bytes(size, '\0');
    const bool isThere = at <= size_ && fseeko(file_, static_cast<off_t>(at), SEEK_SET) == 0;
    bytes.resize(isThere ? std::fread(bytes.data(), 1, size, file_) : 0);
    return bytes;
  }

  // Sets where the directory is, and adds the records behind it.
  bool findEnd() {
    const Place searched = std::min<Place>(size_, kLongestField);
    const std::string tail = read(size_ - searched, static_cast<std::size_t>(searched));
    const std::size_t at = tail.rfind(kEnd);
    if (at == std::string::npos) return false;
    const Place end = size_ - searched + at;
    const std::string record = tail.substr(at);
    comment_ = record.substr(std::min(kEndSize, record.size()), twoBytes(record, 20));
    spans_.emplace_back(end, end + kEndSize + comment_.size());
    directorySize_ = number(record, 12, 4);
    directoryOffset_ = number(record, 16, 4);
    Place behind = end;
    if (end >= kLocatorSize && begins(read(end - kLocatorSize, kLocatorSize), kLocator64)) {
      const Place end64 = number(read(end - kLocatorSize, kLocatorSize), 8, 8);
      const std::string record64 = read(end64, kEnd64Size);
      if (!begins(record64, kEnd64)) return false;
      spans_.emplace_back(end - kLocatorSize, end);
      spans_.emplace_back(end64, end64 + 12 + number(record64, 4, 8));
      directorySize_ = number(record64, 40, 8);
      directoryOffset_ = number(record64, 48, 8);
      behind = end64;
    }
    if (directorySize_ > behind || directoryOffset_ > behind - directorySize_) return false;
    before_ = behind - directorySize_ - directoryOffset_;
    return true;
  }

  // Goes through the records of the directory, counted or not.
  bool findEntries() {
    const Place begin = before_ + directoryOffset_;
    const Place end = begin + directorySize_;
    spans_.emplace_back(begin, end);
    std::string directory;  // a piece of it
    Place pieceAt = begin;
    for (Place at = begin; at < end;) {
      constexpr std::size_t kPiece = 1 << 16;
      constexpr std::size_t kMaxRecord = kCentralSize + 3 * kLongestField;
      if (at - pieceAt + kMaxRecord > directory.size() && (at == begin || pieceAt + directory.size() < size_)) {
        directory = read(at, kPiece + kMaxRecord);
        pieceAt = at;
      }
      const std::string_view record = std::string_view(directory).substr(static_cast<std::size_t>(at - pieceAt));
      if (record.size() < kCentralSize || !begins(record, kCentralHeader)) return false;
      if (spans_.size() > 2 * std::size_t{kMaxExpandedEntries} || !addEntry(record)) return false;
      at += kCentralSize + twoBytes(record, 28) + twoBytes(record, 30) + twoBytes(record, 32);
    }
    return true;
  }

  bool addEntry(std::string_view record) {
    Place packed = number(record, 20, 4);
    Place unpacked = number(record, 24, 4);
    Place offset = number(record, 42, 4);
    const std::string_view wide = extraField(
        record.substr(kCentralSize)
            .substr(std::min<std::size_t>(twoBytes(record, 28), record.size() - kCentralSize), twoBytes(record, 30)),
        kZip64Field);
    std::size_t next = 0;
    for (Place* value : {&unpacked, &packed, &offset}) {
      if (*value == kIn64 && next + 8 <= wide.size()) {
        *value = number(wide, next, 8);
        next += 8;
      }
    }
    const Place begin = before_ + offset;
    const std::string local = read(begin, kLocalSize);
    if (local.size() < kLocalSize || !begins(local, kLocalHeader)) return false;
    Place end = begin + kLocalSize + twoBytes(local, 26) + twoBytes(local, 28) + packed;
    if ((twoBytes(record, 8) & kHasDescriptor) != 0) end += descriptorSize(read(end, 24), packed);
    spans_.emplace_back(begin, end);
    return true;
  }

  // ZIP APPNOTE 4.3.9: a signature that can be missing, the checksum, and the sizes in 32 or 64 bits each.
  static std::size_t descriptorSize(std::string_view bytes, Place packed) {
    const std::size_t signature = begins(bytes, kDescriptor) ? kDescriptor.size() : 0;
    if (number(bytes, signature + 4, 8) == packed && bytes.size() >= signature + 20 &&
        number(bytes, signature + 8, 4) == 0)
      return signature + 20;
    return number(bytes, signature + 4, 4) == (packed & kIn64) ? signature + 12 : 0;
  }

  bool commentHoldsPackage() const {
    return comment_.find(kLocalHeader) != std::string::npos || comment_.find(kCentralHeader) != std::string::npos;
  }

  bool hasGap() {
    std::sort(spans_.begin(), spans_.end());
    spans_.emplace_back(size_, size_);
    Place covered = 0;
    for (const auto& [begin, end] : spans_) {
      const bool isMarker = covered == 0 && begin == kMarker && begins(read(0, kMarker), "PK");
      if (begin > covered && !isMarker && !isZero(covered, begin)) return true;
      covered = std::max(covered, end);
    }
    return false;
  }

  bool isZero(Place begin, Place end) const {
    if (end - begin > kMaxZeroFill) return false;
    const std::string bytes = read(begin, static_cast<std::size_t>(end - begin));
    return bytes.find_first_not_of('\0') == std::string::npos;
  }

  std::FILE* file_;
  off_t position_;
  Place size_ = 0;
  Place before_ = 0;  // bytes before what offsets count from
  Place directorySize_ = 0;
  Place directoryOffset_ = 0;
  std::string comment_;
  std::vector<Span> spans_;
};

}  // namespace

// Local header, end of the central directory, spanning marker, and three makers' own.
bool isPackage(std::string_view head) {
  static constexpr std::string_view kSignatures[] = {kLocalHeader, kEnd, kDescriptor, "PKLI", "PKSp", "PKnZ"};
  return std::any_of(std::begin(kSignatures), std::end(kSignatures),
                     [&](std::string_view signature) { return begins(head, signature); });
}

bool holdsMoreThanItsEntries(std::FILE* package) {
  return Layout(package).holdsMore();
}

std::string unicodeName(std::string_view extra) {
  constexpr std::size_t kHead = 5;  // version, and a checksum of the name that it goes with
  const std::string_view field = extraField(extra, kUnicodePathField);
  return std::string(field.substr(std::min(kHead, field.size())));
}

bool areOneName(std::string_view name, std::string_view other) {
  const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
  const auto skip = [&](std::string_view& text) {
    while (!text.empty() && !isAscii(text.front()))
      text.remove_prefix(1);
  };
  while (!name.empty() && !other.empty()) {
    if (!isAscii(name.front()) && !isAscii(other.front())) {
      skip(name);
      skip(other);
      continue;
    }
    if (name.front() != other.front()) return false;
    name.remove_prefix(1);
    other.remove_prefix(1);
  }
  return name.empty() && other.empty();
}

}  // namespace FlashEngine_1_00

// Inflation of one entry, piece by piece. Input is read in blocks from the package's file, wherever its position was
// left; a piece in which something fails is not given at all. Test: tests/APICheckEngine/HostilePackages_test.cpp.

#include "unzip/deflated_entry.h"

#include <algorithm>

namespace FlashEngine_1_00 {

DeflatedEntry::DeflatedEntry(std::FILE* package, ZPOS64_T begin, const unz_file_info64& info)
    : package_(package),
      next_(begin),
      packed_(info.compressed_size),
      left_(info.uncompressed_size),
      expected_(info.crc),
      status_(inflateInit2(&stream_, -MAX_WBITS)) {}

DeflatedEntry::~DeflatedEntry() {
  (void)inflateEnd(&stream_);
}

// Gets input where there is none. False if it cannot be read; that all was read is no error.
bool DeflatedEntry::fill() {
  if (stream_.avail_in > 0 || packed_ == 0) return true;
  const auto size = static_cast<std::size_t>(std::min<std::uint64_t>(packed_, input_.size()));
  if (fseeko(package_, static_cast<off_t>(next_), SEEK_SET) != 0) return false;
  if (std::fread(input_.data(), 1, size, package_) != size) return false;
  next_ += size;
  packed_ -= size;
  stream_.next_in = input_.data();
  stream_.avail_in = static_cast<uInt>(size);
  return true;
}

int DeflatedEntry::read(char* buffer, unsigned room) {
  if (status_ < Z_OK) return status_;
  room = static_cast<unsigned>(std::min<std::uint64_t>(room, left_));
  stream_.next_out = reinterpret_cast<Bytef*>(buffer);
  stream_.avail_out = room;
  while (stream_.avail_out > 0 && status_ != Z_STREAM_END) {
    if (!fill()) return status_ = UNZ_ERRNO;
    status_ = inflate(&stream_, Z_SYNC_FLUSH);
    if (status_ >= Z_OK && stream_.msg != nullptr) status_ = Z_DATA_ERROR;
    if (status_ < Z_OK || status_ == Z_NEED_DICT) return status_;
  }
  const unsigned made = room - stream_.avail_out;
  crc_ = crc32(crc_, reinterpret_cast<const Bytef*>(buffer), made);
  left_ -= made;
  return static_cast<int>(made);
}

int DeflatedEntry::checksum() const {
  return left_ == 0 && crc_ != expected_ ? UNZ_CRCERROR : UNZ_OK;
}

bool DeflatedEntry::endsWithItsSizes() {
  unsigned char behind = 0;
  while (status_ == Z_OK) {
    if (!fill() || stream_.avail_in == 0) return false;
    stream_.next_out = &behind;
    stream_.avail_out = 1;
    status_ = inflate(&stream_, Z_SYNC_FLUSH);
    if (stream_.avail_out == 0) return false;
  }
  return status_ == Z_STREAM_END && packed_ == 0 && stream_.avail_in == 0;
}

}  // namespace FlashEngine_1_00

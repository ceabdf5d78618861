#pragma once

#include <minizip/unzip.h>
#include <zlib.h>

#include <array>
#include <cstdint>
#include <cstdio>

namespace FlashEngine_1_00 {

// Inflates the data of one entry of a package. minizip does that too, but does not say where a deflate stream ended:
// readers that go by the stream unpack what stands behind the size in the headers.
//
// What comes out is what minizip gives, in pieces of the same size, with the same codes where data are damaged.
class DeflatedEntry {
 public:
  // The data begin at `begin` of `package`, which has to stay open; `info` is the entry's in the package's directory.
  DeflatedEntry(std::FILE* package, ZPOS64_T begin, const unz_file_info64& info);
  ~DeflatedEntry();
  DeflatedEntry(const DeflatedEntry&) = delete;
  DeflatedEntry& operator=(const DeflatedEntry&) = delete;

  // The next `room` bytes, or as many as are left of the entry's size or its stream: how many these are, 0 at the end.
  // Negative: UNZ_ERRNO where the package cannot be read, else a code of zlib's.
  int read(char* buffer, unsigned room);

  // After all was read: UNZ_OK, or UNZ_CRCERROR for a wrong checksum.
  int checksum() const;

  // After all was read: whether the stream ends with the entry's size and with its compressed size.
  bool endsWithItsSizes();

 private:
  bool fill();

  std::FILE* package_;
  ZPOS64_T next_;         // where the next compressed bytes stand
  std::uint64_t packed_;  // compressed bytes that were not read so far
  std::uint64_t left_;    // bytes that are still to come
  uLong expected_;        // checksum
  uLong crc_ = 0;
  z_stream stream_{};
  int status_;  // of the stream, which has to be there before
  std::array<unsigned char, 16384> input_;
};

}  // namespace FlashEngine_1_00

// What is inflated ahead is a guess, made of the package's directory alone. Who extracts the package asks for what its
// headers say, checks and bounds passed; a guess that is never asked for, or not with the same numbers, is dropped.
// Test: tests/places/MemoryPlace_test.cpp.

#include "checker/run/Inflater.h"

#include <libdeflate.h>

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

#include "checker/run/Threads.h"

namespace {

using FlashEngine_1_00::DeflateStream;

// Bytes that are inflated and that nobody has asked for. Files that are larger alone are not inflated ahead.
constexpr std::size_t kMostAhead = std::size_t{16} << 20;

// Bytes of a package that threads are worth their start for.
constexpr std::size_t kLeastPackage = std::size_t{16} << 10;

// Streams that are passed over where another one is asked for than comes next.
constexpr std::size_t kMostPassed = 64;

constexpr std::uint64_t kMostRatio = 1032;  // of deflate

// ZIP APPNOTE 4.3: the records that lead to an entry's data.
constexpr std::string_view kEnd("PK\5\6", 4);
constexpr std::string_view kCentralHeader("PK\1\2", 4);
constexpr std::string_view kLocalHeader("PK\3\4", 4);
constexpr std::size_t kEndSize = 22;
constexpr std::size_t kCentralSize = 46;
constexpr std::size_t kLocalSize = 30;
constexpr std::size_t kEndSearched = 0xFFFF;
constexpr std::uint64_t kDeflated = 8;

// The `size` low bytes at `at`, least significant first; zeroes behind the end.
std::uint64_t number(std::string_view bytes, std::uint64_t at, std::size_t size) {
  std::uint64_t value = 0;
  for (std::size_t i = size; i > 0; --i)
    value = value << 8 |
            (at + i <= bytes.size() ? static_cast<unsigned char>(bytes[static_cast<std::size_t>(at) + i - 1]) : 0U);
  return value;
}

bool stands(std::string_view signature, std::string_view package, std::uint64_t at) {
  return at <= package.size() && package.substr(static_cast<std::size_t>(at), signature.size()) == signature;
}

// The deflate streams of an ordinary package, in the order of its directory, as far as they are worth inflating ahead.
std::vector<DeflateStream> streamsOf(std::string_view package) {
  std::vector<DeflateStream> streams;
  const std::size_t end = package.rfind(kEnd);
  if (end == std::string_view::npos || package.size() - end > kEndSearched + kEndSize) return streams;
  const std::uint64_t directorySize = number(package, end + 12, 4);
  const std::uint64_t directory = end - directorySize;  // wraps where that is wrong; nothing stands there then
  const std::uint64_t before = directory - number(package, end + 16, 4);
  for (std::uint64_t at = directory; stands(kCentralHeader, package, at);
       at += kCentralSize + number(package, at + 28, 2) + number(package, at + 30, 2) + number(package, at + 32, 2)) {
    const std::uint64_t local = before + number(package, at + 42, 4);
    const std::uint64_t packed = number(package, at + 20, 4);
    const std::uint64_t size = number(package, at + 24, 4);
    if (number(package, at + 10, 2) != kDeflated || !stands(kLocalHeader, package, local)) continue;
    const std::uint64_t begin = local + kLocalSize + number(package, local + 26, 2) + number(package, local + 28, 2);
    const bool isThere = begin <= package.size() && packed <= package.size() - begin;
    if (isThere && size <= std::min<std::uint64_t>(kMostAhead, kMostRatio * packed))
      streams.push_back({begin, packed, size, static_cast<unsigned long>(number(package, at + 16, 4))});
  }
  return streams;
}

bool areSame(const DeflateStream& a, const DeflateStream& b) {
  return a.begin == b.begin && a.packed == b.packed && a.size == b.size && a.crc == b.crc;
}

bool isWhole(libdeflate_decompressor* decompressor, const char* packed, const DeflateStream& stream,
             const MemoryContent& content) {
  const auto size = static_cast<std::size_t>(stream.size);
  const auto packedSize = static_cast<std::size_t>(stream.packed);
  std::size_t read = 0;
  std::size_t made = 0;
  const libdeflate_result result =
      libdeflate_deflate_decompress_ex(decompressor, packed, packedSize, content.bytes.get(), size, &read, &made);
  return result == LIBDEFLATE_SUCCESS && read == packedSize && made == size &&
         libdeflate_crc32(0, content.bytes.get(), size) == stream.crc;
}

// Makes `content` what the stream at `packed` inflates to. False, and empty, if it does not come out.
bool inflateAll(libdeflate_decompressor* decompressor, const char* packed, const DeflateStream& stream,
                MemoryContent& content) {
  const auto size = static_cast<std::size_t>(stream.size);
  content.size = 0;
  if (!content.reserve(std::max<std::size_t>(size, 1))) return false;
  if (isWhole(decompressor, packed, stream, content)) {
    content.size = size;
    return true;
  }
  content = MemoryContent{};
  return false;
}

}  // namespace

// The streams of one package, which are inflated in their order.
class Inflater::InOrder {
 public:
  InOrder(const Inflater& inflater, std::string_view package)
      : inflater_(inflater),
        package_(package),
        streams_(streamsOf(package)),
        made_(streams_.size()),
        ahead_(inflater.decompressors_.size(),
               {streams_.size(), [this](std::size_t part, std::size_t lane) { prepare(part, lane); },
                [this](std::size_t part) { return static_cast<std::size_t>(streams_[part].size); }, kMostAhead,
                [this](std::size_t part) { made_[part] = {}; }}) {}

  // Whether `stream` is one of them; then `content` is what came of it, empty if it does not come out.
  bool take(const Stream& stream, MemoryContent& content, bool& isMade) {
    const std::size_t last = std::min(streams_.size(), next_ + kMostPassed);
    std::size_t part = next_;
    while (part < last && !areSame(streams_[part], stream))
      ++part;
    if (part == last) return false;
    next_ = part + 1;
    ahead_.await(part);
    Made made = std::move(made_[part]);
    content = std::move(made.content);
    isMade = made.isMade;
    return true;
  }

 private:
  struct Made {
    MemoryContent content;
    bool isMade = false;
  };

  void prepare(std::size_t part, std::size_t lane) {
    Made& made = made_[part];
    const char* const packed = package_.data() + streams_[part].begin;
    made.isMade = inflateAll(inflater_.decompressors_[lane].get(), packed, streams_[part], made.content);
  }

  const Inflater& inflater_;
  const std::string_view package_;
  const std::vector<Stream> streams_;
  std::vector<Made> made_;
  std::size_t next_ = 0;
  Ahead ahead_;  // goes before what it works on
};

void Inflater::Free::operator()(libdeflate_decompressor* decompressor) const {
  libdeflate_free_decompressor(decompressor);
}

Inflater::Inflater(std::size_t lanes) {
  for (std::size_t lane = 0; lane < lanes; ++lane) {
    decompressors_.emplace_back(libdeflate_alloc_decompressor());
    if (decompressors_.back() != nullptr) continue;
    decompressors_.pop_back();
    break;
  }
}

Inflater::~Inflater() = default;

void Inflater::begin(std::shared_ptr<const MemoryContent> package) {
  end();
  package_ = std::move(package);
  if (package_ != nullptr && package_->size >= kLeastPackage && decompressors_.size() > 1)
    ahead_ = std::make_unique<InOrder>(*this, package_->view());
}

void Inflater::end() {
  ahead_ = nullptr;
  package_ = nullptr;
}

bool Inflater::inflate(std::FILE* file, const Stream& stream, MemoryContent& content) {
  bool isMade = false;
  if (ahead_ != nullptr && ahead_->take(stream, content, isMade)) return isMade;
  if (decompressors_.empty()) return false;
  if (package_ != nullptr) {
    const bool isThere = stream.begin <= package_->size && stream.packed <= package_->size - stream.begin;
    return isThere && inflateAll(decompressors_[0].get(), package_->bytes.get() + stream.begin, stream, content);
  }
  const auto size = static_cast<std::size_t>(stream.packed);
  if (!packed_.reserve(std::max<std::size_t>(size, 1))) return false;
  return fseeko(file, static_cast<off_t>(stream.begin), SEEK_SET) == 0 &&
         std::fread(packed_.bytes.get(), 1, size, file) == size &&
         inflateAll(decompressors_[0].get(), packed_.bytes.get(), stream, content);
}

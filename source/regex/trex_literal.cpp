// Literals: how rare one is in script, and where it stands next in a text.
//
// Without an index, the rarest byte of a literal is looked for with memchr and the rest is compared there; where that
// byte turns out to be frequent, a word of the literal is compared at every place. With an index, the literal's rarest
// piece is looked up, and the literal is compared at each place of that piece. Test:
// tests/regex/trex_differential_test.cpp.

#include "regex/trex_literal.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <iterator>

namespace {

// Lengths of indexed pieces, each about half as long again as the one before. Of a literal between two of them, a piece
// of the shorter one still covers most, so that few other literals share it.
constexpr std::size_t kLengths[] = {3, 5, 8, 12, 18, 27, 40, 60, 90};
constexpr unsigned kMostBucketBits = 16;
constexpr std::size_t kFrequentShare = 128;  // of one byte in so many, a search from place to place saves nothing
constexpr std::size_t kFewPlaces = 32;       // of which longer pieces would save nothing
constexpr std::size_t kVeryFewPlaces = 4;    // of which another piece of the same length would save nothing
constexpr std::size_t kCostOfPieces = 4;     // to index them, in bytes searched for each byte of the text
constexpr std::size_t kCostOfPlace = 8;      // to compare the literal with one that holds another, in the same measure
constexpr std::size_t kLongLiteral = 32;
constexpr std::ptrdiff_t kFarApart = 48;  // hits of a byte for which memchr pays
constexpr std::ptrdiff_t kTried = 256;    // bytes after which that is known

// The bytes of script, the frequent ones first.
constexpr std::string_view kByFrequency =
    " etnriaosl\ncud.)(h,p=fm\tg;vyb{}*/x\"_w0:'T1][Sk&CE-+AMI|PR\\N2O$DL!`jFB3@<U?>zV4Hq568WG#79XYKQJZ^%~";

// How rare a byte is in script; those that are not in the list are the rarest.
constexpr std::array<unsigned char, 256> kRarities = [] {
  std::array<unsigned char, 256> rarities{};
  for (unsigned char& rarity : rarities)
    rarity = kByFrequency.size();
  for (std::size_t i = kByFrequency.size(); i-- > 0;)
    rarities[static_cast<unsigned char>(kByFrequency[i])] = static_cast<unsigned char>(i);
  return rarities;
}();

std::size_t rarity(char byte) {
  return kRarities[static_cast<unsigned char>(byte)];
}

// The first place of a literal, which is at least as long as a word, in [begin, end); `end` if there is none.
const char* findByWords(const char* begin, const char* end, std::string_view literal) {
  std::uint64_t wanted = 0;
  std::memcpy(&wanted, literal.data(), sizeof wanted);
  const auto size = static_cast<std::ptrdiff_t>(literal.size());
  for (const char* at = begin; end - at >= size; ++at) {
    std::uint64_t there = 0;
    std::memcpy(&there, at, sizeof there);
    if (there == wanted && std::memcmp(at, literal.data(), literal.size()) == 0) return at;
  }
  return end;
}

// The same for any literal but an empty one, by way of its byte `rarest`.
const char* findByByte(const char* begin, const char* end, std::string_view literal, std::size_t rarest) {
  if (static_cast<std::size_t>(end - begin) < literal.size()) return end;
  const char* const last = end - literal.size() + rarest;
  std::ptrdiff_t hits = 0;
  for (const char* at = begin + rarest; at <= last; ++at) {
    at = static_cast<const char*>(std::memchr(at, literal[rarest], static_cast<std::size_t>(last - at) + 1));
    if (at == nullptr) break;
    const char* const place = at - rarest;
    if (std::memcmp(place, literal.data(), literal.size()) == 0) return place;
    const bool isFrequent = ++hits * kFarApart > std::max(place - begin, kTried);
    if (isFrequent && literal.size() >= sizeof(std::uint64_t)) return findByWords(place + 1, end, literal);
  }
  return end;
}

}  // namespace

TextIndex::TextIndex(std::string_view text, std::size_t& room) : text_(text), room_(room) {
  if (text.size() < kLengths[0]) return;
  pieces_.emplace_back(text, kLengths[0]);
  room_ -= std::min(room_, text.size());
}

TextIndex::Pieces::Pieces(std::string_view text, std::size_t length) : length_(length) {
  constexpr std::uint32_t kFactor = 0x01000193;  // odd, so that no byte of a piece is lost from its hash
  for (std::size_t i = 1; i < length; ++i)
    leaving_ *= kFactor;
  while (bucketBits_ < kMostBucketBits && text.size() >> bucketBits_ > 1)
    ++bucketBits_;
  bucketEnds_.resize((std::size_t{1} << bucketBits_) + 1);
  forEachBucket(text, [&](std::size_t, std::size_t bucket) {
    ++bucketEnds_[bucket + 1];
    return true;
  });
  for (std::size_t bucket = 1; bucket < bucketEnds_.size(); ++bucket)
    bucketEnds_[bucket] += bucketEnds_[bucket - 1];
  places_.resize(text.size() - length + 1);
  std::vector<std::uint32_t> next(bucketEnds_.begin(), bucketEnds_.end() - 1);
  forEachBucket(text, [&](std::size_t at, std::size_t bucket) {
    places_[next[bucket]++] = static_cast<std::uint32_t>(at);
    return true;
  });
}

// The hash of a piece is that of its bytes as the digits of a number, from which those of its neighbour follow.
template <typename Use>
void TextIndex::Pieces::forEachBucket(std::string_view text, const Use& use) const {
  constexpr std::uint32_t kFactor = 0x01000193;
  std::uint32_t hash = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (i >= length_) hash -= leaving_ * static_cast<unsigned char>(text[i - length_]);
    hash = hash * kFactor + static_cast<unsigned char>(text[i]);
    if (i + 1 < length_) continue;
    if (!use(i + 1 - length_, static_cast<std::uint64_t>(std::uint32_t{hash * 0x9E3779B1u}) >> (32 - bucketBits_)))
      return;
  }
}

TextIndex::Places TextIndex::Pieces::fewest(std::string_view literal) const {
  Places fewest{nullptr, nullptr, literal.size()};
  forEachBucket(literal, [&](std::size_t offset, std::size_t bucket) {
    const Places places{places_.data() + bucketEnds_[bucket], places_.data() + bucketEnds_[bucket + 1], offset};
    if (fewest.offset == literal.size() || places.count() < fewest.count()) fewest = places;
    return fewest.count() > kVeryFewPlaces;
  });
  return fewest;
}

const TextIndex::Places& TextIndex::placesFor(std::string_view literal) {
  if (recentPlaces_.begin == nullptr || recent_ != literal) {
    recentPlaces_ = fewestPlaces(literal);
    recent_ = literal;
  }
  return recentPlaces_;
}

// Those of the shortest pieces that tell enough.
TextIndex::Places TextIndex::fewestPlaces(std::string_view literal) {
  Places fewest = pieces_[0].fewest(literal);
  for (std::size_t i = 1; fewest.count() > kFewPlaces; ++i) {
    if (i == pieces_.size() && !addLongerPieces(literal.size())) break;
    if (pieces_[i].length() > literal.size()) break;
    fewest = pieces_[i].fewest(literal);
  }
  return fewest;
}

// Whether there are pieces now that are longer than all before, but not longer than `most`.
bool TextIndex::addLongerPieces(std::size_t most) {
  if (pieces_.size() == std::size(kLengths) || spent_ / kCostOfPieces < text_.size()) return false;
  const std::size_t length = kLengths[pieces_.size()];
  if (length > std::min(most, text_.size()) || text_.size() > room_) return false;
  pieces_.emplace_back(text_, length);
  room_ -= text_.size();
  spent_ = 0;
  return true;
}

std::size_t TextIndex::find(std::string_view literal, std::size_t from, std::size_t to) {
  const std::string_view text = text_.substr(0, to);
  if (literal.size() < kLengths[0] || pieces_.empty()) return text.find(literal, from);
  const Places& places = placesFor(literal);
  if (places.count() > text_.size() / kFrequentShare) {
    if (from >= text.size()) return std::string_view::npos;
    const char* const found = findByByte(text.data() + from, text.data() + text.size(), literal, 0);
    spent_ += static_cast<std::size_t>(found - text.data()) - from;
    return found == text.data() + text.size() ? std::string_view::npos : static_cast<std::size_t>(found - text.data());
  }
  for (auto place = std::lower_bound(places.begin, places.end, from + places.offset);
       place != places.end && *place - places.offset < text.size(); ++place) {
    const std::size_t begin = *place - places.offset;
    if (text.compare(begin, literal.size(), literal) == 0) return begin;
    spent_ += kCostOfPlace;
  }
  return std::string_view::npos;
}

TrexLiteral::TrexLiteral(std::string text) : text_(std::move(text)) {
  for (std::size_t i = 1; i < text_.size(); ++i) {
    if (::rarity(text_[i]) > ::rarity(text_[rarest_])) rarest_ = i;
  }
}

int TrexLiteral::rarity() const {
  constexpr double kMostFrequent = 4;  // one byte in so many is a blank
  double bits = 0;
  for (const char byte : text_)
    bits += std::log2(kMostFrequent + static_cast<double>(::rarity(byte)));
  return static_cast<int>(bits);
}

const char* TrexLiteral::find(const char* begin, const char* end, TextIndex* index) const {
  const auto room = static_cast<std::size_t>(end - begin);
  if (text_.size() > room) return end;
  if (text_.empty()) return begin;
  if (index != nullptr) {
    const char* const text = index->text().data();
    const std::size_t place =
        index->find(text_, static_cast<std::size_t>(begin - text), static_cast<std::size_t>(end - text));
    return place == std::string_view::npos ? end : text + place;
  }
  if (text_.size() > kLongLiteral) {
    const void* hit = memmem(begin, room, text_.data(), text_.size());
    return hit == nullptr ? end : static_cast<const char*>(hit);
  }
  return findByByte(begin, end, text_, rarest_);
}

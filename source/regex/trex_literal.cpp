// Test: tests/regex/trex_differential_test.cpp.

#include "regex/trex_literal.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

constexpr std::size_t kIndexed = 3;  // bytes looked up together
constexpr unsigned kMostBucketBits = 16;
constexpr std::size_t kFrequentShare = 128;  // of one byte in so many, a search from place to place saves nothing
constexpr std::size_t kLongLiteral = 32;

// The bytes of script, the frequent ones first.
constexpr std::string_view kByFrequency =
    " etnriaosl\ncud.)(h,p=fm\tg;vyb{}*/x\"_w0:'T1][Sk&CE-+AMI|PR\\N2O$DL!`jFB3@<U?>zV4Hq568WG#79XYKQJZ^%~";

// How rare a byte is in script; those that are not in the list are the rarest.
std::size_t rarity(char byte) {
  return std::min(kByFrequency.find(byte), kByFrequency.size());
}

}  // namespace

TextIndex::TextIndex(std::string_view text) : text_(text) {
  if (text.size() < kIndexed) return;
  while (bucketBits_ < kMostBucketBits && text.size() >> bucketBits_ > 1)
    ++bucketBits_;
  bucketEnds_.resize((std::size_t{1} << bucketBits_) + 1);
  const std::size_t count = text.size() - kIndexed + 1;
  for (std::size_t i = 0; i < count; ++i)
    ++bucketEnds_[bucketOf(text.data() + i) + 1];
  for (std::size_t bucket = 1; bucket < bucketEnds_.size(); ++bucket)
    bucketEnds_[bucket] += bucketEnds_[bucket - 1];
  places_.resize(count);
  std::vector<std::uint32_t> next(bucketEnds_.begin(), bucketEnds_.end() - 1);
  for (std::size_t i = 0; i < count; ++i)
    places_[next[bucketOf(text.data() + i)]++] = static_cast<std::uint32_t>(i);
}

std::size_t TextIndex::bucketOf(const char* three) const {
  const auto byte = [&](int i) { return static_cast<std::uint32_t>(static_cast<unsigned char>(three[i])); };
  const std::uint32_t hash = (byte(0) | byte(1) << 8 | byte(2) << 16) * 0x9E3779B1u;
  return std::uint64_t{hash} >> (32 - bucketBits_);
}

TextIndex::Places TextIndex::placesOf(const char* three) const {
  const std::size_t bucket = bucketOf(three);
  return {places_.data() + bucketEnds_[bucket], places_.data() + bucketEnds_[bucket + 1]};
}

std::size_t TextIndex::find(std::string_view literal, std::size_t from, std::size_t to) const {
  const std::string_view text = text_.substr(0, to);
  if (literal.size() < kIndexed || places_.empty()) return text.find(literal, from);
  std::size_t offset = 0;
  Places fewest = placesOf(literal.data());
  for (std::size_t i = 1; i + kIndexed <= literal.size(); ++i) {
    const Places places = placesOf(literal.data() + i);
    if (places.end - places.begin >= fewest.end - fewest.begin) continue;
    fewest = places;
    offset = i;
  }
  if (static_cast<std::size_t>(fewest.end - fewest.begin) > text_.size() / kFrequentShare) {
    return text.find(literal, from);
  }
  for (auto place = std::lower_bound(fewest.begin, fewest.end, from + offset);
       place != fewest.end && *place - offset < text.size(); ++place) {
    const std::size_t begin = *place - offset;
    if (text.substr(begin, literal.size()) == literal) return begin;
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

const char* TrexLiteral::find(const char* begin, const char* end, const TextIndex* index) const {
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
  const char* const last = end - text_.size() + rarest_;
  for (const char* at = begin + rarest_; at <= last; ++at) {
    at = static_cast<const char*>(std::memchr(at, text_[rarest_], static_cast<std::size_t>(last - at) + 1));
    if (at == nullptr) break;
    if (std::memcmp(at - rarest_, text_.data(), text_.size()) == 0) return at - rarest_;
  }
  return end;
}

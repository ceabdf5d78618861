#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// A text in which many literals are looked for: where each three bytes stand. Takes up to eight bytes of memory for
// each byte of the text, which must outlive it and is shorter than 4 GiB.
class TextIndex {
 public:
  explicit TextIndex(std::string_view text);

  std::string_view text() const { return text_; }

  // The first place of `literal` in the bytes [from, to) of the text; npos if there is none.
  std::size_t find(std::string_view literal, std::size_t from, std::size_t to) const;

 private:
  struct Places {
    const std::uint32_t* begin;
    const std::uint32_t* end;
  };

  std::size_t bucketOf(const char* three) const;
  Places placesOf(const char* three) const;

  std::string_view text_;
  unsigned bucketBits_ = 0;
  std::vector<std::uint32_t> bucketEnds_;
  std::vector<std::uint32_t> places_;  // bucket by bucket, ascending in each
};

// A literal that is looked for in texts, by way of that byte of it which is rarest in script.
class TrexLiteral {
 public:
  TrexLiteral() = default;
  explicit TrexLiteral(std::string text);

  const std::string& text() const { return text_; }

  // About how many bits of chance it takes for the literal to stand at some place in script.
  int rarity() const;

  // The first place of the literal in [begin, end); `end` if there is none. With an `index` of a text around [begin,
  // end), or null.
  const char* find(const char* begin, const char* end, const TextIndex* index) const;

 private:
  std::string text_;
  std::size_t rarest_ = 0;
};

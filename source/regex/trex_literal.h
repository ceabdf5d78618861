#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// A text in which many literals are looked for, by where each three bytes of it stand. Where that does not tell enough,
// as in text of a few different letters, indexes of longer pieces are added as searches ask for them. Each takes four
// to eight bytes of memory for each byte of the text, which must outlive it and is shorter than 4 GiB.
class TextIndex {
 public:
  // `room`: how many bytes of text may still be indexed, for all texts and pieces together; that of the three-byte
  // pieces is made in any case.
  TextIndex(std::string_view text, std::size_t& room);

  std::string_view text() const { return text_; }

  // The first place of `literal` in the bytes [from, to) of the text; npos if there is none.
  std::size_t find(std::string_view literal, std::size_t from, std::size_t to);

 private:
  struct Places {
    const std::uint32_t* begin;
    const std::uint32_t* end;
    std::size_t offset;  // of the piece that stands there, in the literal

    std::size_t count() const { return static_cast<std::size_t>(end - begin); }
  };

  // Where the pieces of one length stand.
  class Pieces {
   public:
    Pieces(std::string_view text, std::size_t length);

    std::size_t length() const { return length_; }

    // The places of that piece of `literal` which has the fewest, or very few. Other pieces of the same hash are among
    // them.
    Places fewest(std::string_view literal) const;

   private:
    // Calls `use` with the place and the bucket of each piece, in their order, as long as that returns true.
    template <typename Use>
    void forEachBucket(std::string_view text, const Use& use) const;

    std::size_t length_;
    std::uint32_t leaving_ = 1;  // what the first byte of a piece counts in its hash
    unsigned bucketBits_ = 0;
    std::vector<std::uint32_t> bucketEnds_;
    std::vector<std::uint32_t> places_;  // bucket by bucket, ascending in each
  };

  const Places& placesFor(std::string_view literal);
  Places fewestPlaces(std::string_view literal);
  bool addLongerPieces(std::size_t most);

  std::string_view text_;
  std::size_t& room_;
  std::vector<Pieces> pieces_;  // the shorter ones first
  std::string recent_;          // the literal that was looked for last, mostly the next one, too
  Places recentPlaces_{nullptr, nullptr, 0};
  std::size_t spent_ = 0;  // on going through bytes and places in vain since the last of them was made
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
  const char* find(const char* begin, const char* end, TextIndex* index) const;

 private:
  std::string text_;
  std::size_t rarest_ = 0;
};

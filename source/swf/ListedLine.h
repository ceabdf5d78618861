#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// The lines of a listing on their way to whoever takes them: in their parts, so that text is made only where a taker
// keeps it.

namespace FlashEngine_1_00 {

constexpr std::string_view kFieldSeparator = "#@x441#";
constexpr std::string_view kValueSeparator = "#@x442#";

// One line. Of a record: its name line "[ActionPush]", or a field line, which is the bare name and pairs of a key and a
// value, "ActionPush#@x441#type#@x442#0#@x441#value#@x442#hello", cut at kMaxFieldLine bytes. Any other line is a text.
// Does not own what it is made of, but numbers.
class ListedLine {
 public:
  enum class Kind { text, name, fields };
  struct Field {
    std::string_view key;
    std::string_view value;
  };

  explicit ListedLine(std::string_view text) : ListedLine(Kind::text, text, -1) {}
  // The name line of a record with the action code `code`, and a field line without fields yet.
  static ListedLine nameLine(std::string_view name, int code) { return {Kind::name, name, code}; }
  static ListedLine fieldLine(std::string_view name) { return {Kind::fields, name, -1}; }
  ListedLine(const ListedLine&) = delete;  // its fields point into it
  ListedLine& operator=(const ListedLine&) = delete;

  // Adds a field; there are kMostFields at most.
  ListedLine& add(std::string_view key, std::string_view value) {
    fields_[count_++] = {key, value};
    return *this;
  }
  ListedLine& add(std::string_view key, const char* value) { return add(key, std::string_view(value)); }
  ListedLine& add(std::string_view key, long long value);
  ListedLine& addHex(std::string_view key, std::uint32_t value);
  // Only once in a line: with six digits behind the point.
  ListedLine& addReal(std::string_view key, double value);

  Kind kind() const { return kind_; }
  // The record's name without brackets, or the text.
  std::string_view name() const { return name_; }
  int code() const { return code_; }
  const Field* begin() const { return fields_.data(); }
  const Field* end() const { return fields_.data() + count_; }

  // Bytes of the line, and of the same if it were not cut.
  std::size_t size() const;
  std::size_t fullSize() const;

  // The line as text.
  std::string text() const;

 private:
  static constexpr std::size_t kMostFields = 3;
  static constexpr std::size_t kMostNumbers = 3;
  static constexpr std::size_t kDigits = 24;

  ListedLine(Kind kind, std::string_view name, int code) : kind_(kind), code_(code), name_(name) {}

  template <typename T>
  ListedLine& addNumber(std::string_view key, T value, int base);

  Kind kind_;
  int code_;
  std::string_view name_;
  std::size_t count_ = 0;
  std::size_t numbersUsed_ = 0;
  std::array<Field, kMostFields> fields_;
  std::array<char, kDigits * kMostNumbers> numbers_;
  std::array<char, 400> real_;  // the largest double has 317 characters
};

// The name that lines have of a record with the action code `code`, 0 to 255.
std::string_view actionName(int code);

// What the lines of a listing go to, one by one.
class ListingTaker {
 public:
  ListingTaker() = default;
  ListingTaker(const ListingTaker&) = delete;
  ListingTaker& operator=(const ListingTaker&) = delete;
  virtual ~ListingTaker() = default;

  // At least `count` more lines are about to come, unless a bound ends the listing.
  virtual void expect(std::size_t count) = 0;
  // The next line, which does not outlive the call.
  virtual void take(const ListedLine& line) = 0;
};

}  // namespace FlashEngine_1_00

#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

// The pieces of a SWF file as bytes.

namespace swf_assembler {

// The low `bytes` bytes of `value`, lowest first.
template <class Integer>
std::string little(Integer value, int bytes) {
  std::string out;
  for (int i = 0; i < bytes; ++i)
    out += static_cast<char>(static_cast<std::uint64_t>(value) >> (8 * i) & 0xFF);
  return out;
}

// IEEE numbers as a push holds them; of a double the high half comes first.
std::string floatBytes(double value);
std::string doubleBytes(double value);

// How many bits a signed field needs for `value`; zero needs none.
int signedBits(long long value);

// The frame size of a movie header: a count of 5 bits, then each field in so many bits, up to a byte boundary.
std::string frameSize(int bits, const std::vector<long long>& fields);

// A zlib stream of `plain`. Throws std::runtime_error if zlib has no memory for it.
std::string compressed(const std::string& plain);

// Action records, in which branches to labels may still have no offset.
class Code {
 public:
  std::string bytes;

  // Names the next record. `line` is where the text does so, for messages. Throws AssemblyError for a name that is
  // taken.
  void addLabel(const std::string& name, int line) { addLabel(name, {bytes.size(), line}); }

  // The two bytes at `place` will be the offset, from behind them, to the label `name`.
  void addBranch(std::size_t place, const std::string& name, int line) { branches_.push_back({place, name, line}); }

  // Puts a block that was made on its own behind these records. Labels are common to both from then on.
  void append(const Code& block);

  // The records with all offsets filled in. Throws AssemblyError for a label that is unknown or out of reach.
  std::string linked() const;

 private:
  struct Label {
    std::size_t place;
    int line;
  };
  struct Branch {
    std::size_t place;
    std::string label;
    int line;
  };

  void addLabel(const std::string& name, Label label);
  std::string offset(const Branch& branch) const;

  std::map<std::string, Label> labels_;
  std::vector<Branch> branches_;
};

}  // namespace swf_assembler

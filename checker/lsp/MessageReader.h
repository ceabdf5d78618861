#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// The messages of a stream of the Language Server Protocol: "Content-Length: N", other fields, an empty line, N bytes.
//
// Whatever else comes is passed over until the next such line, and nothing of it is kept.
class MessageReader {
 public:
  struct Message {
    std::string body;
    bool isTooLarge = false;  // more bytes than are taken; the body is passed over
  };

  explicit MessageReader(std::size_t most) : most_(most) {}

  // Takes what came.
  void feed(std::string_view bytes);

  // The next message that is whole; once for each.
  std::optional<Message> next();

 private:
  void readHead();
  void takeLine(std::string_view line);

  std::size_t most_;
  std::string bytes_;    // that nobody took yet
  std::string line_;     // of the head, as far as it came
  bool isBody_ = false;  // the head is over
  bool hasLength_ = false;
  std::uint64_t length_ = 0;   // of the body, of which this many bytes
  std::uint64_t skipped_ = 0;  // were passed over
};

// A message as it goes to the client.
std::string framed(const std::string& body);

// Test: tests/checker/Lsp_test.cpp.

#include "checker/lsp/MessageReader.h"

#include <algorithm>
#include <cctype>

namespace {

constexpr std::size_t kMaxLine = 1000;  // bytes of a field that are looked at
constexpr std::uint64_t kMaxLength = std::uint64_t{1} << 62;

constexpr std::string_view kLength = "content-length:";

// The value of that field; none if the line is another.
std::optional<std::uint64_t> lengthIn(std::string_view line) {
  if (line.size() <= kLength.size()) return std::nullopt;
  const bool isLength = std::equal(kLength.begin(), kLength.end(), line.begin(), [](char expected, char given) {
    return expected == std::tolower(static_cast<unsigned char>(given));
  });
  if (!isLength) return std::nullopt;
  line.remove_prefix(kLength.size());
  line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
  line = line.substr(0, line.find_last_not_of(" \t") + 1);
  if (line.empty()) return std::nullopt;
  std::uint64_t length = 0;
  for (const char digit : line) {
    if (digit < '0' || digit > '9' || length > kMaxLength / 16) return std::nullopt;
    length = length * 10 + static_cast<unsigned>(digit - '0');
  }
  return length;
}

}  // namespace

void MessageReader::feed(std::string_view bytes) {
  bytes_.append(bytes);
}

void MessageReader::takeLine(std::string_view line) {
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  if (line.empty()) {
    isBody_ = hasLength_;
  } else if (const auto length = lengthIn(line)) {
    hasLength_ = true;
    length_ = *length;
  }
}

void MessageReader::readHead() {
  std::size_t at = 0;
  while (!isBody_ && at < bytes_.size()) {
    const std::size_t end = std::min(bytes_.find('\n', at), bytes_.size());
    line_.append(bytes_, at, std::min(end - at, kMaxLine - std::min(kMaxLine, line_.size())));
    at = std::min(end + 1, bytes_.size());
    if (end == bytes_.size()) break;
    takeLine(line_);
    line_.clear();
  }
  bytes_.erase(0, at);
}

std::optional<MessageReader::Message> MessageReader::next() {
  if (!isBody_) readHead();
  if (!isBody_) return std::nullopt;
  Message message;
  if (length_ > most_) {
    const std::uint64_t count = std::min<std::uint64_t>(length_ - skipped_, bytes_.size());
    bytes_.erase(0, static_cast<std::size_t>(count));
    skipped_ += count;
    if (skipped_ < length_) return std::nullopt;
    message.isTooLarge = true;
  } else {
    const auto count = static_cast<std::size_t>(length_);
    if (bytes_.size() < count) return std::nullopt;
    message.body = bytes_.substr(0, count);
    bytes_.erase(0, count);
  }
  isBody_ = hasLength_ = false;
  skipped_ = 0;
  return message;
}

std::string framed(const std::string& body) {
  return "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

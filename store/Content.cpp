// Hashes of files and folders. A folder's hash is made of the sorted list of its files, each with name, size and hash,
// so that it depends neither on the order of the file system nor on times; those go into the stamps.
// Test: tests/store/Content_test.cpp.

#include "store/Content.h"

#include <fcntl.h>
#include <nettle/sha2.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <vector>

namespace fs = std::filesystem;

namespace store {
namespace {

class Sha256 {
 public:
  Sha256() { sha256_init(&state_); }

  void add(std::string_view bytes) {
    sha256_update(&state_, bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
  }

  // Numbers, and texts whose end is to be seen.
  void addNumber(std::uint64_t number) {
    std::array<char, 8> bytes{};
    for (char& byte : bytes) {
      byte = static_cast<char>(number & 0xFF);
      number >>= 8;
    }
    add({bytes.data(), bytes.size()});
  }
  void addText(std::string_view text) {
    addNumber(text.size());
    add(text);
  }

  std::string digest() {
    std::string bytes(SHA256_DIGEST_SIZE, '\0');
    sha256_digest(&state_, bytes.size(), reinterpret_cast<std::uint8_t*>(bytes.data()));
    return bytes;
  }

 private:
  sha256_ctx state_{};
};

class Descriptor {
 public:
  explicit Descriptor(const std::string& path) : number_(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int number() const { return number_; }

 private:
  int number_;
};

// Reads a regular file whole: its hash, and its size into `size`. Empty if it cannot be.
std::string hashOf(const std::string& path, std::uint64_t& size, Sha256& stamps) {
  constexpr std::size_t kBuffer = 16384;
  const Descriptor file(path);
  struct stat info {};
  if (file.number() < 0 || fstat(file.number(), &info) != 0 || !S_ISREG(info.st_mode)) return "";
  for (const auto number :
       {static_cast<std::uint64_t>(info.st_dev), static_cast<std::uint64_t>(info.st_ino),
        static_cast<std::uint64_t>(info.st_mtim.tv_sec), static_cast<std::uint64_t>(info.st_mtim.tv_nsec)})
    stamps.addNumber(number);
  Sha256 hash;
  std::array<char, kBuffer> buffer{};
  for (;;) {
    const ssize_t count = read(file.number(), buffer.data(), buffer.size());
    if (count == 0) return hash.digest();
    if (count < 0 && errno != EINTR) return "";
    if (count < 0) continue;
    hash.add({buffer.data(), static_cast<std::size_t>(count)});
    size += static_cast<std::uint64_t>(count);
  }
}

// The files below `folder`, by their paths from it, sorted as bytes; nothing if not all can be seen.
std::optional<std::vector<std::string>> filesBelow(const std::string& folder) {
  std::vector<std::string> files;
  std::error_code error;
  fs::recursive_directory_iterator entry(folder, error);
  for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
    std::error_code gone;
    if (entry->is_regular_file(gone)) files.push_back(entry->path().lexically_relative(folder).string());
  }
  if (error) return std::nullopt;
  std::sort(files.begin(), files.end());
  return files;
}

int digitOf(char c) {
  return c >= '0' && c <= '9' ? c - '0' : c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

}  // namespace

std::string sha256(std::string_view bytes) {
  Sha256 hash;
  hash.add(bytes);
  return hash.digest();
}

std::optional<Content> contentOf(const std::string& path) {
  std::error_code error;
  Content content;
  Sha256 stamps;
  if (!fs::is_directory(path, error)) {
    content.sha256 = hashOf(path, content.size, stamps);
    content.suffix = fs::path(path).extension().string();
  } else {
    const auto files = filesBelow(path);
    if (!files) return std::nullopt;
    Sha256 hash;
    for (const std::string& file : *files) {
      std::uint64_t size = 0;
      const std::string digest = hashOf((fs::path(path) / file).string(), size, stamps);
      if (digest.empty()) return std::nullopt;
      hash.addText(file);
      hash.addNumber(size);
      hash.add(digest);
      content.size += size;
    }
    content.sha256 = hash.digest();
    content.suffix = "/";
  }
  if (content.sha256.empty()) return std::nullopt;
  content.stamps = stamps.digest();
  return content;
}

std::string hexOf(std::string_view bytes) {
  constexpr const char* kDigits = "0123456789abcdef";
  std::string digits;
  for (const char c : bytes) {
    digits += kDigits[static_cast<unsigned char>(c) >> 4];
    digits += kDigits[static_cast<unsigned char>(c) & 0xF];
  }
  return digits;
}

std::string bytesOfHex(std::string_view digits) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
    const int high = digitOf(digits[i]);
    const int low = digitOf(digits[i + 1]);
    if (high < 0 || low < 0) return "";
    bytes += static_cast<char>(high << 4 | low);
  }
  return digits.size() % 2 == 0 ? bytes : "";
}

}  // namespace store

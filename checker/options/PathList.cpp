// A list of paths as bytes, the older of them in a file. Test: tests/checker/PathList_test.cpp.

#include "checker/options/PathList.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include "checker/options/UserError.h"

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kInMemory = std::size_t{1} << 20;  // bytes
constexpr std::size_t kPart = std::size_t{1} << 16;

[[noreturn]] void fail(const char* what, int reason) {
  throw UserError(std::string("a long list of applications cannot be ") + what +
                  " the directory for temporary files: " + std::strerror(reason));
}

// Gone when it is closed, whatever ends this process.
FlashEngine_1_00::Descriptor namelessFile() {
  std::error_code error;
  std::string name = (fs::temp_directory_path(error) / "tarvo-check-XXXXXX").string();
  if (error) fail("kept in", error.value());
  FlashEngine_1_00::Descriptor file(mkostemp(name.data(), O_CLOEXEC));
  if (!file) fail("kept in", errno);
  (void)unlink(name.c_str());
  return file;
}

}  // namespace

void PathList::add(std::string_view path) {
  bytes_.append(path);
  bytes_ += '\0';
  ++size_;
  if (bytes_.size() >= kInMemory) writeOut();
}

void PathList::writeOut() {
  if (!file_) file_ = namelessFile();
  for (std::size_t done = 0; done < bytes_.size();) {
    const ssize_t count = write(file_.number(), bytes_.data() + done, bytes_.size() - done);
    if (count < 0 && errno != EINTR) fail("kept in", errno);
    if (count > 0) done += static_cast<std::size_t>(count);
  }
  written_ += bytes_.size();
  bytes_.clear();
}

std::size_t PathList::read(std::uint64_t at, std::string& part) const {
  if (at >= written_) {
    const auto start = static_cast<std::size_t>(at - written_);
    const std::size_t count = std::min(kPart, bytes_.size() - start);
    part.append(bytes_, start, count);
    return count;
  }
  const std::size_t before = part.size();
  part.resize(before + kPart);
  ssize_t count = 0;
  do {
    count = pread(file_.number(), part.data() + before, kPart, static_cast<off_t>(at));
  } while (count < 0 && errno == EINTR);
  if (count <= 0) fail("read from", count < 0 ? errno : EIO);
  part.resize(before + static_cast<std::size_t>(count));
  return static_cast<std::size_t>(count);
}

bool PathList::Reader::next(std::string& path) {
  for (;;) {
    const std::size_t end = part_.find('\0', used_);
    if (end != std::string::npos) {
      path.assign(part_, used_, end - used_);
      used_ = end + 1;
      return true;
    }
    part_.erase(0, used_);
    used_ = 0;
    const std::size_t count = list_->read(at_, part_);
    if (count == 0) return false;
    at_ += count;
  }
}

// A report's file: a temporary one beside it, which is renamed at the end. A link's target is replaced, not the link;
// the mode stays that of the file before.
// Test: tests/checker/CommandLine_test.cpp.

#include "checker/formats/OutputFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "checker/options/UserError.h"

namespace fs = std::filesystem;

namespace {

// That of the file it replaces, or of any new one.
mode_t modeFor(const std::string& target) {
  struct stat there {};
  if (stat(target.c_str(), &there) == 0) return there.st_mode & 07777;
  const mode_t mask = umask(0);
  (void)umask(mask);
  return 0666 & ~mask;
}

}  // namespace

OutputFile::OutputFile(const std::string& path) : path_(path), target_(path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (fs::is_directory(status)) {
    errno = EISDIR;
    fail();
  }
  if (fs::exists(status) && !fs::is_regular_file(status)) {
    stream_.open(path, std::ios::binary);
    if (!stream_) fail();
    return;
  }
  if (fs::exists(status)) {
    target_ = fs::canonical(path, error).string();
    if (error || access(target_.c_str(), W_OK) != 0) fail();
  }
  std::string name = (fs::path(target_).parent_path() / ".tarvo-check-XXXXXX").string();
  const int descriptor = mkstemp(name.data());
  if (descriptor < 0) fail();
  temporary_ = name;
  (void)fchmod(descriptor, modeFor(target_));
  stream_.open(temporary_, std::ios::binary);
  close(descriptor);
  if (!stream_) fail();
}

OutputFile::~OutputFile() {
  if (!temporary_.empty()) (void)std::remove(temporary_.c_str());
}

void OutputFile::finish() {
  errno = 0;
  stream_.close();
  if (!stream_) fail();
  if (temporary_.empty()) return;
  if (std::rename(temporary_.c_str(), target_.c_str()) != 0) fail();
  temporary_.clear();
}

void OutputFile::fail() const {
  const int reason = errno;
  if (!temporary_.empty()) (void)std::remove(temporary_.c_str());  // there is no destructor yet
  throw UserError("cannot write '" + path_ + "'" + (reason == 0 ? "" : std::string(": ") + std::strerror(reason)));
}

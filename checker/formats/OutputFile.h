#pragma once

#include <fstream>
#include <string>

// A file that is written beside its place and takes it when it is whole. What was there before stays until then, and
// also if that never happens. Devices and pipes are written directly.
class OutputFile {
 public:
  // Throws UserError if the file cannot be made.
  explicit OutputFile(const std::string& path);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  std::ostream& stream() { return stream_; }

  // Throws UserError if not all of it could be written.
  void finish();

 private:
  [[noreturn]] void fail() const;

  std::string path_;       // as the user named it
  std::string target_;     // the same with links followed
  std::string temporary_;  // empty: written directly
  std::ofstream stream_;
};

#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <memory>
#include <string>
#include <vector>

#include "platform/File.h"

// Where the files are that a run makes: what packages expand to, and the finding lines. On the disk, as hosts expect
// (unzip/disk_place.h), unless whoever links the engine supplies another place (Paths.h).

namespace FlashEngine_1_00 {

class ExpansionBudget;
class PartObserver;

// A deflate stream in a package, as the package's headers have it.
struct DeflateStream {
  std::uint64_t begin;  // where it begins
  std::uint64_t packed;
  std::uint64_t size;  // that it inflates to
  unsigned long crc;
};

// Takes the bytes of one new file. What came before the sink is gone is in the file, also if it is not finished.
class FileSink {
 public:
  virtual ~FileSink() = default;

  // Lends memory for as long as the sink is there; before the first byte.
  virtual void useBuffer(char* /*buffer*/, std::size_t /*size*/) {}

  // False if the bytes, or what was taken before, cannot be written.
  virtual bool write(const char* bytes, std::size_t size) = 0;
  virtual bool finish() = 0;

  // For a place that inflates whole deflate streams faster than zlib does: makes the file of one in `package`, before
  // the first byte. The stream has to end with its bytes, and what it inflates to has its size and checksum. False if
  // anything is otherwise; the file is empty then, and whoever asked does it piece by piece.
  virtual bool inflate(std::FILE* /*package*/, const DeflateStream& /*stream*/) { return false; }
};

class FilePlace {
 public:
  virtual ~FilePlace() = default;

  // The file at `path` for reading, be it the place's own or the user's. Null if it cannot be opened.
  virtual File open(const std::string& path) = 0;

  // The file of the finding lines, empty. Null if it cannot be opened.
  virtual File createResultFile(const std::string& path) = 0;

  // Told that the entries of the package at `path`, which was just opened, are extracted now, in their order, and when
  // that is over.
  virtual void beginExtraction(const std::string& /*path*/) {}
  virtual void endExtraction() {}

  // Makes `path` a directory and works in it, so that the paths below count from there. Both: 0 on success, else -1.
  virtual int makeExtractionDirectory(const std::string& path) = 0;
  virtual int enterDirectory(const std::string& path) = 0;

  // Whether anything stands at `path`.
  virtual bool isThere(const std::string& path) = 0;

  // Creates the directory `path`, whose parent must be there. 0 on success, else -1.
  virtual int createDirectory(const std::string& path) = 0;

  // A new file at `path`, with its parent directories if need be. What stood there is gone, and `replaced` says whether
  // anything did. Null if that fails, or if `budget` does not suffice for the directories.
  virtual std::unique_ptr<FileSink> createFile(const std::string& path, ExpansionBudget& budget, bool& replaced) = 0;

  // Sets when a file was last changed; `date` is local time.
  virtual void setDate(const std::string& path, std::tm date) = 0;

  // Appends the files below the directory `dir` to `found`; `observer`, if there is one, is told of what cannot be
  // read.
  virtual void listFiles(const std::string& dir, PartObserver* observer, std::vector<std::string>& found) = 0;

  // Removes the directory `path` and everything below it.
  virtual void remove(const std::string& path) = 0;
};

// The file at `path` for reading, in the place that goes with enginePaths(). Null if it cannot be opened.
File openInput(const std::string& path);

// How many bytes `file` has, whose position goes back to the first one; -1 if it cannot tell.
off_t sizeOf(std::FILE* file);

}  // namespace FlashEngine_1_00

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "APICheckEngine/Facade.h"

// Paths in order, maybe more of them than fit into memory: those behind the first MiB stand in a file that has no name.
//
//   PathList list;
//   list.add("app.wgt"); ...
//   PathList::Reader reader(list);
//   for (std::string path; reader.next(path);) use(path);
class PathList {
 public:
  // Adds a path, which has no NUL. Throws UserError if there is no room for it.
  void add(std::string_view path);

  std::size_t size() const { return size_; }

  // Reads a list from its beginning. Nothing is to be added meanwhile, and the list must outlive this.
  class Reader {
   public:
    explicit Reader(const PathList& list) : list_(&list) {}

    // Sets `path` to the next one; false if there is none. Throws UserError if the file cannot be read.
    bool next(std::string& path);

   private:
    const PathList* list_;
    std::uint64_t at_ = 0;  // in the list's bytes: how far `part_` goes
    std::string part_;
    std::size_t used_ = 0;  // bytes of it
  };

 private:
  // Appends to `part` what stands at `at`, some KiB at most. Returns how much.
  std::size_t read(std::uint64_t at, std::string& part) const;
  void writeOut();

  std::size_t size_ = 0;
  FlashEngine_1_00::Descriptor file_{};
  std::uint64_t written_ = 0;  // bytes in it; then come those of `bytes_`
  std::string bytes_;          // a NUL behind each path
};

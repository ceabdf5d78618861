#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <vector>

#include "APICheckEngine/Facade.h"
#include "checker/run/MemoryContent.h"

struct libdeflate_decompressor;

// Inflates whole deflate streams of packages: of one in memory ahead, in several threads.
class Inflater {
 public:
  using Stream = FlashEngine_1_00::DeflateStream;

  // `lanes` counts the thread that asks.
  explicit Inflater(std::size_t lanes);
  ~Inflater();
  Inflater(const Inflater&) = delete;
  Inflater& operator=(const Inflater&) = delete;

  // Until `end`, streams are those of this package, mostly in the order of its directory. Null: it is not in memory.
  void begin(std::shared_ptr<const MemoryContent> package);
  void end();

  // Makes `content` what the stream in the package inflates to, if it ends with its bytes, and that has its size and
  // checksum. Else false; the content is empty then. `file` is the package, too.
  bool inflate(std::FILE* file, const Stream& stream, MemoryContent& content);

 private:
  struct Free {
    void operator()(libdeflate_decompressor* decompressor) const;
  };
  class InOrder;

  std::vector<std::unique_ptr<libdeflate_decompressor, Free>> decompressors_;  // of each lane
  std::shared_ptr<const MemoryContent> package_;
  std::unique_ptr<InOrder> ahead_;
  MemoryContent packed_;  // of a package that is not in memory
};

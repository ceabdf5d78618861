// Tests: tests/APICheckEngine/HostilePackages_test.cpp, tests/places/MemoryPlace_test.cpp.

#include "platform/FilePlace.h"

#include "platform/Paths.h"

namespace FlashEngine_1_00 {

File openInput(const std::string& path) {
  FilePlace* const place = enginePaths().place;
  return place == nullptr ? openFile(path, "rb") : place->open(path);
}

off_t sizeOf(std::FILE* file) {
  const off_t size = fseeko(file, 0, SEEK_END) == 0 ? ftello(file) : -1;
  std::rewind(file);
  return size;
}

}  // namespace FlashEngine_1_00

// Any bytes as a SWF file: read, listed and replayed.

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>

#include "decompiler/DeCompiler.h"
#include "platform/File.h"
#include "platform/TimeBudget.h"
#include "swf/DeAssembler.h"

using namespace FlashEngine_1_00;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  startTimeBudget();
  DeAssembler assembler;
  std::vector<unsigned char> image(data, data + size);
  if (size > 3 && std::memcmp(data, "CWS", 3) == 0) {
    const File file(fmemopen(image.data(), image.size(), "rb"));
    (void)assembler.getSWFHeader(file.get());
    std::vector<unsigned char> inflated;
    (void)assembler.unCompressSWF(file.get(), inflated);
    image = std::move(inflated);
  }
  const ByteView whole(image.data(), static_cast<Position>(image.size()));
  std::vector<std::string> lines;
  (void)assembler.SWFDeAssemble(whole.slice(3, whole.size()), lines);
  std::vector<std::string> statements;
  (void)DeCompiler().SWFDeCompilerMain(lines, statements);
  return 0;
}

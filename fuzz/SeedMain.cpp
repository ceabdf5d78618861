// Runs a fuzz target once over every file below the folders named on the command line: the target as an ordinary test.

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
  int inputs = 0;
  for (int i = 1; i < argc; ++i) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(argv[i])) {
      if (!entry.is_regular_file()) continue;
      std::printf("%s\n", entry.path().c_str());
      (void)std::fflush(stdout);  // the last line names the input of a fault
      std::ifstream file(entry.path(), std::ios::binary);
      const std::vector<char> bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
      (void)LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
      ++inputs;
    }
  }
  return inputs == 0 ? 1 : 0;
}

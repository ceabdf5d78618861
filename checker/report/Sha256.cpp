// Test: tests/checker/Formats_test.cpp.

#include "checker/report/Sha256.h"

#include <filesystem>

#include "store/Content.h"

std::string sha256OfFile(const std::string& path) {
  std::error_code error;
  if (std::filesystem::is_directory(path, error)) return "";
  const auto content = store::contentOf(path);
  return content ? store::hexOf(content->sha256) : "";
}

// Test: tests/checker/Checker_test.cpp.

#include "checker/run/PathNames.h"

#include "APICheckEngine/Facade.h"

std::string PathNames::shown(const std::string& path) const {
  const auto known = shownAs_.find(path);
  if (known != shownAs_.end()) return known->second;
  if (path.compare(0, root_.size() + 1, root_ + "/") != 0) return path;
  const std::size_t slash = path.find('/', root_.size() + 1);
  const auto package = shownAs_.find(path.substr(0, slash));
  return package == shownAs_.end() || slash == std::string::npos ? path : package->second + path.substr(slash);
}

std::string PathNames::asOnDevice(const std::string& text) const {
  std::string replaced = text;
  return CStringUtil().customReplace(replaced, root_, "/tmp");
}

std::string PathNames::findingLine(const std::string& path, int line, const std::string& method) const {
  return FlashEngine_1_00::findingLine(asOnDevice(path), line, method);
}

#pragma once

#include <map>
#include <string>

// The user's names for the paths of one run of the engine, which works on copies in a private directory.
class PathNames {
 public:
  explicit PathNames(std::string privateDirectory) : root_(std::move(privateDirectory)) {}

  // The engine's `path` is that of a file of the user's; of the directory of a package's files.
  void add(const std::string& path, const std::string& shownAs) { shownAs_[path] = shownAs; }

  // As given for the application's own files, "app.wgt!/www/js/main.js" for one inside a package.
  std::string shown(const std::string& path) const;

  // `text` with the private directory replaced by the device's /tmp, so that it reads as on the device.
  std::string asOnDevice(const std::string& text) const;

  // The line of a finding on the device, by the engine's path, line and method; with its line feed.
  std::string findingLine(const std::string& path, int line, const std::string& method) const;

 private:
  std::string root_;
  std::map<std::string, std::string> shownAs_;
};

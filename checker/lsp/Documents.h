#pragma once

#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "checker/run/ApplicationFiles.h"

// The texts that an editor has open.

// The path that a "file:" URI names, without "." and ".." in it; none of another, or if it is not absolute.
std::optional<std::string> pathOfUri(const std::string& uri);

class Documents {
 public:
  static constexpr std::size_t kMost = std::size_t{64} << 20;  // bytes of all texts together

  // Each gives whether it was done: not if the texts would become too large, and `change` not for what is not open.
  bool open(const std::string& path, const std::string& uri, std::string text);
  bool change(const std::string& path, const nlohmann::json& changes);  // as textDocument/didChange has them
  void close(const std::string& path);

  // Null if it is not open.
  const std::string* text(const std::string& path) const;

  // The URI by which the editor names a file.
  std::string uriOf(const std::string& path) const;

  // Those of the application at `path`, or the one that is the application itself.
  UnsavedTexts within(const std::string& path) const;

 private:
  struct Document {
    std::string uri;
    std::string text;
  };
  std::map<std::string, Document> documents_;
  std::size_t total_ = 0;
};

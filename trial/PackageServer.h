#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "trial/Trial.h"

namespace trial {

// Several worlds, because pages go different ways in them.
enum class World {
  unreachable,  // no network: whatever is not in the package fails
  made,         // everything answers, with texts that carry the mark
  plausible,    // so, too; what the answers hold fits to what scripts compare with it, and plug-ins answer numbers
};

// An answer to a request of a page.
struct Response {
  bool isServed = false;  // else the request fails as if nothing were there
  int status = 200;
  std::vector<std::pair<std::string, std::string>> headers;
  std::string body;
};

// The files of an application under an address that exists nowhere else. Answers from memory; there is nothing that a
// request could reach besides.
class PackageServer {
 public:
  // `input` outlives it. `mark` is the text that made up answers consist of.
  PackageServer(const Input& input, std::string mark);

  // The address of a file.
  std::string urlOf(const std::string& path) const;

  // The file that an address means; null if none. Queries and fragments are passed over; a folder means its
  // index.html; an absolute path also counts from the folders that the start pages are in.
  const File* fileOf(const std::string& url) const;

  // `type` is the protocol's resource type: "Document", "Script", "XHR" ...
  Response answer(const std::string& url, const std::string& method, const std::string& type, World world) const;

 private:
  std::map<std::string, const File*> files_;
  std::vector<std::string> roots_;
  std::string mark_;
};

// "%41b" is "Ab"; what is no escape stays.
std::string percentDecoded(const std::string& text);

// By the suffix of the path.
std::string contentTypeOf(const std::string& path);

// Whether it is a page, by its suffix.
bool isPage(const std::string& path);

}  // namespace trial

// Answers requests from the files in memory, by the rules that pages rely on: folders have an index, types go by
// suffix, unknown addresses fail or are made up, as the world has it.
// Test: tests/trial/PackageServer_test.cpp.

#include "trial/PackageServer.h"

#include <algorithm>
#include <cctype>
#include <string_view>

namespace trial {

namespace {

// Reserved: no name server knows it.
// One pixel.
constexpr char kImage[] = {'G', 'I',    'F',    '8',    '9', 'a',    1, 0, 1, 0,   '\x80', 0, 0,   0, 0,
                           0,   '\xff', '\xff', '\xff', '!', '\xf9', 4, 1, 0, 0,   0,      0, ',', 0, 0,
                           0,   0,      1,      0,      1,   0,      0, 2, 2, 'D', 1,      0, ';'};
constexpr std::string_view kOrigin = "http://application.invalid";

struct Suffix {
  const char* suffix;
  const char* type;
};

// No charset for pages and scripts: they say it themselves, or are read as on a device.
constexpr Suffix kSuffixes[] = {
    {"html", "text/html"},        {"htm", "text/html"},       {"xhtml", "application/xhtml+xml"},
    {"js", "text/javascript"},    {"mjs", "text/javascript"}, {"css", "text/css"},
    {"json", "application/json"}, {"xml", "text/xml"},        {"svg", "image/svg+xml"},
    {"png", "image/png"},         {"jpg", "image/jpeg"},      {"jpeg", "image/jpeg"},
    {"gif", "image/gif"},         {"webp", "image/webp"},     {"txt", "text/plain"},
    {"wasm", "application/wasm"},
};

int digitOf(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

std::string suffixOf(const std::string& path) {
  const std::size_t dot = path.rfind('.');
  std::string suffix = dot == std::string::npos ? "" : path.substr(dot + 1);
  std::transform(suffix.begin(), suffix.end(), suffix.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return suffix;
}

// "?callback=show" of a script that is fetched as data; empty if it names none.
std::string callbackOf(const std::string& url) {
  for (const char* name : {"callback=", "jsonp=", "cb=", "jsoncallback="}) {
    const std::size_t at = url.find(name);
    if (at == std::string::npos || at == 0 || (url[at - 1] != '?' && url[at - 1] != '&')) continue;
    const std::size_t begin = url.find('=', at) + 1;
    const std::size_t end = std::min(url.find_first_of("&#", begin), url.size());
    std::string callback = url.substr(begin, end - begin);
    const bool isName = std::all_of(callback.begin(), callback.end(), [](unsigned char c) {
      return std::isalnum(c) != 0 || c == '_' || c == '$' || c == '.';
    });
    if (isName) return callback;
  }
  return {};
}

Response served(std::string type, std::string body) {
  Response response;
  response.isServed = true;
  response.headers = {{"Content-Type", std::move(type)}, {"Cache-Control", "no-store"}};
  response.body = std::move(body);
  return response;
}

void allowAll(Response& response) {
  response.headers.insert(response.headers.end(), {{"Access-Control-Allow-Origin", std::string(kOrigin)},
                                                   {"Access-Control-Allow-Credentials", "true"},
                                                   {"Access-Control-Allow-Headers", "*"},
                                                   {"Access-Control-Allow-Methods", "*"}});
}

}  // namespace

std::string percentDecoded(const std::string& text) {
  std::string decoded;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isEscape =
        text[i] == '%' && i + 2 < text.size() && digitOf(text[i + 1]) >= 0 && digitOf(text[i + 2]) >= 0;
    if (isEscape) {
      decoded += static_cast<char>(digitOf(text[i + 1]) * 16 + digitOf(text[i + 2]));
      i += 2;
    } else {
      decoded += text[i];
    }
  }
  return decoded;
}

std::string contentTypeOf(const std::string& path) {
  const std::string suffix = suffixOf(path);
  for (const Suffix& row : kSuffixes)
    if (suffix == row.suffix) return row.type;
  return "application/octet-stream";
}

bool isPage(const std::string& path) {
  const std::string suffix = suffixOf(path);
  return suffix == "html" || suffix == "htm" || suffix == "xhtml";
}

PackageServer::PackageServer(const Input& input, std::string mark) : mark_(std::move(mark)) {
  for (const File& file : input.files)
    files_.emplace(file.path, &file);
  for (const std::string& page : input.startPages) {
    for (std::size_t slash = page.rfind('/'); slash != std::string::npos && slash > 0;
         slash = page.rfind('/', slash - 1))
      roots_.push_back(page.substr(0, slash + 1));
  }
}

std::string PackageServer::urlOf(const std::string& path) const {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string url = std::string(kOrigin) + '/';
  for (const char c : path) {
    const auto byte = static_cast<unsigned char>(c);
    if (std::isalnum(byte) != 0 || std::string_view("-_.~/!").find(c) != std::string_view::npos) {
      url += c;
    } else {
      url += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    }
  }
  return url;
}

const File* PackageServer::fileOf(const std::string& url) const {
  if (url.compare(0, kOrigin.size(), kOrigin) != 0 || url.size() == kOrigin.size() || url[kOrigin.size()] != '/')
    return nullptr;
  const std::size_t begin = kOrigin.size() + 1;
  const std::size_t end = std::min(url.find_first_of("?#", begin), url.size());
  std::string path = percentDecoded(url.substr(begin, end - begin));
  if (path.empty() || path.back() == '/') path += "index.html";
  const auto direct = files_.find(path);
  if (direct != files_.end()) return direct->second;
  for (const std::string& root : roots_) {
    const auto found = files_.find(root + path);
    if (found != files_.end()) return found->second;
  }
  return nullptr;
}

Response PackageServer::answer(const std::string& url, const std::string& method, const std::string& type,
                               World world) const {
  if (const File* file = fileOf(url)) {
    Response response = served(contentTypeOf(file->path), file->bytes);
    std::string& contentType = response.headers.front().second;
    if (type == "Script") contentType = "text/javascript";
    // A page of another suffix, as a server would have made it.
    if (type == "Document" && contentType == "application/octet-stream") contentType = "text/html";
    allowAll(response);
    return response;
  }
  const bool isData = type == "XHR" || type == "Fetch";
  const bool isOurs = url.compare(0, kOrigin.size(), kOrigin) == 0;
  Response response;
  if (world == World::unreachable || (isOurs && !isData)) {
    if (!isOurs) return response;
    response = served("text/plain", "");
    response.status = 404;
    return response;
  }
  response = served("text/plain", "");
  if (method != "OPTIONS") {
    if (type == "Script") {
      const std::string callback = callbackOf(url);
      response = served("text/javascript", callback.empty() ? "" : callback + "(\"" + mark_ + "\");");
    } else if (isData) {
      response = served("application/json", '"' + mark_ + '"');
    } else if (type == "Document") {
      response = served("text/html", "");
    } else if (type == "Image") {
      response = served("image/gif", std::string(std::begin(kImage), std::end(kImage)));
    }
  }
  allowAll(response);
  return response;
}

}  // namespace trial

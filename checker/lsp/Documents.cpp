// Test: tests/checker/Lsp_test.cpp.

#include "checker/lsp/Documents.h"

#include <algorithm>
#include <filesystem>

#include "checker/lsp/TextPosition.h"
#include "checker/report/Characters.h"

namespace {

int digitOf(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  const char small = static_cast<char>(c | 0x20);
  return small >= 'a' && small <= 'f' ? small - 'a' + 10 : -1;
}

TextPosition positionIn(const nlohmann::json& json) {
  return {json.at("line").get<int>(), json.at("character").get<int>()};
}

}  // namespace

std::optional<std::string> pathOfUri(const std::string& uri) {
  constexpr std::string_view kScheme = "file://";
  if (uri.compare(0, kScheme.size(), kScheme) != 0) return std::nullopt;
  std::string path;
  for (std::size_t i = std::min(uri.find('/', kScheme.size()), uri.size()); i < uri.size(); ++i) {
    const int high = uri[i] == '%' && i + 2 < uri.size() ? digitOf(uri[i + 1]) : -1;
    const int low = high < 0 ? -1 : digitOf(uri[i + 2]);
    path += low < 0 ? uri[i] : static_cast<char>(high * 16 + low);
    if (low >= 0) i += 2;
  }
  if (path.empty() || path.find('\0') != std::string::npos) return std::nullopt;
  path = std::filesystem::path(path).lexically_normal().string();
  while (path.size() > 1 && path.back() == '/')
    path.pop_back();
  return path;
}

bool Documents::open(const std::string& path, const std::string& uri, std::string text) {
  close(path);
  if (total_ + text.size() > kMost) return false;
  total_ += text.size();
  documents_[path] = {uri, std::move(text)};
  return true;
}

bool Documents::change(const std::string& path, const nlohmann::json& changes) {
  const auto found = documents_.find(path);
  if (found == documents_.end()) return false;
  std::string text = found->second.text;
  for (const nlohmann::json& change : changes) {
    const auto& added = change.at("text").get_ref<const std::string&>();
    if (!change.contains("range") || change["range"].is_null()) {
      text = added;
    } else {
      const std::size_t begin = offsetOf(text, positionIn(change["range"].at("start")));
      const std::size_t end = std::max(begin, offsetOf(text, positionIn(change["range"].at("end"))));
      text.replace(begin, end - begin, added);
    }
    if (total_ - found->second.text.size() + text.size() > kMost) return false;
  }
  return open(path, std::string(found->second.uri), std::move(text));
}

void Documents::close(const std::string& path) {
  const auto found = documents_.find(path);
  if (found == documents_.end()) return;
  total_ -= found->second.text.size();
  documents_.erase(found);
}

const std::string* Documents::text(const std::string& path) const {
  const auto found = documents_.find(path);
  return found == documents_.end() ? nullptr : &found->second.text;
}

std::string Documents::uriOf(const std::string& path) const {
  const auto found = documents_.find(path);
  return found == documents_.end() ? ::uriOf(path) : found->second.uri;
}

UnsavedTexts Documents::within(const std::string& path) const {
  UnsavedTexts texts;
  const std::string folder = path == "/" ? path : path + '/';
  for (const auto& [name, document] : documents_)
    if (name == path || name.compare(0, folder.size(), folder) == 0) texts[name] = document.text;
  return texts;
}

// Texts of a report on their way into JSON and back. What stands in `raw` must give the text beside it, so that nobody
// reads in a report what a program does not take from it. Test: tests/checker/Formats_test.cpp.

#include "checker/report/JsonText.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include "checker/report/Characters.h"
#include "store/Content.h"

using Json = nlohmann::ordered_json;

namespace {

constexpr const char* kRaw = "raw";
constexpr const char* kMarks[] = {"mark", "markLength"};

// An excerpt: its text has a mark.
bool isMarked(const Json& json) {
  return json.is_object() && json.contains(kMarks[0]);
}

void makeMarkedText(Json& json) {
  const std::string text = json.at("text");
  const std::size_t mark = json.at(kMarks[0]);
  const std::size_t end = mark + json.at(kMarks[1]).get<std::size_t>();
  const std::string whole = utf8(text);
  const std::size_t newMark = std::min(utf8(text.substr(0, mark)).size(), whole.size());
  const std::size_t newEnd = std::clamp(utf8(text.substr(0, end)).size(), newMark, whole.size());
  json["text"] = whole;
  json[kMarks[0]] = newMark;
  json[kMarks[1]] = newEnd - newMark;
}

// What `makeText` takes away from the texts of `json` itself; null if it takes nothing.
Json rawOf(const Json& json) {
  Json raw;
  for (const auto& [name, value] : json.items()) {
    if (!value.is_string()) continue;
    const auto& bytes = value.get_ref<const std::string&>();
    if (utf8(bytes) != bytes) raw[name] = store::hexOf(bytes);
  }
  if (raw.is_null() || !isMarked(json)) return raw;
  for (const char* mark : kMarks)
    raw[mark] = json.at(mark);
  return raw;
}

void makeText(Json& json, bool keepsRaw) {
  if (json.is_string()) {
    json = utf8(json.get_ref<const std::string&>());
    return;
  }
  const Json raw = keepsRaw && json.is_object() ? rawOf(json) : Json();
  if (isMarked(json)) {
    makeMarkedText(json);
  } else if (json.is_structured()) {
    for (Json& item : json)
      makeText(item, keepsRaw);
  }
  if (!raw.is_null()) json[kRaw] = raw;
}

// The bytes that `raw` has for the text called `name`.
std::string bytesOf(const Json& json, const std::string& name, const Json& raw) {
  std::string bytes = store::bytesOfHex(raw.get<std::string>());
  if (utf8(bytes) != json.at(name)) throw std::invalid_argument("the field 'raw' does not fit '" + name + "'");
  return bytes;
}

void takeRawOf(Json& json) {
  const Json raw = json.at(kRaw);
  const Json text = json;
  json.erase(kRaw);
  for (const auto& [name, value] : raw.items()) {
    const bool isMark = value.is_number_unsigned() && (name == kMarks[0] || name == kMarks[1]);
    json.at(name) = isMark ? value : Json(bytesOf(text, name, value));
  }
  if (!isMarked(json)) return;
  Json again = json;
  makeMarkedText(again);
  for (const char* mark : kMarks) {
    if (again.at(mark) != text.at(mark)) throw std::invalid_argument("the field 'raw' does not fit the mark");
  }
}

}  // namespace

void makeText(Json& json) {
  makeText(json, false);
}

void makeTextAndRaw(Json& json) {
  makeText(json, true);
}

void takeRaw(Json& json) {
  if (json.is_structured()) {
    for (Json& item : json)
      takeRaw(item);
  }
  if (json.is_object() && json.contains(kRaw)) takeRawOf(json);
}

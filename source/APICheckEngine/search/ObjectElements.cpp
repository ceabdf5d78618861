// Object elements: a text is gone through tag by tag. A tag that holds both the start and the end of an element is one
// alone, whatever was open before it. Test: tests/APICheckEngine/ObjectDiscovery_test.cpp.

#include "APICheckEngine/search/ObjectElements.h"

namespace FlashEngine_1_00::detail {
namespace {

// "<object id='tv'>", "< n; }\n if (m >".
constexpr const char* kTag = "<.*>";
// "<OBJECT"; not "< object".
constexpr const char* kObjectStart = "<[Oo][Bb][Jj][Ee][Cc][Tt]";
// "</object>"; not "object >".
constexpr const char* kObjectEnd = "[Oo][Bb][Jj][Ee][Cc][Tt]>";
// `id="tv"`, `pid = "a b"`; not `classid="clsid:X"`.
constexpr const char* kDoubleQuotedId = R"(id\s*=\s*"[\w\s\_]*")";
// `id='tv'`; not `id='tv-1'`.
constexpr const char* kSingleQuotedId = R"(id\s*=\s*'[\w\s\_]*')";

}  // namespace

ObjectTags::ObjectTags() : tag_(kTag), start_(kObjectStart), end_(kObjectEnd) {}

bool ObjectElements::next() {
  bool inside = false;
  element_.clear();
  while (at_.next()) {
    const std::string tag = at_.match();
    const bool starts = tags_.starts(tag);
    const bool ends = tags_.ends(tag);
    if (!starts && !inside) continue;
    if (starts && ends) element_.clear();
    element_ += tag;
    inside = true;
    if (ends) return true;
  }
  return false;
}

IdAttributes::IdAttributes() : attributes_{Pattern(kDoubleQuotedId), Pattern(kSingleQuotedId)} {}

std::string IdAttributes::idOf(const std::string& element) const {
  std::string match;
  int matches = 0;
  for (const Pattern& attribute : attributes_) {
    for (MatchCursor at(attribute, element.c_str()); at.next(); ++matches)
      match = at.match();
  }
  if (matches != 1) return kNoId;
  const std::size_t first = match.find_first_of("\"'");
  return match.substr(first + 1, match.find_last_of("\"'") - first - 1);
}

}  // namespace FlashEngine_1_00::detail

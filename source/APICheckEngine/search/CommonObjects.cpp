// Common objects near a name.
//
// The plain search looks at the 50 bytes from every occurrence of the name on. Names are frequent, common objects are
// rare: those of a source are looked for once. From one object to the next, only the occurrences are looked for that
// are near enough: the first one not before the place 50 bytes before the object's end. If it is not behind the
// object's begin it is a hit, since the object is whole and ends within the 50 bytes; all earlier ones are too far from
// this object, and from those behind it. Test:
// tests/APICheckEngine/Search_test.cpp, against the plain search.

#include "APICheckEngine/search/CommonObjects.h"

#include <algorithm>

namespace FlashEngine_1_00::detail {
namespace {

constexpr std::string_view kCommonObjects[] = {"Common.API.Plugin", "Common.API.Widget", "Common.API.TVKeyValue"};
constexpr std::ptrdiff_t kCommonWindow = 50;

const char* endOf(std::string_view object) {
  return object.data() + object.size();
}

const char* find(std::string_view name, const char* from, const char* to, std::string_view source, TextIndex* index) {
  const auto begin = static_cast<std::size_t>(from - source.data());
  const auto end = static_cast<std::size_t>(to - source.data());
  const std::size_t place = index != nullptr ? index->find(name, begin, end) : source.substr(0, end).find(name, begin);
  return place == std::string_view::npos ? nullptr : source.data() + place;
}

std::vector<std::string_view> objectsIn(std::string_view source) {
  std::vector<std::string_view> objects;
  for (const std::string_view object : kCommonObjects) {
    for (std::size_t at = source.find(object); at != std::string::npos; at = source.find(object, at + 1))
      objects.push_back(source.substr(at, object.size()));
  }
  std::sort(objects.begin(), objects.end(), [](auto a, auto b) { return a.data() < b.data(); });
  return objects;
}

}  // namespace

bool CommonObjects::follow(std::string_view name, std::string_view text, std::string_view source, TextIndex* index) {
  const auto [known, isNew] = objects_.try_emplace(source.data());
  if (isNew) known->second = objectsIn(source);
  const std::vector<std::string_view>& objects = known->second;
  const char* const end = text.data() + text.size();
  auto next = objects.begin();
  const auto skipTo = [&](const char* at) {
    next = std::partition_point(next, objects.end(), [&](std::string_view object) { return object.data() < at; });
    return next != objects.end() && endOf(*next) <= end;
  };
  for (const char* at = text.data(); skipTo(at); ++at) {
    at = std::max(at, endOf(*next) - std::min<std::ptrdiff_t>(kCommonWindow, endOf(*next) - at));
    at = find(name, at, end, source, index);
    if (at == nullptr || !skipTo(at)) return false;
    if (endOf(*next) - at <= kCommonWindow) return true;
  }
  return false;
}

}  // namespace FlashEngine_1_00::detail

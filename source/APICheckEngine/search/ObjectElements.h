#pragma once

#include <string>

#include "regex/Pattern.h"

// Object elements in a text, and their ids.

namespace FlashEngine_1_00::detail {

inline constexpr const char* kNoId = "_NO_CLASSID_FOUND_";

// Tells tags, and those of object elements.
class ObjectTags {
 public:
  ObjectTags();

  const Pattern& tag() const { return tag_; }

  bool starts(const std::string& tag) const { return start_.matchesIn(tag.c_str()); }  // holds "<object", in any case
  bool ends(const std::string& tag) const { return end_.matchesIn(tag.c_str()); }      // holds "object>"

 private:
  Pattern tag_;
  Pattern start_;
  Pattern end_;
};

// The complete object elements of a zero-terminated text, in order. Text and tags must outlive this.
class ObjectElements {
 public:
  ObjectElements(const char* text, const ObjectTags& tags) : tags_(tags), at_(tags.tag(), text) {}

  bool next();

  // The tags of the element, from the one that starts it through the one that ends it, without what is between them.
  const std::string& element() const { return element_; }

 private:
  const ObjectTags& tags_;
  MatchCursor at_;
  std::string element_;
};

// Tells the ids of elements.
class IdAttributes {
 public:
  IdAttributes();

  // The value of the only attribute of `element` whose name ends in "id" and whose value, in quotes, is made of word
  // bytes and white space; kNoId if there is none or more than one.
  std::string idOf(const std::string& element) const;

 private:
  Pattern attributes_[2];
};

}  // namespace FlashEngine_1_00::detail

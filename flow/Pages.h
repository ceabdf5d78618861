#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// Pages: a page as a flat list of elements.

namespace flow {

struct PageAttribute {
  std::string name;
  std::string value;
  std::uint32_t begin = 0;  // of the value in the text
  bool isExact = false;     // the value stands there as it is
};

struct PageElement {
  std::string tag;  // lower case
  std::uint32_t parent = 0xFFFFFFFF;
  std::uint32_t begin = 0;
  std::vector<PageAttribute> attributes;
  std::vector<std::uint32_t> children;
  std::string text;  // of scripts, styles, and of elements with nothing but text
  std::uint32_t textBegin = 0;
  bool isTextExact = true;

  const PageAttribute* attribute(std::string_view name) const;
  std::string valueOf(std::string_view name) const;
};

struct PageComment {
  std::uint32_t begin = 0;  // of the text in it
  std::string text;
};

struct Page {
  std::uint32_t file = 0;
  std::vector<PageElement> elements;  // in the order of the text
  std::vector<PageComment> comments;
  std::string gap;  // why it could not be read; empty if it was
};

// The page of `text`, or of a part of one.
Page parsePage(std::string_view text);

// Whether a text looks like a page, whatever it is called.
bool looksLikePage(std::string_view path, std::string_view text);

// The text of a file as UTF-8, with the encoding that a browser finds, and blanks in place of a byte order mark;
// nothing if that is what its bytes are.
std::optional<std::string> decode(std::string_view bytes);

// `target` as a path within the application, seen from `from`; empty where it is elsewhere.
std::string resolvePath(std::string_view from, std::string_view target);

// Whether a URL leads out of the application.
bool isRemote(std::string_view url);

// The content of a data: URL; empty if it is none of text.
std::string decodeDataUrl(std::string_view url);
std::string decodePercent(std::string_view text);

}  // namespace flow

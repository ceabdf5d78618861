// Pages: gumbo's tree as a flat list, behind caps: it takes quadratic time for nesting and for attributes.
// Test: tests/flow/Analysis_test.cpp.

#include "flow/Pages.h"

#include <gumbo.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <memory>

namespace flow {
namespace {

constexpr std::size_t kMaxNesting = 1000;
constexpr std::size_t kMaxAttributes = 400;  // of one element
constexpr std::size_t kMaxElements = 100'000;

char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string lowered(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), lower);
  return result;
}

// Elements that need no end, or that the next one ends.
bool isNeverDeep(const std::string& tag) {
  static const char* const kTags[] = {"area",   "base", "br",   "col",  "dd",     "dt",    "embed", "hr",    "img",
                                      "input",  "li",   "link", "meta", "option", "p",     "param", "rp",    "rt",
                                      "source", "td",   "th",   "tr",   "tbody",  "track", "wbr",   "thead", "tfoot"};
  return std::any_of(std::begin(kTags), std::end(kTags), [&](const char* other) { return tag == other; });
}

// What makes the text too much for the parser; empty if nothing does.
std::string excessOf(std::string_view text) {
  std::size_t depth = 0;
  std::size_t elements = 0;
  for (std::size_t i = 0; i + 1 < text.size(); ++i) {
    if (text[i] != '<') continue;
    const bool isEnd = text[i + 1] == '/';
    std::size_t at = i + (isEnd ? 2 : 1);
    std::string tag;
    while (at < text.size() && std::isalnum(static_cast<unsigned char>(text[at])) && tag.size() < 20)
      tag += lower(text[at++]);
    if (tag.empty()) continue;
    if (isEnd) {
      if (depth > 0 && !isNeverDeep(tag)) --depth;
      continue;
    }
    std::size_t attributes = 0;
    for (; at < text.size() && text[at] != '>'; ++at) {
      if (text[at] == '"' || text[at] == '\'') {
        const std::size_t end = text.find(text[at], at + 1);
        if (end == std::string_view::npos) break;
        at = end;
      } else if (text[at] == '/' || static_cast<unsigned char>(text[at]) <= ' ') {
        ++attributes;
      }
      if (attributes > kMaxAttributes * 8) return "an element has too many attributes";
    }
    if (++elements > kMaxElements) return "it has too many elements";
    if (tag == "script" || tag == "style") {
      const std::size_t end = text.find("</", at);
      i = end == std::string_view::npos ? text.size() : end - 1;
      if (tag == "script") {
        std::size_t close = at;
        while ((close = text.find("</", close)) != std::string_view::npos &&
               lowered(text.substr(close + 2, 6)) != "script")
          ++close;
        i = close == std::string_view::npos ? text.size() : close - 1;
      }
      continue;
    }
    const bool isClosed = at > 0 && at < text.size() && text[at - 1] == '/';
    if (!isNeverDeep(tag) && !isClosed && ++depth > kMaxNesting) return "its elements are nested too deeply";
    i = std::min(at, text.size()) - 1;
    if (i < at && at < text.size()) i = at;
  }
  return {};
}

class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}

  void run(const GumboNode* root, Page& page) {
    struct Item {
      const GumboNode* node;
      std::uint32_t parent;
    };
    std::vector<Item> open{{root, 0xFFFFFFFF}};
    while (!open.empty()) {
      const Item item = open.back();
      open.pop_back();
      const bool isTemplate = item.node->type == GUMBO_NODE_TEMPLATE;
      const GumboVector* children = nullptr;
      std::uint32_t self = item.parent;
      if (item.node->type == GUMBO_NODE_ELEMENT || isTemplate) {
        // Where scripts run, what stands in for them is text.
        if (item.node->v.element.tag == GUMBO_TAG_NOSCRIPT) continue;
        self = take(item.node->v.element, item.parent, page);
        children = &item.node->v.element.children;
      } else if (item.node->type == GUMBO_NODE_DOCUMENT) {
        children = &item.node->v.document.children;
      } else if (item.node->type == GUMBO_NODE_COMMENT) {
        const GumboText& text = item.node->v.text;
        const std::size_t begin = text.original_text.data ? offsetOf(text.original_text.data) + 4 : 0;
        page.comments.push_back({static_cast<std::uint32_t>(begin), text.text});
      }
      if (!children) continue;
      for (unsigned i = children->length; i-- > 0;)
        open.push_back({static_cast<const GumboNode*>(children->data[i]), self});
    }
  }

 private:
  std::uint32_t offsetOf(const char* at) const {
    const bool isInside = at >= text_.data() && at <= text_.data() + text_.size();
    return isInside ? static_cast<std::uint32_t>(at - text_.data()) : 0;
  }

  std::uint32_t take(const GumboElement& element, std::uint32_t parent, Page& page) {
    const auto index = static_cast<std::uint32_t>(page.elements.size());
    page.elements.emplace_back();
    PageElement& made = page.elements.back();
    made.parent = parent;
    if (element.tag != GUMBO_TAG_UNKNOWN) {
      made.tag = lowered(gumbo_normalized_tagname(element.tag));
    } else {
      GumboStringPiece name = element.original_tag;
      gumbo_tag_from_original_text(&name);
      made.tag = lowered(std::string_view(name.data ? name.data : "", name.data ? name.length : 0));
    }
    if (element.original_tag.data) made.begin = offsetOf(element.original_tag.data);
    for (unsigned i = 0; i < element.attributes.length && i < kMaxAttributes; ++i)
      take(*static_cast<const GumboAttribute*>(element.attributes.data[i]), made);
    takeText(element, made);
    if (parent != 0xFFFFFFFF) page.elements[parent].children.push_back(index);
    return index;
  }

  void take(const GumboAttribute& attribute, PageElement& element) const {
    PageAttribute made;
    made.name = lowered(attribute.name);
    made.value = attribute.value;
    std::string_view original(attribute.original_value.data ? attribute.original_value.data : "",
                              attribute.original_value.data ? attribute.original_value.length : 0);
    if (original.size() >= 2 && (original[0] == '"' || original[0] == '\''))
      original = original.substr(1, original.size() - 2);
    made.begin = attribute.original_value.data ? offsetOf(original.data()) : element.begin;
    made.isExact = original == made.value;
    element.attributes.push_back(std::move(made));
  }

  void takeText(const GumboElement& element, PageElement& made) const {
    bool isFirst = true;
    for (unsigned i = 0; i < element.children.length; ++i) {
      const auto* child = static_cast<const GumboNode*>(element.children.data[i]);
      if (child->type != GUMBO_NODE_TEXT && child->type != GUMBO_NODE_WHITESPACE && child->type != GUMBO_NODE_CDATA)
        continue;
      const GumboText& text = child->v.text;
      if (isFirst && text.original_text.data) {
        made.textBegin = offsetOf(text.original_text.data);
        made.isTextExact = text_.substr(made.textBegin, std::strlen(text.text)) == text.text;
        isFirst = false;
      }
      made.text += text.text;
    }
  }

  std::string_view text_;
};

}  // namespace

const PageAttribute* PageElement::attribute(std::string_view name) const {
  for (const PageAttribute& attribute : attributes)
    if (attribute.name == name) return &attribute;
  return nullptr;
}

std::string PageElement::valueOf(std::string_view name) const {
  const PageAttribute* found = attribute(name);
  return found ? found->value : std::string();
}

Page parsePage(std::string_view text) {
  Page page;
  page.gap = excessOf(text);
  if (!page.gap.empty()) return page;
  GumboOptions options = kGumboDefaultOptions;
  options.max_errors = 0;
  GumboOutput* output = gumbo_parse_with_options(&options, text.data(), text.size());
  if (!output) {
    page.gap = "it could not be parsed";
    return page;
  }
  Reader(text).run(output->document, page);
  gumbo_destroy_output(&options, output);
  return page;
}

bool looksLikePage(std::string_view path, std::string_view text) {
  const std::size_t dot = path.rfind('.');
  const std::string extension = dot == std::string_view::npos ? "" : lowered(path.substr(dot + 1));
  static const char* const kPages[] = {"html", "htm", "xhtml", "xht", "php", "svg", "asp", "aspx", "jsp", "shtml"};
  if (std::any_of(std::begin(kPages), std::end(kPages), [&](const char* other) { return extension == other; }))
    return true;
  if (extension == "js" || extension == "mjs" || extension == "css" || extension == "json") return false;
  std::size_t begin = 0;
  while (begin < text.size() && static_cast<unsigned char>(text[begin]) <= ' ')
    ++begin;
  const std::string head = lowered(text.substr(begin, 300));
  return head.compare(0, 14, "<!doctype html") == 0 || head.compare(0, 5, "<html") == 0 ||
         head.compare(0, 5, "<head") == 0 || head.compare(0, 5, "<body") == 0 ||
         (head.compare(0, 5, "<?xml") == 0 && head.find("<html") != std::string::npos) ||
         (head.compare(0, 4, "<!--") == 0 && lowered(text.substr(0, 4000)).find("<html") != std::string::npos);
}

namespace {

void appendUtf8(std::uint32_t point, std::string& text) {
  if (point < 0x80) {
    text += static_cast<char>(point);
  } else if (point < 0x800) {
    text += static_cast<char>(0xC0 | (point >> 6));
    text += static_cast<char>(0x80 | (point & 0x3F));
  } else if (point < 0x10000) {
    text += static_cast<char>(0xE0 | (point >> 12));
    text += static_cast<char>(0x80 | ((point >> 6) & 0x3F));
    text += static_cast<char>(0x80 | (point & 0x3F));
  } else {
    text += static_cast<char>(0xF0 | (point >> 18));
    text += static_cast<char>(0x80 | ((point >> 12) & 0x3F));
    text += static_cast<char>(0x80 | ((point >> 6) & 0x3F));
    text += static_cast<char>(0x80 | (point & 0x3F));
  }
}

std::string fromUtf16(std::string_view bytes, std::size_t begin, bool isBig) {
  std::string text;
  const auto unit = [&](std::size_t at) {
    const auto first = static_cast<unsigned char>(bytes[at]);
    const auto second = static_cast<unsigned char>(bytes[at + 1]);
    return static_cast<std::uint32_t>(isBig ? first << 8 | second : second << 8 | first);
  };
  for (std::size_t at = begin; at + 1 < bytes.size(); at += 2) {
    std::uint32_t point = unit(at);
    if (point >= 0xD800 && point < 0xDC00 && at + 3 < bytes.size()) {
      const std::uint32_t low = unit(at + 2);
      if (low >= 0xDC00 && low < 0xE000) {
        point = 0x10000 + ((point - 0xD800) << 10) + (low - 0xDC00);
        at += 2;
      }
    }
    appendUtf8(point, text);
  }
  return text;
}

bool isUtf8(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if (byte < 0x80) continue;
    const std::size_t more = byte >= 0xF0 && byte < 0xF8   ? 3
                             : byte >= 0xE0 && byte < 0xF0 ? 2
                             : byte >= 0xC2 && byte < 0xE0 ? 1
                                                           : 0;
    if (more == 0 || i + more >= text.size() + 0) return false;
    for (std::size_t k = 1; k <= more; ++k)
      if ((static_cast<unsigned char>(text[i + k]) & 0xC0) != 0x80) return false;
    i += more;
  }
  return true;
}

}  // namespace

std::optional<std::string> decode(std::string_view bytes) {
  const auto byte = [&](std::size_t at) { return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 256; };
  if (byte(0) == 0xFF && byte(1) == 0xFE) return fromUtf16(bytes, 2, false);
  if (byte(0) == 0xFE && byte(1) == 0xFF) return fromUtf16(bytes, 2, true);
  if (byte(0) == '<' && byte(1) == 0 && byte(3) == 0) return fromUtf16(bytes, 0, false);
  // Three blanks keep all offsets.
  if (byte(0) == 0xEF && byte(1) == 0xBB && byte(2) == 0xBF) return std::string(bytes).replace(0, 3, "   ");
  if (isUtf8(bytes)) return std::nullopt;
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 8);
  for (const char c : bytes)
    appendUtf8(static_cast<unsigned char>(c), text);
  return text;
}

bool isRemote(std::string_view url) {
  const std::string head = lowered(url.substr(0, 8));
  return head.compare(0, 2, "//") == 0 || head.compare(0, 5, "http:") == 0 || head.compare(0, 6, "https:") == 0 ||
         head.compare(0, 4, "ftp:") == 0;
}

std::string decodePercent(std::string_view text) {
  std::string result;
  const auto digit = [](char c) {
    return c >= '0' && c <= '9' ? c - '0' : lower(c) >= 'a' && lower(c) <= 'f' ? lower(c) - 'a' + 10 : -1;
  };
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%' && i + 2 < text.size() && digit(text[i + 1]) >= 0 && digit(text[i + 2]) >= 0) {
      result += static_cast<char>(digit(text[i + 1]) * 16 + digit(text[i + 2]));
      i += 2;
    } else {
      result += text[i];
    }
  }
  return result;
}

std::string resolvePath(std::string_view from, std::string_view target) {
  std::size_t begin = 0;
  while (begin < target.size() && static_cast<unsigned char>(target[begin]) <= ' ')
    ++begin;
  target = target.substr(begin);
  target = target.substr(0, target.find_first_of("?#"));
  while (!target.empty() && static_cast<unsigned char>(target.back()) <= ' ')
    target.remove_suffix(1);
  if (target.empty() || isRemote(target)) return {};
  const std::size_t colon = target.find(':');
  if (colon != std::string_view::npos && colon < target.find('/')) return {};
  const std::string decoded = decodePercent(target);
  std::vector<std::string> parts;
  const auto addParts = [&](std::string_view path) {
    while (true) {
      const std::size_t slash = path.find('/');
      const std::string_view part = path.substr(0, slash);
      if (part == "..") {
        if (!parts.empty()) parts.pop_back();
      } else if (!part.empty() && part != ".") {
        parts.emplace_back(part);
      }
      if (slash == std::string_view::npos) break;
      path.remove_prefix(slash + 1);
    }
  };
  if (decoded[0] != '/') {
    const std::size_t slash = from.rfind('/');
    if (slash != std::string_view::npos) addParts(from.substr(0, slash));
  }
  addParts(decoded);
  std::string path;
  for (const std::string& part : parts)
    path += (path.empty() ? "" : "/") + part;
  return path;
}

std::string decodeDataUrl(std::string_view url) {
  if (lowered(url.substr(0, 5)) != "data:") return {};
  const std::size_t comma = url.find(',');
  if (comma == std::string_view::npos) return {};
  const std::string head = lowered(url.substr(0, comma));
  std::string body = decodePercent(url.substr(comma + 1));
  if (head.size() < 7 || head.compare(head.size() - 7, 7, ";base64") != 0) return body;
  std::string result;
  std::uint32_t bits = 0;
  int count = 0;
  for (const char c : body) {
    const char* digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const char* found = c ? std::strchr(digits, c) : nullptr;
    if (!found) continue;
    bits = bits << 6 | static_cast<std::uint32_t>(found - digits);
    count += 6;
    if (count >= 8) {
      count -= 8;
      result += static_cast<char>(bits >> count & 0xFF);
    }
  }
  return result;
}

}  // namespace flow

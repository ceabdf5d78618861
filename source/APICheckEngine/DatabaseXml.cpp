// Test: tests/APICheckEngine/Database_test.cpp.

#include "APICheckEngine/DatabaseXml.h"

#include <tinyxml.h>

#include <cstring>

namespace detail = FlashEngine_1_00::detail;

const TiXmlElement* detail::parseDatabase(const char* xml, bool detectsEncoding, TiXmlDocument& document) {
  document.Parse(xml, nullptr, detectsEncoding ? TIXML_DEFAULT_ENCODING : TIXML_ENCODING_LEGACY);
  return document.FirstChildElement("APIAnalysisDB");
}

const char* detail::documentedName(const TiXmlNode& node) {
  const TiXmlElement* element = node.ToElement();
  return element == nullptr || std::strcmp(element->Value(), "Function") != 0 ? nullptr : element->GetText();
}

bool detail::readFunctions(const char* xml, bool detectsEncoding, void (*use)(void* context, const char* name),
                           void* context) {
  TiXmlDocument document;
  const TiXmlElement* root = parseDatabase(xml, detectsEncoding, document);
  if (root == nullptr) return false;
  for (const TiXmlNode* group = root->FirstChild(); group != nullptr; group = group->NextSibling()) {
    for (const TiXmlNode* node = group->FirstChild(); node != nullptr; node = node->NextSibling()) {
      if (const char* name = documentedName(*node)) use(context, name);
    }
  }
  return true;
}

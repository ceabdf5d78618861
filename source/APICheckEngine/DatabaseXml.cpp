// Test: tests/APICheckEngine/Database_test.cpp.

#include "APICheckEngine/DatabaseXml.h"

#include <tinyxml.h>

#include <cstring>

bool FlashEngine_1_00::detail::readFunctions(const char* text, bool detectsEncoding,
                                             void (*use)(void* context, const char* name), void* context) {
  TiXmlDocument document;
  document.Parse(text, nullptr, detectsEncoding ? TIXML_DEFAULT_ENCODING : TIXML_ENCODING_LEGACY);
  const TiXmlElement* root = document.FirstChildElement("APIAnalysisDB");
  if (root == nullptr) return false;
  for (const TiXmlNode* group = root->FirstChild(); group != nullptr; group = group->NextSibling()) {
    for (const TiXmlNode* node = group->FirstChild(); node != nullptr; node = node->NextSibling()) {
      const TiXmlElement* function = node->ToElement();
      if (function == nullptr || std::strcmp(function->Value(), "Function") != 0) continue;
      if (const char* name = function->GetText()) use(context, name);
    }
  }
  return true;
}

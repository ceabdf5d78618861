// The string operations for builds without the host's analysis library. Test: tests/strutil/CStringUtil_test.cpp.

#include "tarvo/CStringUtil.h"

CStringUtil::CStringUtil() = default;
CStringUtil::~CStringUtil() = default;

std::string CStringUtil::customReplace(std::string& text, std::string from, std::string to) {
  if (from.empty()) return text;
  std::string result;
  result.reserve(text.size());
  std::size_t copied = 0;
  for (std::size_t hit; (hit = text.find(from, copied)) != std::string::npos; copied = hit + from.size()) {
    result.append(text, copied, hit - copied).append(to);
  }
  return result.append(text, copied, std::string::npos);
}

std::string CStringUtil::findFileExtention(std::string path) {
  const std::size_t dot = path.rfind('.');
  return dot == std::string::npos ? std::string() : path.substr(dot + 1);
}

std::string CStringUtil::findMidString(std::string text, int start, int length) {
  if (start < 0 || length < 0 || static_cast<std::size_t>(start) > text.size()) return std::string();
  return text.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(length));
}

void CStringUtil::stringTokenizer(const char* delimiter, std::string text, std::vector<std::string>& tokens) {
  const std::string separator(delimiter);
  std::size_t begin = 0;
  while (begin < text.size()) {
    const std::size_t hit = separator.empty() ? std::string::npos : text.find(separator, begin);
    const std::size_t end = hit == std::string::npos ? text.size() : hit;
    if (end > begin) tokens.push_back(text.substr(begin, end - begin));
    begin = hit == std::string::npos ? text.size() : hit + separator.size();
  }
}

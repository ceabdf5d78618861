// A table of the methods that all elements have, and one look at the text of a call. Remarks are made again whenever a
// report is concluded, so they never overwrite what is there.
// Test: tests/checker/Formats_test.cpp.

#include "checker/report/Remarks.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace {

constexpr std::string_view kExecute = "Execute(";
constexpr const char* kElementAdvice =
    "every element of a page has this method, so it may not be the plug-in's; the device refuses it all the same";
constexpr const char* kComputedAdvice = "the name of the method is a value that the program makes";

// Methods of elements, nodes and event targets, sorted.
constexpr std::string_view kElementMethods[] = {
    "addEventListener",
    "after",
    "animate",
    "append",
    "appendChild",
    "attachEvent",
    "before",
    "blur",
    "click",
    "cloneNode",
    "closest",
    "contains",
    "detachEvent",
    "dispatchEvent",
    "fireEvent",
    "focus",
    "getAttribute",
    "getAttributeNS",
    "getAttributeNames",
    "getAttributeNode",
    "getBoundingClientRect",
    "getClientRects",
    "getElementsByClassName",
    "getElementsByTagName",
    "getElementsByTagNameNS",
    "hasAttribute",
    "hasAttributes",
    "hasChildNodes",
    "hasOwnProperty",
    "insertAdjacentElement",
    "insertAdjacentHTML",
    "insertAdjacentText",
    "insertBefore",
    "isEqualNode",
    "isSameNode",
    "matches",
    "normalize",
    "prepend",
    "querySelector",
    "querySelectorAll",
    "remove",
    "removeAttribute",
    "removeAttributeNS",
    "removeAttributeNode",
    "removeChild",
    "removeEventListener",
    "replaceChild",
    "replaceChildren",
    "replaceWith",
    "requestFullscreen",
    "scroll",
    "scrollBy",
    "scrollIntoView",
    "scrollTo",
    "setAttribute",
    "setAttributeNS",
    "setAttributeNode",
    "toString",
    "toggleAttribute",
    "valueOf",
};

bool isNameStart(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '$';
}

}  // namespace

bool isElementMethod(const std::string& method) {
  return std::binary_search(std::begin(kElementMethods), std::end(kElementMethods), method);
}

bool hasComputedName(const Call& call) {
  const std::size_t at = call.code.find(kExecute);
  if (at == std::string::npos || call.method.empty()) return false;
  const std::size_t argument = call.code.find_first_not_of(" \t\r\n", at + kExecute.size());
  return argument != std::string::npos && isNameStart(call.code[argument]) &&
         call.code.compare(argument, call.method.size(), call.method) == 0;
}

void addRemarks(ApplicationReport& report) {
  for (Finding& finding : report.findings) {
    if (finding.kind == Finding::Kind::undocumented && hasComputedName(finding.call))
      finding.kind = Finding::Kind::computed;
    if (!finding.advice.empty() || finding.kind == Finding::Kind::deprecated) continue;
    if (finding.kind == Finding::Kind::computed) finding.advice = kComputedAdvice;
    if (isElementMethod(finding.call.method)) finding.advice = kElementAdvice;
  }
}

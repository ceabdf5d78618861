// Extensions of documents, and the letters as one-letter strings. For the host; documentExtention is also read by
// documentExtentionChecker.

#include "APICheckEngine/Tables.h"

constexpr const char* const documentExtention[] = {"js",  "JS",  "xml",  "XML",  "css",  "CSS",
                                                   "htm", "HTM", "info", "INFO", "html", "HTML"};

constexpr const char* const word[] = {"a", "b", "c", "d", "e", "f", "g", "h", "i", "j", "k", "l", "m",
                                      "n", "o", "p", "q", "r", "s", "t", "u", "v", "w", "x", "y", "z"};

constexpr const char* const word4CapitalSWF[] = {"A", "B", "C", "D", "E", "F", "G", "H", "I", "J", "K", "L", "M",
                                                 "N", "O", "P", "Q", "R", "S", "T", "U", "V", "W", "X", "Y", "Z"};

static_assert(documentExtention[kDocumentExtensionCount - 1] != nullptr, "a row is missing");
static_assert(word[kLetterCount - 1] != nullptr && word4CapitalSWF[kLetterCount - 1] != nullptr, "a row is missing");

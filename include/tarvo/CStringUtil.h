#pragma once

#include <string>
#include <vector>

// String operations that the engine takes from the host's analysis library. Strings are byte strings; no encoding
// is interpreted, and the object keeps no state.
//
// Build the engine with -DTARVO_HOST_LIBRARY=ON when the host's own library defines this class.
class CStringUtil {
 public:
  CStringUtil();
  ~CStringUtil();

  // A copy of `text` in which every `from`, found left to right and never inside what was put in, is `to`. An empty
  // `from` changes nothing. `text` itself stays as it is (the reference is the host's signature).
  std::string customReplace(std::string& text, std::string from, std::string to);

  // What follows the last dot of `path`, case kept: "a.min.js" gives "js". Empty without a dot.
  std::string findFileExtention(std::string path);

  // `length` bytes of `text` from index `start` on, fewer where the text ends. A start outside the text or a
  // negative length gives an empty string.
  std::string findMidString(std::string text, int start, int length);

  // Cuts `text` at every occurrence of `delimiter` (zero-terminated, matched as a whole) and appends the pieces to
  // `tokens` in order. Empty pieces are never stored; an empty delimiter cuts nothing. `tokens` is not cleared.
  void stringTokenizer(const char* delimiter, std::string text, std::vector<std::string>& tokens);
};

#pragma once

// The XML parser, behind an interface without strings: it is a library of its own, and its strings need not have the
// layout of the host's.

namespace FlashEngine_1_00::detail {

// Calls `use` with `context` and the text of each Function element in a group of APIAnalysisDB, in order; the text is
// valid during the call. Of a damaged document, the tree that came of it counts. `detectsEncoding`: the document's own
// encoding, or else single bytes. False if there is no top-level APIAnalysisDB.
bool readFunctions(const char* text, bool detectsEncoding, void (*use)(void* context, const char* name), void* context);

}  // namespace FlashEngine_1_00::detail

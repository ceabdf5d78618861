#pragma once

// The XML parser, behind an interface without strings: it is a library of its own, and its strings need not have the
// layout of the host's.

class TiXmlDocument;
class TiXmlElement;
class TiXmlNode;

namespace FlashEngine_1_00::detail {

// Calls `use` with `context` and the text of each Function element in a group of APIAnalysisDB, in order; the text is
// valid during the call. Of a damaged document, the tree that came of it counts. `detectsEncoding`: the document's own
// encoding, or else single bytes. False if there is no top-level APIAnalysisDB.
bool readFunctions(const char* xml, bool detectsEncoding, void (*use)(void* context, const char* name), void* context);

// For whoever wants more than the names. Parses `xml` into `document`: its top-level APIAnalysisDB, or null.
const TiXmlElement* parseDatabase(const char* xml, bool detectsEncoding, TiXmlDocument& document);

// The name that a child of a group documents; null if it documents none.
const char* documentedName(const TiXmlNode& node);

}  // namespace FlashEngine_1_00::detail

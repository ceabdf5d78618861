#pragma once

#include <string>
#include <string_view>

// What a program that shows more than a host needs is told of the parts of an application, by whichever folder of the
// engine meets them. A host sets no observer: it has the log.

namespace FlashEngine_1_00 {

// What was not looked at, or not as other readers look at it.
enum class Gap {
  // The entry of a package, and what follows it there, was not extracted.
  entryPastBytes,    // the bytes of all packages are used up,
  entryPastEntries,  // or their entries and directories
  entryUncounted,    // it stands behind those that the package counts
  entryUnwritable,
  entryEncrypted,
  entryDamaged,

  // An entry that other readers take for something else.
  entryUnsafe,         // its name leads out of the package; not extracted
  entryNameCut,        // its name is too long, or holds a zero byte
  entryReplaced,       // it replaces an earlier one of its name
  entryOtherName,      // its own header has another name,
  entryOtherUnicode,   // or a field for names in Unicode
  entryHoldsMore,      // its data go on behind the size in its header
  entryIsLink,         // extracted as a file with the name of the link's target
  directoryHoldsData,  // nothing of which is extracted

  // A package.
  packageUnreadable,  // no reader of packages can open it
  packagePassedOver,  // it stands below a name with ".fla"
  packageHoldsMore,   // bytes that no entry of its directory accounts for

  // A file.
  fileUnreadable,  // it, or a directory of extracted files, cannot be opened
  sourceCut,       // a web source with a zero byte, or of INT_MAX bytes and more
  flashUnread,     // a Flash file was read in part, or not at all; the code says why
  flashCut,        // a bound or the time budget cut its listing, its replay or the search of its statements
  flashFormat,     // its signature is none of those that the engine reads,
  flashLzma,       // but that of the compression it does not know

  // Script of a Flash file that is in no listing.
  scriptOfVersion3,
  scriptOfButton,
  scriptOfClip,
  scriptOfInit,
  scriptPassedOver,  // the engine's walk over the tags loses its way
  scriptBranch,      // a branch leads into the middle of a record
  tagUnknown,        // the engine stops at such a tag
  tagsDamaged,
};

struct NotRead {
  Gap gap;
  const std::string& path;      // of the file; of an entry, that of its package
  std::string_view entry = {};  // its name; empty where the package's directory is damaged
  int code = 0;                 // a RunResult or a code of minizip's, where there is one
};

class PartObserver {
 public:
  virtual ~PartObserver() = default;

  // Told of a gap as often as it is met.
  virtual void notRead(const NotRead&) {}

  // The entry `name` of `package` is there, under `path` in the extraction directory.
  virtual void entryExtracted(const std::string& /*package*/, std::string_view /*name*/, const std::string& /*path*/) {}
};

}  // namespace FlashEngine_1_00

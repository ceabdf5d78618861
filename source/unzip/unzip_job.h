#pragma once

#include <minizip/unzip.h>

#include <cstdio>
#include <string>

#include "platform/PartObserver.h"
#include "unzip/disk_place.h"
#include "unzip/expansion_budget.h"

// One extraction job over one zip package, driven by command-line-style arguments. ZIP APPNOTE 6.3.
//
// A job works relative to the process's current directory, which it changes to its extraction directory and leaves
// there; or in a place of the caller's (platform/FilePlace.h). No entry's name leads out of that directory: one that is
// absolute or has a ".." component, between slashes of either kind, is skipped with a log line. No link is followed
// (no_follow.h).

namespace FlashEngine_1_00 {

// Runs the job `argv[1..argc)`. Arguments that begin with "-" are groups of option letters, in either case:
//   x  extract (the default)         l, v  list instead     e  extract without the stored directories
//   o  overwrite existing files      d DIR extraction directory             p WORD password
// The first other argument is the package (at most 255 bytes; tried again with ".zip" appended), the second one entry
// of it. Returns 0, or 1 on a usage or open failure. An entry that cannot be extracted ends the job, and that is
// logged with minizip's code; it does not fail it. The job alone may write as much as a run (expansion_budget.h).
int do_UnzipJob(int argc, char** argv);

// What the jobs of one run share.
struct Extraction {
  ExpansionBudget budget;
  PartObserver* observer = nullptr;  // told of what is extracted and of what is not; or null
  std::string package = {};          // of the job that runs
  FilePlace& place = diskPlace();    // where it is, and where its entries go
};

// A job of a run with several.
int runUnzipJob(int argc, char** argv, Extraction& extraction);

// Codes beside minizip's: of an entry that passes a bound of the run; in the log, of one that is encrypted.
constexpr int kBoundPassed = -200;
constexpr int kEncrypted = -201;

struct ExtractOptions {
  bool withoutDirectories;
  bool overwrite;
  const char* password;  // null: none
  std::FILE* stream;     // of the package, for a look at what minizip does not show; null: none
  Extraction* run;
};

// Extract every entry, in stored order; one named entry; the entry at the cursor. The first returns 0, the others
// UNZ_OK, kBoundPassed or minizip's code.
int do_extract(unzFile package, const ExtractOptions& options);
int do_extract_onefile(unzFile package, const char* name, const ExtractOptions& options);
int do_extract_currentfile(unzFile package, const ExtractOptions& options);

// Logs the name and size of every entry. Returns UNZ_OK or minizip's code.
int do_list(unzFile package);

// Creates `path` and all missing parents. 1 on success, else 0.
int makedir(const char* path);

// Creates one directory, mode 0775. 0 on success, else -1 with errno set.
int mymkdir(const char* path);

// Sets the file's modification time to the entry's stored date, in local time.
void change_file_date(const char* path, const tm_unz& date);

}  // namespace FlashEngine_1_00

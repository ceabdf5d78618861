#pragma once

#include <cstdio>
#include <string>
#include <string_view>

// What minizip does not show of a package, and what other readers may find in it. ZIP APPNOTE 6.3.

namespace FlashEngine_1_00 {

// Whether a file that begins with `head` is a package.
bool isPackage(std::string_view head);

// Whether `package` holds bytes that neither an entry of its directory nor the directory accounts for: a second package
// before, behind or in the comment of the first, or entries that only those find who read a package from its start.
// Zeroes that fill a gap, and one marker of four bytes in front, are no such bytes. The stream's position stays.
bool holdsMoreThanItsEntries(std::FILE* package);

// The name in the field for names in Unicode of an entry's `extra` fields; empty if there is none.
std::string unicodeName(std::string_view extra);

// Whether two names can be one in two encodings: they differ in what is not ASCII at most.
bool areOneName(std::string_view name, std::string_view other);

}  // namespace FlashEngine_1_00

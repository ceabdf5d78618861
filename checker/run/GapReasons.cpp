// The reasons, a row each. docs/not-checked.md explains them to users. Test: tests/checker/NotChecked_test.cpp.

#include "checker/run/GapReasons.h"

#include <algorithm>
#include <iterator>

using FlashEngine_1_00::Gap;

namespace {

using Kind = GapReason::Kind;

constexpr int kAnyCode = 0;

struct Row {
  Gap gap;
  int code;  // the first row with the gap's code, or with any code, counts
  GapReason reason;
};
constexpr const char* kPastBounds =
    "a bound on what all packages unpack to was passed: neither it nor what follows was unpacked";
constexpr Row kRows[] = {
    {Gap::entryPastBytes, kAnyCode, {Kind::entry, kPastBounds}},
    {Gap::entryPastEntries, kAnyCode, {Kind::entry, kPastBounds}},
    {Gap::entryUncounted,
     kAnyCode,
     {Kind::entry, "it stands behind the entries that the package counts: neither it nor what follows was unpacked"}},
    {Gap::entryUnwritable,
     kAnyCode,
     {Kind::entry, "could not be read or written: neither it nor what follows was unpacked"}},
    {Gap::entryEncrypted, kAnyCode, {Kind::entry, "encrypted: neither it nor what follows was unpacked"}},
    {Gap::entryDamaged, kAnyCode, {Kind::entry, "damaged: neither it nor what follows was unpacked"}},
    {Gap::entryUnsafe, kAnyCode, {Kind::entry, "its name leads out of the package"}},
    {Gap::entryNameCut, kAnyCode, {Kind::entry, "its name is too long or holds a zero byte"}},
    {Gap::entryReplaced, kAnyCode, {Kind::entry, "an earlier entry of the same name was replaced"}},
    {Gap::entryOtherName,
     kAnyCode,
     {Kind::entry, "other readers take it for another file: its own header has another name"}},
    {Gap::entryOtherUnicode,
     kAnyCode,
     {Kind::entry, "other readers take it for another file: its field for Unicode has another name"}},
    {Gap::entryHoldsMore, kAnyCode, {Kind::entry, "it holds more than its header says"}},
    {Gap::entryIsLink, kAnyCode, {Kind::entry, "a symbolic link, which other readers follow"}},
    {Gap::directoryHoldsData, kAnyCode, {Kind::entry, "a directory with data, which other readers take for a file"}},
    {Gap::packageUnreadable, kAnyCode, {Kind::file, "could not be opened as a package"}},
    {Gap::packageHoldsMore,
     kAnyCode,
     {Kind::file, "other readers may find more in it: it holds bytes that belong to no entry of its directory"}},
    {Gap::packagePassedOver, kAnyCode, {Kind::unlisted, "a package below a name with '.fla', which is not unpacked"}},
    {Gap::fileUnreadable, kAnyCode, {Kind::file, "could not be opened"}},
    {Gap::sourceCut, kAnyCode, {Kind::cut, nullptr}},
    {Gap::flashUnread, RUN_SWF_BAD_SIGNATURE, {Kind::none, nullptr}},  // told by its format
    {Gap::flashUnread, RUN_SWF_UNCOMPRESS_FAILED, {Kind::file, "its compressed body is damaged or too large"}},
    {Gap::flashUnread, RUN_TIME_LIMIT, {Kind::file, "the time for Flash files was used up"}},
    {Gap::flashUnread, kAnyCode, {Kind::file, "could not be read whole"}},
    {Gap::flashCut, kAnyCode, {Kind::cut, nullptr}},
    {Gap::flashFormat,
     kAnyCode,
     {Kind::unlisted, "not a Flash file that the engine reads: its first bytes are neither FWS nor CWS"}},
    {Gap::flashLzma, kAnyCode, {Kind::unlisted, "compressed with LZMA, which the engine does not read"}},
    {Gap::scriptOfVersion3, kAnyCode, {Kind::unlisted, "ActionScript 3 (DoABC) is not read"}},
    {Gap::scriptOfButton, kAnyCode, {Kind::unlisted, "button actions are not read"}},
    {Gap::scriptOfClip, kAnyCode, {Kind::unlisted, "clip actions are not read"}},
    {Gap::scriptOfInit, kAnyCode, {Kind::unlisted, "DoInitAction is not read"}},
    {Gap::scriptPassedOver,
     kAnyCode,
     {Kind::unlisted, "the engine loses its way among the tags and passes over a script"}},
    {Gap::scriptBranch,
     kAnyCode,
     {Kind::unlisted, "a branch leads into the middle of an action: what runs there is not read"}},
    {Gap::tagUnknown, kAnyCode, {Kind::unlisted, "a tag of an unknown kind, where the engine stops"}},
    {Gap::tagsDamaged, kAnyCode, {Kind::unlisted, "its tags are damaged or cut short"}},
};

}  // namespace

GapReason reasonOf(Gap gap, int code) {
  const auto* row = std::find_if(std::begin(kRows), std::end(kRows), [&](const Row& candidate) {
    return candidate.gap == gap && (candidate.code == code || candidate.code == kAnyCode);
  });
  return row == std::end(kRows) ? GapReason{Kind::file, "was not read"} : row->reason;
}

const char* cutReason(bool isFlash) {
  return isFlash ? "cut by a bound or by the time for Flash files"
                 : "cut at its first zero byte, or too large to be read";
}

#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Limits.h"

// What the engine's lists hold, and how they own it.

namespace FlashEngine_1_00 {

// The record of every web-source list and of every found call. There are tens of thousands of a script of a megabyte:
// what many have in common stands elsewhere.
struct SWFStateMentInfo {
  std::unique_ptr<std::string> expression;  // matched text, or "<class identifier>#<symbol or call text>"; may be null
  std::string_view scope;                   // "Global", "Func", "Src" or empty
  std::string_view text;                    // body of the script function around a binding; like FlashFunctionInfo's
  std::string_view path;                    // file in which it was found; one that Knowledge keeps
  std::string_view access;                  // the element look-up expression, which is another record's
  std::int32_t line = 0;                    // 1-based; 0: not found, -1: unknown file
  bool isDocumented = false;                // judged, with nothing to report
  std::uint32_t note = 0;                   // for RecordNotes
};

// A script function defined in a web source. Its texts are parts of a text of cleanedSourceList, which is emptied
// together with functionBlockList; its path is one of worthfulPathList.
struct FlashFunctionInfo {
  std::string_view header;  // "function init(a, b)" or "init : function (a)"
  std::string_view body;    // from the end of the header through the brace that closes the function
  std::string_view path;
  const std::string* source;  // the text of cleanedSourceList
};

// Empties a list that owns what it points to, even if one thing stands in it several times.
template <typename T>
void releaseAll(std::vector<T*>& list) {
  std::sort(list.begin(), list.end());
  list.erase(std::unique(list.begin(), list.end()), list.end());
  for (; !list.empty(); list.pop_back())
    delete list.back();
}

// Appends `item` to a list that owns what it points to.
template <typename T>
void append(std::vector<T*>& list, std::unique_ptr<T> item) {
  list.push_back(item.get());
  (void)item.release();
}

namespace detail {

// Equal records of one list: one object, in at most kMaxEqualRecords places of it; in a long list, in the first only.
template <typename Record>
class EqualRecords {
 public:
  explicit EqualRecords(std::unique_ptr<Record> record) : made_(std::move(record)), record_(made_.get()) {}

  // Takes one more place, at the end of `list`, which owns the record from the first one on. Without effect, and false,
  // if they have all the places that are kept.
  bool addTo(std::vector<Record*>& list) {
    return places_ < (list.size() < kLongList ? kMaxEqualRecords : 1) && addBeyondTo(list);
  }

  // The same without a bound, for whoever drops other places than the last ones (keepLastPlaces). Always true.
  bool addBeyondTo(std::vector<Record*>& list) {
    list.push_back(record_);
    (void)made_.release();
    ++places_;
    return true;
  }

  bool isInList() const { return places_ > 0; }
  Record& record() { return *record_; }

 private:
  std::unique_ptr<Record> made_;  // until it is in a list
  Record* record_;
  int places_ = 0;
};

// A value for each record of a list, made when it is first asked for. Of one list at a time, there is one such object.
template <typename Value>
class RecordNotes {
 public:
  explicit RecordNotes(const std::vector<SWFStateMentInfo*>& list) {
    for (SWFStateMentInfo* record : list)
      record->note = 0;
  }

  bool isNew(const SWFStateMentInfo& record) const { return record.note == 0; }

  // The value of a record of the list, and whether it is new. Stays where it is until another new one is asked for.
  std::pair<Value&, bool> of(SWFStateMentInfo& record) {
    const bool isNew = record.note == 0;
    if (isNew) {
      values_.emplace_back();
      record.note = static_cast<std::uint32_t>(values_.size());
    }
    return {values_[record.note - 1], isNew};
  }

 private:
  std::vector<Value> values_;
};

// Of the places that each record has in `list` from position `from` on, drops all but the last kMaxEqualRecords.
void keepLastPlaces(std::vector<SWFStateMentInfo*>& list, std::size_t from);

}  // namespace detail
}  // namespace FlashEngine_1_00

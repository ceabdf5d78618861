#pragma once

#include <cstddef>
#include <cstdint>

// Every bound of the engine, with what it bounds and why it has this value.

namespace FlashEngine_1_00 {

// Flash work of one engine, counted from its construction. A person waits for the verdict on the device.
constexpr std::uint32_t kTimeBudgetMicroseconds = 20'000'000;

// Flash files: bytes of one that are read, or inflated from one; bytes of memory that the lines of its listing take,
// all together; bytes of the texts that a replay of the listing builds. A small file can ask for any amount of each,
// and the device has a few hundred MiB. Work stops there as if the time budget were spent.
constexpr std::int64_t kMaxSwfBytes = 256LL << 20;
constexpr std::size_t kMaxListingBytes = std::size_t{256} << 20;
constexpr std::size_t kMaxReplayBytes = std::size_t{64} << 20;

// Flash files: bytes of statements of one that are searched, counted again for each variable that is searched for. As
// many as are made of the longest replay, for sixteen variables; a listing that is read in its time makes far fewer.
constexpr std::uint64_t kMaxFlashSearchBytes = std::uint64_t{1} << 30;

// Searches for a variable that cost as much as one through the whole text, once that has an index.
constexpr std::size_t kFlashIndexedSearches = 64;

// What a line of a listing takes in memory: its string object, which holds up to 15 bytes itself; for longer ones also
// a block with the text, a terminator and what the allocator adds. Most records are one line of 12 bytes, so that the
// text alone would be a third of it. The values are those of 64-bit systems: a file is cut at the same line on all.
constexpr std::size_t kLineBytes = 32;
constexpr std::size_t kMaxShortLine = 15;
constexpr std::size_t kLineBlockBytes = 24;

// Flash files: bytes read and inflated at a time; the largest script block; records listed of one block; bytes of a
// field line; branch targets of one file that get a label. The values are part of the listing.
constexpr std::size_t kSwfChunk = 1'024'000;
constexpr std::uint32_t kMaxScriptBlock = 9'999'999;
constexpr int kMaxRecords = 9'999'999;
constexpr std::size_t kMaxFieldLine = 1255;
constexpr std::size_t kMaxBranchTargets = 100'000;

// Nested calls of the pattern matcher. The engine's own patterns stay below 30; the bound keeps a pattern of the host's
// with thousands of nested groups from using up its stack: an attempt that goes so deep does not match.
constexpr std::int32_t kMaxMatchDepth = 4000;

// Nested elements in the API database, whose entries stand on the third level. The XML parser recurses: a file that is
// nested deeper is not parsed and counts as one without a root.
constexpr int kMaxDatabaseDepth = 1000;

// Equal records of one list that are kept: the rules make one for every hit in an excerpt, for every function around a
// function, and for every look-up of an element, all with the same text. Nothing that a host sees depends on how many
// there are, only on which comes first and, for functions, which comes last.
constexpr int kMaxEqualRecords = 64;

// Entries of a list from which on records take one place only, however many equal ones the rules make. A megabyte of
// look-ups would make millions, through which every later stage goes; applications stay far below.
constexpr std::size_t kLongList = 65'536;

// Places in a list of records of calls on look-ups that differ in nothing but the line of the look-up. The rules make
// one for each call and each look-up of its element, so that a script of a megabyte could ask for a thousand million.
// All were judged with the first look-up; those beyond this number are dropped.
constexpr std::size_t kMaxLookupPlaces = 131'072;

// Bytes of sources that get an index for many searches, which takes four to eight times as many bytes of memory. Those
// for which no room is left are searched without one.
constexpr std::size_t kMaxIndexedBytes = std::size_t{8} << 20;

// Package expansion: bytes of one argument of the extraction job, of a package's own path, of an entry's name, and of
// one copy step. Longer names are cut; the values are part of the job's interface.
constexpr std::size_t kMaxJobArgument = 1023;
constexpr std::size_t kMaxPackageName = 255;
constexpr std::size_t kMaxEntryName = 255;
constexpr std::size_t kCopyChunk = 8192;

// Package expansion: bytes and entries of all packages of one run together, and directories made for entries that name
// them only as a part of their path. Packages can hold themselves, or overlap their entries, and so expand without end;
// these are far above any application.
constexpr std::uint64_t kMaxExpandedBytes = std::uint64_t{4} << 30;
constexpr std::uint32_t kMaxExpandedEntries = 200'000;

// Zeroes between the entries of a package that are looked at. A larger gap is none that a packer leaves.
constexpr std::uint64_t kMaxZeroFill = std::uint64_t{1} << 20;

// Entries looked at in one extraction directory, where links that others planted are followed: all that a run can
// expand, files and the directories made for them.
constexpr std::uint32_t kMaxListedEntries = 2 * kMaxExpandedEntries;

}  // namespace FlashEngine_1_00

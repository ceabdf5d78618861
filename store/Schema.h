#pragma once

#include <vector>

#include "store/Sqlite.h"

// The tables of a store, and how an older store gets them (docs/store.md).
//
// The file says that it is a store (SQLite's application_id) and its version (user_version). A version is what one step
// makes of the version before; a new store takes all steps. Views hold no data: each program replaces them by its own
// when it writes. What stands in a table is never read by position, so that a step may add columns.

namespace store {

constexpr int kApplicationId = 0x54564353;  // "TVCS"

// The steps, in order: statements that make version 1 of an empty file, version 2 of version 1, ...
const std::vector<const char*>& schemaSteps();

// Brings a store, or an empty file, to the newest version, in one transaction: after a failure it is as it was. Throws
// StoreError if the file is another program's, or of a newer version.
void migrate(Connection& connection, const std::vector<const char*>& steps = schemaSteps());

// The same for a store that is only read: throws also if it would have to be migrated.
void requireCurrent(Connection& connection);

}  // namespace store

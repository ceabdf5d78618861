#pragma once

#include <string>

namespace FlashEngine_1_00 {

class FilePlace;
class PartWorkers;

// Where the engine meets the file system. Nothing else in source/ names a path.
struct EnginePaths {
  std::string database;            // the API database, read by every run
  std::string extractionRoot;      // existing directory; packages are expanded into <extractionRoot>/0, /1, ...
  std::string resultFile;          // the finding lines of the last run; truncated by every run
  FilePlace* place = nullptr;      // where these two are; null: on the disk
  PartWorkers* workers = nullptr;  // on other processors (PartWork.h); null: there are none
};

// Supplied by whoever links the engine: the shared library answers with the device's constants (DevicePaths.cpp),
// the checker and the tests with a private directory.
const EnginePaths& enginePaths();

}  // namespace FlashEngine_1_00

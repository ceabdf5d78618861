#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "APICheckEngine/Facade.h"
#include "checker/run/Exclusions.h"

// A file of an application, for those who look at it beside the engine.
struct ApplicationFile {
  std::string path;   // within the application, with '/'
  std::string shown;  // as the report names it
  std::string bytes;
};

// Texts that stand for those of files, which may not be there yet; by path, the application's own in front.
using UnsavedTexts = std::map<std::string, std::string>;

// The files of an application and of its packages, each up to 16 MiB, all together up to 128 MiB.
class ApplicationFiles {
 public:
  // Only files with a path that `isWanted` says yes to are read, and none that are excluded. `unsaved` may be null, and
  // must outlive this.
  ApplicationFiles(std::string application, std::function<bool(const std::string&)> isWanted, Exclusions exclusions,
                   const UnsavedTexts* unsaved = nullptr)
      : application_(std::move(application)),
        isWanted_(std::move(isWanted)),
        exclusions_(std::move(exclusions)),
        unsaved_(unsaved) {}

  // Reads the files out of packages, while they are still there.
  void takeExtracted(const FlashEngine_1_00::APIAnalysis& engine);

  // Hands all of them over, with those that are in no package, by path; once. `shownAs` gives the user's name for a
  // path of the engine's or the user's. Of files with one path within the application, the first counts.
  std::vector<ApplicationFile> release(const std::function<std::string(const std::string&)>& shownAs);

  // Whether `link`, in the file at `path` within the application, leads to a file that is excluded.
  bool isExcluded(const std::string& path, const std::string& link) const;

  // The engine's or the user's paths of files that were too large to be read.
  const std::vector<std::string>& tooLarge() const { return tooLarge_; }

 private:
  void take(const std::string& path);
  void takeOwn();
  std::string pathInside(const std::string& shown) const;

  std::string application_;
  std::function<bool(const std::string&)> isWanted_;
  Exclusions exclusions_;
  const UnsavedTexts* unsaved_;
  std::map<std::string, std::string> bytes_;  // by the engine's path, or the user's
  std::vector<std::string> tooLarge_;
  std::size_t total_ = 0;
};

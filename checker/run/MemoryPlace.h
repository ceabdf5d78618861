#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "APICheckEngine/Facade.h"
#include "checker/run/Inflater.h"
#include "checker/run/MemoryContent.h"

// The files of one run, in memory: nothing of an application is written to the disk.
//
// Names mean what they mean in an empty directory of the device. Files are listed in the order of their package. A file
// is kept as far as anyone reads it: web sources, Flash files and packages whole; others by their first bytes, unless
// `keepsOther` asks for up to 16 MiB of them. Of a large source only what stands before its first zero byte is kept.
//
// Files may be opened in several threads at once, as long as nothing else is asked for.
class MemoryPlace : public FlashEngine_1_00::FilePlace {
 public:
  // `keepsOther` by path; or null: none. Packages are inflated in so many threads, with the one that asks.
  explicit MemoryPlace(std::function<bool(const std::string& path)> keepsOther, std::size_t lanes = 1);

  // Makes the user's file at `path` one that is opened as `name`.
  void addInput(const std::string& name, const std::string& path) { inputs_[name] = path; }

  // Files that `isHidden` says yes to are in no listing; it is asked once for each file of an extraction directory.
  void hide(std::function<bool(const std::string& path, const std::string& directory)> isHidden) {
    isHidden_ = std::move(isHidden);
  }
  // Makes `text` what the user's file at `path` holds; it need not be there.
  void addText(const std::string& path, const std::string& text);

  FlashEngine_1_00::File open(const std::string& path) override;
  FlashEngine_1_00::File createResultFile(const std::string& path) override;
  void beginExtraction(const std::string& path) override;
  void endExtraction() override { inflater_.end(); }
  int makeExtractionDirectory(const std::string& path) override;
  int enterDirectory(const std::string& path) override;
  bool isThere(const std::string& path) override;
  int createDirectory(const std::string& path) override;
  std::unique_ptr<FlashEngine_1_00::FileSink> createFile(const std::string& path,
                                                         FlashEngine_1_00::ExpansionBudget& budget,
                                                         bool& replaced) override;
  void setDate(const std::string& /*path*/, std::tm /*date*/) override {}
  void listFiles(const std::string& dir, FlashEngine_1_00::PartObserver* observer,
                 std::vector<std::string>& found) override;
  void remove(const std::string& path) override;

 private:
  struct Node {
    std::shared_ptr<MemoryContent> content;  // null: a directory
    std::size_t place = 0;                   // in the list of its extraction directory
  };
  bool isDirectory(const std::string& path) const;

  // The whole path of `path`, which counts from the current directory; empty if it cannot be that of a file or a new
  // directory. Missing directories on the way are made and taken from `budget`; without one, the path is empty, too.
  std::string resolve(std::string_view path, FlashEngine_1_00::ExpansionBudget* budget);

  const std::function<bool(const std::string& path)> keepsOther_;
  std::function<bool(const std::string& path, const std::string& directory)> isHidden_;
  // A package of the user's, whole; the last one that was opened.
  FlashEngine_1_00::File openPackage(const std::string& path, FlashEngine_1_00::File file);

  const std::string& usersPath(const std::string& path) const;
  std::shared_ptr<const MemoryContent> packageAt(const std::string& path) const;

  Inflater inflater_;
  mutable std::mutex packageMutex_;  // of the next two
  std::string packagePath_;
  std::shared_ptr<const MemoryContent> package_;
  std::string current_;
  std::unordered_map<std::string, Node> nodes_;                       // by whole path
  std::unordered_map<std::string, std::vector<std::string>> listed_;  // by extraction directory
  std::unordered_map<std::string, std::string> inputs_;
  std::unordered_map<std::string, std::shared_ptr<const MemoryContent>> texts_;  // by the user's path
};

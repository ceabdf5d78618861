#pragma once

#include <string>
#include <utility>
#include <vector>

namespace bench {

// One application and a database in a directory of its own, removed with the object. The last one built supplies the
// engine's paths; the engine's log is discarded.
class Application {
 public:
  using Files = std::vector<std::pair<std::string, std::string>>;  // name, text

  // `documented` names in the database: those that generated text calls, and as many others as it takes.
  explicit Application(const Files& files, int documented = 300);
  ~Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  const std::vector<std::string>& paths() const { return paths_; }

 private:
  std::string directory_;
  std::vector<std::string> paths_;  // in the order of the files
};

// The whole file; ends the program with a message if it cannot be read.
std::string readFile(const std::string& path);

}  // namespace bench

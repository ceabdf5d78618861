#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "checker/report/Report.h"

// What the check of some content came to, free of where the application lies: the same for every copy of it.

namespace store {

struct ResultCall {
  std::string plugin;
  std::string method;
  std::string file;  // inside of the application: "!/www/js/main.js" in a package, "/js/main.js" in a folder
  Position place;
  int engineLine = 0;
  Call::Found found = Call::Found::variable;
  Finding::Confidence confidence = Finding::Confidence::likely;
  bool isOnDevice = false;
  std::uint64_t fingerprint = 0;
  std::string code;
  std::string reason;  // why no verdict is made on it; empty if one is
};

// All calls, whether documented or not: what is documented is the database's to say.
struct Result {
  std::string sha256;  // of its content, 32 bytes
  std::string suffix;
  std::uint64_t size = 0;
  std::string failure;
  double seconds = 0;
  std::int64_t checked = 0;  // seconds since 1970
  std::uint64_t sources = 0;
  std::uint64_t flashFiles = 0;
  std::uint64_t judgedCalls = 0;
  std::uint64_t judgedPlugins = 0;
  bool hasCallsWithoutPlugin = false;
  std::vector<ResultCall> calls;
  std::vector<NotChecked> notChecked;  // parts by their paths inside
  std::vector<PluginElement> elements;
  std::vector<Library> libraries;

  // The same for equal results: of all but `seconds` and `checked`. 16 bytes.
  std::string digest() const;
};

// The result in `report`, which has a `content`. In an order of its own: none of the program's shows.
Result resultOf(const ApplicationReport& report);

// Says whether `method` is documented for `plugin`, for another plug-in, or for none.
enum class Documented { forIt, forAnother, no };
using Judge = std::function<Documented(const std::string& plugin, const std::string& method)>;

// What a report of it says, for the application at `application`: every call has its verdict by `judge`. It has no
// excerpts, and no traces.
ApplicationReport reportOn(const Result& result, const std::string& application, const std::vector<std::string>& rules,
                           const Judge& judge);

// `path` without that of its application, and with it again.
std::string inside(const std::string& application, const std::string& path);
std::string outside(const std::string& application, const std::string& file);

}  // namespace store

// The config file: which one counts, and what is taken from it.
//
// Whoever makes an application must not decide how it is checked: which calls are accepted, which database is right, or
// which file of the user is overwritten with the report. So a file that was found, and that nobody named, counts only
// if it is this user's and lies outside of all that is checked. The nearest such file counts, alone: one that is passed
// over must not hide the user's own further up. All tests are made on the open file, by its real path, so that neither
// links nor ".." lead around them.
// Test: tests/checker/ConfigFile_test.cpp.

#include "checker/options/ConfigFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <toml++/toml.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <sstream>

#include "APICheckEngine/Facade.h"
#include "checker/options/Applications.h"
#include "checker/options/OptionTable.h"
#include "checker/options/Suggestion.h"
#include "checker/options/UserError.h"
#include "checker/report/Characters.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* kConfigName = ".tarvo-check.toml";
constexpr std::size_t kMaxFile = 1 << 20;  // bytes

// ---- which file ----------------------------------------------------------------------------------------------------

// Whether `path`, which is canonical, is `directory` or lies in it.
bool isInside(const fs::path& path, const fs::path& directory) {
  return std::mismatch(directory.begin(), directory.end(), path.begin(), path.end()).first == directory.end();
}

// The real path of what is there; of the rest of the path, as it stands.
fs::path realPath(const fs::path& path) {
  std::error_code error;
  const fs::path real = fs::weakly_canonical(path, error);
  return error ? fs::absolute(path).lexically_normal() : real;
}

// Why a config file of that name, which may be a link to `target`, may belong to the application of that name; empty if
// it does not.
std::string reasonAgainst(const fs::path& file, const fs::path& target, const std::string& application) {
  const fs::path home = realPath(application);  // the directory, or the file itself
  if (home.empty()) return {};
  if (isInside(file, home) || isInside(target, home)) return "it lies in the application '" + application + "'";
  std::error_code error;
  // A single file, of an application that is not known.
  const bool isBeside = isInside(home, file.parent_path()) && fs::is_regular_file(home, error) &&
                        !isCalledPackage(application) && !isPackage(application);
  return isBeside ? "'" + application + "' may be a part of the application that it lies in" : "";
}

// The same for all that is checked.
std::string reasonAgainst(const fs::path& file, const Options& options) {
  const fs::path target = realPath(file);
  std::string reason;
  for (const std::string& each : {options.file, options.older, options.newer})
    if (reason.empty() && !each.empty()) reason = reasonAgainst(file, target, each);
  if (options.named == nullptr) return reason;
  PathList::Reader all(*options.named);
  for (std::string application; reason.empty() && all.next(application);)
    reason = reasonAgainst(file, target, application);
  return reason;
}

// A config file that was opened.
struct OpenFile {
  FlashEngine_1_00::Descriptor descriptor{};
  struct stat info {};
};

// Never waits, not for a pipe either.
OpenFile openFile(const fs::path& file) {
  OpenFile opened{FlashEngine_1_00::Descriptor(open(file.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC)), {}};
  if (opened.descriptor) (void)fstat(opened.descriptor.number(), &opened.info);
  return opened;
}

// Why a file that nobody named is not this user's own; empty if it is.
std::string reasonAgainst(const fs::path& file, const OpenFile& opened) {
  struct stat link {};
  if (lstat(file.c_str(), &link) != 0) return std::strerror(errno);
  const uid_t user = geteuid();
  if (link.st_uid != user || (opened.descriptor && opened.info.st_uid != user)) return "it belongs to another user";
  if (!opened.descriptor) return "it cannot be read";
  if (!S_ISREG(opened.info.st_mode)) return "it is not a regular file";
  // Anybody can give a user's file a second name where he can write.
  if (opened.info.st_nlink > 1) return "it has a second name, a hard link";
  return {};
}

struct Found {
  fs::path file;    // empty: none
  OpenFile opened;  // of `file`
};

// `tell` is called with each line about a file that is passed over.
template <typename Tell>
Found nearestConfig(const Options& options, const Tell& tell) {
  std::error_code error;
  for (fs::path directory = fs::current_path(error); !error; directory = directory.parent_path()) {
    fs::path file = directory / kConfigName;
    struct stat link {};
    if (lstat(file.c_str(), &link) == 0) {
      OpenFile opened = openFile(file);
      std::string reason = reasonAgainst(file, options);
      if (reason.empty()) reason = reasonAgainst(file, opened);
      if (reason.empty()) return {std::move(file), std::move(opened)};
      tell("not used: " + file.string() + ": " + reason);
    }
    if (directory == directory.root_path()) break;
  }
  return {};
}

std::string textOf(const OpenFile& opened) {
  std::string text;
  char part[65536];
  for (ssize_t count; (count = read(opened.descriptor.number(), part, sizeof part)) != 0;) {
    if (count < 0 && errno != EINTR) throw UserError(std::strerror(errno));
    if (count > 0) text.append(part, static_cast<std::size_t>(count));
    if (text.size() > kMaxFile) throw UserError("it is larger than 1 MiB");
  }
  return text;
}

// ---- what is in it -------------------------------------------------------------------------------------------------

bool isPath(const OptionRow& option) {
  return std::strcmp(option.argument, "FILE") == 0;
}

bool isList(const OptionRow& option) {
  return std::holds_alternative<std::vector<std::string> Options::*>(option.field);
}

bool isNumber(const OptionRow& option) {
  return option.max > 0;
}

std::vector<std::string> keys() {
  std::vector<std::string> names;
  for (const OptionRow& row : kOptions) {
    if (row.isInFiles) names.emplace_back(row.name);
  }
  return names;
}

class Reader {
 public:
  // `isFound`: nobody named the file, so it may only have reports written into its own folder.
  Reader(Options& options, const fs::path& file, bool isFound)
      : options_(options), directory_(file.parent_path()), isFound_(isFound) {}

  void take(const std::string& key, const toml::node& node) {
    const OptionRow* option = optionNamed(key);
    if (node.is_table() && option == nullptr) throw UserError("there are no sections, but '" + key + "' is one");
    if (option == nullptr || !option->isInFiles)
      throw UserError("no option is called '" + key + "'" + didYouMean(key, keys()));
    if (const auto* isOn = std::get_if<bool Options::*>(&option->field)) {
      if (!node.is_boolean()) throw UserError("'" + key + "' must be true or false");
      if (isOpen(*option)) options_.*(*isOn) = node.as_boolean()->get();
    } else if (isList(*option) && node.is_array()) {
      for (const toml::node& item : *node.as_array())
        takeValue(*option, item);
    } else {
      takeValue(*option, node);
    }
  }

 private:
  bool isOpen(const OptionRow& option) const { return options_.given.count(option.name) == 0; }

  void takeValue(const OptionRow& option, const toml::node& node) {
    std::string value;
    if (isNumber(option)) {
      if (!node.is_integer()) throw UserError(std::string("'") + option.name + "' must be a whole number");
      value = std::to_string(node.as_integer()->get());
    } else {
      if (!node.is_string())
        throw UserError(std::string("'") + option.name + "' must be text in quotes" +
                        (isList(option) ? ", or a list of such" : ""));
      value = node.as_string()->get();
    }
    if (value.find('\0') != std::string::npos) throw UserError(std::string("'") + option.name + "' holds a zero byte");
    if (isPath(option)) value = pathOf(option, value);
    if (isOpen(option)) return setOption(options_, option, value);
    Options overridden = options_;  // a value that is wrong is told all the same
    setOption(overridden, option, value);
  }

  std::string pathOf(const OptionRow& option, const std::string& value) const {
    if (value.empty()) throw UserError(std::string("'") + option.name + "' names no file");
    const fs::path path = (directory_ / value).lexically_normal();
    if (isFound_ && std::strcmp(option.name, "output") == 0) requireInside(value, path);
    // A path that counts from the file stays one that counts from somewhere: --print-config shows it so.
    return fs::path(value).is_absolute() ? path.string() : path.lexically_proximate(fs::current_path()).string();
  }

  // Follows links, also one that leads to nothing yet.
  void requireInside(const std::string& value, const fs::path& path) const {
    std::error_code error;
    const fs::path real = fs::weakly_canonical(path, error);
    bool isSure = !error && isInside(real, fs::canonical(directory_, error)) && !error;
    for (fs::path part = path; isSure && part.has_relative_path(); part = part.parent_path())
      isSure = !fs::is_symlink(fs::symlink_status(part, error)) || fs::exists(part, error);
    if (!isSure) {
      throw UserError("'output' names '" + value +
                      "', which is not in the folder of this file; pass --output, or name the file with --config");
    }
  }

  Options& options_;
  fs::path directory_;
  bool isFound_;
};

std::string placeOf(const fs::path& file, const toml::source_region& source) {
  return file.string() + ":" + std::to_string(source.begin.line) + ":" + std::to_string(source.begin.column) + ": ";
}

void takeAll(Options& options, const fs::path& file, const std::string& text, bool isFound) {
  try {
    const toml::table table = toml::parse(text);
    Reader reader(options, file, isFound);
    for (auto&& [key, node] : table) {
      try {
        reader.take(std::string(key.str()), node);
      } catch (const UserError& error) {
        throw UserError(placeOf(file, node.source()) + error.what());
      }
    }
  } catch (const toml::parse_error& error) {
    throw UserError(placeOf(file, error.source()) + std::string(error.description()));
  }
}

// ---- the other way round -------------------------------------------------------------------------------------------

std::string inQuotes(const OptionRow& option, const std::string& value) {
  if (utf8(value) != value) {
    throw UserError("'" + value + "' of --" + option.name +
                    " is not UTF-8: a config file cannot hold it; give it on the command line");
  }
  std::ostringstream text;
  text << toml::toml_formatter(toml::value<std::string>(value), toml::format_flags::allow_unicode_strings);
  return text.str();
}

}  // namespace

void readConfig(Options& options) {
  static const OptionRow& config = *optionNamed("config");
  if (options.noConfig || !takes(options.command, config)) return;
  // Which folders an editor will open is not known yet, and a file in one would belong to an application.
  if (options.command == Command::lsp && options.config.empty()) return;
  const auto tell = [isQuiet = options.quiet](const std::string& line) {
    if (!isQuiet) std::cerr << printable(line) << '\n';
  };
  const bool isFound = options.config.empty();
  Found found;
  if (isFound) {
    found = nearestConfig(options, tell);
    if (found.file.empty()) return;
  } else {
    const fs::path file = options.config;
    std::error_code error;
    found = {fs::canonical(fs::absolute(file).parent_path(), error) / file.filename(), openFile(file)};
    if (!found.opened.descriptor || !S_ISREG(found.opened.info.st_mode))
      throw UserError("cannot read the config file '" + options.config + "'" + didYouMeanFile(options.config));
  }
  std::string text;
  try {
    text = textOf(found.opened);
  } catch (const UserError& error) {
    throw UserError("cannot read the config file '" + found.file.string() + "': " + error.what());
  }
  takeAll(options, found.file, text, isFound);
  options.configFile = found.file.string();
  if (isFound) tell("tarvo-check: options are taken from " + options.configFile);
}

std::string configText(const Options& options) {
  std::string text;
  for (const OptionRow& row : kOptions) {
    if (!row.isInFiles) continue;
    const auto add = [&](const std::string& value) { text += std::string(row.name) + " = " + value + '\n'; };
    if (const auto* isOn = std::get_if<bool Options::*>(&row.field)) {
      add(options.*(*isOn) ? "true" : "false");
    } else if (const auto* number = std::get_if<unsigned Options::*>(&row.field)) {
      add(std::to_string(options.*(*number)));
    } else if (const auto* bound = std::get_if<unsigned WorkerBounds::*>(&row.field)) {
      add(std::to_string(options.bounds.*(*bound)));
    } else if (const auto* value = std::get_if<std::string Options::*>(&row.field)) {
      if (!(options.*(*value)).empty()) add(inQuotes(row, options.*(*value)));
    } else if (const auto* list = std::get_if<std::vector<std::string> Options::*>(&row.field)) {
      std::string items;
      for (const std::string& item : options.*(*list))
        items += (items.empty() ? "" : ", ") + inQuotes(row, item);
      if (!items.empty()) add("[" + items + "]");
    }
  }
  return text;
}

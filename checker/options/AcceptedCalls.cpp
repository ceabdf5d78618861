// AcceptedCalls are looked up by method. Which of them are for an application is found out once for its report, so that
// many applications with many entries cost comparisons of names only.
// Test: tests/checker/Accept_test.cpp.

#include "checker/options/AcceptedCalls.h"

#include <toml++/toml.h>

#include <cstdio>
#include <map>

#include "checker/options/Suggestion.h"
#include "checker/options/UserError.h"
#include "checker/report/Characters.h"

namespace {

constexpr const char* kTables = "accept";

std::string placeOf(const std::string& path, const toml::source_region& source) {
  return path + ":" + std::to_string(source.begin.line) + ":" + std::to_string(source.begin.column) + ": ";
}

std::string textOf(const std::string& key, const toml::node& node) {
  if (!node.is_string()) throw UserError("'" + key + "' must be text in quotes");
  return node.as_string()->get();
}

std::string dateOf(const std::string& key, const toml::node& node) {
  if (!node.is_date()) throw UserError("'" + key + "' must be a date without quotes, such as 2026-12-31");
  const toml::date date = node.as_date()->get();
  char text[32];
  (void)std::snprintf(text, sizeof text, "%04u-%02u-%02u", unsigned{date.year}, unsigned{date.month},
                      unsigned{date.day});
  return text;
}

PathGlob globOf(const std::string& key, const toml::node& node) {
  try {
    return PathGlob(textOf(key, node));
  } catch (const UserError& error) {
    throw UserError("'" + key + "': " + error.what());
  }
}

}  // namespace

// The tables of one file.
class AcceptedCalls::Reader {
 public:
  explicit Reader(const std::string& path) : path_(path) {}

  template <typename Take>
  void read(const std::string& text, const Take& take) {
    try {
      const toml::table file = toml::parse(text);
      for (auto&& [key, node] : file) {
        if (key.str() != kTables || !node.is_array())
          refuse(node, "there are [[accept]] tables only, and '" + std::string(key.str()) + "' is none");
        for (const toml::node& item : *node.as_array())
          take(entryIn(item));
      }
    } catch (const toml::parse_error& error) {
      throw UserError(placeOf(path_, error.source()) + std::string(error.description()));
    }
  }

 private:
  [[noreturn]] void refuse(const toml::node& node, const std::string& why) const {
    throw UserError(placeOf(path_, node.source()) + why);
  }

  Entry entryIn(const toml::node& item) const {
    if (!item.is_table()) refuse(item, "an exception is a table: [[accept]]");
    const toml::table& table = *item.as_table();
    if (!table.contains("method")) refuse(item, "an exception names a 'method'");
    Entry entry;
    entry.path = path_;
    entry.line = static_cast<int>(item.source().begin.line);
    for (auto&& [key, node] : table) {
      try {
        take(std::string(key.str()), node, entry);
      } catch (const UserError& error) {
        refuse(node, error.what());
      }
    }
    return entry;
  }

  static void take(const std::string& key, const toml::node& node, Entry& entry) {
    if (key == "method") {
      entry.method = textOf(key, node);
    } else if (key == "plugin") {
      entry.plugin = textOf(key, node);
    } else if (key == "application") {
      entry.application = globOf(key, node);
    } else if (key == "file") {
      entry.file = globOf(key, node);
    } else if (key == "reason") {
      entry.acceptance.reason = textOf(key, node);
    } else if (key == "owner") {
      entry.acceptance.owner = textOf(key, node);
    } else if (key == "expires") {
      entry.acceptance.expires = dateOf(key, node);
    } else {
      throw UserError("an exception has no '" + key + "'" +
                      didYouMean(key, {"method", "plugin", "application", "file", "reason", "owner", "expires"}));
    }
  }

  const std::string& path_;
};

void AcceptedCalls::add(const std::string& path, const std::string& text, const std::string& today) {
  Reader(path).read(text, [&](Entry entry) {
    const std::string& expires = entry.acceptance.expires;
    entry.hasExpired = !expires.empty() && expires < today;
    byMethod_[entry.method].push_back(entries_.size());
    entries_.push_back(std::move(entry));
  });
}

bool AcceptedCalls::Entry::isFor(const Finding& finding, const PathGlob::Parts& parts) const {
  return (!plugin || *plugin == printable(finding.call.plugin)) && (!file || file->matches(parts));
}

void AcceptedCalls::apply(Finding& finding, const std::string& application, const std::vector<char>& isForApplication) {
  const auto candidates = byMethod_.find(printable(finding.call.method));
  if (candidates == byMethod_.end()) return;
  const std::string file = printable(pathIn(application, finding.call.path));
  const PathGlob::Parts parts = PathGlob::partsOf(file);
  const Entry* found = nullptr;
  const Entry* expired = nullptr;
  for (const std::size_t index : candidates->second) {
    Entry& entry = entries_[index];
    if (isForApplication[index] == 0 || !entry.isFor(finding, parts)) continue;
    entry.isUsed = true;
    const Entry*& first = entry.hasExpired ? expired : found;
    if (first == nullptr) first = &entry;
  }
  if (found != nullptr) {
    finding.status = Finding::Status::accepted;
    finding.acceptance = found->acceptance;
  } else if (expired != nullptr && finding.status != Finding::Status::accepted) {
    finding.advice +=
        (finding.advice.empty() ? "" : "; ") + ("its exception expired on " + expired->acceptance.expires);
  }
}

void AcceptedCalls::apply(ApplicationReport& report) {
  if (report.verdict == Verdict::notChecked) return;
  const std::string name = printable(report.application);
  const PathGlob::Parts parts = PathGlob::partsOf(name);
  std::vector<char> isForApplication(entries_.size());
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    Entry& entry = entries_[i];
    if (entry.application && !entry.application->matches(parts)) continue;
    isForApplication[i] = 1;
    entry.isForChecked = true;
  }
  for (Finding& finding : report.findings)
    apply(finding, report.application, isForApplication);
  conclude(report);
}

std::vector<std::string> AcceptedCalls::expired() const {
  std::vector<std::string> lines;
  for (const Entry& entry : entries_) {
    if (!entry.hasExpired) continue;
    lines.push_back(entry.place() + "the exception for '" + entry.method + "' expired on " + entry.acceptance.expires);
  }
  return lines;
}

std::vector<std::string> AcceptedCalls::unused() const {
  std::vector<std::string> lines;
  std::map<std::string, std::size_t> others;  // by file
  for (const Entry& entry : entries_) {
    if (entry.isUsed || entry.hasExpired) continue;
    if (!entry.isForChecked) {
      ++others[entry.path];
      continue;
    }
    lines.push_back(entry.place() + "no finding is of '" + entry.method + "'" +
                    (entry.plugin ? " on " + *entry.plugin : "") + ", which is accepted");
  }
  for (const auto& [path, count] : others) {
    lines.push_back(path + ": " + std::to_string(count) + (count == 1 ? " exception is" : " exceptions are") +
                    " for applications that were not checked");
  }
  return lines;
}

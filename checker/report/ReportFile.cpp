// The one reader of reports. A text is one value, as the format json has it, or a value in each line, as jsonl. Each
// value is parsed with an eye on the applications in it, which are handed over one by one, so that the whole of a large
// report is never there as JSON. Nothing that a file nests becomes depth of our stack.
// Test: tests/checker/Formats_test.cpp.

#include "checker/report/ReportFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string_view>

#include "checker/report/JsonText.h"
#include "checker/report/ReportJson.h"

using Json = nlohmann::ordered_json;

namespace {

constexpr int kVersion = 1;    // of the formats that are read
constexpr int kMaxDepth = 32;  // a report nests up to 7

const std::string kNoReport = "is no report of this program in the format json or jsonl: ";

using Take = std::function<void(ApplicationReport&&)>;

// Where the parser is in a text.
class Place {
 public:
  explicit Place(std::string_view text) : text_(text) {}

  // For the parser: goes through a part of the text, and leaves a mark where it is.
  class Iterator {
   public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    Iterator(const char* at, Place* place) : at_(at), place_(place) {}
    reference operator*() const { return *at_; }
    Iterator& operator++() {
      place_->at_ = ++at_;
      return *this;
    }
    bool operator==(const Iterator& other) const { return at_ == other.at_; }
    bool operator!=(const Iterator& other) const { return at_ != other.at_; }

   private:
    const char* at_;
    Place* place_;
  };

  Iterator begin(std::string_view part) {
    at_ = part.data();
    return {part.data(), this};
  }
  Iterator end(std::string_view part) { return {part.data() + part.size(), this}; }

  // "line 3, byte 17": both count from 1, the byte from the start of the line.
  std::string name() const {
    const char* begin = text_.data();
    const auto line = std::count(begin, at_, '\n') + 1;
    const char* start = at_;
    while (start > begin && start[-1] != '\n')
      --start;
    return "line " + std::to_string(line) + ", byte " + std::to_string(std::max<std::ptrdiff_t>(at_ - start, 1));
  }

 private:
  std::string_view text_;
  const char* at_ = text_.data();
};

// What the parser says without what it says of itself.
std::string plain(const std::exception& error) {
  std::string text = error.what();
  const std::size_t end = text.find("] ");
  if (text.front() != '[' || end == std::string::npos) return text;
  const std::size_t parsing = text.find("syntax error");
  return text.substr(parsing == std::string::npos ? end + 2 : parsing);
}

RunFacts factsIn(const Json& head) {
  RunFacts facts;
  const Json none = Json::object();
  facts.tool = head.value("tool", none).value("version", "");
  facts.engine = head.value("engine", "");
  facts.database = head.value("database", "");
  facts.databaseSha256 = head.value("databaseSha256", "");
  facts.configFile = head.value("configFile", "");
  facts.started = head.value("started", "");
  facts.commandLine = head.value("commandLine", "");
  const Json options = head.value("options", none);
  facts.all = options.value("all", false);
  facts.hasBaseline = options.value("baseline", false);
  facts.allowIncomplete = options.value("allowIncomplete", false);
  return facts;
}

ReportedRun runIn(const Json& head) {
  ReportedRun run;
  run.facts = factsIn(head);
  for (const Json& part : head.value("runs", Json::array()))
    run.parts.push_back(factsIn(part));
  run.isWhole = head.contains("summary");
  run.wasInterrupted = run.isWhole && head.at("summary").value("interrupted", false);
  return run;
}

class Reader {
 public:
  Reader(std::string_view text, const Take& take) : place_(text), text_(text), take_(take) {}

  std::vector<ReportedRun> read() {
    try {
      readAll();
    } catch (const std::exception& error) {
      throw std::runtime_error(kNoReport + place_.name() + ": " + plain(error));
    }
    if (!hasReport_) throw std::runtime_error(kNoReport + "there is nothing in it");
    if (!isEnded_) runs_.emplace_back();
    return std::move(runs_);
  }

 private:
  void readAll() {
    const std::string_view first = text_.substr(0, text_.find('\n'));
    if (!Json::accept(first.begin(), first.end())) return readValue(text_);
    for (std::size_t at = 0; at < text_.size();) {
      const std::size_t end = std::min(text_.find('\n', at), text_.size());
      const std::string_view line = text_.substr(at, end - at);
      at = end + 1;
      if (line.find_first_not_of(" \t\r") != std::string_view::npos) readValue(line);
    }
  }

  void readValue(std::string_view part) {
    std::string key;  // of the value's own
    const auto see = [&](int depth, Json::parse_event_t event, Json& parsed) {
      if (depth > kMaxDepth) throw std::invalid_argument("it is nested too deep");
      if (event == Json::parse_event_t::key && depth == 1) key = parsed;
      if (event == Json::parse_event_t::value && depth == 1 && key == "version") requireVersion(parsed);
      if (event != Json::parse_event_t::object_end || depth != 2 || key != "applications") return true;
      takeApplication(parsed);
      return false;
    };
    Json value = Json::parse(place_.begin(part), place_.end(part), see);
    if (!value.is_object()) throw std::invalid_argument("there is no object of a report");
    if (value.contains("application")) {
      takeApplication(value);
      isEnded_ = false;
    } else if (value.contains("version") || value.contains("summary")) {
      takeHead(value);
    } else {
      throw std::invalid_argument("there is neither an application nor a run in it");
    }
  }

  static void requireVersion(const Json& version) {
    if (version != kVersion)
      throw std::invalid_argument("it is of version " + version.dump() + "; this program reads version " +
                                  std::to_string(kVersion));
  }

  void takeApplication(Json& json) {
    takeRaw(json);
    ApplicationReport report = reportFrom(json);
    hasReport_ = true;
    take_(std::move(report));
  }

  void takeHead(Json& json) {
    if (json.contains("tool") && json.at("tool").value("name", "tarvo-check") != "tarvo-check")
      throw std::invalid_argument("it is a report of another program");
    if (json.contains("applications") && !(json.at("applications").is_array() && json.contains("version")))
      throw std::invalid_argument("its applications are no list, or it has no version");
    takeRaw(json);
    runs_.push_back(runIn(json));
    hasReport_ = true;
    isEnded_ = true;
  }

  Place place_;
  std::string_view text_;
  const Take& take_;
  std::vector<ReportedRun> runs_;
  bool hasReport_ = false;
  bool isEnded_ = false;  // whether what was read last says what the run was
};

std::string textOf(const std::string& path) {
  std::error_code error;
  if (std::filesystem::is_directory(path, error))
    throw std::runtime_error(std::string("cannot be read: ") + std::strerror(EISDIR));
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(file), {}};
  if (!file.is_open() || file.bad()) throw std::runtime_error(std::string("cannot be read: ") + std::strerror(errno));
  return text;
}

// The text that all have, or those that differ.
std::string joined(const std::vector<RunFacts>& runs, std::string RunFacts::*field) {
  std::vector<std::string> texts;
  for (const RunFacts& run : runs) {
    if (!(run.*field).empty() && std::find(texts.begin(), texts.end(), run.*field) == texts.end())
      texts.push_back(run.*field);
  }
  std::string all;
  for (const std::string& text : texts)
    all += (all.empty() ? "" : ", ") + text;
  return all;
}

// The text that all have; empty if there are several.
std::string common(const std::vector<RunFacts>& runs, std::string RunFacts::*field) {
  const auto isSame = [&](const RunFacts& run) { return run.*field == runs.front().*field; };
  return std::all_of(runs.begin(), runs.end(), isSame) ? runs.front().*field : std::string();
}

}  // namespace

std::vector<ReportedRun> readReportText(const std::string& text, const Take& take) {
  return Reader(text, take).read();
}

std::vector<ReportedRun> readReport(const std::string& path, const Take& take) {
  return readReportText(textOf(path), take);
}

RunFacts together(const std::vector<RunFacts>& runs) {
  RunFacts facts;
  if (runs.empty()) return facts;
  facts.tool = joined(runs, &RunFacts::tool);
  facts.engine = joined(runs, &RunFacts::engine);
  facts.database = joined(runs, &RunFacts::database);
  facts.databaseSha256 = common(runs, &RunFacts::databaseSha256);
  facts.configFile = joined(runs, &RunFacts::configFile);
  facts.commandLine = common(runs, &RunFacts::commandLine);
  for (const RunFacts& run : runs) {
    const bool isEarlier = facts.started.empty() || (!run.started.empty() && run.started < facts.started);
    if (isEarlier) facts.started = run.started;
  }
  facts.all = std::all_of(runs.begin(), runs.end(), [](const RunFacts& run) { return run.all; });
  facts.hasBaseline = std::any_of(runs.begin(), runs.end(), [](const RunFacts& run) { return run.hasBaseline; });
  facts.allowIncomplete =
      std::all_of(runs.begin(), runs.end(), [](const RunFacts& run) { return run.allowIncomplete; });
  return facts;
}

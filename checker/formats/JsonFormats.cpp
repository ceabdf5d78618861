// JSON as docs/json.md describes it, written as reports come. Strings of a report are bytes; here they become text.
// Test: tests/checker/Formats_test.cpp.

#include "checker/formats/JsonFormats.h"

#include <algorithm>

#include "APICheckEngine/Facade.h"
#include "checker/formats/Wording.h"
#include "checker/report/Characters.h"
#include "checker/report/ReportJson.h"

using Json = nlohmann::ordered_json;

namespace {

constexpr int kVersion = 1;  // of the format

Json headOf(const WriterOptions& options) {
  Json json{{"version", kVersion},
            {"tool", {{"name", "tarvo-check"}, {"version", TARVO_VERSION}}},
            {"engine", FlashEngine_1_00::kEngineVersion},
            {"database", options.database},
            {"options",
             {{"all", options.all}, {"baseline", options.hasBaseline}, {"allowIncomplete", options.allowIncomplete}}}};
  const auto add = [&](const char* name, const std::string& text) {
    if (!text.empty()) json[name] = text;
  };
  add("databaseSha256", options.databaseSha256);
  add("configFile", options.configFile);
  add("started", options.started);
  add("commandLine", options.commandLine);
  return json;
}

Json summaryOf(const Totals& totals, bool wasInterrupted) {
  Json verdicts;
  for (const Verdict verdict : {Verdict::clean, Verdict::incomplete, Verdict::findings, Verdict::notChecked})
    verdicts[nameOf(verdict)] = totals.of(verdict);
  Json findings;
  for (const Finding::Status status :
       {Finding::Status::reported, Finding::Status::accepted, Finding::Status::known, Finding::Status::noted})
    findings[nameOf(status)] = totals.of(status);
  return {{"applications", totals.applications},
          {"verdicts", verdicts},
          {"findings", findings},
          {"undetermined", totals.undetermined},
          {"notChecked", totals.notChecked},
          {"excluded", totals.excluded},
          {"seconds", totals.seconds},
          {"interrupted", wasInterrupted}};
}

// Replaces bytes that are no characters. A mark counts bytes of the text that it stands in, which become more.
void makeText(Json& json) {
  if (json.is_string()) {
    json = utf8(json.get_ref<const std::string&>());
  } else if (json.is_object() && json.contains("mark")) {
    const std::string text = json.at("text");
    const std::size_t mark = json.at("mark");
    const std::size_t end = mark + json.at("markLength").get<std::size_t>();
    const std::string whole = utf8(text);
    const std::size_t newMark = std::min(utf8(text.substr(0, mark)).size(), whole.size());
    const std::size_t newEnd = std::clamp(utf8(text.substr(0, end)).size(), newMark, whole.size());
    json["text"] = whole;
    json["mark"] = newMark;
    json["markLength"] = newEnd - newMark;
  } else if (json.is_structured()) {
    for (Json& item : json)
      makeText(item);
  }
}

class JsonWriter : public ReportWriter {
 public:
  JsonWriter(std::ostream& out, const WriterOptions& options) : out_(out) {
    const std::string head = jsonText(headOf(options), 2);
    out_ << head.substr(0, head.rfind('\n')) << ",\n  \"applications\": [";
  }

  void add(const ApplicationReport& report) override {
    out_ << (totals_.applications == 0 ? "\n    " : ",\n    ") << jsonText(toJson(report), 6);
    totals_.add(report);
  }

  void end(bool wasInterrupted) override {
    out_ << (totals_.applications == 0 ? "" : "\n  ")
         << "],\n  \"summary\": " << jsonText(summaryOf(totals_, wasInterrupted), 4) << "\n}\n";
    out_.flush();
  }

 private:
  std::ostream& out_;
  Totals totals_;
};

class JsonLinesWriter : public ReportWriter {
 public:
  JsonLinesWriter(std::ostream& out, const WriterOptions& options) : out_(out), last_(headOf(options)) {}

  void add(const ApplicationReport& report) override {
    out_ << jsonText(toJson(report)) << '\n';
    out_.flush();  // whoever reads along gets whole lines
    totals_.add(report);
  }

  void end(bool wasInterrupted) override {
    last_["summary"] = summaryOf(totals_, wasInterrupted);
    out_ << jsonText(last_) << '\n';
    out_.flush();
  }

 private:
  std::ostream& out_;
  Json last_;
  Totals totals_;
};

}  // namespace

std::unique_ptr<ReportWriter> makeJsonWriter(std::ostream& out, const WriterOptions& options) {
  return std::make_unique<JsonWriter>(out, options);
}

std::unique_ptr<ReportWriter> makeJsonLinesWriter(std::ostream& out, const WriterOptions& options) {
  return std::make_unique<JsonLinesWriter>(out, options);
}

std::string jsonText(Json json, int indent) {
  constexpr int kStep = 2;
  makeText(json);
  std::string text = escapedJson(json.dump(indent < 0 ? -1 : kStep));
  if (indent <= kStep) return text;
  std::string indented;
  for (const char c : text) {
    indented += c;
    if (c == '\n') indented.append(static_cast<std::size_t>(indent - kStep), ' ');
  }
  return indented;
}

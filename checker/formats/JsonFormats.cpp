// JSON as docs/json.md describes it, written as reports come. Strings of a report are bytes; here they become text.
// Test: tests/checker/Formats_test.cpp.

#include "checker/formats/JsonFormats.h"

#include <algorithm>

#include "checker/formats/Wording.h"
#include "checker/report/Characters.h"
#include "checker/report/JsonText.h"
#include "checker/report/ReportJson.h"

using Json = nlohmann::ordered_json;

namespace {

constexpr int kVersion = 1;  // of the format

// What a run was, beside its version.
Json jsonOf(const RunFacts& facts) {
  Json json{
      {"tool", {{"name", "tarvo-check"}, {"version", facts.tool}}},
      {"engine", facts.engine},
      {"database", facts.database},
      {"options", {{"all", facts.all}, {"baseline", facts.hasBaseline}, {"allowIncomplete", facts.allowIncomplete}}}};
  const auto add = [&](const char* name, const std::string& text) {
    if (!text.empty()) json[name] = text;
  };
  add("databaseSha256", facts.databaseSha256);
  add("configFile", facts.configFile);
  add("started", facts.started);
  add("commandLine", facts.commandLine);
  return json;
}

Json headOf(const WriterOptions& options) {
  Json json{{"version", kVersion}};
  json.update(jsonOf(options.run));
  for (const RunFacts& part : options.parts)
    json["runs"].push_back(jsonOf(part));
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

// What can be read again as it was.
std::string lossless(Json json, int indent = -1) {
  makeTextAndRaw(json);
  return jsonText(std::move(json), indent);
}

class JsonWriter : public ReportWriter {
 public:
  JsonWriter(std::ostream& out, const WriterOptions& options) : out_(out) {
    const std::string head = lossless(headOf(options), 2);
    out_ << head.substr(0, head.rfind('\n')) << ",\n  \"applications\": [";
  }

  void add(const ApplicationReport& report) override {
    out_ << (totals_.applications == 0 ? "\n    " : ",\n    ") << lossless(toJson(report), 6);
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
    out_ << lossless(toJson(report)) << '\n';
    out_.flush();  // whoever reads along gets whole lines
    totals_.add(report);
  }

  void end(bool wasInterrupted) override {
    last_["summary"] = summaryOf(totals_, wasInterrupted);
    out_ << lossless(last_) << '\n';
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

// The catalogue as text, JSON and CSV. The tables stand once, as rows of texts and numbers; each format writes them.
// Test: tests/checker/Store_test.cpp.

#include "checker/formats/CatalogueFormats.h"

#include <nlohmann/json.hpp>
#include <set>
#include <string_view>

#include "checker/formats/Wording.h"
#include "checker/report/Characters.h"

using Json = nlohmann::ordered_json;
using store::Catalogue;
using store::MethodTally;
using store::RunTally;
using store::Tally;
using store::Use;

namespace {

constexpr Verdict kVerdicts[] = {Verdict::findings, Verdict::notChecked, Verdict::incomplete, Verdict::clean};

// ---- text ----------------------------------------------------------------------------------------------------------

void textOf(const char* heading, const std::vector<Tally>& list, const char* call, const char* calls,
            std::ostream& out) {
  if (list.empty()) return;
  out << '\n' << heading << '\n';
  for (const Tally& each : list) {
    out << "  " << counted(each.applications, "application", "applications") << ": " << printable(each.name);
    if (each.calls > 0) out << " (" << counted(each.calls, call, calls) << ')';
    out << '\n';
  }
}

void textOf(const Catalogue& catalogue, std::ostream& out) {
  out << counted(catalogue.applications, "application", "applications") << ", "
      << counted(catalogue.calls, "call", "calls") << "; verdicts by " << printable(catalogue.database) << '\n';
  for (const Verdict verdict : kVerdicts)
    out << "  " << nameOf(verdict) << ": " << catalogue.verdicts[static_cast<std::size_t>(verdict)] << '\n';
  if (!catalogue.methods.empty()) out << "\nmethods\n";
  for (const MethodTally& method : catalogue.methods) {
    out << "  " << counted(method.applications, "application", "applications") << ": "
        << printable(method.plugin + "." + method.name) << (method.isDocumented ? "" : ", undocumented") << " ("
        << counted(method.calls, "call", "calls") << ")\n";
  }
  textOf("plug-ins", catalogue.plugins, "call", "calls", out);
  textOf("parts that were not checked", catalogue.reasons, "part", "parts", out);
  textOf("applications that could not be checked", catalogue.failures, "", "", out);
  textOf("libraries", catalogue.libraries, "", "", out);
  if (catalogue.runs.size() > 1) out << "\nruns\n";
  for (const RunTally& run : catalogue.runs) {
    if (catalogue.runs.size() == 1) break;
    out << "  " << printable(run.name) << ", tarvo-check " << printable(run.tool)
        << (run.isFinished ? "" : ", unfinished") << ':';
    for (const Verdict verdict : kVerdicts)
      out << ' ' << run.verdicts[static_cast<std::size_t>(verdict)] << ' ' << nameOf(verdict) << ',';
    out << ' ' << counted(run.applications, "application", "applications") << '\n';
  }
}

void textOf(const std::vector<Use>& uses, const std::string& what, std::ostream& out) {
  std::set<std::string_view> applications;
  for (const Use& use : uses) {
    applications.insert(use.application);
    out << printable(placeOf(use.path, use.place)) << ": " << printable(use.plugin + "." + use.method) << " ("
        << use.found << ", " << use.confidence << ")\n";
  }
  out << printable(what) << ": " << counted(uses.size(), "call", "calls") << " in "
      << counted(applications.size(), "application", "applications") << '\n';
}

// ---- JSON ----------------------------------------------------------------------------------------------------------

Json jsonOf(const std::uint64_t (&verdicts)[4]) {
  Json json;
  for (const Verdict verdict : {Verdict::clean, Verdict::incomplete, Verdict::findings, Verdict::notChecked})
    json[nameOf(verdict)] = verdicts[static_cast<std::size_t>(verdict)];
  return json;
}

Json jsonOf(const std::vector<Tally>& list, const char* name, const char* calls) {
  Json json = Json::array();
  for (const Tally& each : list) {
    Json item{{name, utf8(each.name)}, {"applications", each.applications}};
    if (calls != nullptr) item[calls] = each.calls;
    json.push_back(item);
  }
  return json;
}

Json jsonOf(const Catalogue& catalogue) {
  Json methods = Json::array();
  for (const MethodTally& method : catalogue.methods) {
    methods.push_back({{"plugin", utf8(method.plugin)},
                       {"method", utf8(method.name)},
                       {"documented", method.isDocumented},
                       {"applications", method.applications},
                       {"calls", method.calls}});
  }
  Json runs = Json::array();
  for (const RunTally& run : catalogue.runs) {
    runs.push_back({{"run", utf8(run.name)},
                    {"tool", run.tool},
                    {"started", run.started},
                    {"finished", run.isFinished},
                    {"applications", run.applications},
                    {"verdicts", jsonOf(run.verdicts)}});
  }
  return {{"version", 1},
          {"database", utf8(catalogue.database)},
          {"applications", catalogue.applications},
          {"calls", catalogue.calls},
          {"verdicts", jsonOf(catalogue.verdicts)},
          {"methods", methods},
          {"plugins", jsonOf(catalogue.plugins, "plugin", "calls")},
          {"notChecked", jsonOf(catalogue.reasons, "reason", "parts")},
          {"failures", jsonOf(catalogue.failures, "failure", nullptr)},
          {"libraries", jsonOf(catalogue.libraries, "library", nullptr)},
          {"runs", runs}};
}

Json jsonOf(const std::vector<Use>& uses) {
  Json json = Json::array();
  for (const Use& use : uses) {
    Json item{{"application", utf8(use.application)}, {"path", utf8(use.path)}};
    if (use.place.line > 0) item.update({{"line", use.place.line}, {"column", use.place.column}});
    item.update({{"plugin", utf8(use.plugin)},
                 {"method", utf8(use.method)},
                 {"found", use.found},
                 {"confidence", use.confidence}});
    json.push_back(item);
  }
  return json;
}

// ---- CSV -----------------------------------------------------------------------------------------------------------

// A field in quotes; what a spreadsheet would take for a formula is made a text.
std::string field(const std::string& bytes) {
  const std::string text = printable(utf8(bytes));
  std::string quoted = "\"";
  if (!text.empty() && std::string("=+-@").find(text.front()) != std::string::npos) quoted += '\'';
  for (const char c : text)
    quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
  return quoted + '"';
}

void row(std::ostream& out, const char* table, const std::string& name, const std::string& detail,
         std::uint64_t applications, std::uint64_t calls) {
  out << table << ',' << field(name) << ',' << field(detail) << ',' << applications << ',' << calls << "\r\n";
}

void csvOf(const Catalogue& catalogue, std::ostream& out) {
  out << "table,name,detail,applications,calls\r\n";
  for (const Verdict verdict : kVerdicts)
    row(out, "verdict", nameOf(verdict), "", catalogue.verdicts[static_cast<std::size_t>(verdict)], 0);
  for (const MethodTally& method : catalogue.methods) {
    row(out, "method", method.plugin + "." + method.name, method.isDocumented ? "documented" : "undocumented",
        method.applications, method.calls);
  }
  for (const auto& [table, list] :
       {std::pair("plugin", &catalogue.plugins), std::pair("not checked", &catalogue.reasons),
        std::pair("failure", &catalogue.failures), std::pair("library", &catalogue.libraries)}) {
    for (const Tally& each : *list)
      row(out, table, each.name, "", each.applications, each.calls);
  }
  for (const RunTally& run : catalogue.runs) {
    for (const Verdict verdict : kVerdicts)
      row(out, "run", run.name, nameOf(verdict), run.verdicts[static_cast<std::size_t>(verdict)], 0);
  }
}

void csvOf(const std::vector<Use>& uses, std::ostream& out) {
  out << "application,path,line,column,plugin,method,found,confidence\r\n";
  for (const Use& use : uses) {
    out << field(use.application) << ',' << field(use.path) << ',' << use.place.line << ',' << use.place.column << ','
        << field(use.plugin) << ',' << field(use.method) << ',' << use.found << ',' << use.confidence << "\r\n";
  }
}

}  // namespace

void write(const Catalogue& catalogue, CatalogueFormat format, std::ostream& out) {
  switch (format) {
    case CatalogueFormat::text:
      return textOf(catalogue, out);
    case CatalogueFormat::json:
      out << jsonOf(catalogue).dump(2) << '\n';
      return;
    case CatalogueFormat::csv:
      return csvOf(catalogue, out);
    case CatalogueFormat::html:
      return writePage(catalogue, out);
  }
}

void write(const std::vector<Use>& uses, const std::string& what, CatalogueFormat format, std::ostream& out) {
  if (format == CatalogueFormat::json) {
    out << Json{{"version", 1}, {"uses", jsonOf(uses)}}.dump(2) << '\n';
  } else if (format == CatalogueFormat::csv) {
    csvOf(uses, out);
  } else {
    textOf(uses, what, out);
  }
}

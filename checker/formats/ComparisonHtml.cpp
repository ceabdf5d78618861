// A comparison as one page, in the style of a report's. It has no script: its policy lets the browser apply the one
// style whose hash it names, and nothing else. Test: tests/checker/Comparison_test.cpp.

#include <algorithm>
#include <string_view>

#include "checker/formats/ComparisonFormats.h"
#include "checker/formats/Markup.h"
#include "checker/formats/PageParts.h"
#include "checker/formats/Wording.h"

using What = FindingChange::What;

namespace {

// The style of a call by FindingChange::What: as counting, as not counting, and as undecided.
constexpr const char* kStyles[] = {"call", "call known", "call undetermined"};
constexpr const char* kVerdictStyles[] = {"clean", "incomplete", "findings", "failed"};
constexpr std::size_t kMaxRows = 1000;  // of a list: the rest is in the other formats

std::string verdict(Verdict verdict) {
  return std::string("<span class=\"verdict ") + kVerdictStyles[static_cast<std::size_t>(verdict)] + "\">" +
         nameOf(verdict) + "</span>";
}

void line(int number, const std::string& code, const char* style, std::ostream& out) {
  out << "<span class=\"line" << style << "\"><span class=\"number\">" << (number > 0 ? std::to_string(number) : "")
      << "</span><code>" << code << "</code></span>\n";
}

// The call's line with those around it.
void source(const Call& call, std::ostream& out) {
  if (call.excerpt.text.empty()) return;
  const std::string_view text = call.excerpt.text;
  out << "<pre>";
  for (const SourceLine& before : call.before)
    line(before.number, markupOfSource(before.text), "", out);
  line(call.excerpt.number,
       markupOfSource(text.substr(0, call.mark)) + "<mark>" + markupOfSource(text.substr(call.mark, call.markLength)) +
           "</mark>" + markupOfSource(text.substr(call.mark + call.markLength)),
       " called", out);
  for (const SourceLine& after : call.after)
    line(after.number, markupOfSource(after.text), "", out);
  out << "</pre>\n";
}

void finding(const FindingChange& change, std::ostream& out) {
  const bool isNote = change.what == What::added && !counts(change.finding.status);
  out << "<div class=\"" << (isNote ? "call noted" : kStyles[static_cast<std::size_t>(change.what)])
      << "\"><p class=\"message\"><bdi>" << markup(lineOn(change)) << "</bdi></p>\n<p class=\"facts\"><bdi>"
      << markup(placeOf(change.finding.call)) << "</bdi></p>\n";
  source(change.finding.call, out);
  out << "</div>\n";
}

void rest(std::size_t count, std::ostream& out) {
  if (count > kMaxRows) out << "<p class=\"facts\">and " << count - kMaxRows << " more</p>\n";
}

// A list that unfolds; nothing if it is empty.
template <typename Item, typename Text>
void list(const char* heading, const std::vector<Item>& items, const Text& text, std::ostream& out) {
  if (items.empty()) return;
  out << "<details class=\"plain\"><summary>" << heading << " (" << items.size() << ")</summary>\n<ul>\n";
  for (std::size_t i = 0; i < std::min(items.size(), kMaxRows); ++i)
    out << "<li><bdi>" << markup(text(items[i])) << "</bdi></li>\n";
  out << "</ul>\n";
  rest(items.size(), out);
  out << "</details>\n";
}

void notes(const std::vector<std::string>& notes, std::ostream& out) {
  for (const std::string& note : notes)
    out << "<p class=\"notice\">" << markup(note) << "</p>\n";
}

void verdicts(const ApplicationComparison& application, std::ostream& out) {
  out << "<p>";
  if (!application.older.empty()) out << verdict(application.olderVerdict);
  if (!application.older.empty() && !application.newer.empty()) out << " &#8594; ";
  if (!application.newer.empty()) out << verdict(application.newerVerdict);
  out << " <span class=\"facts\">" << markup(summaryOf(application)) << "</span></p>\n";
}

void section(const ApplicationComparison& application, std::ostream& out) {
  const auto name = [](const std::string& text) { return text; };
  out << "<section class=\"card\"><h2><bdi>" << markup(titleOf(application)) << "</bdi></h2>\n";
  verdicts(application, out);
  notes(application.notes, out);
  for (std::size_t i = 0; i < std::min(application.findings.size(), kMaxRows); ++i)
    finding(application.findings[i], out);
  rest(application.findings.size(), out);
  list(
      "Parts that were looked at before, and are not now", application.notChecked,
      [](const NotChecked& item) { return item.part + ": " + item.reason; }, out);
  list(
      "Calls", application.calls, [](const CallChange& change) { return lineOn(change); }, out);
  list("Plug-ins that came", application.plugins.came, name, out);
  list("Plug-ins that went", application.plugins.went, name, out);
  list("Files that came", application.files.came, name, out);
  list("Files that went", application.files.went, name, out);
  out << "</section>\n";
}

void version(const char* heading, const RunFacts& facts, std::ostream& out) {
  out << "<dt>" << heading << "</dt><dd>";
  if (!facts.started.empty()) out << markup(facts.started) << ", ";
  out << "tarvo-check " << markup(facts.tool) << ", database <bdi>" << markup(facts.database) << "</bdi>";
  if (!facts.databaseSha256.empty()) out << " (SHA-256 " << markup(facts.databaseSha256) << ")";
  out << "</dd>\n";
}

}  // namespace

void writePage(const Comparison& comparison, std::ostream& out) {
  out << "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
      << "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src 'sha256-" << kCssHash
      << "'; base-uri 'none'; form-action 'none'\">\n"
      << "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
      << "<meta name=\"color-scheme\" content=\"light dark\">\n<title>API check: comparison</title>\n<style>" << kCss
      << "</style>\n</head>\n<body>\n<header>\n<h1>Comparison</h1>\n<p class=\"lead\">" << markup(summaryOf(comparison))
      << "</p>\n</header>\n<main>\n";
  notes(comparison.notes, out);
  for (const ApplicationComparison& application : comparison.applications)
    section(application, out);
  out << "<details class=\"plain\"><summary>Evidence</summary>\n<dl>\n";
  version("Older version", comparison.older, out);
  version("Newer version", comparison.newer, out);
  out << "</dl>\n</details>\n</main>\n</body>\n</html>\n";
}

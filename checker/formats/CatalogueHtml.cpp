// The catalogue as one page. Its pictures are drawn here, as SVG in the page: a bar of verdicts, bars of methods, and
// the verdicts of each run side by side. Test: tests/checker/Store_test.cpp.

#include <algorithm>

#include "checker/formats/CatalogueFormats.h"
#include "checker/formats/Markup.h"
#include "checker/formats/Wording.h"

using store::Catalogue;
using store::MethodTally;
using store::RunTally;
using store::Tally;

namespace {

constexpr std::size_t kMaxRows = 200;  // of a table: the rest is in the other formats
constexpr int kWidth = 1000;           // of a picture, in its own units

struct Part {
  Verdict verdict;
  const char* style;
  const char* word;
};
constexpr Part kParts[] = {{Verdict::findings, "findings", "undocumented APIs"},
                           {Verdict::notChecked, "failed", "could not be checked"},
                           {Verdict::incomplete, "incomplete", "not checked whole"},
                           {Verdict::clean, "clean", "documented APIs only"}};

constexpr const char* kHead = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; style-src 'unsafe-inline'">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>Catalogue</title>
<style>
:root { color-scheme: light dark; --page: #f3f5f8; --card: #fff; --ink: #18212d; --soft: #55606f; --line: #dbe1e8;
  --clean: #2f9e68; --incomplete: #d99a0b; --findings: #d64545; --failed: #7c5cc9; --bar: #0b5cad; }
@media (prefers-color-scheme: dark) { :root { --page: #10151c; --card: #19202a; --ink: #e5eaf1; --soft: #a0acbb;
  --line: #2d3744; --bar: #7db7f5; } }
body { margin: 0 auto; max-width: 72rem; padding: 1.5rem 1.25rem 4rem; background: var(--page); color: var(--ink);
  font: 1rem/1.5 system-ui, sans-serif; }
h1 { margin: 0; font-size: 1.75rem; } h2 { margin: 0 0 .75rem; font-size: 1.05rem; }
section { background: var(--card); border: 1px solid var(--line); border-radius: .75rem; padding: 1.1rem 1.25rem;
  margin-top: 1rem; }
p { margin: .25rem 0; } .facts { color: var(--soft); font-size: .875rem; }
svg { display: block; width: 100%; } .wide { height: 1.5rem; } .runs { height: 10rem; }
.clean { fill: var(--clean); } .incomplete { fill: var(--incomplete); } .findings, .undocumented { fill: var(--findings); }
.failed { fill: var(--failed); } .bar { fill: var(--bar); }
table { width: 100%; border-collapse: collapse; font-size: .9rem; } td, th { padding: .2rem .5rem; text-align: left;
  vertical-align: middle; border-top: 1px solid var(--line); overflow-wrap: anywhere; } thead th { border: 0; }
.number { text-align: right; font-variant-numeric: tabular-nums; } .picture { width: 30%; } .picture svg { height: .8rem; }
.legend { list-style: none; margin: .75rem 0 0; padding: 0; display: flex; flex-wrap: wrap; gap: .25rem 1.5rem; }
.legend svg { display: inline-block; width: .7rem; height: .7rem; margin-right: .4rem; }
</style>
</head>
<body>
<h1>Catalogue</h1>
)";

double share(std::uint64_t part, std::uint64_t whole) {
  return whole == 0 ? 0 : static_cast<double>(part) / static_cast<double>(whole) * kWidth;
}

std::uint64_t countOf(const std::uint64_t (&verdicts)[4], const Part& part) {
  return verdicts[static_cast<std::size_t>(part.verdict)];
}

void rectangle(const char* style, double x, double y, double width, double height, std::ostream& out) {
  out << "<rect class=\"" << style << "\" x=\"" << x << "\" y=\"" << y << "\" width=\"" << width << "\" height=\""
      << height << "\"/>";
}

void bar(const char* style, std::uint64_t part, std::uint64_t whole, std::ostream& out) {
  out << "<td class=\"picture\"><svg viewBox=\"0 0 " << kWidth
      << " 10\" preserveAspectRatio=\"none\" aria-hidden=\"true\">";
  rectangle(style, 0, 0, share(part, whole), 10, out);
  out << "</svg></td>";
}

void verdicts(const Catalogue& catalogue, std::ostream& out) {
  out << "<section><h2>Verdicts</h2>\n<svg class=\"wide\" viewBox=\"0 0 " << kWidth
      << " 10\" preserveAspectRatio=\"none\" role=\"img\" aria-label=\"Applications by verdict\">";
  double x = 0;
  for (const Part& part : kParts) {
    const double width = share(countOf(catalogue.verdicts, part), catalogue.applications);
    rectangle(part.style, x, 0, width, 10, out);
    x += width;
  }
  out << "</svg>\n<ul class=\"legend\">";
  for (const Part& part : kParts) {
    out << "<li><svg viewBox=\"0 0 10 10\" aria-hidden=\"true\">";
    rectangle(part.style, 0, 0, 10, 10, out);
    out << "</svg>" << countOf(catalogue.verdicts, part) << ' ' << part.word << "</li>";
  }
  out << "</ul></section>\n";
}

// A column for each run, as high as its applications are many.
void runs(const Catalogue& catalogue, std::ostream& out) {
  if (catalogue.runs.size() < 2) return;
  constexpr int kHeight = 100;
  std::uint64_t most = 1;
  for (const RunTally& run : catalogue.runs)
    most = std::max(most, run.applications);
  const double step = static_cast<double>(kWidth) / static_cast<double>(catalogue.runs.size());
  out << "<section><h2>Runs</h2>\n<svg class=\"runs\" viewBox=\"0 0 " << kWidth << ' ' << kHeight
      << "\" preserveAspectRatio=\"none\" role=\"img\" aria-label=\"Verdicts of each run, the oldest first\">";
  double x = 0;
  for (const RunTally& run : catalogue.runs) {
    double bottom = kHeight;
    out << "<g><title>" << markup(run.name) << "</title>";
    for (const Part& part : kParts) {
      const double height = share(countOf(run.verdicts, part), most) * kHeight / kWidth;
      bottom -= height;
      rectangle(part.style, x + step * 0.1, bottom, step * 0.8, height, out);
    }
    out << "</g>";
    x += step;
  }
  out << "</svg>\n<table><thead><tr><th>Run</th><th>Began</th><th>tarvo-check</th>";
  for (const Part& part : kParts)
    out << "<th class=\"number\">" << part.word << "</th>";
  out << "</tr></thead>\n";
  for (const RunTally& run : catalogue.runs) {
    out << "<tr><td>" << markup(run.name) << (run.isFinished ? "" : " (unfinished)") << "</td><td>"
        << markup(run.started) << "</td><td>" << markup(run.tool) << "</td>";
    for (const Part& part : kParts)
      out << "<td class=\"number\">" << countOf(run.verdicts, part) << "</td>";
    out << "</tr>\n";
  }
  out << "</table></section>\n";
}

void more(std::size_t rows, std::ostream& out) {
  if (rows > kMaxRows) out << "<p class=\"facts\">and " << rows - kMaxRows << " more</p>";
}

void methods(const Catalogue& catalogue, bool isDocumented, const char* heading, std::ostream& out) {
  std::vector<const MethodTally*> list;
  for (const MethodTally& method : catalogue.methods) {
    if (method.isDocumented == isDocumented) list.push_back(&method);
  }
  if (list.empty()) return;
  out << "<section><h2>" << heading << "</h2>\n<table><thead><tr><th>Method</th><th></th><th "
      << "class=\"number\">Applications</th><th class=\"number\">Calls</th></tr></thead>\n";
  for (std::size_t i = 0; i < std::min(list.size(), kMaxRows); ++i) {
    out << "<tr><td><bdi>" << markup(list[i]->plugin + "." + list[i]->name) << "</bdi></td>";
    bar(isDocumented ? "bar" : "undocumented", list[i]->applications, list.front()->applications, out);
    out << "<td class=\"number\">" << list[i]->applications << "</td><td class=\"number\">" << list[i]->calls
        << "</td></tr>\n";
  }
  out << "</table>";
  more(list.size(), out);
  out << "</section>\n";
}

void tallies(const char* heading, const std::vector<Tally>& list, std::ostream& out) {
  if (list.empty()) return;
  out << "<section><h2>" << heading << "</h2>\n<table>\n";
  for (std::size_t i = 0; i < std::min(list.size(), kMaxRows); ++i) {
    out << "<tr><td><bdi>" << markup(list[i].name) << "</bdi></td>";
    bar("bar", list[i].applications, list.front().applications, out);
    out << "<td class=\"number\">" << counted(list[i].applications, "application", "applications") << "</td></tr>\n";
  }
  out << "</table>";
  more(list.size(), out);
  out << "</section>\n";
}

}  // namespace

void writePage(const Catalogue& catalogue, std::ostream& out) {
  out << kHead << "<p>" << counted(catalogue.applications, "application", "applications") << ", "
      << counted(catalogue.calls, "call", "calls") << " on plug-ins.</p>\n<p class=\"facts\">Verdicts by <bdi>"
      << markup(catalogue.database) << "</bdi>.</p>\n";
  verdicts(catalogue, out);
  runs(catalogue, out);
  methods(catalogue, false, "Undocumented methods", out);
  methods(catalogue, true, "Documented methods", out);
  tallies("Plug-ins", catalogue.plugins, out);
  tallies("Parts that were not checked", catalogue.reasons, out);
  tallies("Applications that could not be checked", catalogue.failures, out);
  tallies("Libraries", catalogue.libraries, out);
  out << "</body>\n</html>\n";
}

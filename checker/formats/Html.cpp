// Test: tests/checker/Formats_test.cpp; tests/groups/browser opens the page.
//
// The page's policy lets the browser run and apply the one script and the one style that are named by their hashes:
// report.js and report.css, which the build embeds. All that comes from an application passes through `markup`.

#include "checker/formats/Html.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <vector>

#include "APICheckEngine/APIAnalysis.h"
#include "checker/formats/Characters.h"
#include "checker/formats/PageParts.h"
#include "checker/formats/Wording.h"

namespace {

constexpr std::size_t kMaxCalls = 500;   // of an application that are shown
constexpr std::size_t kOpenCalls = 3;    // of those, unfolded
constexpr std::size_t kMaxMethods = 10;  // in the picture
constexpr std::size_t kCutLine = 157;    // a line of so many bytes may have been longer
constexpr const char* kCut = "<span class=\"cut\">…</span>";

// For style and script, by Verdict.
constexpr const char* kClasses[] = {"clean", "incomplete", "findings", "failed"};
constexpr const char* kLabels[] = {"clean", "incomplete", "findings", "could not check"};
constexpr Verdict kWorstFirst[] = {Verdict::findings, Verdict::notChecked, Verdict::incomplete, Verdict::clean};

const char* classOf(Verdict verdict) {
  return kClasses[static_cast<std::size_t>(verdict)];
}

const char* labelOf(Verdict verdict) {
  return kLabels[static_cast<std::size_t>(verdict)];
}

std::string element(const std::string& name, const std::string& classes, const std::string& content) {
  return "<" + name + " class=\"" + classes + "\">" + content + "</" + name + ">";
}

// A text of an application between its neighbours, whatever its direction of writing.
std::string isolated(const std::string& text) {
  return "<bdi>" + markup(text) + "</bdi>";
}

std::string secondsOf(double seconds) {
  char text[64];
  (void)std::snprintf(text, sizeof text, "%.2f", seconds);
  return text;
}

// `path` as it stands in its application.
std::string inside(const std::string& path, const std::string& application) {
  const bool isInside = path.size() > application.size() && path.compare(0, application.size(), application) == 0;
  const std::size_t start = isInside ? path.find_first_not_of("!/", application.size()) : 0;
  return start == std::string::npos ? path : path.substr(start);
}

std::string lineOf(int number, const std::string& content, const char* classes) {
  return std::string("<span class=\"") + classes + "\"><span class=\"number\">" +
         (number > 0 ? std::to_string(number) : "") + "</span><code>" + content + "</code></span>\n";
}

std::string plainLine(const SourceLine& line) {
  return lineOf(line.number, markupOfSource(line.text) + (line.text.size() >= kCutLine ? kCut : ""), "line");
}

// The lines around a call, the call itself marked.
std::string sourceOf(const Call& call) {
  std::string lines;
  for (const SourceLine& line : call.before)
    lines += plainLine(line);
  const std::string_view text = call.excerpt.text;
  const std::string_view lead = text.substr(0, call.mark);
  const bool isCutBefore =
      call.place.column > 0 && static_cast<std::size_t>(call.place.column - 1) > countCharacters(lead);
  lines += lineOf(call.excerpt.number,
                  (isCutBefore ? kCut : "") + markupOfSource(lead) + "<mark>" +
                      markupOfSource(text.substr(call.mark, call.markLength)) + "</mark>" +
                      markupOfSource(text.substr(call.mark + call.markLength)) + (text.size() >= kCutLine ? kCut : ""),
                  "line called");
  for (const SourceLine& line : call.after)
    lines += plainLine(line);
  return "<pre>" + lines + "</pre>";
}

std::string callOf(const Call& call, const std::string& subject, const std::string& remarks, const char* classes,
                   const std::string& application, bool isOpen) {
  Call shown = call;
  shown.path = inside(call.path, application);
  return std::string("<details class=\"call ") + classes + "\"" + (isOpen ? " open" : "") + "><summary>" +
         element("span", "method", isolated(subject)) + " <span class=\"on\">on " + isolated(call.plugin) +
         "</span><span class=\"where\">" + isolated(placeOf(shown)) + " · " +
         element("span", "remarks", markup(remarks)) + "</span></summary>" + sourceOf(call) + "</details>\n";
}

std::string findingsOf(const ApplicationReport& report) {
  if (report.findings.empty()) return "";
  std::string calls;
  for (std::size_t i = 0; i < std::min(report.findings.size(), kMaxCalls); ++i) {
    const Finding& finding = report.findings[i];
    calls += callOf(finding.call, finding.call.method.empty() ? finding.call.code : finding.call.method,
                    remarksOn(finding), nameOf(finding.status), report.application, i < kOpenCalls);
  }
  const std::string heading = report.verdict == Verdict::findings ? verdictOn(report) : "Undocumented APIs";
  return "<h3>" + markup(heading) + "</h3>\n" + calls;
}

std::string undeterminedOf(const ApplicationReport& report) {
  if (report.undetermined.empty()) return "";
  std::string calls;
  for (std::size_t i = 0; i < std::min(report.undetermined.size(), kMaxCalls); ++i) {
    const Undetermined& item = report.undetermined[i];
    calls += callOf(item.call, item.call.code, remarksOn(item), "undetermined", report.application, false);
  }
  return "<h3>Could not be determined</h3>\n" + calls;
}

std::string hiddenOf(const ApplicationReport& report) {
  const std::size_t longest = std::max(report.findings.size(), report.undetermined.size());
  if (longest <= kMaxCalls) return "";
  return element("p", "notice",
                 "Only the first " + std::to_string(kMaxCalls) +
                     " calls of each kind are shown; the "
                     "other formats hold them all.");
}

std::string notCheckedOf(const ApplicationReport& report) {
  if (report.notChecked.empty()) return "";
  std::string parts;
  for (const NotChecked& missed : report.notChecked)
    parts +=
        "<dt>" + isolated(inside(missed.part, report.application)) + "</dt><dd>" + markup(missed.reason) + "</dd>\n";
  return "<h3>Not checked</h3>\n<dl>" + parts + "</dl>\n";
}

std::string rowOf(const std::string& what, const std::string& plugin, const std::string& name,
                  const std::string& path) {
  return "<tr><td>" + what + "</td><td>" + isolated(plugin) + "</td><td><code>" + isolated(name) + "</code></td><td>" +
         isolated(path) + "</td></tr>\n";
}

std::string pluginsOf(const ApplicationReport& report) {
  if (report.elements.empty() && report.bindings.empty()) return "";
  std::string rows;
  for (const PluginElement& item : report.elements)
    rows += rowOf("element", item.plugin, item.id, inside(item.path, report.application));
  for (const Binding& binding : report.bindings)
    rows += rowOf("variable", binding.plugin, binding.variable, inside(binding.path, report.application));
  return "<details class=\"plugins\"><summary>Plug-ins: " + counted(report.elements.size(), "element", "elements") +
         ", " + counted(report.bindings.size(), "variable", "variables") +
         "</summary><div class=\"wide\"><table><thead><tr><th scope=\"col\">Kind</th><th scope=\"col\">Plug-in</th>"
         "<th scope=\"col\">Name</th><th scope=\"col\">File</th></tr></thead><tbody>\n" +
         rows + "</tbody></table></div></details>\n";
}

class HtmlWriter : public ReportWriter {
 public:
  HtmlWriter(std::ostream& out, const WriterOptions& options) : out_(out), options_(options) {}

  void add(const ApplicationReport& report) override {
    totals_.add(report);
    for (const Finding& finding : report.findings) {
      if (finding.status == Finding::Status::reported) ++methods_[finding.call.method];
    }
    const std::string number = std::to_string(totals_.applications);
    const std::size_t uses = countOf(report, Finding::Status::reported);
    const std::size_t missed = report.notChecked.size();
    const auto data = [](const char* name, const std::string& value) {
      return std::string(" data-") + name + "=\"" + value + "\"";
    };
    const auto rank = static_cast<int>(std::find(std::begin(kWorstFirst), std::end(kWorstFirst), report.verdict) -
                                       std::begin(kWorstFirst));
    applications_ +=
        "<tbody class=\"application\"" + data("verdict", classOf(report.verdict)) + data("rank", std::to_string(rank)) +
        data("name", markup(report.application)) + data("uses", std::to_string(uses)) +
        data("missed", std::to_string(missed)) + data("seconds", std::to_string(report.seconds)) +
        ">\n<tr><th scope=\"row\"><button type=\"button\" class=\"toggle\" aria-expanded=\"true\" aria-controls=\"a" +
        number + "\">" + isolated(report.application) + "</button></th><td>" +
        element("span", std::string("verdict ") + classOf(report.verdict), labelOf(report.verdict)) +
        "</td><td class=\"count\">" + std::to_string(uses) + "</td><td class=\"count less\">" + std::to_string(missed) +
        "</td><td class=\"count less\">" + secondsOf(report.seconds) + "</td></tr>\n<tr class=\"more\" id=\"a" +
        number + "\"><td colspan=\"5\">" + detailsOf(report) + "</td></tr>\n</tbody>\n";
  }

  void end(bool wasInterrupted) override {
    out_ << "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
         << "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src 'sha256-" << kCssHash
         << "'; script-src 'sha256-" << kJsHash << "'; base-uri 'none'; form-action 'none'\">\n"
         << "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
         << "<meta name=\"color-scheme\" content=\"light dark\">\n<title>API check: "
         << counted(totals_.of(Finding::Status::reported), "use", "uses") << " of undocumented APIs</title>\n<style>"
         << kCss << "</style>\n</head>\n<body>\n<a class=\"skip\" href=\"#applications\">To the applications</a>\n"
         << "<header>\n<h1>API check</h1>\n<p class=\"lead\">" << markup(summaryOf(totals_)) << "</p>\n"
         << "<p class=\"facts\">tarvo-check " << TARVO_VERSION << ", engine " << FlashEngine_1_00::kEngineVersion
         << ", database " << isolated(options_.database) << ", " << secondsOf(totals_.seconds) << " seconds of checking"
         << (options_.all ? ", all calls" : "") << "</p>\n";
    if (wasInterrupted) out_ << element("p", "notice", kInterrupted);
    out_ << "</header>\n<main>\n<div class=\"totals\">\n"
         << verdicts() << methods() << "</div>\n"
         << table() << "</main>\n<script>" << kJs << "</script>\n</body>\n</html>\n";
    out_.flush();
  }

 private:
  static std::string detailsOf(const ApplicationReport& report) {
    const bool isSaid = report.verdict == Verdict::findings;  // as a heading
    const std::string verdict =
        isSaid ? "" : element("p", std::string("says ") + classOf(report.verdict), markup(verdictOn(report))) + "\n";
    const std::string looked = counted(report.sources, "web source", "web sources") + " and " +
                               counted(report.flashFiles, "Flash file", "Flash files") + " looked at in " +
                               secondsOf(report.seconds) + " seconds";
    return verdict + findingsOf(report) + undeterminedOf(report) + hiddenOf(report) + notCheckedOf(report) +
           pluginsOf(report) + (report.verdict == Verdict::notChecked ? "" : element("p", "facts", looked));
  }

  std::string figures() const {
    struct Figure {
      std::size_t count;
      const char* one;
      const char* several;
      bool isAlwaysShown;
    };
    std::string items;
    for (const Figure& figure :
         {Figure{totals_.of(Finding::Status::reported), "undocumented use", "undocumented uses", true},
          Figure{methods_.size(), "undocumented method", "undocumented methods", true},
          Figure{totals_.of(Finding::Status::accepted), "accepted use", "accepted uses", false},
          Figure{totals_.of(Finding::Status::known), "use in the baseline", "uses in the baseline", false},
          Figure{totals_.undetermined, "undetermined call", "undetermined calls", false},
          Figure{totals_.notChecked, "part not checked", "parts not checked", true}}) {
      if (figure.count == 0 && !figure.isAlwaysShown) continue;
      items += "<li><b>" + std::to_string(figure.count) + "</b> " + (figure.count == 1 ? figure.one : figure.several) +
               "</li>\n";
    }
    return "<ul class=\"figures\">\n" + items + "</ul>\n";
  }

  // The bar, and its legend: buttons that choose what the table shows.
  std::string verdicts() const {
    std::string parts;
    std::string legend;
    std::string words;
    std::size_t x = 0;
    for (const Verdict verdict : kWorstFirst) {
      const std::size_t count = totals_.of(verdict);
      if (count == 0) continue;
      const std::string number = std::to_string(count);
      parts += std::string("<rect class=\"") + classOf(verdict) + "\" x=\"" + std::to_string(x) + "\" width=\"" +
               number + "\" height=\"1\"/>";
      words += (words.empty() ? "" : ", ") + number + " " + labelOf(verdict);
      legend += std::string("<button type=\"button\" class=\"choice ") + classOf(verdict) + "\" data-verdict=\"" +
                classOf(verdict) + "\" aria-pressed=\"false\"><b>" + number + "</b> " + labelOf(verdict) +
                "</button>\n";
      x += count;
    }
    return "<section class=\"card\" aria-labelledby=\"verdicts\">\n<h2 id=\"verdicts\">Verdicts</h2>\n"
           "<svg class=\"verdicts\" role=\"img\" aria-label=\"" +
           words + "\" viewBox=\"0 0 " + std::to_string(std::max<std::size_t>(x, 1)) +
           " 1\" preserveAspectRatio=\"none\">" + parts + "</svg>\n<div class=\"legend\">\n" + legend + "</div>\n" +
           figures() + "</section>\n";
  }

  // The most frequent methods, longest bar first.
  std::string methods() const {
    std::vector<std::pair<std::string, std::size_t>> ranked(methods_.begin(), methods_.end());
    if (ranked.empty()) return "";
    std::stable_sort(ranked.begin(), ranked.end(), [](const auto& a, const auto& b) { return a.second > b.second; });
    const std::size_t all = ranked.size();
    ranked.resize(std::min(all, kMaxMethods));
    const std::string longest = std::to_string(ranked.front().second);
    std::string rows;
    for (const auto& [method, count] : ranked) {
      const std::string number = std::to_string(count);
      rows += "<li><button type=\"button\" class=\"find\" data-find=\"" + markup(method) + "\">" +
              (method.empty() ? "(no name)" : isolated(method)) + "</button><svg aria-hidden=\"true\" viewBox=\"0 0 " +
              longest + " 1\" preserveAspectRatio=\"none\"><rect class=\"findings\" width=\"" + number +
              "\" height=\"1\"/></svg><b>" + number + "</b></li>\n";
    }
    const std::string rest =
        all > kMaxMethods ? element("p", "facts", "and " + counted(all - kMaxMethods, "other", "others")) : "";
    return "<section class=\"card\" aria-labelledby=\"methods\">\n<h2 id=\"methods\">Undocumented methods</h2>\n"
           "<ol class=\"methods\">\n" +
           rows + "</ol>\n" + rest + "</section>\n";
  }

  std::string table() const {
    struct Column {
      const char* key;
      const char* label;
      const char* classes;
    };
    std::string head;
    for (const Column& column :
         {Column{"name", "Application", ""}, Column{"rank", "Verdict", ""}, Column{"uses", "Uses", "count"},
          Column{"missed", "Not checked", "count less"}, Column{"seconds", "Seconds", "count less"}}) {
      head += std::string("<th scope=\"col\" class=\"") + column.classes + "\"><button type=\"button\" data-sort=\"" +
              column.key + "\">" + column.label + "</button></th>";
    }
    return "<section class=\"card\" aria-labelledby=\"applications\">\n<h2 id=\"applications\" "
           "tabindex=\"-1\">Applications"
           "</h2>\n<div class=\"tools\"><label for=\"search\">Search</label><input id=\"search\" type=\"search\" "
           "placeholder=\"name, method, plug-in, file\" autocomplete=\"off\" spellcheck=\"false\">"
           "<button type=\"button\" id=\"unfold\">Unfold all</button><span id=\"shown\" role=\"status\"></span></div>\n"
           "<table id=\"table\">\n<thead><tr>" +
           head + "</tr></thead>\n" + applications_ + "</table>\n</section>\n";
  }

  std::ostream& out_;
  WriterOptions options_;
  Totals totals_;
  std::map<std::string, std::size_t> methods_;
  std::string applications_;
};

}  // namespace

std::unique_ptr<ReportWriter> makeHtmlWriter(std::ostream& out, const WriterOptions& options) {
  return std::make_unique<HtmlWriter>(out, options);
}

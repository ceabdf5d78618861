// JUnit XML, printed by TinyXML. The counts stand before the cases, so the document is kept until the end.
// Test: tests/checker/Formats_test.cpp; tests/groups/formats asks another reader.

#include "checker/formats/JUnit.h"

#include <tinyxml.h>

#include <cstdio>

#include "checker/formats/Wording.h"
#include "checker/report/Characters.h"

namespace {

std::string secondsOf(double seconds) {
  char text[64];
  (void)std::snprintf(text, sizeof text, "%.3f", seconds);
  return text;
}

// A text for TinyXML to write. It takes "&#x" for a reference that is escaped already; here it is only text.
std::string xmlText(const std::string& text) {
  std::string shown = printable(text);
  for (std::size_t at = shown.find("&#x"); at != std::string::npos; at = shown.find("&#x", at))
    shown.replace(at + 1, 1, "\\x23");
  return shown;
}

// Adds an element to `parent`, which owns it.
TiXmlElement& addElement(TiXmlNode& parent, const char* name) {
  auto* element = new TiXmlElement(name);
  parent.LinkEndChild(element);
  return *element;
}

void addText(TiXmlElement& element, const std::string& text) {
  if (!text.empty()) element.LinkEndChild(new TiXmlText(text.c_str()));
}

void setCount(TiXmlElement& element, const char* name, std::size_t count) {
  element.SetAttribute(name, std::to_string(count).c_str());
}

class JUnitWriter : public ReportWriter {
 public:
  JUnitWriter(std::ostream& out, const WriterOptions& options) : out_(out), options_(options), suite_("testsuite") {
    suite_.SetAttribute("name", "tarvo-check");
    properties_ = &addElement(suite_, "properties");  // before the cases
    addProperty("configFile", options_.run.configFile);
  }

  void add(const ApplicationReport& report) override {
    totals_.add(report);
    TiXmlElement& testCase = addCase(report.application, report.seconds);
    const Lines lines = linesOn(report);
    if (report.verdict != Verdict::clean) {
      const bool isSkipped = report.verdict == Verdict::incomplete && options_.run.allowIncomplete;
      const char* failure = report.verdict == Verdict::notChecked ? "error" : "failure";
      TiXmlElement& element = addElement(testCase, isSkipped ? "skipped" : failure);
      element.SetAttribute("message", xmlText(verdictOn(report)).c_str());
      if (!isSkipped) element.SetAttribute("type", nameOf(report.verdict));
      addText(element, lines.failing);
    }
    const std::string basis = report.verdict == Verdict::clean ? xmlText(verdictOn(report)) + '\n' : std::string();
    if (const std::string other = basis + lines.other; !other.empty())
      addText(addElement(testCase, "system-out"), other);
  }

  void end(bool wasInterrupted) override {
    if (wasInterrupted) {
      TiXmlElement& error = addElement(addCase("the whole run", 0), "error");
      error.SetAttribute("message", kInterrupted);
      error.SetAttribute("type", "interrupted");
    }
    addProperty("rules", totals_.rules.text());
    if (properties_->NoChildren()) suite_.RemoveChild(properties_);
    TiXmlDocument document;
    document.LinkEndChild(new TiXmlDeclaration("1.0", "UTF-8", ""));
    TiXmlElement& suites = addElement(document, "testsuites");
    setCounts(suites, wasInterrupted);
    setCounts(suite_, wasInterrupted);
    setCount(suite_, "skipped", options_.run.allowIncomplete ? totals_.of(Verdict::incomplete) : 0);
    suites.InsertEndChild(suite_);
    TiXmlPrinter printer;
    printer.SetIndent("  ");
    document.Accept(&printer);
    out_ << printer.CStr();
    out_.flush();
  }

 private:
  struct Lines {
    std::string failing;  // what makes the case fail
    std::string other;
  };

  static Lines linesOn(const ApplicationReport& report) {
    Lines lines;
    for (const Finding& finding : report.findings) {
      const bool counts = finding.status == Finding::Status::reported;
      (counts ? lines.failing : lines.other) += lineOn(finding.call, messageOf(finding), remarksOn(finding));
    }
    for (const Undetermined& item : report.undetermined)
      lines.other += lineOn(item.call, messageOf(item), remarksOn(item));
    for (const NotChecked& item : report.notChecked)
      (report.verdict == Verdict::findings ? lines.other : lines.failing) += xmlText(::lineOn(item)) + '\n';
    if (const std::string excluded = lineOnExcluded(report); !excluded.empty()) lines.other += xmlText(excluded) + '\n';
    return lines;
  }

  static std::string lineOn(const Call& call, const std::string& message, const std::string& remarks) {
    return xmlText(placeOf(call) + ": " + message + " (" + remarks + ")") + '\n';
  }

  void addProperty(const char* name, const std::string& value) {
    if (value.empty()) return;
    TiXmlElement& property = addElement(*properties_, "property");
    property.SetAttribute("name", name);
    property.SetAttribute("value", xmlText(value).c_str());
  }

  TiXmlElement& addCase(const std::string& name, double seconds) {
    TiXmlElement& testCase = addElement(suite_, "testcase");
    testCase.SetAttribute("classname", "tarvo-check");
    testCase.SetAttribute("name", xmlText(name).c_str());
    testCase.SetAttribute("time", secondsOf(seconds).c_str());
    return testCase;
  }

  void setCounts(TiXmlElement& element, bool wasInterrupted) const {
    const std::size_t incomplete = options_.run.allowIncomplete ? 0 : totals_.of(Verdict::incomplete);
    setCount(element, "tests", totals_.applications + (wasInterrupted ? 1 : 0));
    setCount(element, "failures", totals_.of(Verdict::findings) + incomplete);
    setCount(element, "errors", totals_.of(Verdict::notChecked) + (wasInterrupted ? 1 : 0));
    element.SetAttribute("time", secondsOf(totals_.seconds).c_str());
  }

  std::ostream& out_;
  WriterOptions options_;
  Totals totals_;
  TiXmlElement suite_;
  TiXmlElement* properties_ = nullptr;
};

}  // namespace

std::unique_ptr<ReportWriter> makeJUnitWriter(std::ostream& out, const WriterOptions& options) {
  return std::make_unique<JUnitWriter>(out, options);
}

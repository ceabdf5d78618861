// Sentences are put together from what a report holds; a part that says nothing is left out. Every format takes its
// words from here, so that what people read in one they find in the others. Test: tests/checker/Formats_test.cpp.

#include "checker/formats/Wording.h"

#include <algorithm>

namespace {

// What was found and does not count, with a blank before it.
std::string notCounted(std::size_t accepted, std::size_t known, std::size_t noted) {
  std::string text;
  const auto add = [&](std::size_t count, const char* words) {
    if (count > 0) text += (text.empty() ? "" : ", ") + std::to_string(count) + words;
  };
  add(accepted, " accepted");
  add(known, " in the baseline");
  add(noted, " noted");
  return text.empty() ? text : " (" + text + " not counted)";
}

std::string remarksOn(const Call& call) {
  std::string text = wordFor(call.found);
  if (call.engineLine > 0 && call.engineLine != call.place.line) {
    text += "; line " + std::to_string(call.engineLine) + " on the device";
  }
  return text;
}

// Whether a rule found a call that the engine's rules do not find.
bool isAddition(Call::Found found) {
  return found >= Call::Found::flow;
}

// Whether there is anything to say about a call that the device's host does not get.
bool isMissedByDevice(const Finding& finding) {
  return !finding.isOnDevice && finding.status != Finding::Status::accepted &&
         finding.kind != Finding::Kind::deprecated;
}

// Why the device's host does not get a call.
const char* notOnDevice(Call::Found found) {
  return isAddition(found) ? "; the device does not find it" : "; the device stops before it";
}

// "2 uses of undocumented APIs, 1 use of deprecated APIs"
std::string usesOf(std::uint64_t undocumented, std::uint64_t deprecated) {
  std::string text;
  if (undocumented > 0 || deprecated == 0) text = counted(undocumented, "use", "uses") + " of undocumented APIs";
  if (deprecated > 0) text += (text.empty() ? "" : ", ") + counted(deprecated, "use", "uses") + " of deprecated APIs";
  return text;
}

// What a clean verdict rests on. Calls that are excused are told apart from documented ones.
std::string basisOf(const ApplicationReport& report) {
  if (report.hasCallsWithoutPlugin && report.judgedCalls == 0)
    return "nothing could be judged: calls look like plug-in calls, but no plug-in element is known; check the whole "
           "application";
  const std::size_t deprecated = countDeprecated(report, Finding::Status::noted);
  const std::size_t excused = report.findings.size() - deprecated;
  const std::uint64_t documented = report.judgedCalls - std::min<std::uint64_t>(report.judgedCalls, excused);
  std::string text = "clean: ";
  if (report.judgedCalls > 0) {
    text += counted(report.judgedCalls, "call on ", "calls on ") +
            counted(report.judgedPlugins, "plug-in", "plug-ins") +
            (excused > 0              ? ": " + std::to_string(documented) + " documented, "
             : report.judgedCalls > 1 ? ", all documented"
                                      : ", documented");
  } else if (excused == 0) {
    text += report.elements.empty() ? "no plug-in object is used" : "no call on a plug-in object was found";
  }
  std::string parts;
  const auto add = [&](Finding::Status status, const char* words) {
    const std::size_t count = countOf(report, status) - (status == Finding::Status::noted ? deprecated : 0);
    if (count > 0) parts += (parts.empty() ? "" : ", ") + std::to_string(count) + words;
  };
  add(Finding::Status::accepted, " accepted");
  add(Finding::Status::known, " in the baseline");
  add(Finding::Status::noted, " noted");
  text += parts;
  if (deprecated > 0) text += "; " + std::to_string(deprecated) + " deprecated";
  if (!report.undetermined.empty())
    text += "; " + counted(report.undetermined.size(), "call", "calls") + " could not be determined";
  return text;
}

// The verdict without what was excluded.
std::string judgementOn(const ApplicationReport& report) {
  const std::string excused =
      notCounted(countOf(report, Finding::Status::accepted), countOf(report, Finding::Status::known),
                 countOf(report, Finding::Status::noted));
  switch (report.verdict) {
    case Verdict::clean:
      return basisOf(report);
    case Verdict::incomplete:
      return "incomplete, " + counted(report.notChecked.size(), "part was", "parts were") + " not checked" + excused;
    case Verdict::findings:
      return usesOf(countOf(report, Finding::Status::reported) - countDeprecated(report, Finding::Status::reported),
                    countDeprecated(report, Finding::Status::reported)) +
             excused +
             (report.behindStops > 0
                  ? "; " + std::to_string(report.behindStops) + " more where the device stops: --all lists them"
                  : "");
    default:
      return "could not check: " + report.failure + excused;
  }
}

std::uint64_t excludedFiles(const ApplicationReport& report) {
  std::uint64_t count = 0;
  for (const Excluded& item : report.excluded)
    count += item.files;
  return count;
}

}  // namespace

std::string counted(std::uint64_t count, const char* one, const char* several) {
  return std::to_string(count) + ' ' + (count == 1 ? one : several);
}

std::string placeOf(const std::string& path, Position place) {
  std::string text = path;
  if (place.line > 0) text += ":" + std::to_string(place.line);
  if (place.line > 0 && place.column > 0) text += ":" + std::to_string(place.column);
  return text;
}

std::string placeOf(const Call& call) {
  return placeOf(call.path, call.place);
}

const char* wordFor(Call::Found found) {
  static constexpr const char* kWords[] = {"variable", "look-up", "Flash variable",        "Flash look-up",
                                           "flow",     "trial",   "trial of uncalled code"};
  return kWords[static_cast<std::size_t>(found)];
}

std::string messageOf(const Finding& finding) {
  const Call& call = finding.call;
  if (finding.kind == Finding::Kind::otherPlugin)
    return "API '" + call.method + "' is documented for another plug-in, not for " + call.plugin;
  if (finding.kind == Finding::Kind::computed) return "could not determine: " + call.code + " on " + call.plugin;
  if (finding.kind == Finding::Kind::deprecated) return "deprecated API '" + call.method + "' on " + call.plugin;
  return "undocumented API '" + call.method + "' on " + call.plugin;
}

std::string lineOn(const NotChecked& item) {
  return "not checked: " + item.part + ": " + item.reason;
}

std::string messageOf(const Undetermined& item) {
  return "could not determine: " + item.call.code + " on " + item.call.plugin;
}

std::string acceptanceOf(const Finding& finding) {
  const auto& [reason, owner, expires] = finding.acceptance;
  std::string more = owner;
  if (!expires.empty()) more += (more.empty() ? "until " : ", until ") + expires;
  if (reason.empty() || more.empty()) return reason + more;
  return reason + " (" + more + ")";
}

std::string remarksOn(const Finding& finding) {
  std::string text = remarksOn(finding.call);
  // What only the engine's rules say is likely, and has no word of its own.
  if (finding.confidence != Finding::Confidence::likely || finding.call.found == Call::Found::flow)
    text += std::string("; ") + nameOf(finding.confidence);
  if (finding.status == Finding::Status::accepted) {
    const std::string why = acceptanceOf(finding);
    text += "; accepted" + (why.empty() ? why : ": " + why);
  }
  if (finding.status == Finding::Status::known) text += "; in the baseline";
  if (isMissedByDevice(finding)) text += notOnDevice(finding.call.found);
  if (finding.kind == Finding::Kind::computed && finding.isOnDevice)
    text += "; the device reports '" + finding.call.method + "'";
  if (!finding.arguments.empty()) text += "; called with " + finding.arguments;
  if (!finding.advice.empty()) text += "; " + finding.advice;
  return text;
}

std::string remarksOn(const Undetermined& item) {
  return remarksOn(item.call) + "; " + item.reason;
}

std::vector<std::string> explanationsOf(const Finding& finding) {
  static constexpr const char* kFound[] = {
      "variable: a variable that holds the plug-in stands before the method.",
      "look-up: the plug-in is looked up where the method is called.",
      "Flash variable: in a Flash movie, a variable that holds the plug-in stands before the method.",
      "Flash look-up: in a Flash movie, the plug-in is looked up where the method is called.",
      "flow: the object was followed through the application; the rules of the device do not find this call.",
      "trial: a browser that ran the application made this call; the rules of the device do not find it.",
      "trial of uncalled code: the trial itself called functions that never ran, which made this call.",
  };
  static constexpr const char* kConfidence[] = {
      "possible: a value of this name may be the plug-in; it is shown and does not count.",
      "likely: nothing speaks against it, and not every step is proved.",
      "certain: every step from the element to the call is known.",
      "confirmed: a browser ran the application and made this call.",
  };
  std::vector<std::string> sentences{kFound[static_cast<std::size_t>(finding.call.found)],
                                     kConfidence[static_cast<std::size_t>(finding.confidence)]};
  if (finding.call.engineLine > 0 && finding.call.engineLine != finding.call.place.line)
    sentences.emplace_back("line on the device: the device counts lines without those that block comments take.");
  if (isMissedByDevice(finding) && !isAddition(finding.call.found))
    sentences.emplace_back(
        "the device stops before it: the device reports one call and stops, so it shows this one when that is mended.");
  if (isMissedByDevice(finding) && isAddition(finding.call.found))
    sentences.emplace_back("the device does not find it: the host of the device is not told of this call.");
  if (finding.kind == Finding::Kind::otherPlugin)
    sentences.emplace_back("another plug-in: the device has one list for all plug-ins, and lets this call pass.");
  if (finding.kind == Finding::Kind::deprecated)
    sentences.emplace_back("deprecated: the method is documented, and the API database advises against it.");
  return sentences;
}

std::string restOfNotChecked(const ApplicationReport& report) {
  if (report.notChecked.size() <= kMaxNotCheckedLines) return "";
  return "and " + counted(report.notChecked.size() - kMaxNotCheckedLines, "other part", "other parts");
}

std::string trialShareOf(const ApplicationReport& report) {
  std::uint64_t functions = 0;
  std::uint64_t run = 0;
  for (const Coverage& file : report.coverage) {
    functions += file.functions;
    run += std::min(file.functionsRun, file.functions);
  }
  if (functions == 0) return "";
  return std::to_string(run) + " of " + counted(functions, "function", "functions") + " ran (" +
         std::to_string(static_cast<int>(100.0 * static_cast<double>(run) / static_cast<double>(functions))) + " %)";
}

std::string lineOnExcluded(const ApplicationReport& report) {
  constexpr std::size_t kMaxNamed = 10;
  if (report.excluded.empty()) return "";
  std::string text = "excluded: " + counted(excludedFiles(report), "file", "files") + ":";
  for (std::size_t i = 0; i < std::min(report.excluded.size(), kMaxNamed); ++i) {
    const Excluded& item = report.excluded[i];
    text += (i == 0 ? " " : ", ") + item.path;
    if (item.files > 1) text += " (" + std::to_string(item.files) + ")";
  }
  if (report.excluded.size() > kMaxNamed)
    text += " and " + counted(report.excluded.size() - kMaxNamed, "other file or folder", "other files or folders");
  return text;
}

std::string verdictOn(const ApplicationReport& report) {
  const std::uint64_t excluded = excludedFiles(report);
  if (excluded == 0) return judgementOn(report);
  return judgementOn(report) + "; " + counted(excluded, "file was", "files were") + " excluded";
}

void RulesRun::add(const ApplicationReport& report) {
  for (const std::string& rule : report.rules)
    if (std::find(names_.begin(), names_.end(), rule) == names_.end()) names_.push_back(rule);
}

std::string RulesRun::text() const {
  std::string text;
  for (const std::string& name : names_)
    text += (text.empty() ? "" : ", ") + name;
  return text;
}

void Totals::add(const ApplicationReport& report) {
  ++applications;
  ++verdicts[static_cast<std::size_t>(report.verdict)];
  for (const Finding& finding : report.findings)
    ++statuses[static_cast<std::size_t>(finding.status)];
  deprecated += countDeprecated(report, Finding::Status::reported);
  undetermined += report.undetermined.size();
  notChecked += report.notChecked.size();
  excluded += excludedFiles(report);
  seconds += report.seconds;
  rules.add(report);
}

std::string summaryOf(const Totals& totals) {
  struct Part {
    Verdict verdict;
    const char* words;
  };
  std::string parts;
  for (const Part& part :
       {Part{Verdict::clean, " clean"}, Part{Verdict::incomplete, " incomplete"},
        Part{Verdict::findings, " with findings"}, Part{Verdict::notChecked, " could not be checked"}}) {
    const std::size_t count = totals.of(part.verdict);
    if (count > 0) parts += (parts.empty() ? ": " : ", ") + std::to_string(count) + part.words;
  }
  return counted(totals.applications, "application", "applications") + parts + "; " +
         usesOf(totals.of(Finding::Status::reported) - totals.deprecated, totals.deprecated) +
         notCounted(totals.of(Finding::Status::accepted), totals.of(Finding::Status::known),
                    totals.of(Finding::Status::noted));
}

// Test: tests/checker/Checker_test.cpp.

#include "checker/Report.h"

#include <unordered_map>

#include "APICheckEngine/Keys.h"
#include "APICheckEngine/Verdicts.h"

using FlashEngine_1_00::APIAnalysis;
using FlashEngine_1_00::SWFStateMentInfo;
namespace detail = FlashEngine_1_00::detail;

std::vector<Finding> findingsOf(const EngineRun& run) {
  const APIAnalysis& engine = run.engine();
  if (engine.resultList.empty()) return {};
  const detail::MethodNames methodName;
  // The engine keeps its finding lines and the calls they came from apart.
  std::unordered_map<std::string, std::pair<const SWFStateMentInfo*, std::string>> callOfLine;
  for (const APIAnalysis::Records* calls : {&engine.foundCallList, &engine.flashCallList}) {
    for (const SWFStateMentInfo* call : *calls) {
      const std::string callText = detail::callTextOf(*call);
      if (callText.empty()) continue;
      const std::string method = methodName(callText);
      callOfLine.try_emplace(detail::findingLine(call->path, call->line, method), call, method);
    }
  }
  std::vector<Finding> findings;
  for (const std::string* line : engine.resultList) {
    const auto& [call, method] = callOfLine.at(*line);
    const std::string engineLine = detail::findingLine(run.asOnDevice(call->path), call->line, method);
    findings.push_back(
        {engineLine, run.shown(call->path), call->line, method, detail::splitKey(*call->expression).classId});
  }
  return findings;
}

std::string printable(const std::string& text) {
  static constexpr const char* kDigits = "0123456789abcdef";
  std::string shown;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte == 0x7F) {
      shown += {'\\', 'x', kDigits[byte >> 4], kDigits[byte & 15]};
    } else {
      shown += c;
    }
  }
  return shown;
}

std::string textOf(const Finding& finding) {
  const std::string place = finding.line > 0 ? ":" + std::to_string(finding.line) : std::string();
  return finding.path + place + ": undocumented API '" + finding.method + "' on " + finding.plugin;
}

const char* nameOf(Verdict verdict) {
  static constexpr const char* kNames[] = {"clean", "incomplete", "findings", "could not check"};
  return kNames[static_cast<std::size_t>(verdict)];
}

Verdict verdictOf(const EngineRun& run, const std::string& failure) {
  if (!failure.empty()) return Verdict::notChecked;
  if (!run.engine().resultList.empty()) return Verdict::findings;
  return run.notChecked().empty() ? Verdict::clean : Verdict::incomplete;
}

std::string failureOf(const EngineRun& run, const std::string& database) {
  if (run.code() == RUN_DB_LOAD_FAILED) return "the database '" + database + "' cannot be read; pass --database FILE";
  if (run.code() == RUN_DB_NO_ROOT) return "the database '" + database + "' has no APIAnalysisDB element";
  return run.foundNothing() ? "there is neither a web source nor a Flash file in it" : std::string();
}

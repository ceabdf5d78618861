// Test: tests/checker/Checker_test.cpp.

#include "checker/Explain.h"

#include <nlohmann/json.hpp>

#include "checker/Json.h"

using FlashEngine_1_00::APIAnalysis;
using FlashEngine_1_00::FlashFunctionInfo;
using FlashEngine_1_00::SWFStateMentInfo;
using Json = nlohmann::ordered_json;

namespace {

class Explainer {
 public:
  explicit Explainer(const EngineRun& run) : run_(run) {}

  Json operator()(std::string_view bytes) const { return codePoints(run_.asOnDevice(std::string(bytes))); }

  Json operator()(const std::string* text) const { return (*this)(*text); }

  Json operator()(const SWFStateMentInfo* record) const {
    const Json expression = record->expression == nullptr ? Json(nullptr) : (*this)(*record->expression);
    return {{"expression", expression},      {"scope", (*this)(record->scope)},   {"text", (*this)(record->text)},
            {"path", (*this)(record->path)}, {"access", (*this)(record->access)}, {"line", record->line}};
  }

  Json operator()(const FlashFunctionInfo* function) const {
    return {
        {"header", (*this)(function->header)}, {"body", (*this)(function->body)}, {"path", (*this)(function->path)}};
  }

  Json operator()(const LogLine& line) const {
    return {{"function", (*this)(line.function)}, {"text", (*this)(line.text)}};
  }

  Json operator()(const NotChecked& missed) const {
    return {{"part", (*this)(missed.part)}, {"reason", (*this)(missed.reason)}};
  }

  template <typename T>
  Json operator()(const std::vector<T>& list) const {
    Json items = Json::array();
    for (const T& item : list)
      items.push_back((*this)(item));
    return items;
  }

 private:
  const EngineRun& run_;
};

}  // namespace

std::string explain(const EngineRun& run) {
  const Explainer json(run);
  const APIAnalysis& engine = run.engine();
  const std::vector<std::string> findings = run.findingLines();
  return Json{{"code", run.code()},
              {"verdict", nameOf(run.verdict())},
              {"notChecked", json(run.notChecked())},
              {"findings", json(findings)},
              {"log", json(run.log())},
              {"whiteAPIList", json(engine.whiteAPIList)},
              {"resultList", json(findings)},
              {"worthfulExtList", json(engine.worthfulExtList)},
              {"worthfulPathList", json(engine.worthfulPathList)},
              {"worthfulSourceList", json(engine.worthfulSourceList)},
              {"cleanedSourceList", json(engine.cleanedSourceList)},
              {"objectTagList", json(engine.objectTagList)},
              {"objectClassList", json(engine.objectClassList)},
              {"objectIdList", json(engine.objectIdList)},
              {"declareList", json(engine.declareList)},
              {"embedsDeclareList", json(engine.embedsDeclareList)},
              {"objectVariableList", json(engine.objectVariableList)},
              {"foundCallList", json(engine.foundCallList)},
              {"flashCallList", json(engine.flashCallList)},
              {"lookupCandidateList", json(engine.lookupCandidateList)},
              {"objectAccessList", json(engine.objectAccessList)},
              {"embedsAccessList", json(engine.embedsAccessList)},
              {"functionBlockList", json(engine.functionBlockList)},
              {"extractedFileList", json(engine.extractedFileList)},
              {"extractedDirList", json(engine.extractedDirList)}}
      .dump(2);
}

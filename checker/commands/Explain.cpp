// tarvo-check explain: the outcome of a run and the engine's lists as JSON. One overload for each kind of thing that
// stands in a list; texts are bytes in any encoding, and go through one of them. Test: tests/checker/Checker_test.cpp.

#include "checker/commands/Explain.h"

#include <nlohmann/json.hpp>

#include "checker/report/Json.h"

using FlashEngine_1_00::APIAnalysis;
using FlashEngine_1_00::FlashFunctionInfo;
using FlashEngine_1_00::SWFStateMentInfo;
using Json = nlohmann::ordered_json;

namespace {

class Explainer {
 public:
  explicit Explainer(const Outcome& run) : run_(run) {}

  Json operator()(std::string_view bytes) const { return codePoints(run_.names.asOnDevice(std::string(bytes))); }

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

  Json operator()(const NotChecked& gap) const {
    return {{"part", (*this)(gap.part)}, {"reason", (*this)(gap.reason)}};
  }

  template <typename T>
  Json operator()(const std::vector<T>& list) const {
    Json items = Json::array();
    for (const T& item : list)
      items.push_back((*this)(item));
    return items;
  }

 private:
  const Outcome& run_;
};

}  // namespace

std::string explain(const Outcome& run) {
  const Explainer json(run);
  const APIAnalysis& engine = *run.engine;
  return Json{{"code", run.code},
              {"verdict", nameOf(run.verdict())},
              {"notChecked", json(run.notChecked)},
              {"findings", json(run.findingLines)},
              {"log", json(run.log)},
              {"whiteAPIList", json(engine.whiteAPIList)},
              {"resultList", json(run.findingLines)},
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

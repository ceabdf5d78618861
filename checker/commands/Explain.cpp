// tarvo-check explain: the outcome of a run and the engine's lists as JSON. One overload for each kind of thing that
// stands in a list; texts are bytes in any encoding, and go through one of them. Test: tests/checker/Checker_test.cpp.

#include "checker/commands/Explain.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "checker/report/Characters.h"
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

 private:
  const Outcome& run_;
};

// Put together piece by piece: all lists of an application at once would take several times what their text does.
class Members {
 public:
  explicit Members(const Outcome& run) : json_(run) {}

  template <typename T>
  void add(const char* name, const T& value) {
    begin(name);
    write(json_(value), "  ");
  }

  void add(const char* name, int value) {
    begin(name);
    text_ += std::to_string(value);
  }

  template <typename T>
  void add(const char* name, const std::vector<T>& list) {
    begin(name);
    text_ += '[';
    const char* before = "\n    ";
    for (const T& item : list) {
      text_ += before;
      write(json_(item), "    ");
      before = ",\n    ";
    }
    text_ += list.empty() ? "]" : "\n  ]";
  }

  std::string take() && { return std::move(text_) + "\n}\n"; }

 private:
  void begin(const char* name) {
    text_ += text_.empty() ? "{\n  \"" : ",\n  \"";
    text_ += name;
    text_ += "\": ";
  }

  void write(const Json& value, const char* indent) {
    const std::string text = value.dump(2);
    for (std::size_t begin = 0; begin < text.size();) {
      const std::size_t end = std::min(text.find('\n', begin), text.size() - 1) + 1;
      text_ += escapedJson(std::string_view(text).substr(begin, end - begin));
      if (end < text.size()) text_ += indent;
      begin = end;
    }
  }

  const Explainer json_;
  std::string text_;
};

}  // namespace

std::string explain(const Outcome& run) {
  const APIAnalysis& engine = *run.engine;
  Members members(run);
  members.add("code", static_cast<int>(run.code));
  members.add("verdict", std::string_view(nameOf(run.verdict())));
  members.add("notChecked", run.notChecked);
  members.add("findings", run.findingLines);
  members.add("log", run.log);
  members.add("whiteAPIList", engine.whiteAPIList);
  members.add("resultList", run.findingLines);
  members.add("worthfulExtList", engine.worthfulExtList);
  members.add("worthfulPathList", engine.worthfulPathList);
  members.add("worthfulSourceList", engine.worthfulSourceList);
  members.add("cleanedSourceList", engine.cleanedSourceList);
  members.add("objectTagList", engine.objectTagList);
  members.add("objectClassList", engine.objectClassList);
  members.add("objectIdList", engine.objectIdList);
  members.add("declareList", engine.declareList);
  members.add("embedsDeclareList", engine.embedsDeclareList);
  members.add("objectVariableList", engine.objectVariableList);
  members.add("foundCallList", engine.foundCallList);
  members.add("flashCallList", engine.flashCallList);
  members.add("lookupCandidateList", engine.lookupCandidateList);
  members.add("objectAccessList", engine.objectAccessList);
  members.add("embedsAccessList", engine.embedsAccessList);
  members.add("functionBlockList", engine.functionBlockList);
  members.add("extractedFileList", engine.extractedFileList);
  members.add("extractedDirList", engine.extractedDirList);
  return std::move(members).take();
}

// Any text as the only source of an application: its object elements, their ids and the aliases of these.

#include <algorithm>

#include "APICheckEngine/Keys.h"
#include "APICheckEngine/search/ScriptFunctions.h"
#include "Support.h"

using namespace FlashEngine_1_00;

namespace {

void addSource(APIAnalysis& engine, const std::string& text) {
  const std::string path = "/tmp/0/app/www/index.html";
  append(engine.cleanedSourceList, std::make_unique<std::string>(text));
  engine.worthfulSourceList.push_back(engine.cleanedSourceList.back());
  append(engine.worthfulPathList, std::make_unique<std::string>(path));
  append(engine.worthfulExtList, std::make_unique<std::string>("html"));
  const std::string& source = *engine.cleanedSourceList.back();
  for (const detail::ScriptFunction& function : detail::findFunctions(source.c_str()).functions) {
    append(engine.functionBlockList, std::make_unique<FlashFunctionInfo>(FlashFunctionInfo{
                                         function.header, function.body, *engine.worthfulPathList.back(), &source}));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string text = fuzz::splitAt('\0', fuzz::viewOf(data, size)).first;
  APIAnalysis engine;
  const std::string id = engine.parseObjectID(text);
  fuzz::require(id == "_NO_CLASSID_FOUND_" || text.find(id) != std::string::npos, "an id is part of its element");
  const int index = engine.parseEmbedsTagIndex(&text);
  fuzz::require(index == 0 || text.find_first_of("0123456789") != std::string::npos, "an index is made of digits");

  addSource(engine, text);
  (void)engine.FindObjectTagToken();
  (void)engine.FindObjectID();
  fuzz::require(engine.objectTagList.size() == engine.objectClassList.size(), "each element has its class");
  for (std::size_t i = 0; i < engine.objectTagList.size(); ++i) {
    const std::string& classId = *engine.objectClassList[i]->expression;
    const std::string& tag = *engine.objectTagList[i]->expression;
    fuzz::require(detail::splitKey(tag).classId == classId, "an element's key begins with its class");
    fuzz::require(tag.find(classId, classId.size()) != std::string::npos, "an element names its class");
  }
  fuzz::require(engine.objectIdList.empty() == engine.objectTagList.empty(), "symbols come from elements");
  for (const SWFStateMentInfo* record : engine.objectIdList)
    fuzz::require(record->expression->find('#') != std::string::npos, "a symbol has its class");
  return 0;
}

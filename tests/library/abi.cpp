// What hosts use of the engine, as its headers declare it, and nothing of its inside: the description in abi.xml is of
// this file, see compare-abi. It is compiled for its debugging information and never run.

#include "APICheckEngine/Tables.h"
#include "platform/TimeBudget.h"
#include "regex/trex.h"
#include "swf/RegisterNames.h"
#include "tarvo/CStringUtil.h"
#include "tarvo/Print_Log.h"
#include "tarvo/api_check_engine.h"

// The names of these functions hold the types of the standard library, which the description leaves out.
#define SHOW(name) void show_##name(decltype(name)&)
SHOW(createInstance) {}
SHOW(destoryInstance) {}
SHOW(createResultVector) {}
SHOW(destoryResultVector) {}
SHOW(Print_Log) {}
SHOW(trex_compile) {}
SHOW(trex_free) {}
SHOW(trex_match) {}
SHOW(trex_search) {}
SHOW(trex_searchrange) {}
SHOW(trex_getsubexpcount) {}
SHOW(trex_getsubexp) {}
SHOW(g_SWFResultVector) {}
SHOW(firstTimeVal) {}
SHOW(firstCheckTime) {}
SHOW(SystemFunctionPool) {}
SHOW(documentExtention) {}
SHOW(arNames) {}
SHOW(arPreFlags) {}
SHOW(arSupFlags) {}
SHOW(word) {}
SHOW(word4CapitalSWF) {}
SHOW(g_exp) {}
SHOW(g_limitAddress) {}

RunResult show_StartAnalysis(IAppAnalysis& engine, std::vector<std::string>* files) {
  return engine.StartAnalysis(files);
}

// With other signatures these do not compile.
IAppAnalysis::~IAppAnalysis() = default;
CStringUtil::CStringUtil() = default;
CStringUtil::~CStringUtil() = default;
std::string CStringUtil::customReplace(std::string&, std::string, std::string) {
  return {};
}
std::string CStringUtil::findFileExtention(std::string) {
  return {};
}
std::string CStringUtil::findMidString(std::string, int, int) {
  return {};
}
void CStringUtil::stringTokenizer(const char*, std::string, std::vector<std::string>&) {}

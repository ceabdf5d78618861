#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "APICheckEngine/Observer.h"
#include "APICheckEngine/Records.h"
#include "decompiler/DeCompiler.h"
#include "swf/DeAssembler.h"
#include "tarvo/CStringUtil.h"
#include "tarvo/IAppAnalysis.h"
#include "unzip/expansion_budget.h"

class TextIndex;

namespace FlashEngine_1_00 {

struct Extraction;

namespace detail {
struct Key;
struct Knowledge;
class LookupCallFinder;
struct PluginElement;
struct ReadSource;
struct ScriptFunctions;
class SourceIndex;
}  // namespace detail

inline constexpr const char* kEngineVersion = "140808_QX_1.30";

// The engine: one application in, finding lines out.
//
// The stages hand their results to each other through twenty lists. `Init` empties most of them; lists 3, 4, 19 and 20
// keep their contents, so that a second run on one engine sees the first run's paths and removes its files again.
//
//    #  list                element                         filled by                 emptied by Init
//    1  whiteAPIList        documented API names            swfloadWhiteAPIInfo       yes
//    2  resultList          finding lines                   DetermineAPISecurity      yes
//    3  worthfulExtList     extensions of selected files    FirstScanSource           no
//    4  worthfulPathList    paths of selected files         FirstScanSource           no
//    5  worthfulSourceList  their cleaned texts             FirstScanSource           yes
//    6  cleanedSourceList   every cleaned text (shared: 5)  CheckFileAnalysisWorth    yes
//    7  objectTagList       plug-in elements                FindObjectTags            yes
//    8  objectClassList     their class identifiers         FindObjectTags            yes
//    9  objectIdList        plug-in symbols                 FindObjectID              yes
//   10  declareList         look-ups of a plug-in symbol    FindDeclareListValidation yes
//   11  embedsDeclareList   document.embeds look-ups        FindDeclareListValidation yes
//   12  objectVariableList  variables bound to plug-ins     FindObjectVariable        yes
//   13  foundCallList       calls, judged again by Finish   call scanners             yes
//   14  flashCallList       calls in Flash statements       FindAPIFunctionName4SWF   yes
//   15  lookupCandidateList      calls made on a look-up         FindAPIFunctionName4JSSpe yes
//   16  objectAccessList    element look-ups                FirstScanSource           yes
//   17  embedsAccessList    document.embeds expressions     FirstScanSource           yes
//   18  functionBlockList   script functions                FirstScanSource           yes
//   19  extractedFileList   files out of packages           addFilePathbyUnzipping    no
//   20  extractedDirList    directories made for them       addFilePathbyUnzipping    no
//
// Lists 1 to 18 own what their pointers point to, save list 5, whose texts belong to list 6. Equal records of one list
// may be one and the same, found in several places of it. Lists 3, 4 and 5 are parallel; so are 7 and 8.
//
// Every stage returns RUN_SUCCESS or the code that ends the run. Stages throw nothing but std::bad_alloc.
class APIAnalysis : public IAppAnalysis {
 public:
  using Strings = std::vector<std::string*>;
  using Records = std::vector<SWFStateMentInfo*>;

  // ---- lifetime: APIAnalysis.cpp (and the exported entry points) ----------------------------------------------------

  APIAnalysis();
  ~APIAnalysis() override;

  // RUN_TIME_LIMIT once more than 20 seconds have passed since the engine was built, else RUN_SUCCESS. For the host;
  // the engine's own loops ask timeBudgetSpent().
  RunResult LimitProcessingTimeNResource();

  // Logs the clock under `name`: a checkpoint after each stage.
  void PrintProcessingTime(std::string name);

  // ---- driver: Driver.cpp -------------------------------------------------------------------------------------------

  RunResult StartAnalysis(std::vector<std::string>* files) override;
  [[nodiscard]] RunResult Prepare(std::vector<std::string>* files);
  [[nodiscard]] RunResult StartRun(std::vector<std::string>* files);
  [[nodiscard]] RunResult APIAnalysisFromSWFMain(std::vector<std::string>* files);

  // ---- package expansion: PackageExpansion.cpp ----------------------------------------------------------------------

  // Expands every zip package among `files`, and the packages inside them, each into the next numbered directory.
  void addFilePathbyUnzipping(std::vector<std::string> files);

  // Appends the path of every file under `dir` to `found`, in the order of the file system.
  void FindAppsFilesLocation(std::string dir, std::vector<std::string>& found);

  // ---- database: Database.cpp ---------------------------------------------------------------------------------------

  // Empties the lists of the last run and loads the documented APIs.
  [[nodiscard]] RunResult Init();

  // Appends the database's API names to `list`; the caller owns them.
  [[nodiscard]] RunResult swfloadWhiteAPIInfo(Strings& list);

  // ---- source selection: SourceSelection.cpp ------------------------------------------------------------------------

  // Selects, loads and cleans the web sources among `files` and collects what later stages look at.
  [[nodiscard]] RunResult FirstScanSource(std::vector<std::string>* files);

  // 1 and a new cleaned text (owned by list 6) in `cleaned` if `path` is a web source that could be read; else 0.
  int CheckFileAnalysisWorth(std::string path, std::string*& cleaned);

  // 1 if `extension` is in documentExtention, else 0. For the host.
  int documentExtentionChecker(std::string extension);

  // ---- object discovery: ObjectDiscovery.cpp ------------------------------------------------------------------------

  [[nodiscard]] RunResult FindObjectTagToken();

  // Whether `text` holds a complete object element; those of known plug-ins go to lists 7 and 8.
  bool FindObjectTags(std::string* text, std::string* path);

  // Whether `text` holds "<object" and "object>", in any case.
  RunResult ObjectStartIDChecker(bool& hasStart, bool& hasEnd, std::string* text);

  // The id of an object element, or "_NO_CLASSID_FOUND_".
  std::string parseObjectID(std::string element);

  [[nodiscard]] RunResult FindObjectID();

  // The number in the brackets of "document.embeds[n]", clamped to 32 bits; 0 if the brackets do not close.
  int parseEmbedsTagIndex(std::string* text);

  // ---- variable binding: VariableBinding.cpp ------------------------------------------------------------------------

  [[nodiscard]] RunResult FindDeclareListValidation();
  [[nodiscard]] RunResult FindObjectVariable();

  // The 1-based line at which `symbol` first occurs in the cleaned text of `path`; 0 if it does not, -1 if there is no
  // such text.
  int foundSymbolLineNumber(std::string* path, std::string* symbol);

  // ---- call extraction: CallExtraction.cpp --------------------------------------------------------------------------

  [[nodiscard]] RunResult FindAPIFunctionName4JS();
  [[nodiscard]] RunResult FindAPIFunctionName4JSSpe();

  // Finds and judges the calls on variable `name` in `source`. Returns the first code other than RUN_SUCCESS.
  RunResult findAPIsFromPool(std::string classId, std::string name, std::string* source, std::string path);

  // The method that an "Execute" call of the extension plug-in carries; empty if there is none.
  std::string findAPINameForKOBCase(std::string* callText);

  // ---- call parameters: CallParameters.cpp --------------------------------------------------------------------------

  // The 1-based position of the argument `symbol` in `callText`, one more than there are arguments if it is not among
  // them. Sets `functionName` to what stands before the first parenthesis, if there is one.
  int funcParameterParsing(std::string callText, std::string symbol, std::string& functionName);

  // The argument at the 1-based `position`, exactly as it stands; empty if there is none.
  std::string getParamterByPosition(std::string callText, int position);

  // ---- Flash calls: FlashCalls.cpp ----------------------------------------------------------------------------------

  // Finds and judges the plug-in calls among the decompiled `statements` of one SWF file.
  [[nodiscard]] RunResult FindAPIFunctionName4SWF(std::vector<std::string> statements, std::string fileName);

  // ---- verdicts: Verdicts.cpp ---------------------------------------------------------------------------------------

  // RUN_UNDOCUMENTED_API, with its finding line in `results`, if `call` is not documented.
  RunResult DetermineAPISecurity(Strings& results, SWFStateMentInfo* call);

  // Sets `undocumented` to whether `apiName` is missing from `whiteList`. Always RUN_SUCCESS.
  RunResult undocumentAPICheckerMain(Strings whiteList, std::string apiName, bool& undocumented);

  // Judges the calls in list 13.
  [[nodiscard]] RunResult Finish(Strings& results);

 private:
  std::int32_t extractionCounter_ = 0;  // names the next extraction directory; never reset
  CStringUtil stringUtil_;
  DeAssembler deAssembler_;
  DeCompiler deCompiler_;

 public:
  // The lists, for whoever shows what the engine knows. Only the engine changes them.
  Strings whiteAPIList;
  Strings resultList;
  Strings worthfulExtList;
  Strings worthfulPathList;
  Strings worthfulSourceList;
  Strings cleanedSourceList;
  Records objectTagList;
  Records objectClassList;
  Records objectIdList;
  Records declareList;
  Records embedsDeclareList;
  Records objectVariableList;
  Records foundCallList;
  Records flashCallList;
  Records lookupCandidateList;
  Records objectAccessList;
  Records embedsAccessList;
  std::vector<FlashFunctionInfo*> functionBlockList;
  std::vector<std::string> extractedFileList;
  std::vector<std::string> extractedDirList;

  // What the packages of one run may expand to, for a program whose user sets bounds. Set before a run.
  ExpansionBounds expansionBounds;

  // Set before a run by a program that shows more than the host needs, and there until the run is over; else null.
  Observer* observer = nullptr;

 private:
  // Steps of the members above; not exported.
  RunResult runStages(std::vector<std::string>& workingList);
  RunResult analyseFlashFiles(const std::vector<std::string>& files);
  void analyseFlashBehindStop(const std::vector<std::string>& files, RunResult code);
  RunResult analyseFlashFile(const std::string& path);
  void tellBeforeRemoval(const std::vector<std::string>& files);
  void removeExtracted();
  std::vector<std::string> writeResultFile();
  bool expandPackage(const std::string& path, Extraction& extraction, std::vector<std::string>& found);
  void emptyWorkingLists();
  void releaseTexts(bool alsoThoseThatSurviveInit);
  std::unique_ptr<std::string> nameLookupCall(const std::string& classId, const std::string& callText,
                                              std::string dummyCall);

  // Where a call was found, for the observer.
  struct CallPlace {
    FoundCall::On on;
    const std::string& classId;
    std::string_view text;
    std::string_view call;
    bool isRepeated = false;  // an equal one was judged before
  };
  class SourceScan;  // of SourceSelection.cpp
  class Aliases;     // of ObjectDiscovery.cpp, like the next one
  class ElementScan;
  struct Bindings;      // of VariableBinding.cpp
  struct SearchedText;  // of CallExtraction.cpp, like the next two
  struct Lookup;
  class LookupRecords;
  class SearchBound;  // of FlashCalls.cpp

  // Where in foundCallList the calls on a variable stand that were found in one text, by its binding: from the first
  // position up to the second.
  using FoundCalls = detail::RecordNotes<std::pair<std::size_t, std::size_t>>;

  RunResult report(Records& list, std::unique_ptr<SWFStateMentInfo> call, const CallPlace& place);
  RunResult judge(SWFStateMentInfo& call, const CallPlace& place);
  bool observesAll() const { return observer != nullptr && observer->all; }
  void observe(FoundCall::Verdict verdict, std::string_view path, int line, const CallPlace& place,
               std::string method) const;
  void observeBuiltIn(std::string_view path, int line, const CallPlace& place) const;
  void observeCommonObject(const SWFStateMentInfo& binding, const SearchedText& searched);
  void notRead(Gap gap, const std::string& path, int code = 0) const {
    if (observer != nullptr) observer->notRead({gap, path, {}, code});
  }

  // With Observer::all, a scanner goes on where it stops for a host. What it then finds is kept apart from the lists.
  struct Stop {
    RunResult code = RUN_SUCCESS;  // with which the scanner ends for a host
    bool isPassed() const { return code != RUN_SUCCESS; }
  };
  Records& keptIn(Records& list) { return stop_.isPassed() ? behindStop_ : list; }
  bool keep(detail::EqualRecords<SWFStateMentInfo>& record, Records& list);
  RunResult endScan(const Stop& outer);

  bool keepSource(const std::string& path, detail::ReadSource& read);
  void appendPluginElements(const std::vector<detail::PluginElement>& elements, const std::string& foundIn);
  void appendScriptFunctions(const detail::ScriptFunctions& found, const std::string& cleaned, const std::string& path);
  void declareLookUps(const std::vector<detail::Key>& symbols);
  void declareEmbeds(const std::vector<detail::Key>& symbols);
  detail::EqualRecords<SWFStateMentInfo>& bindingOf(const SWFStateMentInfo& declared, const std::string& variable,
                                                    Bindings& bindings);
  SearchedText textOf(const SWFStateMentInfo& binding);
  void findCallsOn(SWFStateMentInfo& binding, std::string_view text, detail::SourceIndex* source, std::string_view path,
                   FoundCall::On on, FoundCalls& found);
  RunResult findCalls(const std::string& classId, const std::string& variable, std::string_view text, TextIndex* index,
                      std::string_view path, FoundCall::On on);
  std::unique_ptr<SWFStateMentInfo> makeVariableCall(const std::string& classId, const std::string& callText,
                                                     std::string_view path);
  Lookup lookupIn(const SWFStateMentInfo& declared, detail::LookupCallFinder& finder);
  RunResult reportCallsOn(const Lookup& lookup, LookupRecords& records);
  std::unique_ptr<SWFStateMentInfo> makeLookupCall(const Lookup& lookup, const std::string& callText);
  RunResult reportLookUpsIn(const std::vector<std::string>& statements, std::string_view fileName, SearchBound& bound);
  std::unique_ptr<SWFStateMentInfo> makeStatementCall(const std::string& classId, const std::string& callText,
                                                      std::string_view fileName);
  void findVariablesIn(const std::vector<std::string>& statements, std::string_view fileName, SearchBound& bound);

  // What foundSymbolLineNumber finds.
  int lineOf(std::string_view symbol, std::string_view path);

  // The text of `sources` (list 5 or 6) at the position of `path` in list 4; null if either is missing.
  const std::string* sourceOf(std::string_view path, const Strings& sources) const;

  std::unique_ptr<detail::Knowledge> known_;
  Stop stop_;           // of the scanner that works
  Records behindStop_;  // what it found from there on
};

// Whether a run reads a file of this name as a Flash file. Defined in Driver.cpp.
bool isFlashFile(const std::string& path);

}  // namespace FlashEngine_1_00

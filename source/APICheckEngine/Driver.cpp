// The driver: one run over one application.
//
// Reads and fills no list of its own; it orders the stages, removes what was extracted and publishes resultList.
// Tests: tests/APICheckEngine/Driver_test.cpp, Faults_test.cpp, tests/memory/Allocation_test.cpp.

#include "APICheckEngine/APIAnalysis.h"
#include "platform/FilePlace.h"
#include "platform/Log.h"
#include "platform/Paths.h"
#include "platform/TimeBudget.h"
#include "swf/UnlistedScript.h"
#include "tarvo/api_check_engine.h"
#include "unzip/disk_place.h"

namespace FlashEngine_1_00 {
bool isFlashFile(const std::string& path) {
  const std::string extension = CStringUtil().findFileExtention(path);
  return extension == "SWF" || extension == "swf";
}

RunResult APIAnalysis::StartAnalysis(std::vector<std::string>* files) {
  RunResult code = RUN_SUCCESS;
  try {
    std::vector<std::string> workingList = *files;
    addFilePathbyUnzipping(workingList);
    for (const std::string& path : extractedFileList) {
      TARVO_LOG(" additionally added path : [%s]", path.c_str());
      workingList.push_back(path);
    }
    code = runStages(workingList);
  } catch (...) {  // no memory: the host gets the exception, and nothing to clean up
    removeExtracted();
    throw;
  }

  removeExtracted();
  const std::vector<std::string> lines = writeResultFile();
  *g_SWFResultVector = lines;
  if (code != RUN_SUCCESS) {
    TARVO_LOG("[%d][%s] returnCode [%d] ", static_cast<int>(lines.size()), __func__, static_cast<int>(code));
  }
  return code;
}

// The stages of StartAnalysis, under whose name they log; the first code other than RUN_SUCCESS ends them.
RunResult APIAnalysis::runStages(std::vector<std::string>& workingList) {
  static constexpr const char* kDriver = "StartAnalysis";
  RunResult code = Init();
  if (code != RUN_SUCCESS) {
    TARVO_LOG_AS(kDriver, "[%s] Init-returnCode [%d] ", kDriver, static_cast<int>(code));
    return code;
  }
  code = Prepare(&workingList);
  if (code != RUN_SUCCESS) {
    TARVO_LOG_AS(kDriver, "[%s] Prepare-returnCode [%d] ", kDriver, static_cast<int>(code));
    return code;
  }
  code = StartRun(&workingList);
  tellBeforeRemoval(workingList);
  if (code != RUN_SUCCESS) {
    TARVO_LOG_AS(kDriver, "[%s] StartRun-returnCode [%d] ", kDriver, static_cast<int>(code));
    return code;
  }
  return Finish(resultList);
}

// Removes what the packages of this run were expanded to.
void APIAnalysis::removeExtracted() {
  // The extracted files go with their directories: removed by their paths, a link planted in a directory would lead to
  // files that are not ours.
  for (const std::string& directory : extractedDirList)
    currentPlace().remove(directory);
}

// Writes the finding lines to the result file, and returns them. A file that cannot be written changes nothing else.
std::vector<std::string> APIAnalysis::writeResultFile() {
  static constexpr const char* kDriver = "StartAnalysis";
  std::vector<std::string> lines;
  for (const std::string* line : resultList)
    lines.push_back(*line);
  const std::string& path = enginePaths().resultFile;
  TARVO_LOG_AS(kDriver, " outPutFileFullPath [%s]", path.c_str());
  if (File file = currentPlace().createResultFile(path)) {
    bool written = true;
    for (const std::string& line : lines)
      written = std::fwrite(line.data(), 1, line.size(), file.get()) == line.size() && written;
    written = std::fclose(file.release()) == 0 && written;
    if (!written) TARVO_LOG_AS(kDriver, " file[%s] Write Error ", path.c_str());
  } else {
    TARVO_LOG_AS(kDriver, " file[%s] Open Error ", path.c_str());
  }
  return lines;
}

RunResult APIAnalysis::Prepare(std::vector<std::string>* files) {
  const RunResult code = FirstScanSource(files);
  PrintProcessingTime("Prepare");
  return code;
}

RunResult APIAnalysis::StartRun(std::vector<std::string>* files) {
  return APIAnalysisFromSWFMain(files);
}

RunResult APIAnalysis::APIAnalysisFromSWFMain(std::vector<std::string>* files) {
  PrintProcessingTime("GetDeviceAPIsFromSWFMain");
  RunResult code = FindObjectTagToken();
  PrintProcessingTime("AfterFindObjectTagToken");
  if (code != RUN_SUCCESS) return code;
  (void)FindObjectID();
  code = FindDeclareListValidation();
  if (code != RUN_SUCCESS) return code;
  code = FindObjectVariable();
  if (code != RUN_SUCCESS) return code;
  code = FindAPIFunctionName4JS();
  if (code != RUN_SUCCESS) return code;
  code = FindAPIFunctionName4JSSpe();
  if (code != RUN_SUCCESS) {
    if (observesAll()) analyseFlashBehindStop(*files, code);
    return code;
  }
  PrintProcessingTime("AfterFindAPIFunctionName4JS");
  code = analyseFlashFiles(*files);
  PrintProcessingTime("Finished");
  return code;
}

// The code of the last one, RUN_SUCCESS if there is none.
RunResult APIAnalysis::analyseFlashFiles(const std::vector<std::string>& files) {
  RunResult code = RUN_SUCCESS;
  for (const std::string& path : files) {
    if (!isFlashFile(path)) continue;
    // KEPT: only the last Flash file's code counts, so an earlier 1001 is lost; its finding is published all the same.
    // Hosts read both. (test CodeIsThatOfTheLastFlashFile)
    code = analyseFlashFile(path);
  }
  return code;
}

// For an observer that wants what stands behind a stop. Nothing of it is kept in a list.
void APIAnalysis::analyseFlashBehindStop(const std::vector<std::string>& files, RunResult code) {
  observer->stopPassed();
  const Stop outer = stop_;
  stop_.code = code;
  (void)analyseFlashFiles(files);
  (void)endScan(outer);
  observer->stageEnded();
}

RunResult APIAnalysis::analyseFlashFile(const std::string& path) {
  // A file that cannot be read yields fewer lines, or none. They are replayed as they are made: no list holds them.
  deCompiler_.beginReplay();
  const RunResult read = deAssembler_.listFile(path, deCompiler_.lineTaker());
  std::vector<std::string> statements;
  deCompiler_.endReplay(statements);
  if (read != RUN_SUCCESS) {
    TARVO_LOG_AS("APIAnalysisFromSWFMain", " file[%s] not read whole [%d] ", path.c_str(), static_cast<int>(read));
    notRead(Gap::flashUnread, path, read);
  }
  if (observer != nullptr && (deAssembler_.isCut() || deCompiler_.isCut() || timeBudgetSpent()))
    notRead(Gap::flashCut, path);
  return FindAPIFunctionName4SWF(statements, path);
}

// The observer's last look at lists and files. Here it also hears of script in Flash files that no listing shows.
void APIAnalysis::tellBeforeRemoval(const std::vector<std::string>& files) {
  if (observer == nullptr) return;
  observer->beforeRemoval(*this);
  for (const std::string& path : files) {
    if (!isFlashFile(path)) continue;
    for (const Gap gap : unlistedScript(path))
      notRead(gap, path);
  }
}

}  // namespace FlashEngine_1_00

#pragma once

#include <cstdint>

// Result codes: what every stage of the engine answers, a signed 32-bit number.
//
// A caller treats everything but RUN_SUCCESS as a reason to stop and hand the code up unchanged. No other value is
// ever produced.
enum RunResult : std::int32_t {
  // Codes that StartAnalysis returns to the host.
  RUN_SUCCESS = 1000,           // every call found is documented
  RUN_UNDOCUMENTED_API = 1001,  // an undocumented API is used; its finding line is in the result list
  RUN_DB_LOAD_FAILED = 1010,    // the API database could not be opened or read whole
  RUN_DB_NO_ROOT = 1012,        // the API database has no top-level APIAnalysisDB element

  // Codes that stay inside the engine: a Flash file that cannot be read does not fail the application.
  RUN_SWF_OPEN_FAILED = 1021,          // the SWF file cannot be opened
  RUN_SWF_BAD_SIGNATURE = 1022,        // neither "FWS" nor "CWS"
  RUN_SWF_UNCOMPRESS_FAILED = 1023,    // the compressed body cannot be inflated
  RUN_DECOMPILE_FAILED = 1024,         // an action handler cannot replay its listing line
  RUN_SWF_TAG_ALLOC_FAILED = 1025,     // no memory for the copy of one action block
  RUN_SWF_BUFFER_ALLOC_FAILED = 1026,  // no memory for the file buffer
  RUN_TIME_LIMIT = 1027,               // the time budget is used up
};

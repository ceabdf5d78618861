#pragma once

#include <string>
#include <vector>

#include "tarvo/IAppAnalysis.h"

// The entry points of libtarvo-api-check-engine.so, in the order in which a host calls them:
//
//   createResultVector();                            // the process-wide list of finding lines
//   IAppAnalysis* engine = createInstance();         // the 20-second budget for Flash work starts here
//   RunResult code = engine->StartAnalysis(&files);  // normally once per engine
//   ... read the list ...
//   destoryInstance(engine);
//   destoryResultVector();
//
// One engine at a time, on one thread: the result list, the time budget, /tmp/AnalysisResult and the extraction
// directories /tmp/<n> are shared by the whole process, and a run that expands a package leaves the process's
// working directory in the last extraction directory.

extern "C" {

// Builds an engine on the heap. The caller gives it back to destoryInstance. Throws std::bad_alloc.
IAppAnalysis* createInstance();

// Destroys an engine of createInstance; null is allowed and does nothing.
void destoryInstance(IAppAnalysis* engine);

// Makes a new, empty result list, stores it in g_SWFResultVector and returns it. Must come before any
// StartAnalysis. The list belongs to the library. A second call abandons the first list. Throws std::bad_alloc.
std::vector<std::string>* createResultVector();

// Destroys the list in g_SWFResultVector, if any, and leaves the pointer stale: call it once per createResultVector.
void destoryResultVector();

// The finding lines of the last run, in the order found. Each reads
//   ../js/main.js(57) : UndocumentedAPI 'GetSerial' used\n
extern std::vector<std::string>* g_SWFResultVector;
}

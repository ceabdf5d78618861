#pragma once

#include <string>

#include "checker/report/Report.h"
#include "checker/run/Worker.h"

// A report on its way from the worker that made it: as CBOR.

std::string bytesOf(const ApplicationReport& report);

// The report of `application` that a worker sent. If it failed, or sent no report, one that tells of it; if it failed
// when it had sent what the first rules found, that, and that other rules did not come to an end.
ApplicationReport reportOf(const std::string& application, const WorkerResult& result);

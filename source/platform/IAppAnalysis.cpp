// What the host's library supplies on the device, for processes without one. The string operations have a file of
// their own (strutil/CStringUtil.cpp). Test: tests/library/HostLoads_test.cpp.

#include "tarvo/IAppAnalysis.h"

IAppAnalysis::~IAppAnalysis() = default;

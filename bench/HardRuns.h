#pragma once

namespace bench {

// Registers one benchmark for each hard input: a megabyte of it through the whole engine, once, in a process of its
// own. times_ordinary is its processor time relative to that of a megabyte of ordinary script, peak_mb the memory it
// took. A run that needs more than $TARVO_BENCH_LIMIT seconds of processor time (default 60) is ended and marked so.
void registerHardRuns();

}  // namespace bench

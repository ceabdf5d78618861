#pragma once

// The host's log function. The engine prints nothing itself: each of its log lines is one call of this function.
//
// `function` is the bare name of the engine function that logs ("StartAnalysis"), `line` its source line, `format`
// a printf format with its arguments after it. The strings belong to the engine and are valid during the call only.
// The format is not written to, though its type says char*: that is the host's signature.
//
// The library carries a weak definition that discards every line; a host that defines the function gets them all.
void Print_Log(const char* function, unsigned line, char* format, ...) __attribute__((format(printf, 3, 4)));

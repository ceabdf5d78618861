#pragma once

#include <sys/types.h>

#include <functional>
#include <string>

#include "checker/options/WorkerBounds.h"
#include "checker/run/Signals.h"

// A process that works on a stranger's files: its memory is bounded, it has nothing of this process but standard
// streams and one descriptor, and ends with it.

// Whether the bound on memory has an effect: a sanitizer takes address space by the terabyte.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kIsMemoryBounded = false;
#elif defined(__has_feature)
constexpr bool kIsMemoryBounded = !__has_feature(address_sanitizer) && !__has_feature(thread_sanitizer);
#else
constexpr bool kIsMemoryBounded = true;
#endif

// Exit statuses of such a process.
constexpr int kWorkDone = 0;
constexpr int kWorkOutOfMemory = 41;
constexpr int kWorkFailed = 42;

// Starts one. `body` gets the descriptor `end`, which has another number there, and gives the exit status. Returns the
// process's number, or -1 with errno.
pid_t startProcess(int end, const WorkerBounds& bounds, const Signals& signals, const std::function<int(int)>& body);

// Sends all of `bytes`, or gives false.
bool sendAll(int descriptor, const std::string& bytes);

// Why a process with the wait status `status` did not do its work; empty if it did.
std::string failureOf(int status, const WorkerBounds& bounds);

// How this process ends when it is told to, runs out of time or out of memory: with a sentence on
// standard error, its own status, and no temporary file left.
#pragma once

#include <string>

namespace host {

// Statuses of a process that was ended, for who waits for it.
enum EndStatus {
    kEndedOutOfMemory = 121,
    kEndedOutOfTime = 122,
    kEndedBySignal = 128  // plus the signal's number, as shells count: Ctrl-C gives 130
};

// From now on SIGINT, SIGTERM and SIGHUP, a spent time limit and a failed allocation end the
// process at once, wherever it is. Signals that the process was told to ignore stay ignored.
//
// name  begins each sentence, "qzenvelope"; empty: nothing is said, as in a worker whose parent
//       says it
void EndCleanly(const std::string& name);

// The process ends so many seconds from now with kEndedOutOfTime; 0 lifts the limit.
// what  completes "took longer than N s"; kept
void LimitTime(double seconds, const char* what);

// Allocations beyond so many megabytes of the process's own memory fail; 0: no limit. False when
// the system knows no such limit.
bool LimitMemory(double megabytes);

// The file to remove when the process is ended; null: none. The path is copied.
void SetTemporaryFile(const char* path);

}  // namespace host

// Work in processes of its own: the host keeps state for a whole process, and what goes wrong in
// one drawing must not reach the next.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace app {

// Sends a message to the process that started the worker. What the worker has sent arrives even if
// it crashes right after.
using Send = std::function<void(const std::string& message)>;

// How a worker ended.
struct WorkerEnd {
    bool isWhole = false;    // it returned from its work
    bool isRefusal = false;  // it threw; how is its text
    bool isLimit = false;    // it ran out of the time or the memory that it may take
    std::string how;         // else what happened: "was ended by signal 11 (Segmentation fault)"
};

struct WorkerPool {
    // Runs in a new process; what it throws ends it with the text as how.
    std::function<void(size_t job, const Send& send)> work;
    // Both run in the calling process, in the order in which things happen.
    std::function<void(size_t job, const std::string& message)> onMessage;
    // True: the job is started once more.
    std::function<bool(size_t job, const WorkerEnd& end)> onEnd;

    // Works off jobs 0 to count - 1 in their order, atATime of them side by side. Workers end with
    // the calling process, also when it is killed. The calling process must have one thread only.
    //
    // fails  std::runtime_error when the system gives no process or pipe
    void Run(size_t count, size_t atATime) const;
};

// Processors that this process may use, at least 1.
size_t ProcessorCount();

}  // namespace app

// The batch's only place that talks to the operating system about processes.
#include "apps/qzenvelope/WorkerPool.h"

#include <fcntl.h>
#include <poll.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <vector>

#include "host/sys/process_end.h"
#include "product/base/Words.h"

namespace app {

using product::Tr;
namespace {

// Messages: their length in native order, then their bytes. A length of kEndMark ends with the text
// that says why the worker failed; an empty one says that it did not.
using Length = std::uint64_t;
constexpr Length kEndMark = Length{1} << 63;
constexpr size_t kReadAtOnce = size_t{1} << 16;

[[noreturn]] void Refuse(const char* what) {
    throw std::runtime_error(std::string(what) + ": " + std::strerror(errno));
}

void WriteAll(int fd, const void* bytes, size_t size) {
    const char* at = static_cast<const char*>(bytes);
    while (size > 0) {
        const ssize_t written = ::write(fd, at, size);
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) ::_exit(1);  // nobody listens any more
        at += written;
        size -= static_cast<size_t>(written);
    }
}

void WriteMessage(int fd, Length mark, const std::string& text) {
    const Length length = text.size() | mark;
    WriteAll(fd, &length, sizeof length);
    WriteAll(fd, text.data(), text.size());
}

struct Worker {
    size_t job = 0;
    pid_t pid = -1;
    int fd = -1;
    std::string received;
    bool hasEnded = false;  // its end mark came
    std::string reason;
};

[[noreturn]] void Work(const WorkerPool& pool, size_t job, int fd, pid_t parent) {
    // A parent that is killed takes its workers along: nobody would read what they send. They end
    // without a word, which is the parent's.
    host::EndCleanly("");
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (::getppid() != parent) ::_exit(1);
    std::string reason;
    try {
        pool.work(job, [fd](const std::string& message) { WriteMessage(fd, 0, message); });
    } catch (const std::exception& error) {
        reason = error.what();
        if (reason.empty()) reason = Tr("failed without saying why");
    }
    WriteMessage(fd, kEndMark, reason);
    // Neither the parent's buffers are flushed twice nor its objects destroyed.
    ::_exit(0);
}

std::string HowItEnded(int status) {
    if (WIFSIGNALED(status))
        return Tr("was ended by signal ") + std::to_string(WTERMSIG(status)) + " (" +
               ::strsignal(WTERMSIG(status)) + ")";
    if (WEXITSTATUS(status) == host::kEndedOutOfMemory) return Tr("ran out of memory");
    if (WEXITSTATUS(status) == host::kEndedOutOfTime)
        return Tr("took longer than --time-limit allows");
    return Tr("ended with status ") + std::to_string(WEXITSTATUS(status));
}

class Running {
public:
    explicit Running(const WorkerPool& pool) : m_pool(pool) {}
    ~Running() {
        for (const Worker& worker : m_workers) {
            ::close(worker.fd);
            ::kill(worker.pid, SIGKILL);
            ::waitpid(worker.pid, nullptr, 0);
        }
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

    size_t Count() const { return m_workers.size(); }

    void Start(size_t job) {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0) Refuse(Tr("no pipe to a worker"));
        const pid_t parent = ::getpid();
        const pid_t pid = ::fork();
        if (pid == 0) {
            ::close(ends[0]);
            for (const Worker& other : m_workers) ::close(other.fd);
            Work(m_pool, job, ends[1], parent);
        }
        ::close(ends[1]);
        if (pid < 0) {
            ::close(ends[0]);
            Refuse(Tr("no process for a worker"));
        }
        Worker worker;
        worker.job = job;
        worker.pid = pid;
        worker.fd = ends[0];
        m_workers.push_back(std::move(worker));
    }

    // Waits until something happens; the jobs that are to be started once more go to again.
    void Wait(std::vector<size_t>& again) {
        std::vector<pollfd> waiting;
        for (const Worker& worker : m_workers) waiting.push_back({worker.fd, POLLIN, 0});
        if (::poll(waiting.data(), waiting.size(), -1) < 0) {
            if (errno == EINTR) return;
            Refuse(Tr("the workers cannot be waited for"));
        }
        for (size_t i = waiting.size(); i-- > 0;) {
            if (waiting[i].revents == 0 || Receive(m_workers[i])) continue;
            Worker worker = std::move(m_workers[i]);
            m_workers.erase(m_workers.begin() + static_cast<std::ptrdiff_t>(i));
            if (m_pool.onEnd(worker.job, EndOf(worker))) again.push_back(worker.job);
        }
    }

private:
    // False at the end of what the worker sends.
    bool Receive(Worker& worker) {
        const size_t had = worker.received.size();
        worker.received.resize(had + kReadAtOnce);
        const ssize_t got = ::read(worker.fd, worker.received.data() + had, kReadAtOnce);
        worker.received.resize(had + static_cast<size_t>(std::max<ssize_t>(got, 0)));
        if (got < 0) return errno == EINTR;
        size_t at = 0;
        Length length = 0;
        while (worker.received.size() - at >= sizeof length) {
            std::memcpy(&length, worker.received.data() + at, sizeof length);
            const size_t size = static_cast<size_t>(length & ~kEndMark);
            if (worker.received.size() - at - sizeof length < size) break;
            const std::string message = worker.received.substr(at + sizeof length, size);
            at += sizeof length + size;
            if ((length & kEndMark) == 0) {
                m_pool.onMessage(worker.job, message);
            } else {
                worker.hasEnded = true;
                worker.reason = message;
            }
        }
        worker.received.erase(0, at);
        return got > 0;
    }

    static WorkerEnd EndOf(const Worker& worker) {
        ::close(worker.fd);
        int status = 0;
        while (::waitpid(worker.pid, &status, 0) < 0 && errno == EINTR) {
        }
        WorkerEnd end;
        end.isWhole = worker.hasEnded && worker.reason.empty();
        end.isRefusal = worker.hasEnded && !end.isWhole;
        end.isLimit = WIFEXITED(status) && (WEXITSTATUS(status) == host::kEndedOutOfMemory ||
                                            WEXITSTATUS(status) == host::kEndedOutOfTime);
        if (!end.isWhole) end.how = worker.hasEnded ? worker.reason : HowItEnded(status);
        return end;
    }

    const WorkerPool& m_pool;
    std::vector<Worker> m_workers;
};

}  // namespace

void WorkerPool::Run(size_t count, size_t atATime) const {
    Running running(*this);
    std::vector<size_t> again;
    size_t next = 0;
    while (next < count || !again.empty() || running.Count() > 0) {
        while (running.Count() < std::max<size_t>(atATime, 1) && (!again.empty() || next < count)) {
            const size_t job = again.empty() ? next++ : again.back();
            if (!again.empty()) again.pop_back();
            running.Start(job);
        }
        running.Wait(again);
    }
}

size_t ProcessorCount() {
    cpu_set_t set;
    CPU_ZERO(&set);
    if (::sched_getaffinity(0, sizeof set, &set) != 0) return 1;
    return static_cast<size_t>(std::max(CPU_COUNT(&set), 1));
}

}  // namespace app

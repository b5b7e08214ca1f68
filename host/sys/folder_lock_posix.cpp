#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

#include "host/sys/folder_lock.h"

namespace host {

FolderLock::~FolderLock() {
    if (m_fd >= 0) ::close(m_fd);
}

bool FolderLock::Take(const std::string& folder) {
    m_fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    return m_fd < 0 || ::flock(m_fd, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

}  // namespace host

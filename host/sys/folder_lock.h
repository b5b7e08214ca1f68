// One writer of a folder at a time.
#pragma once

#include <string>

namespace host {

// Keeps a folder for this process and those that it makes, until all of them are gone. Leaves no
// file in it. Folders on systems that know no such locks are always free.
class FolderLock {
public:
    FolderLock() = default;
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

    // False when another process keeps it.
    bool Take(const std::string& folder);

private:
    int m_fd = -1;
};

}  // namespace host

// Whole files in, whole files out. The only place of the database and the drawing files that talks
// to the operating system.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace host {

// Bytes of a file, not initialised before they are read: a large drawing is not cleared first.
struct FileBytes {
    std::unique_ptr<char[]> data;
    std::size_t size = 0;

    std::string_view View() const { return {data.get(), size}; }
};

// Why a file could not be read or written: the system's error number, its words, what was done.
struct FileError {
    int code = 0;
    std::string reason;  // "No such file or directory", "is a directory", ...
};

// Reads a file to its end; pipes work too. path is UTF-8 or whatever bytes the system takes.
// False with error filled; out is unchanged then.
bool ReadWholeFile(const std::string& path, FileBytes& out, FileError& error);

// Puts the pieces, in order, into the file so that after a crash or a full disk either the old or
// the new content is there, never a part: written to a new file beside it, flushed to disk,
// renamed. Where the system has files without names, a kill leaves nothing beside it; elsewhere
// what dead processes left is removed at the next write into the folder.
//
// A symbolic link stays one, its target is replaced; access rights of an existing file are kept; a
// file without write permission is refused, one that is in use (file_identity.h) too; devices and
// pipes are written directly. False with error filled: the old file is whole and nothing is left
// beside it.
bool WriteFileAtomically(const std::string& path, const std::vector<std::string_view>& pieces,
                         FileError& error);

}  // namespace host

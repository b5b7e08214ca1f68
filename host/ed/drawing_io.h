// Files as the session sees them: paths, and reading and writing drawings with one message each.
#pragma once

#include <string>

class AcDbDatabase;

namespace host {

// message receives the reader's notes, or on failure the one reason. False on failure.
bool ReadDrawing(AcDbDatabase& database, const std::wstring& path, std::wstring& message);
bool WriteDrawing(AcDbDatabase& database, const std::wstring& path, std::wstring& message);

// Backslashes become slashes; relative paths are taken from the working folder; "" is that folder.
std::wstring AbsolutePath(const std::wstring& path);
std::wstring FileNameOf(const std::wstring& path);
// With the closing slash.
std::wstring FolderOf(const std::wstring& path);

}  // namespace host

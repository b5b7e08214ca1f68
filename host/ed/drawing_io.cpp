#include "host/ed/drawing_io.h"

#include <algorithm>
#include <filesystem>

#include "host/base/format.h"
#include "host/dwg/drawing_file.h"

namespace host {
namespace {

// The lines of a report, and of the result when it is a failure.
std::wstring MessageOf(const dxf::Result& result, const dxf::Report& report) {
    std::string text;
    if (!result.ok()) return Widen(result.message);
    for (const std::string& line : report.Lines()) text += (text.empty() ? "" : "\n") + line;
    return Widen(text);
}

}  // namespace

bool ReadDrawing(AcDbDatabase& database, const std::wstring& path, std::wstring& message) {
    dxf::Report report;
    const dxf::Result result = dwg::ReadFile(database, Narrow(AbsolutePath(path)), report);
    message = MessageOf(result, report);
    return result.ok();
}

bool WriteDrawing(AcDbDatabase& database, const std::wstring& path, std::wstring& message) {
    dxf::Report report;
    const dxf::Result result = dwg::WriteFile(database, Narrow(AbsolutePath(path)), report);
    message = MessageOf(result, report);
    return result.ok();
}

std::wstring AbsolutePath(const std::wstring& path) {
    std::wstring slashed = path;
    std::replace(slashed.begin(), slashed.end(), L'\\', L'/');
    std::error_code failed;
    const std::filesystem::path absolute =
        std::filesystem::absolute(std::filesystem::u8path(Narrow(slashed)), failed);
    return failed ? slashed : Widen(absolute.lexically_normal().generic_u8string());
}

std::wstring FileNameOf(const std::wstring& path) {
    return path.substr(path.find_last_of(L"/\\") + 1);
}

std::wstring FolderOf(const std::wstring& path) {
    return path.substr(0, path.find_last_of(L"/\\") + 1);
}

}  // namespace host

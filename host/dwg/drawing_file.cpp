#include "host/dwg/drawing_file.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "host/dwg/converter.h"
#include "host/sys/file_io.h"
#include "host/sys/run_program.h"

namespace host::dwg {
namespace {

namespace fs = std::filesystem;

// The release's mark, at the head of every DWG file since R13.
constexpr char kMark[] = "AC10";

bool IsDwgFile(const std::string& path) {
    std::error_code error;
    if (!fs::is_regular_file(path, error)) return false;
    if (IsDwgPath(path)) return true;
    std::ifstream file(path, std::ios::binary);
    char head[4] = {};
    file.read(head, sizeof head);
    return file.gcount() == sizeof head && std::equal(head, head + sizeof head, kMark);
}

// A DXF text is whole when its last line says so; a binary one is judged by the reader alone.
bool IsWhole(std::string_view bytes) {
    if (bytes.substr(0, 18) == "AutoCAD Binary DXF") return true;
    const size_t last = bytes.find_last_not_of(" \t\r\n\x1a");
    return last != std::string_view::npos && last >= 2 && bytes.substr(last - 2, 3) == "EOF";
}

dxf::Result Refusal(const std::string& path, const std::string& reason) {
    return {Acad::eInvalidDwgVersion, path + ": a DWG drawing: " + reason};
}

dxf::Result NoScratch(const std::string& path) {
    return {Acad::eFileAccessErr, path + ": no temporary folder can be made; set TMPDIR"};
}

}  // namespace

bool IsDwgPath(const std::string& path) {
    std::string end = fs::path(path).extension().string();
    for (char& c : end)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return end == ".dwg";
}

dxf::Result ReadFile(AcDbDatabase& db, const std::string& path, dxf::Report& report) {
    if (!IsDwgFile(path)) return dxf::ReadFile(db, path, report);
    const ScratchFolder folder;
    if (folder.Path().empty()) return NoScratch(path);
    std::error_code error;
    const std::string from = fs::absolute(path, error).string();
    const std::string to = folder.Path() + "/drawing.dxf";
    // A drawing of another name would be passed over by some converters.
    std::string source = from;
    if (!IsDwgPath(path)) {
        source = folder.Path() + "/drawing.dwg";
        fs::copy_file(from, source, error);
        if (error) return Refusal(path, "it cannot be copied: " + error.message());
    }
    const Conversion conversion = Convert(source, to, folder.Path());
    if (!conversion.isDone) return Refusal(path, conversion.reason);
    FileBytes bytes;
    FileError fault;
    if (!ReadWholeFile(to, bytes, fault))
        return Refusal(
            path, "what the converter " + conversion.how + " made cannot be read: " + fault.reason);
    if (!IsWhole(bytes.View()))
        return Refusal(path, "the converter " + conversion.how + " made a file that breaks off" +
                                 (conversion.said.empty() ? "" : ": " + conversion.said));
    const dxf::Result result = dxf::ReadBytes(db, bytes.View(), path, report);
    if (!result.ok())
        return {result.status, result.message + " (of what the converter " + conversion.how +
                                   " made of the DWG drawing)"};
    report.Add("read by way of a converter",
               conversion.how + (conversion.said.empty() ? "" : ": " + conversion.said));
    return result;
}

dxf::Result WriteFile(const AcDbDatabase& db, const std::string& path, dxf::Report& report) {
    if (!IsDwgPath(path)) return dxf::WriteFile(db, path, report);
    const ScratchFolder folder;
    if (folder.Path().empty()) return NoScratch(path);
    const std::string from = folder.Path() + "/drawing.dxf", to = folder.Path() + "/drawing.dwg";
    const dxf::Result made = dxf::WriteFile(db, from, report);
    if (!made.ok()) return made;
    const Conversion conversion = Convert(from, to, folder.Path());
    if (!conversion.isDone) return Refusal(path, conversion.reason);
    FileBytes bytes;
    FileError fault;
    if (!ReadWholeFile(to, bytes, fault) || bytes.View().substr(0, 4) != kMark)
        return Refusal(path, "what the converter " + conversion.how + " made is no DWG file");
    if (!WriteFileAtomically(path, {bytes.View()}, fault))
        return {Acad::eFileAccessErr, path + ": cannot be written: " + fault.reason};
    report.Add("written by way of a converter", conversion.how);
    return made;
}

}  // namespace host::dwg

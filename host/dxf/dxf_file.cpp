#include "host/dxf/dxf_file.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>

#include "host/db/build.h"
#include "host/db/drawing_source.h"
#include "host/sys/file_io.h"
#include "host/dxf/drawing_writer.h"
#include "host/dxf/reader.h"
#include "host/dxf/scan.h"

namespace host::dxf {

namespace {

struct VersionName {
    int number;
    AcDb::AcDbDwgVersion version;
};
constexpr VersionName kVersions[] = {
    {kVersionR12, AcDb::kDHL_1009},   {kVersionR13, AcDb::kDHL_1012},
    {1014, AcDb::kDHL_1014},          {kVersionR2000, AcDb::kDHL_1015},
    {kVersionR2004, AcDb::kDHL_1018}, {kVersionR2007, AcDb::kDHL_1021},
    {kVersionR2010, AcDb::kDHL_1024}, {kVersionR2013, AcDb::kDHL_1027},
    {kVersionR2018, AcDb::kDHL_1032}};

AcDb::AcDbDwgVersion VersionOf(int number) {
    for (const VersionName& entry : kVersions)
        if (entry.number == number) return entry.version;
    return AcDb::kDHL_Unknown;
}

Result SystemFault(const std::string& path, const char* what, const FileError& error) {
    const Acad::ErrorStatus status =
        error.code == ENOENT || error.code == ENOTDIR ? Acad::eFileNotFound
        : error.code == ENOSPC || error.code == EIO   ? Acad::eFileSystemErr
                                                      : Acad::eFileAccessErr;
    return {status, path + ": " + what + ": " + error.reason};
}

Result ScanFaultResult(const std::string& name, const ScanFault& fault) {
    const bool dwg = fault.reason.find("DWG") != std::string::npos;
    const std::string place = fault.place.empty() ? "" : fault.place + ": ";
    return {dwg ? Acad::eInvalidDwgVersion : Acad::eBadDxfSequence,
            name + ": " + place + fault.reason};
}

Result Read(AcDbDatabase& db, FileBytes bytes, const std::string& name, Report& report) {
    if (GetSource(db) != nullptr || GetRoot(db, Root::kLayerTable) != nullptr)
        return {Acad::eInvalidInput, name + ": the database already holds a drawing"};
    ScanFault fault;
    std::unique_ptr<Source> source = Scan(std::move(bytes), fault, report);
    if (source == nullptr) return ScanFaultResult(name, fault);
    const AcDb::AcDbDwgVersion version = VersionOf(source->info.version);
    BuildDatabase(db, std::move(source), report);
    SetFile(db, WideFromUtf8(name), version);
    return {};
}

const LoadedDrawing* DrawingOf(const AcDbDatabase& db) {
    return dynamic_cast<const LoadedDrawing*>(GetSource(db));
}

// A new drawing is text, its strings UTF-8 or, before R2007, Western European.
WriteStyle NewStyle(int version, const TextCodec& codec) {
    WriteStyle style;
    style.version = version;
    style.codec = &codec;
    return style;
}

Result Compose(const AcDbDatabase& db, const std::string& name, DrawingBytes& out, Report& report,
               const WriteOptions& options) {
    const LoadedDrawing* drawing = DrawingOf(db);
    const int version = options.version != 0 ? options.version
                        : drawing != nullptr ? drawing->source().info.version
                                             : kVersionR2018;
    if (drawing != nullptr && version != drawing->source().info.version)
        return {Acad::eInvalidDwgVersion, name +
                                              ": the drawing keeps the version it was read in (AC" +
                                              std::to_string(drawing->source().info.version) + ")"};
    const TextCodec codec(
        version >= kVersionR2007 ? TextCodec::Mode::kUtf8 : TextCodec::Mode::kCodePage, "CP1252");
    WriteStyle style = NewStyle(version, codec);
    if (drawing != nullptr) {
        style.form = drawing->source().info.form;
        style.layout = drawing->source().layout;
        style.codec = drawing->source().codec.get();
    }
    style.precision = options.precision;
    std::string reason;
    if (!WriteDrawing(db, drawing, style, out, report, reason))
        return {Acad::eInvalidInput, name + ": " + reason};
    return {};
}

Result OutOfMemory(const std::string& name) {
    return {Acad::eOutOfMemory, name + ": there is not enough memory for the drawing"};
}

}  // namespace

Result ReadFile(AcDbDatabase& db, const std::string& path, Report& report) {
    try {
        FileBytes bytes;
        FileError error;
        if (!ReadWholeFile(path, bytes, error)) return SystemFault(path, "cannot be read", error);
        return Read(db, std::move(bytes), path, report);
    } catch (const std::bad_alloc&) {
        return OutOfMemory(path);
    }
}

Result ReadBytes(AcDbDatabase& db, std::string_view bytes, const std::string& name,
                 Report& report) {
    try {
        FileBytes copy;
        copy.data.reset(new char[bytes.size() + 1]);
        copy.size = bytes.size();
        std::copy(bytes.begin(), bytes.end(), copy.data.get());
        return Read(db, std::move(copy), name, report);
    } catch (const std::bad_alloc&) {
        return OutOfMemory(name);
    }
}

Result WriteFile(const AcDbDatabase& db, const std::string& path, Report& report,
                 const WriteOptions& options) {
    try {
        DrawingBytes bytes;
        const Result result = Compose(db, path, bytes, report, options);
        if (!result.ok()) return result;
        FileError error;
        if (!WriteFileAtomically(path, bytes.pieces, error))
            return SystemFault(path, "cannot be written", error);
        return {};
    } catch (const std::bad_alloc&) {
        return OutOfMemory(path);
    }
}

Result WriteToString(const AcDbDatabase& db, std::string& out, Report& report,
                     const WriteOptions& options) {
    DrawingBytes bytes;
    const Result result = Compose(db, "drawing", bytes, report, options);
    if (result.ok()) out = bytes.Join();
    return result;
}

const FileInfo* InfoOf(const AcDbDatabase& db) {
    const LoadedDrawing* drawing = DrawingOf(db);
    return drawing == nullptr ? nullptr : &drawing->source().info;
}

namespace {

LastCall& MutableLastCall() {
    thread_local LastCall call;
    return call;
}

std::string PathOf(const std::wstring& path) {
    std::string bytes = Utf8FromWide(path);
    std::replace(bytes.begin(), bytes.end(), '\\', '/');
    return bytes;
}

class DxfFormat : public DrawingFormat {
public:
    Acad::ErrorStatus Read(AcDbDatabase& db, const std::wstring& path) override {
        LastCall& call = MutableLastCall();
        call = LastCall();
        call.result = ReadFile(db, PathOf(path), call.report);
        return call.result.status;
    }
    Acad::ErrorStatus Write(AcDbDatabase& db, const std::wstring& path, int precision,
                            AcDb::AcDbDwgVersion version) override {
        LastCall& call = MutableLastCall();
        call = LastCall();
        WriteOptions options;
        options.precision = precision;
        for (const VersionName& entry : kVersions)
            if (entry.version == version && version != AcDb::kDHL_CURRENT)
                options.version = entry.number;
        call.result = WriteFile(db, PathOf(path), call.report, options);
        return call.result.status;
    }
};

}  // namespace

const LastCall& LastCallOfThread() { return MutableLastCall(); }

void Install() {
    static DxfFormat format;
    SetDrawingFormat(&format);
}

}  // namespace host::dxf

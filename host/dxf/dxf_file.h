// Reading and writing drawings as DXF files, text and binary, up to R2018.
//
// Nothing of a file is lost: what was not changed since reading is written back byte for byte, in
// the version, form, code page and layout of the file. A database that was not read is written as a
// complete text file.
#pragma once

#include <string>
#include <string_view>

#include "acadstrc.h"
#include "dbmain.h"
#include "host/dxf/report.h"
#include "host/dxf/source.h"

namespace host::dxf {

// eOk with an empty message, or why not: one sentence that names the file, the line (of binary
// files the byte) and the reason.
struct Result {
    Acad::ErrorStatus status = Acad::eOk;
    std::string message;
    bool ok() const { return status == Acad::eOk; }
};

// Reads a drawing into an empty database (made with buildDefaultDrawing = false).
//
// path    UTF-8, or whatever bytes the system takes
// report  receives what was odd about the file and could be handled
// fails   eFileNotFound, eFileAccessErr; eInvalidDwgVersion for a DWG file; eBadDxfSequence for
//         what is no DXF, is cut off within a tag, or holds no number where one belongs;
//         eInvalidInput when the database is not empty. The database is then as it was.
// cost    O(size), more than 100 MB/s; entities are made when they are opened
Result ReadFile(AcDbDatabase& db, const std::string& path, Report& report);

// The same from memory; name stands in messages.
Result ReadBytes(AcDbDatabase& db, std::string_view bytes, const std::string& name, Report& report);

struct WriteOptions {
    int version = 0;     // 1009, 1015 ... 1032; 0: that of the file, R2018 for a new drawing
    int precision = 16;  // digits of new reals after the first; 16: they read back exactly
};

// Writes a drawing so that after a failure the old file is whole.
//
// report  receives what could not be put into the file's version
// fails   eFileAccessErr, eFileNotFound (no such folder), eFileSystemErr (full disk); eInvalidInput
//         when an object holds a value that is no number; eInvalidDwgVersion when a drawing that
//         was read would have to change its version. The database keeps its source and its marks of
//         change, so that writing again gives the same file.
Result WriteFile(const AcDbDatabase& db, const std::string& path, Report& report,
                 const WriteOptions& options = {});
Result WriteToString(const AcDbDatabase& db, std::string& out, Report& report,
                     const WriteOptions& options = {});

// Facts about the file a database was read from; null for a new drawing.
const FileInfo* InfoOf(const AcDbDatabase& db);

// Makes AcDbDatabase::readDwgFile, dxfIn, dxfOut and the saving functions use this reader and
// writer; backslashes in their paths become slashes.
void Install();

// What the last of those calls in this thread had to say beside its status.
struct LastCall {
    Result result;
    Report report;
};
const LastCall& LastCallOfThread();

}  // namespace host::dxf

// Where unloaded objects come from, and the reader and writer of drawing files.
#pragma once

#include <string>

#include "acdb.h"
#include "host/db/stub.h"

namespace host {

// A drawing that was read but whose objects are made only when they are opened. The database owns
// it; host/dxf derives from it and keeps the file's tags there.
class DrawingSource {
public:
    virtual ~DrawingSource() = default;

    // Makes the object of a stub from its record: new, non-resident, without dirty marks. Null when
    // the record makes no object; the identifier then answers eUnknownHandle. Called once per stub.
    // It may register owned stubs and open other objects, but not the one being loaded.
    virtual AcDbObject* Load(Stub& stub) = 0;
};

// Reads and writes whole drawings. One format is installed for the process.
class DrawingFormat {
public:
    virtual ~DrawingFormat() = default;

    // Fills an empty database.
    virtual Acad::ErrorStatus Read(AcDbDatabase& db, const std::wstring& path) = 0;

    // precision  digits after the first of a real; 16 means every digit
    // version    kDHL_CURRENT: that of the file which was read
    virtual Acad::ErrorStatus Write(AcDbDatabase& db, const std::wstring& path, int precision,
                                    AcDb::AcDbDwgVersion version) = 0;
};

// Not owned; null takes it away. Without a format readDwgFile, dxfIn and dxfOut answer
// eNotImplementedYet.
void SetDrawingFormat(DrawingFormat* format);
DrawingFormat* GetDrawingFormat();

}  // namespace host

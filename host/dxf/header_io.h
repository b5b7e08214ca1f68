// Variables of the HEADER section.
#pragma once

#include "host/dxf/loaded_drawing.h"
#include "host/dxf/tag_buffer.h"

namespace host::dxf {

// The variables the database knows, from the file into the database.
void ReadHeader(AcDbDatabase& db, const LoadedDrawing& drawing);

// Puts the record that begins the section: for a file's own section its tags, with the variables
// that changed since put in their place and a handle seed that is too low raised; else a new one of
// every variable that the database knows.
//
// drawing     null for a drawing without file
// record      the record of SECTION HEADER, or kNoIndex
struct HandleFacts {
    std::uint64_t seed = 0;  // smallest handle that is free; 0: what the file says still holds
    bool turnedOn = false;   // the file had none before
};
std::string HeaderRecord(const AcDbDatabase& db, const LoadedDrawing* drawing, std::size_t record,
                         const HandleFacts& handles, const WriteStyle& style);

}  // namespace host::dxf

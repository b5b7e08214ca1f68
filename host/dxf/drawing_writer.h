// From a database to the bytes of a file.
#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "host/dxf/loaded_drawing.h"
#include "host/dxf/report.h"
#include "host/dxf/tag_buffer.h"

namespace host::dxf {

// The bytes of a file in order. The pieces point into the drawing's source, which must outlive
// them, and into text.
struct DrawingBytes {
    std::vector<std::string_view> pieces;
    std::deque<std::string> text;

    // Joins pieces that follow each other in memory.
    void AddView(std::string_view view);
    void AddText(std::string added);
    // Only keeps it, for pieces that are added as views.
    std::string_view Keep(std::string kept);
    std::string Join() const;
};

// Puts the file together: records that did not change as they came, changed ones merged, erased
// ones left out, new ones where their kind belongs.
//
// drawing  what the database was read from; null: everything is written, as a complete drawing
// result   false with the reason when an object cannot be written; nothing is then to be saved
// cost     O(changes) and a walk over the records
bool WriteDrawing(const AcDbDatabase& db, const LoadedDrawing* drawing, const WriteStyle& style,
                  DrawingBytes& out, Report& report, std::string& reason);

}  // namespace host::dxf

// From bytes to records: one pass that checks everything that lazy reading relies on.
#pragma once

#include <memory>
#include <string>

#include "host/dxf/report.h"
#include "host/dxf/source.h"

namespace host::dxf {

// Why the bytes are no readable drawing.
struct ScanFault {
    std::string reason;
    std::string place;  // "line 12", "byte 345"; empty when it is about the file as a whole
};

// Cuts a file into records and finds out form, layout, version and code page.
//
// Afterwards every tag up to source.end has a numeric group code and, where its code says so, a
// finite number as value, so that reading a record later cannot fail. Stops at EOF.
// result  null with fault filled when the bytes are no DXF, end within a tag or hold no number
//         where one belongs
// cost    O(size); nothing is allocated by counts that the file states
std::unique_ptr<Source> Scan(FileBytes bytes, ScanFault& fault, Report& report);

}  // namespace host::dxf

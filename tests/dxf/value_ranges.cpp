#include "value_ranges.h"

#include <cstdint>
#include <cstdlib>
#include <limits>
#include <sstream>

namespace test {

namespace {

constexpr double kAny = std::numeric_limits<double>::max();
constexpr double kTiny = std::numeric_limits<double>::min();

enum class Kind { kText, kHandle, kReal, kWhole, kHex };

struct Range {
    int first, last;  // group codes
    Kind kind;
    double least = 0.0, most = 0.0;
};

// By group code alone. Source: DXF reference, "Group code value types".
constexpr Range kRanges[] = {
    {0, 4, Kind::kText},
    {5, 5, Kind::kHandle},
    {6, 9, Kind::kText},
    {10, 59, Kind::kReal, -kAny, kAny},
    {60, 79, Kind::kWhole, -32768, 32767},
    {90, 99, Kind::kWhole, -2147483648.0, 2147483647.0},
    {100, 100, Kind::kText},
    {102, 102, Kind::kText},
    {105, 105, Kind::kHandle},
    {110, 149, Kind::kReal, -kAny, kAny},
    {160, 169, Kind::kWhole, -9223372036854775808.0, 9223372036854775807.0},
    {170, 179, Kind::kWhole, -32768, 32767},
    {210, 239, Kind::kReal, -kAny, kAny},
    {270, 279, Kind::kWhole, -32768, 32767},
    {280, 289, Kind::kWhole, 0, 255},
    {290, 299, Kind::kWhole, 0, 1},
    {300, 309, Kind::kText},
    {310, 319, Kind::kHex},
    {320, 369, Kind::kHandle},
    {370, 389, Kind::kWhole, -32768, 32767},
    {390, 399, Kind::kHandle},
    {400, 409, Kind::kWhole, -32768, 32767},
    {410, 419, Kind::kText},
    {420, 429, Kind::kWhole, 0, 0xFFFFFF},
    {430, 439, Kind::kText},
    {440, 449, Kind::kWhole, 0, 0x20000FF},
    {450, 459, Kind::kWhole, -2147483648.0, 2147483647.0},
    {460, 469, Kind::kReal, -kAny, kAny},
    {470, 481, Kind::kText},
    {999, 1003, Kind::kText},
    {1004, 1004, Kind::kHex},
    {1005, 1005, Kind::kHandle},
    {1006, 1009, Kind::kText},
    {1010, 1059, Kind::kReal, -kAny, kAny},
    {1060, 1070, Kind::kWhole, -32768, 32767},
    {1071, 1071, Kind::kWhole, -2147483648.0, 2147483647.0}};

// Narrower ones of a kind of record; "" holds for every entity and layer. Lineweights are
// hundredths of a millimetre, -1 to -3 standing for ByLayer, ByBlock and the default.
struct RecordRange {
    const char* record;
    int code;
    double least, most;
};
constexpr RecordRange kRecordRanges[] = {{"", 62, -255, 257},
                                         {"", 370, -3, 211},
                                         {"", 60, 0, 1},
                                         {"", 67, 0, 1},
                                         {"", 66, 0, 1},
                                         {"LAYER", 70, 0, 255},
                                         {"LTYPE", 73, 0, 12},
                                         {"LTYPE", 72, 65, 65},
                                         {"STYLE", 71, 0, 6},
                                         {"DICTIONARY", 280, 0, 1},
                                         {"DICTIONARY", 281, 0, 5},
                                         {"XRECORD", 280, 0, 255},
                                         {"CIRCLE", 40, kTiny, kAny},
                                         {"ARC", 40, kTiny, kAny},
                                         {"ARC", 50, 0, 360},
                                         {"ARC", 51, 0, 360},
                                         {"ELLIPSE", 40, kTiny, 1},
                                         {"SPLINE", 71, 1, 25},
                                         {"SPLINE", 70, 0, 2047},
                                         {"LWPOLYLINE", 70, 0, 255},
                                         {"TEXT", 72, 0, 5},
                                         {"TEXT", 73, 0, 3},
                                         {"ATTRIB", 72, 0, 5},
                                         {"ATTRIB", 74, 0, 3},
                                         {"ATTRIB", 70, 0, 15},
                                         {"ATTDEF", 70, 0, 15},
                                         {"MTEXT", 71, 1, 9},
                                         {"MTEXT", 72, 1, 5},
                                         {"MTEXT", 73, 1, 2},
                                         {"POLYLINE", 70, 0, 255},
                                         {"POLYLINE", 75, 0, 8},
                                         {"VERTEX", 70, 0, 255},
                                         {"3DFACE", 70, 0, 15},
                                         {"DIMENSION", 70, 0, 255},
                                         {"HATCH", 70, 0, 1},
                                         {"HATCH", 71, 0, 1},
                                         {"HATCH", 75, 0, 2},
                                         {"HATCH", 76, 0, 2},
                                         {"GROUP", 70, 0, 1},
                                         {"GROUP", 71, 0, 1},
                                         {"INSERT", 70, 0, 32767},
                                         {"INSERT", 71, 0, 32767}};

const Range* RangeOf(int code) {
    for (const Range& range : kRanges)
        if (code >= range.first && code <= range.last) return &range;
    return nullptr;
}

bool IsHex(const std::string& text, std::size_t longest) {
    return !text.empty() && text.size() <= longest &&
           text.find_first_not_of("0123456789ABCDEFabcdef") == std::string::npos;
}

// The reader of a strict program: no blanks behind, no sign but minus, nothing left over.
bool IsNumber(const std::string& text, bool whole, double& value) {
    const std::size_t begin = text.find_first_not_of(' ');
    if (begin == std::string::npos) return false;
    char* end = nullptr;
    value = std::strtod(text.c_str() + begin, &end);
    const bool plain = text.find_first_not_of(whole ? "-0123456789" : "-+.eE0123456789", begin) ==
                       std::string::npos;
    return plain && *end == '\0' && (whole || text.find('.') != std::string::npos);
}

std::string FaultOf(const std::string& record, int code, const std::string& value) {
    const Range* range = RangeOf(code);
    if (range == nullptr) return "no such group code";
    switch (range->kind) {
        case Kind::kText:
            return code == 0 && value.empty() ? "nothing" : "";
        case Kind::kHandle:
            return IsHex(value, 16) ? "" : "no handle";
        case Kind::kHex:
            return IsHex(value, 254) && value.size() % 2 == 0 ? "" : "no bytes";
        default:
            break;
    }
    double number = 0.0;
    if (!IsNumber(value, range->kind == Kind::kWhole, number)) return "no number";
    if (!(number >= range->least && number <= range->most)) return "out of range";
    for (const RecordRange& own : kRecordRanges)
        if (own.code == code && (*own.record == '\0' || record == own.record) &&
            !(number >= own.least && number <= own.most))
            return "out of the record's range";
    return "";
}

}  // namespace

std::string RangeFaults(const std::string& drawing) {
    std::istringstream in(drawing);
    std::string faults, record, code, value;
    bool own = true;  // not another object's values, other programs' data or a header variable
    int count = 0;
    while (std::getline(in, code) && std::getline(in, value)) {
        for (std::string* line : {&code, &value})
            if (!line->empty() && line->back() == '\r') line->pop_back();
        const int number = std::atoi(code.c_str());
        if (number == 0) record = value;
        if (number == 0) own = value != "SECTION";
        if (number == 101 || (number == 100 && value == "AcDbXrecord")) own = false;
        const std::string fault = FaultOf(own ? record : "?", number, value);
        if (!fault.empty() && ++count <= 20)
            faults += record + ": group " + code + " is \"" + value + "\", " + fault + "\n";
    }
    return faults;
}

}  // namespace test

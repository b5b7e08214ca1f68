// What kind of value follows a group code, and the text forms of those values.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace host::dxf {

// How a group's value is stored. The ranges are those of the DXF reference, "Group code value
// types".
enum class ValueKind : std::uint8_t {
    kText,    // a string in the drawing's code page
    kHandle,  // hexadecimal text
    kReal,    // double
    kInt16,
    kInt32,
    kInt64,
    kBool,   // one byte in binary files
    kChunk,  // bytes: hexadecimal text, or length and bytes in binary files
    kUnknown
};

// The kind of a group code; kUnknown outside the documented ranges. O(1).
ValueKind KindOf(int code);

// Bounds of the codes that occur in files; a longer number is no group code.
constexpr int kLowestCode = -9999;
constexpr int kHighestCode = 32767;

// First code of extended data (application name).
constexpr int kXdataStart = 1000;
constexpr int kXdataApplication = 1001;

// A view without leading and trailing blanks, tabs and carriage returns.
std::string_view Trim(std::string_view text);

// Whether the text, blanks aside, is a finite decimal number ("-1.5", "2", ".5", "1e-7"). No hex,
// no comma, no "nan". Cheaper than reading the number.
bool IsRealText(std::string_view text);

// Whether the text, blanks aside, is a whole number; a real form ("1.0") counts too, since some
// programs write it, and is cut to its whole part on reading.
bool IsIntText(std::string_view text);

// Reads a number that IsRealText accepts; 0 for anything else. Exact: the double nearest to the
// text.
double RealFromText(std::string_view text);

// Reads a number that IsIntText accepts; 0 for anything else, the nearest bound when it is too
// large.
std::int64_t IntFromText(std::string_view text);

// Reads a hexadecimal handle of up to 16 digits. False when it is none; value is then unchanged.
bool HandleFromText(std::string_view text, std::uint64_t& value);

// The shortest text that reads back as the same double, always in real form: "0.0", "12.5", "1e+20"
// as "1.0e+20". value must be finite.
std::string TextFromReal(double value);
void AppendTextOfReal(double value, std::string& out);

// Handle text: capitals, no leading zeros, "0" for null.
std::string TextFromHandle(std::uint64_t value);

// Hexadecimal text of bytes, and back. ChunkFromText leaves out a last odd digit and stops at the
// first character that is no digit.
std::string TextFromChunk(std::string_view bytes);
std::string ChunkFromText(std::string_view text);

}  // namespace host::dxf

// What STEP files say about units and names, whoever writes them. Header only: the kernel's library
// shares nothing else with the host.
#pragma once

#include <cstdio>
#include <string>

namespace host::solid {

struct StepOptions {
    std::string product;    // UTF-8, the product's name in the file
    int unitsValue = 4;     // header variable INSUNITS of the drawing
    std::string timestamp;  // "2026-01-05T10:00:00"
};

// A unit that STEP files have. The system's own have a prefix, the others are so many millimetres.
struct StepUnit {
    int unitsValue;            // number of INSUNITS
    const char* kernelName;    // as the kernel's library calls it
    double factor;             // from drawing units to the file's
    const char* prefix;        // of the metre: ".MILLI.", "$" for none; null for the others
    const char* name = "";     // of the others
    double millimetres = 0.0;  // in one of the others
};

// Units that STEP files have, by the number of INSUNITS; the others are written in the nearest.
inline const StepUnit& StepUnitOf(int unitsValue) {
    static const StepUnit kUnits[] = {{0, "MM", 1.0, ".MILLI."},
                                      {1, "INCH", 1.0, nullptr, "INCH", 25.4},
                                      {2, "FT", 1.0, nullptr, "FOOT", 304.8},
                                      {3, "MI", 1.0, nullptr, "MILE", 1609344.0},
                                      {4, "MM", 1.0, ".MILLI."},
                                      {5, "CM", 1.0, ".CENTI."},
                                      {6, "M", 1.0, "$"},
                                      {7, "KM", 1.0, ".KILO."},
                                      {8, "UIN", 1.0, nullptr, "MICROINCH", 2.54e-5},
                                      {9, "MIL", 1.0, nullptr, "MIL", 2.54e-2},
                                      {10, "MM", 914.4, ".MILLI."},
                                      {11, "MM", 1e-7, ".MILLI."},
                                      {12, "MM", 1e-6, ".MILLI."},
                                      {13, "UM", 1.0, ".MICRO."},
                                      {14, "MM", 100.0, ".MILLI."},
                                      {15, "M", 10.0, "$"},
                                      {16, "M", 100.0, "$"},
                                      {17, "KM", 1e6, ".KILO."},
                                      {18, "KM", 149597870.7, ".KILO."},
                                      {19, "KM", 9460730472580.8, ".KILO."},
                                      {20, "KM", 30856775814913.673, ".KILO."}};
    for (const StepUnit& unit : kUnits)
        if (unit.unitsValue == unitsValue) return unit;
    return kUnits[0];
}

// One code point of UTF-8 text from position at on; a byte that is none counts as itself.
inline char32_t NextCodePoint(const std::string& text, std::size_t& at) {
    const auto byte = [&](std::size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u;
    };
    // How many bytes follow is told by the first one.
    const unsigned first = byte(at++);
    const int more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : first >= 0xC0 ? 1 : 0;
    char32_t code = more == 0 ? first : first & (0x3Fu >> more);
    for (int i = 0; i < more; ++i) {
        if ((byte(at) & 0xC0u) != 0x80u) return first;
        code = code << 6 | (byte(at++) & 0x3Fu);
    }
    return code;
}

// A string of a STEP file: quotes and backslashes doubled, other than printable ASCII as \X4\ hex
// (ISO 10303-21).
inline std::string StepString(const std::string& text) {
    std::string out;
    for (std::size_t at = 0; at < text.size();) {
        const char32_t code = NextCodePoint(text, at);
        if (code >= 0x20 && code < 0x7F) {
            if (code == U'\'' || code == U'\\') out += static_cast<char>(code);
            out += static_cast<char>(code);
            continue;
        }
        char hex[32];
        std::snprintf(hex, sizeof hex, code > 0xFFFF ? "\\X4\\%08X\\X0\\" : "\\X2\\%04X\\X0\\",
                      static_cast<unsigned>(code));
        out += hex;
    }
    return out;
}

}  // namespace host::solid

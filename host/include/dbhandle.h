// Handles: the numbers by which a drawing file names its objects.
#pragma once

#include <cstddef>

#include "adesk.h"

// A 64-bit number; 0 is no handle. Text form: hexadecimal capitals without leading zeros.
class AcDbHandle {
public:
    enum { kStrSiz = 17 };  // characters of the text form, its end mark included

    constexpr AcDbHandle() = default;
    constexpr AcDbHandle(Adesk::UInt64 value) : m_value(value) {}
    // Reads hexadecimal digits of either case up to the first other character; 0 when there is none
    // or more than 16.
    explicit AcDbHandle(const ACHAR* hex);

    bool isNull() const { return m_value == 0; }  // 0 names nothing
    void setNull() { m_value = 0; }
    Adesk::UInt32 low() const { return static_cast<Adesk::UInt32>(m_value); }  // lower 32 bits
    // upper 32 bits
    Adesk::UInt32 high() const { return static_cast<Adesk::UInt32>(m_value >> 32); }
    AcDbHandle& increment() {  // the next number
        ++m_value;
        return *this;
    }

    // Writes the text form with its terminator; false and an untouched buffer when it does not fit.
    bool getIntoAsciiBuffer(ACHAR* buffer, size_t size) const;
    template <size_t N>
    bool getIntoAsciiBuffer(ACHAR (&buffer)[N]) const {
        return getIntoAsciiBuffer(buffer, N);
    }

    operator Adesk::UInt64() const { return m_value; }  // the number itself
    bool operator==(const AcDbHandle& other) const { return m_value == other.m_value; }
    bool operator!=(const AcDbHandle& other) const { return m_value != other.m_value; }
    bool operator<(const AcDbHandle& other) const { return m_value < other.m_value; }
    bool operator>(const AcDbHandle& other) const { return m_value > other.m_value; }

private:
    Adesk::UInt64 m_value = 0;  // 0: none
};

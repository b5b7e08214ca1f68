// Basic types of the host.
#pragma once

#include "host_wintypes.h"
#include "tchar.h"

// 16 bits in AutoCAD, the C library's own width here: nothing may depend on either.
typedef wchar_t ACHAR;
#define ACRX_T(text) HOST_WIDEN(text)

namespace Adesk {
// Numbers of a fixed width.
typedef std::int8_t Int8;
typedef std::int16_t Int16;
typedef std::int32_t Int32;
typedef std::int64_t Int64;
typedef std::uint8_t UInt8;
typedef std::uint16_t UInt16;
typedef std::uint32_t UInt32;
typedef std::uint64_t UInt64;
// Numbers that a pointer fits into.
typedef std::intptr_t IntPtr;
typedef std::uintptr_t UIntPtr;
typedef std::intptr_t LongPtr;
typedef std::uintptr_t ULongPtr;
typedef std::intptr_t IntDbId;   // an identifier as a number
typedef std::intptr_t GsMarker;  // a part of what is drawn; kept as a number only

typedef bool Boolean;
enum : bool { kFalse = false, kTrue = true };
}  // namespace Adesk

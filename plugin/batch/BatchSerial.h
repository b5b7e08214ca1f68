#pragma once

#include "StdAfx.h"

// A number that no other task or tool of this process has.
inline Adesk::UInt64 NextBatchSerial() {
    static Adesk::UInt64 nNext = 0;
    return ++nNext;
}

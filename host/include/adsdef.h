// Types of the C-style interface: reals, points, entity names and result buffers.
#pragma once

#include "adesk.h"

typedef double ads_real;
typedef ads_real ads_point[3];
typedef Adesk::IntPtr ads_name[2];
typedef ads_real ads_matrix[4][4];

#define ads_name_set(from, to) (*(to) = *(from), (to)[1] = (from)[1])
#define ads_name_clear(name) ((name)[0] = (name)[1] = 0)
#define ads_name_nil(name) ((name)[0] == 0 && (name)[1] == 0)
#define ads_point_set(from, to) (*(to) = *(from), (to)[1] = (from)[1], (to)[2] = (from)[2])
#ifndef PAUSE
#define PAUSE ACRX_T("\\")
#endif

// A run of bytes, code 310..319 and 1004. buf comes from acutNewBuffer.
struct ads_binary {
    short clen;
    char* buf;
};

// The value of a result buffer; which member counts follows from the group code (resbuf::restype).
union ads_u_val {
    ads_real rreal;
    ads_real rpoint[3];
    short rint;
    ACHAR* rstring;
    Adesk::IntPtr rlname[2];
    Adesk::Int32 rlong;
    Adesk::Int64 mnInt64;
    ads_binary rbinary;
    unsigned char ihandle[8];
};

// One node of a singly linked list of values. Made by acutNewRb, freed with its strings by
// acutRelRb.
struct resbuf {
    resbuf* rbnext;
    short restype;
    ads_u_val resval;
};

// Bits of acedInitGet.
#define RSG_NONULL 0x01
#define RSG_NOZERO 0x02
#define RSG_NONEG 0x04
#define RSG_NOLIM 0x08
#define RSG_GETZ 0x10
#define RSG_DASH 0x20
#define RSG_2D 0x40
#define RSG_OTHER 0x80

// Types of the C-style interface: reals, points, entity names and result buffers.
#pragma once

#include "adesk.h"

// Coordinates and lengths in drawing units, angles in radians.
typedef double ads_real;
typedef ads_real ads_point[3];
// The name of an entity or a selection set, valid for the session.
typedef Adesk::IntPtr ads_name[2];
typedef ads_real ads_matrix[4][4];  // rows of an affine map

// Copies one name to another; empties one; asks whether it is empty.
#define ads_name_set(from, to) (*(to) = *(from), (to)[1] = (from)[1])
#define ads_name_clear(name) ((name)[0] = (name)[1] = 0)
#define ads_name_nil(name) ((name)[0] == 0 && (name)[1] == 0)
// Copies a point to another.
#define ads_point_set(from, to) (*(to) = *(from), (to)[1] = (from)[1], (to)[2] = (from)[2])
// An argument of a command that the user shall answer.
#ifndef PAUSE
#define PAUSE ACRX_T("\\")
#endif

// A run of bytes, code 310..319 and 1004. buf comes from acutNewBuffer.
struct ads_binary {
    short clen;  // bytes
    char* buf;
};

// The value of a result buffer; which member counts follows from the group code (resbuf::restype).
union ads_u_val {
    ads_real rreal;            // codes 10..59 alone, 140..149, 210..239, 1010..1059
    ads_real rpoint[3];        // codes 10..18, 110..112, 210, 1010..1013
    short rint;                // codes 60..79, 170..179, 270..289, 1070
    ACHAR* rstring;            // codes 0..9, 100..102, 300..309, 410..419, 1000..1009
    Adesk::IntPtr rlname[2];   // codes 320..369 and below 0
    Adesk::Int32 rlong;        // codes 90..99, 420..429, 1071
    Adesk::Int64 mnInt64;      // codes 160..169
    ads_binary rbinary;        // codes 310..319, 1004
    unsigned char ihandle[8];  // a handle as eight bytes; not used here
};

// One node of a singly linked list of values. Made by acutNewRb, freed with its strings by
// acutRelRb.
struct resbuf {
    resbuf* rbnext;  // null at the end
    short restype;   // a group code or a result type
    ads_u_val resval;
};

// Bits of acedInitGet.
#define RSG_NONULL 0x01  // Enter is no answer
#define RSG_NOZERO 0x02  // 0 is none
#define RSG_NONEG 0x04   // nothing below 0 is one
#define RSG_NOLIM 0x08   // points outside of the limits are allowed
#define RSG_GETZ 0x10    // three coordinates
#define RSG_DASH 0x20    // rubber bands dashed
#define RSG_2D 0x40      // two coordinates
#define RSG_OTHER 0x80   // any text is an answer

// What a run of one tool tells on the command line, in one line.
#pragma once

#include "EncircleCalInfo.h"
#include "EncircleTrace.h"

// Length and diameter, vertices, and what was left out and why.
//
// dAxis   height of the axis; the diameter is twice the greatest distance from it
// axisId  the axis line; length and diameter are along and across it, whatever its direction. Null:
//         the axis is level
// result  empty when the envelope cannot be opened
CString GetEnvelopeLine(const AcDbObjectId& envelopeId, double dAxis, const AcDbObjectId& axisId,
                        const CEncircleTrace& trace);

// What takes no part, by reason; empty when everything does.
CString GetLeftOutText(const CEncircleTrace& trace);

// Why these numbers give no envelope: such that are no lengths, and chords no longer than the
// tolerance within which points are one, which would take curves away. Empty when a run may begin.
//
// bExact  the exact envelope, which cuts no curves into chords
CString GetParameterFault(const CEncircleCalInfo& info, bool bExact);

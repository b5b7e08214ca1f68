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

// Numbers with which a result may look right and be wrong: such that have no sense, and chords no
// longer than the tolerance within which points are one. Empty when there is nothing to say.
CString GetParameterWarning(const CEncircleCalInfo& info);

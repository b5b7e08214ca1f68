#pragma once

#include "EncircleCalInfo.h"
#include "ExactEnvelope.h"

// How an envelope lies to the exact one of the same parameters and entities.
struct SEnvelopeCheck {
    bool m_bCompared = false;  // false: no axis, or the envelope cannot be read
    SExactResult m_exact;      // refused: there is no exact envelope to compare with
    double m_dApart = 0.0;     // the greatest distance of the two outlines, drawing units
    AcGePoint3d m_at;          // where
    double m_dDiameter = 0.0;  // of the exact one
    // More than 0.01 or a thousandth of the diameter, whichever is less: nobody draws finer.
    bool IsNotable() const;
};

// info  its axis line must still be there
// cost  that of the exact envelope, O((n + k) log n); the drawing is only read
SEnvelopeCheck CheckEnvelope(const CEncircleCalInfo& info, const AcDbObjectIdArray& ids,
                             const AcDbObjectId& envelopeId);

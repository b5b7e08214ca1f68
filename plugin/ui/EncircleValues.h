// The parameter controls that the single-tool and the parameter dialog share, and how their values
// become engine parameters. No window: tests call it directly.
#pragma once

#include <vector>

#include "EncircleCalInfo.h"

struct SEncircleValues;

// A number among them, under its control's number in both dialogs and with its label there.
struct SValueField {
    const ACHAR* m_pLabel;
    double SEncircleValues::*m_pValue;
    int m_nControl;
    bool m_bTolerance;
    bool m_bMayBeZero;
};

struct SEncircleValues {
    // The values of a new record of parameters.
    SEncircleValues();

    int m_nHalf;           // radio index: 0 upper, 1 lower half
    int m_nExcludeDashed;  // check
    int m_nSidesVertical;  // check
    // Drawing units; see the record for their meaning.
    double m_dPointTol;
    double m_dLineTol;
    double m_dHorVerTol;
    double m_dArcPrecision;
    double m_dSideLength;

    // Writes every value into the record; its axis stays. Each number becomes both values of its
    // tolerance.
    void WriteTo(CEncircleCalInfo& info) const;
    // Takes over a record; any half but 0 is the lower one.
    void ReadFrom(const CEncircleCalInfo& info);

    // The first number that has no sense; null when all have: the precision must be above 0 and
    // above the point tolerance, the side length not below 0, tolerances above 0 and less than the
    // drawing's size.
    //
    // dDrawingSize  of the drawing's diagonal; 0 when it is not known, which allows any
    const SValueField* FindFault(double dDrawingSize) const;
};

// All of them, in the order of their controls.
const std::vector<SValueField>& GetValueFields();

// The parameter controls that the single-tool and the parameter dialog share, and how their values
// become engine parameters. No window: tests call it directly.
#pragma once

#include "EncircleCalInfo.h"

struct SEncircleValues {
    int m_nHalf = 0;           // radio index: 0 upper, 1 lower half
    int m_nExcludeDashed = 1;  // check
    int m_nSidesVertical = 0;  // check
    double m_dPointTol = 0.0005;
    double m_dLineTol = 0.001;
    double m_dHorVerTol = 1e-6;
    double m_dArcPrecision = 0.3;
    double m_dSideLength = 5.0;

    // Writes every value into the record; its axis stays. Each number becomes both values of its
    // tolerance.
    void WriteTo(CEncircleCalInfo& info) const;
    // Takes over a record; any half but 0 is the lower one.
    void ReadFrom(const CEncircleCalInfo& info);
};

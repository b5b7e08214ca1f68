// The exact envelope of what is picked: for callers with their own axis and options.
//
// The engine's pipelines follow steps; this one follows rules that say what the envelope is (see
// docs/exact.md). The axis has any direction, arcs come back as the drawing's own, and everything
// that was bridged, cut off, left open or left out is told with its place.
#pragma once

#include <functional>
#include <vector>

#include <afxwin.h>

#include "arxHeaders.h"
#include "plane/curve.h"

// What is asked for. Lengths in drawing units, points in the world's XY plane.
struct SExactRequest {
    enum E_Half { E_Half_Upper, E_Half_Lower, E_Half_Both };

    // What is picked, of one database: its layers, line types and blocks are read from there.
    AcDbObjectIdArray m_ids;
    // Curves beside them or instead of them; no layer and no line type.
    std::vector<plane::Curve> m_curves;

    // Of what is picked, blocks taken apart: whether something on that layer, as it shows, and of
    // that class takes part; what does not is not told of. Empty: everything does.
    std::function<bool(const CString& strLayer, const AcRxClass* pClass)> m_takes;

    // The axis, directed: the upper half lies to the left of the way from one to the other.
    AcGePoint3d m_axisFrom;
    AcGePoint3d m_axisTo;
    // Both: what a turning tool sweeps, drawn to the left of the axis.
    E_Half m_half = E_Half_Both;
    // An entity that stands for the axis and takes no part; may be null.
    AcDbObjectId m_axisId;

    // 0: the default that fits the size of what lies in the half.
    double m_dPoint = 0.0;      // g, closer points are one: min(0.0005, 5e-6 size)
    double m_dSide = 0.0;       // how deep a face may lie: min(5, size / 10)
    double m_dOvershoot = 0.0;  // what is no longer may be an overshoot: min(0.5, size / 100)
    double m_dCurve = 0.0;      // how far arcs may leave splines: min(1e-3, 1e-5 size)

    bool m_bTakeCircles = false;    // full circles and ellipses take part
    bool m_bIncludeDashed = false;  // curves whose line type has gaps take part
    bool m_bVerticalEnds = false;   // both faces go straight down to the axis
};

// What came of it.
struct SExactResult {
    enum E_Refusal {
        E_Refusal_None,
        E_Refusal_NoAxis,       // both points of the axis are one
        E_Refusal_BadLengths,   // a length that is negative, no number, or makes no sense for the
                                // drawing: an overshoot or a curve tolerance above its size, a
                                // point above a tenth of that or finer than its coordinates
        E_Refusal_NotFinite,    // a coordinate that is no number, or beyond 1e60
        E_Refusal_Empty,        // nothing drawn in the half
        E_Refusal_OnlyUpright,  // nothing but lines across the axis
        E_Refusal_TwoTools      // the profile comes down to the axis between its ends
    };
    enum E_LeftOut {
        E_LeftOut_Unopenable,
        E_LeftOut_Layer,      // on a layer that is off or frozen; m_strWhat is the layer
        E_LeftOut_Locked,     // m_strWhat is the layer
        E_LeftOut_Dimension,  // on the dimension layer
        E_LeftOut_Invisible,
        E_LeftOut_Linetype,      // m_strWhat is the line type
        E_LeftOut_Type,          // m_strWhat is the class
        E_LeftOut_Circle,        // a full circle or ellipse within the envelope
        E_LeftOut_CircleBeyond,  // one that reaches beyond it
        E_LeftOut_Block,         // too deep, holds itself, or cannot be read
        E_LeftOut_Unsound,       // cannot be drawn as it is stated, or a part of it cannot
        E_LeftOut_Coarse,     // takes part, but the most arcs were not enough to follow it closely
        E_LeftOut_OnAxis,     // nowhere off the axis
        E_LeftOut_Short,      // shorter than g
        E_LeftOut_CentreLine  // a centre line drawn full
    };
    struct SVertex {
        double m_dX = 0.0, m_dY = 0.0;
        double m_dBulge =
            0.0;  // of the edge that leaves: tan(sweep / 4), counter-clockwise positive
    };
    struct SPlace {
        double m_dX = 0.0, m_dY = 0.0;
    };
    struct SBridge {
        SPlace m_from, m_to;
        double m_dLength = 0.0;
    };
    struct STail {
        SPlace m_at;  // the free end
        double m_dLength = 0.0;
        AcDbObjectId m_id;
    };
    struct SLeftOut {
        E_LeftOut m_reason = E_LeftOut_Unopenable;
        CString m_strWhat;
        AcDbObjectId m_id;  // the picked entity; null for a given curve
        SPlace m_at;        // of what is left out, when it lies somewhere
    };

    E_Refusal m_refusal = E_Refusal_None;
    SPlace m_place;     // of the refusal
    AcDbObjectId m_id;  // the picked entity that it is about; null when it is about none

    // From the axis over the top to the axis; the edge that closes the outline has no bulge. Empty
    // when refused.
    std::vector<SVertex> m_vertices;

    // What the lengths were taken from, and the lengths that were used.
    double m_dSize = 0.0, m_dPoint = 0.0, m_dSide = 0.0, m_dOvershoot = 0.0, m_dCurve = 0.0;
    std::vector<SBridge> m_bridges;  // openings that were closed by something that is not drawn
    std::vector<SBridge> m_gaps;     // where nothing at all is drawn
    std::vector<SPlace> m_openEnds;
    std::vector<STail> m_tails;
    std::vector<SLeftOut> m_leftOut;
};

class AFX_EXT_CLASS CExactEnvelope {
public:
    explicit CExactEnvelope(const SExactRequest& request);

    // Finds the envelope; the drawing is only read, and nothing stays open.
    //
    // result  moved, turned or mirrored with the drawing within 1e-9 of its size; the order of what
    //         is picked does not matter
    // cost    O((n + k) log n) for n curves and k changes of the outermost one
    SExactResult Find() const;

    // One sentence on a refusal, with the place and what to do.
    static CString Explain(const SExactResult& result);

    // Adds a found envelope to the model space of the database that is worked on, as a closed
    // polyline on "TempEncircleLine".
    //
    // drawing  gains the polyline, and its layer when it has none
    // result   the polyline, closed; null when there is no envelope or it cannot be added
    static AcDbObjectId Draw(const SExactResult& result);

private:
    SExactRequest m_request;
};

// Runs a pipeline of the engine on a test drawing as the dialog does.
#pragma once

#include "plugin/engine/EncircleLine.h"
#include "plugin/engine/EncircleTrace.h"
#include "support/test_drawing.h"
#include "plugin/util/AddEntity.h"
#include "plugin/util/EraseEntity.h"

namespace test {

inline void SetBoth(AcGeTol& tol, double value) {
    tol.setEqualPoint(value);
    tol.setEqualVector(value);
}

// words: "lower", "vertical", "dashed" (include them), "noaxis", "p=0.1" (arc precision),
// "side=20", "axis=5" (its height, 0 without), "by=hatch|1|2" (the live pipeline without)
struct RunOptions {
    CEncircleCalInfo info;
    double axis = 0.0;
    bool hasAxis = true;
    void (CEncircleLine::*pipeline)(const AcArray<AcDbObjectId>&,
                                    AcDbObjectId&) = &CEncircleLine::GetEncircleLine3;

    explicit RunOptions(const std::string& words) {
        for (const std::string& word : Split(words, ' ')) {
            const double value = std::atof(word.substr(word.find('=') + 1).c_str());
            if (word == "lower") info.m_nHalfSide = 1;
            if (word == "vertical") info.m_bSideLinesVertical = true;
            if (word == "dashed") info.m_bExcludeDashed = false;
            if (word == "noaxis") hasAxis = false;
            if (word == "by=hatch") pipeline = &CEncircleLine::GetEncircleLineByHatch;
            if (word == "by=1") pipeline = &CEncircleLine::GetEncircleLine;
            if (word == "by=2") pipeline = &CEncircleLine::GetEncircleLine2;
            if (word.rfind("p=", 0) == 0) info.m_dArcPrecision = value;
            if (word.rfind("side=", 0) == 0) info.m_dSideLength = value;
            if (word.rfind("axis=", 0) == 0) axis = value;
        }
    }
};

inline CQZRect BoxOf(const AcDbObjectIdArray& ids) {
    CQZRect box(true);
    for (int i = 0; i < ids.length(); ++i) {
        AcDbObjectPointer<AcDbEntity> entity(ids[i], AcDb::kForRead);
        AcDbExtents extents;
        if (entity.openStatus() == Acad::eOk && entity->getGeomExtents(extents) == Acad::eOk) {
            box.Extend(CQZRect(extents.minPoint(), extents.maxPoint()));
        }
    }
    return box;
}

// The envelope of the picked entities; null when there is none. The axis line goes 10 beyond them
// on both sides and is gone afterwards.
inline AcDbObjectId RunEnvelope(const AcDbObjectIdArray& ids, RunOptions options) {
    if (options.hasAxis) {
        const CQZRect box = BoxOf(ids);
        options.info.m_midLineId =
            AddLine(AcGePoint3d(box.min.x - 10, options.axis, 0),
                    AcGePoint3d(box.max.x + 10, options.axis, 0), 256, ACDB_MODEL_SPACE);
    }
    AcDbObjectId outId;
    CEncircleLine engine(options.info);
    (engine.*options.pipeline)(ids, outId);
    EraseById(options.info.m_midLineId);
    return outId;
}

// The envelope as text, "none" without one.
inline std::string ShowEnvelope(const AcDbObjectIdArray& ids, const std::string& options) {
    AcDbObjectPointer<AcDbPolyline> polyline(RunEnvelope(ids, RunOptions(options)), AcDb::kForRead);
    return polyline.openStatus() == Acad::eOk ? Show(*polyline) : "none";
}

inline std::string ShowEnvelope(const std::string& entities, const std::string& options) {
    TestDrawing d(entities);
    return ShowEnvelope(d.ids(), options);
}

}  // namespace test

// From cloned entities to straight lines, and the layer operations around a run.
#include "StdAfx.h"

#include "EncircleLine.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <map>
#include <memory>

#include "AddEntity.h"
#include "ArcIndex.h"
#include "ArcReader.h"
#include "BlockSum.h"
#include "EncircleLayers.h"
#include "EncircleRun.h"
#include "EncircleTrace.h"
#include "EraseEntity.h"
#include "LayerTools.h"
#include "NearBoxes.h"
#include "SourceExploder.h"
#include "Tolerances.h"

namespace {

// Chords that one curve may give, and lines that a whole run may come to. A tool needs a thousandth
// of them; a tiny precision on a huge arc would fill the memory.
constexpr double kMaxSamples = 100000.0;
constexpr int kMaxLines = 4000000;

bool IsKindOf(const AcDbObjectId& id, AcRxClass* pClass) {
    const AcRxClass* pOwn = id.objectClass();
    return pOwn != nullptr && pOwn->isDerivedFrom(pClass);
}

bool IsPolyline(const AcDbObjectId& id) {
    return IsKindOf(id, AcDbPolyline::desc()) || IsKindOf(id, AcDb2dPolyline::desc()) ||
           IsKindOf(id, AcDb3dPolyline::desc());
}

bool IsOutlineCurve(const AcDbObjectId& id) {
    return IsKindOf(id, AcDbCurve::desc()) && !IsKindOf(id, AcDbCircle::desc()) &&
           !IsKindOf(id, AcDbEllipse::desc());
}

bool IsReplacedByChords(const AcDbObjectId& id) {
    return IsKindOf(id, AcDbSpline::desc()) || IsKindOf(id, AcDbArc::desc());
}

// Keeps, in their order, the ids for which keep(id) is true. What is dropped is keep()'s business.
template <class Keep>
void KeepIf(AcDbObjectIdArray& ids, Keep keep) {
    int kept = 0;
    for (int i = 0; i < ids.length(); ++i) {
        if (keep(ids[i])) {
            ids[kept] = ids[i];
            ++kept;
        }
    }
    ids.setLogicalLength(kept);
}

// Parts of line type names that stand for dashes and centre lines. Case matters: other spellings
// are not caught, which is known and wanted.
const ACHAR* const kDashedNames[] = {_T("DASH"), _T("dash"), _T("CENTER"), _T("Center")};

bool IsDashedName(const CString& name) {
    return std::any_of(std::begin(kDashedNames), std::end(kDashedNames),
                       [&](const ACHAR* pPart) { return name.Find(pPart) >= 0; });
}

// Explodes block references level by level, each piece after everything that was there before.
class CBlockFlattener {
public:
    explicit CBlockFlattener(CSourceExploder& exploder) : m_exploder(exploder) {}

    // Replaces the reference ids[index] by its pieces at the end of the array.
    void Flatten(AcDbObjectIdArray& ids, int index) {
        const AcDbObjectId id = ids[index];
        const AcDbObjectId blockId = GetBlock(id);
        m_origins.resize(ids.length());
        const bool bTooMany = ids.length() > kMaxPieces ||
                              (m_origins[index].m_nReference < 0 && m_pieces.Of(id) > kMaxPieces);
        if (bTooMany || (m_pieces.HasCycle() && IsInside(index, blockId))) {
            // A block that holds itself would go on for ever, and one whose blocks hold blocks can
            // come to more pieces than there is memory. Clones share the blocks, so that nothing
            // of the sum changes while references are replaced.
            CEncircleTrace::LeftOut(CEncircleTrace::E_LeftOut_Explode, id);
            EraseById(id);
            return;
        }
        m_exploder.Explode(id, ids);
        m_origins.resize(ids.length(), SOrigin{blockId, index});
    }

private:
    // Which block an id came out of, and which id that block's reference had; none for picked ones.
    struct SOrigin {
        AcDbObjectId m_blockId;
        int m_nReference = -1;
    };

    static AcDbObjectId GetBlock(const AcDbObjectId& id) {
        AcDbObjectPointer<AcDbBlockReference> reference(id, AcDb::kForRead);
        return reference.openStatus() == Acad::eOk ? reference->blockTableRecord()
                                                   : AcDbObjectId::kNull;
    }

    bool IsInside(int index, const AcDbObjectId& blockId) const {
        for (int i = index; i >= 0; i = m_origins[i].m_nReference) {
            if (m_origins[i].m_nReference >= 0 && m_origins[i].m_blockId == blockId) {
                return true;
            }
        }
        return false;
    }

    CSourceExploder& m_exploder;
    CBlockSum m_pieces = MakePieceCount();
    std::vector<SOrigin> m_origins;
};

// Erases and drops a polyline whose box is nearly that of an earlier one.
void DropRepeatedPolylines(AcDbObjectIdArray& polylines, double dThreshold) {
    CNearBoxes boxes(dThreshold);
    KeepIf(polylines, [&](const AcDbObjectId& id) {
        AcDbExtents extents;
        {
            AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
            if (entity.openStatus() != Acad::eOk || entity->getGeomExtents(extents) != Acad::eOk) {
                return true;
            }
        }
        if (!boxes.IsNearOrKeep(CQZRect(extents.minPoint(), extents.maxPoint()))) {
            return true;
        }
        CEncircleTrace::LeftOut(CEncircleTrace::E_LeftOut_Duplicate, id);
        EraseById(id);
        return false;
    });
}

// In the XY plane; infinite for what is no curve.
double GetDistanceToCurve(const AcDbObjectId& id, const AcGePoint3d& pt) {
    AcDbObjectPointer<AcDbCurve> curve(id, AcDb::kForRead);
    AcGePoint3d start;
    AcGePoint3d nearest;
    if (curve.openStatus() != Acad::eOk || curve->getStartPoint(start) != Acad::eOk ||
        curve->getClosestPointTo(AcGePoint3d(pt.x, pt.y, start.z), nearest) != Acad::eOk) {
        return std::numeric_limits<double>::infinity();
    }
    return std::hypot(nearest.x - pt.x, nearest.y - pt.y);
}

// The points at equal parameter steps that replace a curve; none when it has no geometry, the two
// ends alone when it is short.
//
// n = floor(L / p) + 1 points for a curve of length L and a precision p
AcGePoint3dArray SampleCurve(const AcDbObjectId& id, double dPrecision) {
    AcGePoint3dArray points;
    AcDbObjectPointer<AcDbCurve> curve(id, AcDb::kForRead);
    AcGeCurve3d* pGeometry = nullptr;
    if (curve.openStatus() != Acad::eOk || curve->getAcGeCurve(pGeometry) != Acad::eOk) {
        return points;
    }
    const std::unique_ptr<AcGeCurve3d> geometry(pGeometry);
    AcGeInterval interval;
    geometry->getInterval(interval);
    const double length = geometry->length(interval.lowerBound(), interval.upperBound());
    if (!(dPrecision > 0.0) || !(2 * dPrecision <= length)) {
        AcGePoint3d start;
        AcGePoint3d end;
        if (curve->getStartPoint(start) == Acad::eOk && curve->getEndPoint(end) == Acad::eOk) {
            points.append(start);
            points.append(end);
        }
        return points;
    }
    const double count = std::floor(length / dPrecision) + 1.0;
    if (!(count <= kMaxSamples)) {
        CEncircleTrace::Note(_T("a curve is so long that it is sampled at 100000 points only"), id);
    }
    geometry->getSamplePoints(static_cast<int>((std::min)(count, kMaxSamples)), points);
    return points;
}

}  // namespace

void CEncircleLine::ConvertToLines(AcDbObjectIdArray ids, AcDbObjectIdArray& out) {
    ConvertSources(ids, out, false);
}

void CEncircleLine::ConvertAllButArcs(AcDbObjectIdArray ids, AcDbObjectIdArray& out) {
    ConvertSources(ids, out, true);
}

void CEncircleLine::ConvertSources(AcDbObjectIdArray ids, AcDbObjectIdArray& out, bool bKeepArcs) {
    CSourceExploder exploder(m_calInfo.m_bExcludeDashed);
    CBlockFlattener flattener(exploder);
    AcDbObjectIdArray polylines;
    AcDbObjectIdArray working;
    for (int i = 0; i < ids.length(); ++i) {
        CEncircleWatch::Step("prepare", static_cast<size_t>(i), static_cast<size_t>(ids.length()));
        if (IsPolyline(ids[i])) {
            polylines.append(ids[i]);
        } else if (IsKindOf(ids[i], AcDbBlockReference::desc())) {
            flattener.Flatten(ids, i);
        } else {
            working.append(ids[i]);
        }
    }
    KeepIf(working, [](const AcDbObjectId& id) {
        if (IsOutlineCurve(id)) {
            return true;
        }
        CEncircleTrace::LeftOut(CEncircleTrace::E_LeftOut_Type, id);
        EraseById(id);
        return false;
    });

    DropRepeatedPolylines(polylines, 2 * m_calInfo.m_dArcPrecision);
    for (int i = 0; i < polylines.length(); ++i) {
        exploder.Explode(polylines[i], working);
    }

    AcDbObjectIdArray chords;
    const size_t all = static_cast<size_t>(working.length());
    size_t done = 0;
    KeepIf(working, [&](const AcDbObjectId& id) {
        CEncircleWatch::Step("prepare", done++, all);
        if (!IsReplacedByChords(id)) {
            return true;
        }
        if (bKeepArcs && IsKindOf(id, AcDbArc::desc())) {
            m_cloneIds.append(id);
            return false;
        }
        if (chords.length() < kMaxLines) {
            ConvertCurveToLine(id, chords);
        } else {
            CEncircleTrace::Note(_T("too many lines: a curve is replaced by one chord"), id);
            AcDbObjectId lineId;
            ConvertCurveToLine(id, lineId);
            chords.append(lineId);
        }
        m_cloneIds.append(id);
        return false;
    });
    working.append(chords);
    out = working;
}

void CEncircleLine::ConvertCurveToLine(AcDbObjectId curveId, AcDbObjectIdArray& out) {
    const AcGePoint3dArray points = SampleCurve(curveId, m_calInfo.m_dArcPrecision);
    CBlockAppender appender;
    for (int i = 0; i + 1 < points.length(); ++i) {
        if (points[i].distanceTo(points[i + 1]) < kShortestLine) {
            continue;
        }
        const AcDbObjectId id = appender.AppendLine(points[i], points[i + 1], kByLayerColour);
        if (!id.isNull()) {
            CEncircleTrace::Made(id, curveId);
            out.append(id);
        }
    }
}

void CEncircleLine::ConvertCurveToLine(AcDbObjectId curveId, AcDbObjectId& lineId) {
    AcGePoint3d start;
    AcGePoint3d end;
    {
        AcDbObjectPointer<AcDbCurve> curve(curveId, AcDb::kForRead);
        if (curve.openStatus() != Acad::eOk || curve->getStartPoint(start) != Acad::eOk ||
            curve->getEndPoint(end) != Acad::eOk) {
            return;
        }
    }
    lineId = AddLine(start, end, kByLayerColour, ACDB_MODEL_SPACE);
    CEncircleTrace::Made(lineId, curveId);
}

void CEncircleLine::RemoveDashedIds(AcDbObjectIdArray& ids) {
    if (!m_calInfo.m_bExcludeDashed) {
        return;
    }
    std::map<AcDbObjectId, bool> dashed;  // each line type's name is read once
    KeepIf(ids, [&](const AcDbObjectId& id) {
        CString name;
        {
            AcDbObjectPointer<AcDbLine> line(id, AcDb::kForRead);
            if (line.openStatus() != Acad::eOk) {
                return true;
            }
            const auto known = dashed.find(line->linetypeId());
            if (known != dashed.end() && !known->second) {
                return true;
            }
            AcString text;
            if (line->linetype(text) != Acad::eOk) {
                return true;
            }
            name = CString(text.kACharPtr());
            const bool bDashed = IsDashedName(name);
            dashed[line->linetypeId()] = bDashed;
            if (!bDashed) {
                return true;
            }
        }
        CEncircleTrace::LeftOut(CEncircleTrace::E_LeftOut_Linetype, name, id);
        EraseById(id);
        return false;
    });
}

void CEncircleLine::RemoveIdsInLayer(AcDbObjectIdArray& ids,
                                     const std::vector<CString>& layerNames) {
    std::vector<AcDbObjectId> layerIds;
    for (const CString& name : layerNames) {
        layerIds.push_back(FindLayer(name));
    }
    KeepIf(ids, [&](const AcDbObjectId& id) {
        {
            AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
            if (entity.openStatus() != Acad::eOk ||
                std::find(layerIds.begin(), layerIds.end(), entity->layerId()) == layerIds.end()) {
                return true;
            }
        }
        EraseById(id);
        return false;
    });
}

void CEncircleLine::RemoveDimLineIds(AcDbObjectIdArray& ids) {
    RemoveIdsInLayer(ids, {kDimensionLayer});
}

void CEncircleLine::SetLayersShow(bool bShow) { ShowAllLayers(bShow); }

void CEncircleLine::DeleteCloneEnts() {
    EraseOnLayer(FindLayer(kScratchLayer), CEncircleRun::GetLastBefore());
}

AcDbObjectIdArray CEncircleLine::GetAllArc(AcDbObjectIdArray ids) {
    KeepIf(ids, [](const AcDbObjectId& id) { return IsKindOf(id, AcDbArc::desc()); });
    return ids;
}

AcDbObjectIdArray CEncircleLine::IsPointOnArc(AcDbObjectIdArray ids, AcGePoint3d pt) {
    KeepIf(ids, [&](const AcDbObjectId& id) {
        SArc arc;
        return ReadArc(id, arc) ? GetDistanceToArc(arc, pt) <= kThroughArcTol
                                : GetDistanceToCurve(id, pt) <= kThroughArcTol;
    });
    return ids;
}

#include "StdAfx.h"

#include "ContourReader.h"

#include <map>
#include <set>

#include "DrawnShape.h"
#include "DrawnWalk.h"
#include "EncircleLayers.h"

namespace {

class CReader {
public:
    CReader(const SExactRequest& request, double dCurve, SContour& contour)
        : m_request(request), m_dCurve(dCurve), m_contour(contour) {
        for (int i = 0; i < request.m_ids.length(); ++i) {
            m_sources.emplace(request.m_ids[i], i);
        }
    }

    void Read() {
        AcDbDatabase* pDatabase = nullptr;
        AcDbObjectIdArray ids;
        for (int i = 0; i < m_request.m_ids.length(); ++i) {
            const AcDbObjectId& id = m_request.m_ids[i];
            // What is picked twice counts once.
            if (id == m_request.m_axisId || m_sources.at(id) != i) continue;
            ids.append(id);
            if (pDatabase == nullptr) pDatabase = id.database();
        }
        if (pDatabase == nullptr) return;
        SDrawnOptions options;
        options.m_bWithHidden = true;  // left out, but told
        CDrawnWalk walk(pDatabase, options);
        m_pWalk = &walk;
        walk.Walk(ids, [this](const SDrawnItem& item) { Take(item); });
        for (const SDrawnFault& fault : walk.Faults()) {
            LeaveOut(fault.m_kind == SDrawnFault::CannotOpen ? SExactResult::E_LeftOut_Unopenable
                                                             : SExactResult::E_LeftOut_Block,
                     fault.Text(), fault.m_id, nullptr);
        }
    }

private:
    void LeaveOut(SExactResult::E_LeftOut reason, const CString& strWhat, const AcDbObjectId& id,
                  const SDrawnItem* pItem) {
        SExactResult::SLeftOut left;
        left.m_reason = reason;
        left.m_strWhat = strWhat;
        left.m_id = id;
        AcDbExtents extents;
        if (pItem != nullptr && pItem->m_entity.getGeomExtents(extents) == Acad::eOk) {
            const AcGePoint3d middle =
                pItem->m_place * AcGePoint3d((extents.minPoint().x + extents.maxPoint().x) / 2,
                                             (extents.minPoint().y + extents.maxPoint().y) / 2,
                                             0.0);
            left.m_at = {middle.x, middle.y};
        }
        m_contour.m_leftOut.push_back(left);
    }

    // The reason why an item is no contour, and what it is called by; false when there is none.
    bool IsLeftOut(const SDrawnItem& item, SExactResult::E_LeftOut& reason, CString& strWhat) {
        const auto because = [&](SExactResult::E_LeftOut why, const CString& strName) {
            reason = why;
            strWhat = strName;
            return true;
        };
        const CString strLayer = m_pWalk->LayerName(item.m_layerId);
        if ((item.m_nHidden & kDrawnInvisible) != 0)
            return because(SExactResult::E_LeftOut_Invisible, CString());
        if (strLayer.CompareNoCase(kDimensionLayer) == 0)
            return because(SExactResult::E_LeftOut_Dimension, strLayer);
        if (!item.IsShown()) return because(SExactResult::E_LeftOut_Layer, strLayer);
        if (item.IsLocked()) return because(SExactResult::E_LeftOut_Locked, strLayer);
        if (!IsCurve(item.m_entity))
            return because(SExactResult::E_LeftOut_Type, item.m_entity.isA()->name());
        if (m_request.m_bIncludeDashed) return false;
        // A pattern decides; where the drawing has none for it, the name.
        const SLinetype& linetype = m_pWalk->Linetypes().Look(item.m_linetypeId);
        if (!linetype.m_bHasGaps && linetype.IsContinuous()) return false;
        return because(SExactResult::E_LeftOut_Linetype, linetype.m_strName);
    }

    static bool IsCurve(const AcDbEntity& entity) {
        for (const AcRxClass* const pClass :
             {AcDbLine::desc(), AcDbArc::desc(), AcDbCircle::desc(), AcDbEllipse::desc(),
              AcDbSpline::desc(), AcDbPolyline::desc(), AcDb2dPolyline::desc(),
              AcDb3dPolyline::desc()})
            if (entity.isKindOf(pClass)) return true;
        return false;
    }

    void Take(const SDrawnItem& item) {
        if (m_request.m_takes &&
            !m_request.m_takes(m_pWalk->LayerName(item.m_layerId), item.m_entity.isA()))
            return;
        SExactResult::E_LeftOut reason;
        CString strWhat;
        if (IsLeftOut(item, reason, strWhat))
            return LeaveOut(reason, strWhat, item.m_pickedId, &item);
        SDrawnShape shape;
        GetDrawnShape(item.m_entity, item.m_place, m_dCurve, shape);
        if (!shape.m_bSound && m_told.insert(item.m_id).second)
            LeaveOut(SExactResult::E_LeftOut_Unsound,
                     SDrawnFault{SDrawnFault::Unsound, item.m_id, CString()}.Text(),
                     item.m_pickedId, &item);
        if (!shape.m_bWithin)
            LeaveOut(SExactResult::E_LeftOut_Coarse, CString(), item.m_pickedId, &item);
        const int source = m_sources.at(item.m_pickedId);
        const bool isRound = shape.m_bRound && !m_request.m_bTakeCircles;
        for (size_t i = 0; i < shape.m_curves.size(); ++i) {
            const bool isApproximate = shape.m_smoothOf[i] != SDrawnShape::kExact;
            (isRound ? m_contour.m_circles : m_contour.m_curves)
                .push_back({shape.m_curves[i], source, isApproximate});
        }
    }

    const SExactRequest& m_request;
    const double m_dCurve;
    SContour& m_contour;
    std::map<AcDbObjectId, int> m_sources;
    CDrawnWalk* m_pWalk = nullptr;
    std::set<AcDbObjectId> m_told;  // as unsound: a block may show it many times
};

}  // namespace

SContour ReadContour(const SExactRequest& request, double dCurve) {
    SContour contour;
    CReader(request, dCurve, contour).Read();
    return contour;
}

// What a walk sees, as text.
#pragma once

#include <cmath>

#include "plane/text.h"
#include "plugin/drawn/DrawnShape.h"
#include "plugin/drawn/DrawnWalk.h"
#include "support/test_drawing.h"

namespace test {

// The curves as text, without the noise of sines and cosines.
inline std::string ShowCurves(std::vector<plane::Curve> curves) {
    const auto tidy = [](double& value) { value = std::round(value * 1e9) / 1e9; };
    for (plane::Curve& curve : curves)
        for (double* const value : {&curve.from.x, &curve.from.y, &curve.to.x, &curve.to.y})
            tidy(*value);
    return plane::Show(curves);
}

// One item a line: "layer/linetype depth state: curves".
class Shown {
public:
    explicit Shown(AcDbDatabase& db, const SDrawnOptions& options = SDrawnOptions())
        : m_db(db), m_walk(&db, options) {}

    std::string ModelSpace() {
        std::string text;
        m_walk.WalkSpace(acdbSymUtil()->blockModelSpaceId(&m_db),
                         [&](const SDrawnItem& item) { text += Line(item); });
        return text;
    }
    std::string Of(const AcDbObjectIdArray& ids) {
        std::string text;
        m_walk.Walk(ids, [&](const SDrawnItem& item) { text += Line(item); });
        return text;
    }
    std::string Faults() const {
        std::string text;
        for (const SDrawnFault& fault : m_walk.Faults()) text += Narrow(fault.Text()) + "\n";
        return text;
    }

private:
    std::string Line(const SDrawnItem& item) {
        static const char* const kStates[] = {"off", "frozen", "invisible", "locked"};
        std::string text = Narrow(m_walk.LayerName(item.m_layerId)) + "/" +
                           Narrow(m_walk.Linetypes().Look(item.m_linetypeId).m_strName) + "/" +
                           std::to_string(item.m_color.colorIndex()) + " " +
                           std::to_string(item.m_nDepth);
        for (unsigned int i = 0; i < 4; ++i)
            if ((item.m_nHidden & 1u << i) != 0) text += std::string(" ") + kStates[i];
        SDrawnShape shape;
        if (GetDrawnShape(item.m_entity, item.m_place, 1e-3, shape))
            return text + ": " + ShowCurves(shape.m_curves) + "\n";
        return text + ": " + Narrow(item.m_entity.isA()->name()) + "\n";
    }

    AcDbDatabase& m_db;
    CDrawnWalk m_walk;
};

}  // namespace test

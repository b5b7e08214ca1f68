#include "StdAfx.h"

#include "ShowBox.h"

namespace {

constexpr double kViewShare = 1.1;

}  // namespace

bool ShowBox(const CQZRect& box) {
    AcDbViewTableRecord view;
    view.setCenterPoint(AcGePoint2d((box.min.x + box.max.x) / 2, (box.min.y + box.max.y) / 2));
    view.setWidth(box.GetWidth() * kViewShare);
    view.setHeight(box.GetHeight() * kViewShare);
    return acedSetCurrentView(&view, nullptr) == Acad::eOk;
}

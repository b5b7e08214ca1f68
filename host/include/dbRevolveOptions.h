// Options of revolved solids.
#pragma once

#include "acadstrc.h"
#include "adesk.h"

// Angles in radians. Only the defaults are modelled; other values make the revolve refuse.
// Handed to createRevolvedSolid, which refuses a draft or a twist: eNotImplementedYet.
class AcDbRevolveOptions {
public:
    double draftAngle() const { return m_draft; }  // of the side faces; 0: none
    void setDraftAngle(double angle) { m_draft = angle; }
    double twistAngle() const { return m_twist; }  // along the way; 0: none
    void setTwistAngle(double angle) { m_twist = angle; }
    // an open profile is closed along the axis; not here
    bool closeToAxis() const { return m_closeToAxis; }
    void setCloseToAxis(bool close) { m_closeToAxis = close; }

private:
    double m_draft = 0.0;
    double m_twist = 0.0;
    bool m_closeToAxis = false;
};

#pragma once

#include "StdAfx.h"

// The axis that a picked centre means: the longest centre line among the entities, blocks taken
// apart, that passes the centre within a hundredth of its own length, as it is drawn; when there is
// none, the level line through the centre.
//
// from, to  its ends: rightwards, or upwards when it is upright
// result    whether a centre line was found
// cost      opens every entity once
bool FindCentreAxis(const AcDbObjectIdArray& ids, const AcGePoint3d& centre, AcGePoint3d& from,
                    AcGePoint3d& to);

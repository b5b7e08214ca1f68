// Curves and faces as parts of a scene.
#pragma once

#include "apps/qzhost/scene/SceneChunk.h"
#include "dbmain.h"

namespace app {

// Appends what is drawn of an entity that is no text and not made of parts; nothing for what has no
// shape in this host, such as 3D solids.
void AppendCurves(const AcDbEntity& entity, SceneChunk& chunk);

}  // namespace app

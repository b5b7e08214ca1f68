// Texts as labels of a scene.
#pragma once

#include <vector>

#include "apps/qzhost/scene/SceneChunk.h"
#include "dbmain.h"

namespace app {

// Appends the lines of a text, an attribute or a paragraph, without formatting codes. False for
// other entities.
bool AppendLabels(const AcDbEntity& entity, std::vector<SceneLabel>& labels);

// Around the letters, by an estimate of their width.
QRectF BoxOf(const SceneLabel& label);

}  // namespace app

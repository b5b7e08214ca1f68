// Texts as labels of a scene.
#pragma once

#include <QFont>
#include <vector>

#include "apps/qzhost/scene/SceneChunk.h"
#include "dbmain.h"

namespace app {

// Appends the lines of a text, an attribute or a paragraph, without formatting codes. False for
// other entities.
bool AppendLabels(const AcDbEntity& entity, std::vector<SceneLabel>& labels);

// The font that labels are drawn in, as large as its letters scale well, and the height of a text
// in it that is one unit high.
QFont LabelFont();
double UnitsOfLabelFont();

// Around the letters, by an estimate of their width.
QRectF BoxOf(const SceneLabel& label);

}  // namespace app

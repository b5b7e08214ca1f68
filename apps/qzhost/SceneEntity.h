// One entity as it is shown.
#pragma once

#include "apps/qzhost/Scene.h"

namespace app {

// Curves as chords, texts as labels, block references and dimensions by what they consist of.
SceneItem MakeSceneItem(const AcDbEntity& entity);

}  // namespace app

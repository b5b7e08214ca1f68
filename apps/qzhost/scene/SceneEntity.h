// From an entity to what is drawn of it.
#pragma once

#include <map>

#include "apps/qzhost/scene/SceneChunk.h"
#include "dbmain.h"
#include "host/ed/shown_parts.h"

namespace app {

// Colour, dashes and weight of layers and linetypes, looked up once. Make a new one when a layer or
// a linetype has changed.
class SceneStyles {
public:
    struct Layer {
        QRgb colour = 0;
        AcDbObjectId linetype;
        int weight = 0;  // hundredths of a millimetre
    };
    explicit SceneStyles(AcDbDatabase& database) : m_database(database) {}

    const Layer& LayerOf(AcDbObjectId id);
    short PatternOf(AcDbObjectId linetype);
    AcDbDatabase& Database() const { return m_database; }
    host::ShownParts& Parts() { return m_parts; }
    const DashPatterns& Patterns() const { return m_patterns; }

private:
    AcDbDatabase& m_database;
    std::map<AcDbObjectId, Layer> m_layers;
    std::map<AcDbObjectId, short> m_byLinetype;
    DashPatterns m_patterns{{}};
    host::ShownParts m_parts;
};

// Appends the entity, which is resident and open, as one item: curves as they are, block
// references, dimensions and pattern hatches through their parts with the layers and colours of
// those, solids filled. What has no shape in this host gives an item without parts.
void AppendSceneItem(const AcDbEntity& entity, SceneStyles& styles, SceneChunk& chunk);

// The colour of an index of the usual palette, for a dark background.
QRgb ColourOfIndex(int index);

}  // namespace app

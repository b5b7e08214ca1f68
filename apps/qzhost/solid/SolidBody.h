// The solids that a drawing's envelopes turn into, ready to be shown.
#pragma once

#include <QColor>
#include <string>
#include <vector>

#include "dbmain.h"
#include "host/solid/kernel.h"
#include "product/tool/SolidRun.h"

namespace app {

struct SolidBody {
    AcDbObjectId envelope;  // null: a preview's
    product::SolidRun run;
    host::solid::Mesh mesh;  // empty without a profile
    QColor colour;

    bool HasShape() const { return run.profile.has_value(); }
    // Why there is no solid; empty when there is one.
    std::string Reason() const;
};

// Turns an outline's solid into triangles that leave it by about a thousandth of the diameter.
SolidBody MakeBody(product::SolidRun run, const QColor& colour);

// The envelopes of model space that are displayed, in the order of the drawing.
// cost  looks at every entity of model space
std::vector<AcDbObjectId> EnvelopesOf(AcDbDatabase& database);

// The solid of one: about its longest level edge, or about the edge that closes it when it was
// turned with its tool.
SolidBody BodyOf(AcDbObjectId envelope);

// Whether an entity is an envelope: a polyline on the layer of finished ones.
bool IsEnvelope(AcDbObjectId id);

}  // namespace app

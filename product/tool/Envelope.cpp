#include "product/tool/Envelope.h"

#include <algorithm>

#include "host/solid/tolerance.h"
#include "plane/ring.h"
#include "product/base/Failure.h"
#include "product/base/Text.h"

namespace product {

Envelope ReadEnvelope(const AcDbObjectId& id, const std::optional<Axis>& axis) {
    Envelope envelope;
    if (id.isNull()) return envelope;
    AcDbObjectPointer<AcDbPolyline> polyline(id, AcDb::kForRead);
    if (polyline.openStatus() != Acad::eOk)
        throw Failure(Fault::NoResult, "the envelope polyline cannot be opened");
    AcString layer;
    if (polyline->layer(layer) == Acad::eOk) envelope.layer = ToUtf8(layer);
    for (unsigned int i = 0; i < polyline->numVerts(); ++i) {
        AcGePoint3d point;
        Vertex vertex;
        if (polyline->getPointAt(i, point) != Acad::eOk ||
            polyline->getBulgeAt(i, vertex.bulge) != Acad::eOk)
            throw Failure(Fault::NoResult, "the envelope's vertices cannot be read");
        vertex.x = point.x;
        vertex.y = point.y;
        envelope.vertices.push_back(vertex);
    }
    envelope.found = true;
    envelope.closed = polyline->isClosed();
    envelope.handle = HandleText(id);
    envelope.extents = ExtentsOf(envelope.vertices);
    envelope.length = LengthOf(envelope.vertices);
    if (axis) {
        const Box box = BoxAbout(*axis, envelope.vertices);
        envelope.diameter = 2 * std::max(box.high.y, -box.low.y);
        envelope.span = box.Width();
    }
    // By the solid's tolerance: what is drawn as meeting itself is what the modeller refuses.
    envelope.selfMeeting =
        plane::FindSelfMeeting(EdgesOf(envelope.vertices), host::solid::kPositionTol);
    return envelope;
}

}  // namespace product

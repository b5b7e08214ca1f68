#include "apps/qzhost/solid/SolidBody.h"

#include <memory>
#include <utility>

#include "EncircleLayers.h"
#include "LayerTools.h"
#include "arxHeaders.h"
#include "host/ed/entity_query.h"
#include "host/solid/turned_mesh.h"

namespace app {
namespace {

constexpr double kChord = 1e-3;  // that triangles leave the surface by, of the diameter

// Its own closing edge stands for the axis where no edge is level.
product::SolidRun RunOf(AcDbObjectId id) {
    product::SolidRun run = product::RevolveEnvelope(id);
    if (run.profile || run.refusal) return run;
    const product::Envelope envelope = product::ReadEnvelope(id, {});
    if (envelope.vertices.size() < 3) return run;
    const product::Vertex &from = envelope.vertices.front(), &to = envelope.vertices.back();
    const product::Axis axis{{from.x, from.y}, {to.x, to.y}};
    return product::RevolveRing(envelope.vertices, envelope.closed, axis);
}

}  // namespace

std::string SolidBody::Reason() const {
    if (HasShape()) return {};
    return run.refusal ? run.refusal->Text() : "the envelope has no edge along an axis";
}

SolidBody MakeBody(product::SolidRun run, const QColor& colour) {
    SolidBody body;
    body.run = std::move(run);
    body.colour = colour;
    if (body.run.profile)
        body.mesh =
            host::solid::TurnedMesh(*body.run.profile, kChord * body.run.measures.largestDiameter);
    return body;
}

bool IsEnvelope(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbPolyline> polyline(id, AcDb::kForRead);
    return polyline.openStatus() == Acad::eOk &&
           GetLayerName(polyline->layerId()).CompareNoCase(kEnvelopeLayer) == 0;
}

std::vector<AcDbObjectId> EnvelopesOf(AcDbDatabase& database) {
    std::vector<AcDbObjectId> envelopes;
    for (const AcDbObjectId id : host::QueryEntities(database, host::QueryRules::Displayed()))
        if (id.objectClass() == AcDbPolyline::desc() && IsEnvelope(id)) envelopes.push_back(id);
    return envelopes;
}

SolidBody BodyOf(AcDbObjectId envelope) {
    SolidBody body = MakeBody(RunOf(envelope), QColor(0xA8, 0xB4, 0xC4));
    body.envelope = envelope;
    return body;
}

}  // namespace app

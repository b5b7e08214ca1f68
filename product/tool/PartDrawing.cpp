#include "product/tool/PartDrawing.h"

#include <memory>

#include "EnvelopePolyline.h"
#include "LayerTools.h"
#include "product/base/Drawing.h"
#include "product/base/Failure.h"
#include "product/base/Text.h"
#include "product/base/WorkingDatabase.h"

namespace product {
namespace {

// The application whose data marks the parts that were drawn here.
constexpr const ACHAR* kMark = _T("QZ_ENVELOPE_PART");

constexpr Adesk::UInt16 kYellow = 2, kGrey = 8;

struct RbDeleter {
    void operator()(resbuf* chain) const { acutRelRb(chain); }
};
using RbChain = std::unique_ptr<resbuf, RbDeleter>;

void Mark(AcDbEntity& entity) {
    acdbRegApp(kMark);
    // The chain lives here only: nothing of it is to be freed.
    std::vector<ACHAR> name(kMark, kMark + _tcslen(kMark) + 1);
    ACHAR text[] = _T("1");
    resbuf head = {}, value = {};
    head.restype = 1001;
    head.resval.rstring = name.data();
    head.rbnext = &value;
    value.restype = 1000;
    value.resval.rstring = text;
    if (entity.setXData(&head) != Acad::eOk)
        throw Failure(Fault::NoResult, "the part's polyline cannot be marked");
}

AcDbObjectId LayerOf(const ACHAR* name) {
    bool isNew = false;
    const AcDbObjectId id = EnsureLayer(name, &isNew);
    if (id.isNull())
        throw Failure(Fault::NoResult, "the layer " + ToUtf8(name) + " cannot be made");
    if (!isNew || _tcscmp(name, kProfileLayer) == 0) return id;
    AcDbLayerTableRecordPointer layer(id, AcDb::kForWrite);
    AcCmColor colour;
    if (layer.openStatus() == Acad::eOk &&
        colour.setColorIndex(_tcscmp(name, kCutLayer) == 0 ? kYellow : kGrey) == Acad::eOk)
        layer->setColor(colour);
    return id;
}

// Closed, with the axis where it ends there; the plane's directions are the frame's.
std::vector<Vertex> RingOf(const host::solid::Chain& chain) {
    std::vector<Vertex> ring;
    for (const host::solid::Piece& piece : chain.pieces)
        ring.push_back({piece.from.x, piece.from.y, piece.bulge});
    if (!chain.closed) ring.push_back({chain.pieces.back().to.x, chain.pieces.back().to.y, 0});
    return ring;
}

std::unique_ptr<AcDbPolyline> PolylineOf(const std::vector<Vertex>& ring, const ACHAR* layer) {
    std::unique_ptr<AcDbPolyline> polyline = MakePolyline(LayerOf(layer));
    if (polyline == nullptr) throw Failure(Fault::NoResult, "the polyline cannot be made");
    int count = 0;
    for (const Vertex& v : ring)
        AddVertex(polyline.get(), AcGePoint3d(v.x, v.y, 0), v.bulge, count);
    return polyline;
}

AcDbObjectId Append(std::unique_ptr<AcDbPolyline> polyline) {
    AcDbObjectId id;
    AddEnvelope(std::move(polyline), id);
    if (id.isNull()) throw Failure(Fault::NoResult, "the polyline cannot be drawn");
    return id;
}

void AppendChain(const host::solid::Chain& chain, const host::solid::Frame& frame,
                 const ACHAR* layer) {
    std::vector<Vertex> ring = RingOf(chain);
    const bool isUpright = frame.axis.z != 0;
    for (Vertex& v : ring) {
        const AcGePoint3d p = frame.At(v.x, v.y);
        // Mirrored when the profile's x and y are not turned but turned over.
        const bool isMirrored = isUpright ? frame.axis.z > 0 : frame.axis.x < 0;
        v = {p.x, isUpright ? p.z : p.y, isMirrored ? -v.bulge : v.bulge};
    }
    std::unique_ptr<AcDbPolyline> polyline = PolylineOf(ring, layer);
    // Seen along this normal the plane's own directions are x and z.
    if (isUpright && polyline->setNormal(AcGeVector3d(0, -1, 0)) != Acad::eOk)
        throw Failure(Fault::NoResult, "the profile cannot be set upright");
    Append(std::move(polyline));
}

}  // namespace

bool IsOwnPart(const AcDbEntity& entity) { return RbChain(entity.xData(kMark)) != nullptr; }

std::string DrawPart(const std::vector<Vertex>& ring, const ACHAR* layer) {
    const AcDbObjectId id = Append(PolylineOf(ring, layer));
    AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
    if (entity.openStatus() != Acad::eOk)
        throw Failure(Fault::NoResult, "the part's polyline cannot be marked");
    Mark(*entity.object());
    return HandleText(id);
}

void WriteProfile(const std::string& path, const std::vector<ProfilePart>& parts,
                  AcDb::UnitsValue units, const char* place) {
    AcDbDatabase database(true, true);
    const WorkingDatabase working(database);
    if (database.setInsunits(units) != Acad::eOk)
        throw Failure(Fault::Output, path + ": the profile's unit cannot be set");
    for (const ProfilePart& part : parts)
        for (const host::solid::Chain& chain : part.profile->chains)
            AppendChain(chain, part.profile->frame, part.layer);
    try {
        WriteDrawing(database, path);
    } catch (const Failure& failure) {
        throw Failure(failure.Code(), std::string(failure.what()) + "; choose another place with " +
                                          (place != nullptr ? place : "--profile"));
    }
}

}  // namespace product

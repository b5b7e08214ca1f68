// POINT, SOLID, TRACE, 3DFACE, VIEWPORT, IMAGE, WIPEOUT, 3DSOLID, REGION, BODY.
#include "host/db/access.h"
#include "host/db/modeller.h"
#include "host/dxf/codec.h"
#include "host/dxf/field_reader.h"
#include "host/dxf/field_writer.h"

namespace host::dxf {

namespace {

void PointFields(FieldIo& io, AcDbPoint& point) {
    io.Subclass("AcDbPoint");
    io.OptReal(39, Access::Thickness(point), 0.0);
    io.Point(10, Access::Position(point));
    io.Normal(Access::Normal(point));
    io.OptAngle(50, Access::Rotation(point), 0.0);
}

void FourCornersFields(FieldIo& io, FourCorners& face) {
    io.Subclass("AcDbTrace");
    AcGePoint3d* corners = Access::Corners(face);
    for (int i = 0; i < 4; ++i) {
        // A missing fourth corner makes a triangle.
        if (i == 3 && !io.Has(13)) corners[3] = corners[2];
        if (io.Has(10 + i)) io.OcsPoint(10 + i, corners[i], Access::Normal(face));
    }
    io.OptReal(39, Access::Thickness(face), 0.0);
    io.Normal(Access::Normal(face));
}

void SolidFields(FieldIo& io, AcDbSolid& solid) { FourCornersFields(io, solid); }
void TraceFields(FieldIo& io, AcDbTrace& trace) { FourCornersFields(io, trace); }

void FaceFields(FieldIo& io, AcDbFace& face) {
    io.Subclass("AcDbFace");
    AcGePoint3d* corners = Access::Corners(face);
    for (int i = 0; i < 4; ++i) {
        if (i == 3 && !io.Has(13)) corners[3] = corners[2];
        io.Point(10 + i, corners[i]);
    }
    io.OptInt(70, Access::HiddenEdges(face), Adesk::UInt8(0));
}

void ViewportFields(FieldIo& io, AcDbViewport& viewport) {
    io.Subclass("AcDbViewport");
    io.Point(10, Access::Center(viewport));
    io.Real(40, Access::Width(viewport));
    io.Real(41, Access::Height(viewport));
    io.IntAs(69, Access::Number(viewport));
}

// The picture itself is another object (group 340), which only a record from a file can name.
void ImageBody(FieldIo& io, AcDbRasterImage& image, const char* subclass) {
    io.Subclass(subclass);
    io.Point(10, Access::Origin(image));
    io.Vector(11, Access::UVector(image));
    io.Vector(12, Access::VVector(image));
    AcGePoint2d size(Access::Width(image), Access::Height(image));
    io.Point(13, size);
    Access::Width(image) = size.x;
    Access::Height(image) = size.y;
    std::vector<AcGePoint2d>& boundary = Access::Boundary(image);
    if (FieldReader* reader = io.AsReader()) {
        for (const Tag& tag : reader->ScopeTags()) {
            if (tag.code == 14) boundary.emplace_back(reader->RealOf(tag), 0.0);
            if (tag.code == 24 && !boundary.empty()) boundary.back().y = reader->RealOf(tag);
        }
        return;
    }
    FieldWriter& writer = *io.AsWriter();
    writer.PutInt(71, boundary.size() == 2 ? 1 : 2);
    writer.PutInt(91, static_cast<std::int64_t>(boundary.size()));
    writer.out().BeginList({14, 24});
    for (const AcGePoint2d& point : boundary) writer.PutPoint(14, point);
    writer.out().EndList();
}

void ImageFields(FieldIo& io, AcDbRasterImage& image) { ImageBody(io, image, "AcDbRasterImage"); }
void WipeoutFields(FieldIo& io, AcDbWipeout& image) { ImageBody(io, image, "AcDbWipeout"); }

// SAT text in a drawing is disguised: each visible character is reflected, blanks stay.
std::string Disguised(std::string_view line) {
    constexpr int kMirror = 159;  // '!' (33) <-> '~' (126)
    std::string text(line);
    for (char& c : text)
        if (c > ' ' && c < 127) c = static_cast<char>(kMirror - c);
    return text;
}

// One tag a line of SAT text; what does not fit into one continues in group 3.
void WriteStoredText(FieldWriter& io, const std::string& sat) {
    constexpr std::size_t kLongest = 255;
    io.PutInt(70, 1);
    std::size_t begin = 0;
    while (begin < sat.size()) {
        const std::size_t end = (std::min)(sat.find('\n', begin), sat.size());
        std::string line = Disguised(std::string_view(sat).substr(begin, end - begin));
        int code = 1;
        do {
            // A caret is an escape in drawing files.
            std::string encoded;
            while (!line.empty() && encoded.size() + 2 <= kLongest) {
                encoded += line[0] == '^' ? "^ " : line.substr(0, 1);
                line.erase(0, 1);
            }
            io.PutRaw(code, encoded);
            code = 3;
        } while (!line.empty());
        begin = end + 1;
    }
}

// Read from a file the data stay there. A solid made here is written as text, which the versions
// from R2013 on no longer hold.
void ModelledFields(FieldIo& io, ModelledEntity& entity) {
    if (io.AsReader() != nullptr) {
        Access::Stored(entity) = true;
        return;
    }
    const std::shared_ptr<const Shape>& shape = Access::ShapeOf(entity);
    if (shape == nullptr) return;
    io.Subclass("AcDbModelerGeometry");
    FieldWriter& writer = *io.AsWriter();
    writer.out().BeginList({}, true);
    if (io.version() < kVersionR2013) WriteStoredText(writer, shape->StoredText());
    writer.out().EndList();
}

void RegionFields(FieldIo& io, AcDbRegion& region) { ModelledFields(io, region); }
void BodyFields(FieldIo& io, AcDbBody& body) { ModelledFields(io, body); }
void Solid3dFields(FieldIo& io, AcDb3dSolid& solid) {
    ModelledFields(io, solid);
    if (io.AsWriter() == nullptr || Access::ShapeOf(solid) == nullptr) return;
    if (io.version() < kVersionR2007) return;
    io.Subclass("AcDb3dSolid");
    AcDbObjectId history;
    io.Handle(350, history);
}

}  // namespace

const std::vector<Codec>& ShapeCodecs() {
    static const std::vector<Codec> kCodecs = {
        {"POINT", AcDbPoint::desc, Fields<AcDbPoint, PointFields>},
        {"SOLID", AcDbSolid::desc, Fields<AcDbSolid, SolidFields>},
        {"TRACE", AcDbTrace::desc, Fields<AcDbTrace, TraceFields>},
        {"3DFACE", AcDbFace::desc, Fields<AcDbFace, FaceFields>},
        {"VIEWPORT", AcDbViewport::desc, Fields<AcDbViewport, ViewportFields>},
        {"IMAGE", AcDbRasterImage::desc, Fields<AcDbRasterImage, ImageFields>, 1014},
        {"WIPEOUT", AcDbWipeout::desc, Fields<AcDbWipeout, WipeoutFields>, kVersionR2000},
        {"REGION", AcDbRegion::desc, Fields<AcDbRegion, RegionFields>, kVersionR13},
        {"BODY", AcDbBody::desc, Fields<AcDbBody, BodyFields>, kVersionR13},
        {"3DSOLID", AcDb3dSolid::desc, Fields<AcDb3dSolid, Solid3dFields>, kVersionR13}};
    return kCodecs;
}

}  // namespace host::dxf

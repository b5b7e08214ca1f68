#include "host/solid/revolve.h"

#include <cmath>

#include "dbapserv.h"
#include "host/db/access.h"
#include "host/db/file_io.h"
#include "host/db/stub.h"
#include "host/ge/format.h"
#include "host/solid/outline_of.h"
#include "host/solid/shapes.h"

namespace host::solid {

namespace {

constexpr double kTwoPi = 6.283185307179586;
// An angle this near to a full turn is one (radians): angles are computed from pi.
constexpr double kTurnTol = 1e-9;

Acad::ErrorStatus CheckAngle(double angle) {
    if (!std::isfinite(angle) || angle == 0.0) return Acad::eInvalidInput;
    // Unlike AutoCAD, full turns only.
    return std::fabs(angle) < kTwoPi - kTurnTol ? Acad::eNotImplementedYet : Acad::eOk;
}

// Gives a new entity, or one open for write, its shape.
Acad::ErrorStatus SetShape(ModelledEntity& entity, std::shared_ptr<const Shape> shape) {
    if (const Acad::ErrorStatus es = Access::BeginWrite(entity, kDirtyGeometry); es != Acad::eOk)
        return es;
    Access::ShapeOf(entity) = std::move(shape);
    Access::Stored(entity) = false;
    return Acad::eOk;
}

Acad::ErrorStatus Revolve(AcDb3dSolid& solid, const AcDbEntity& profile,
                          const AcGePoint3d& axisPoint, const AcGeVector3d& axisDirection,
                          double angle) {
    if (const Acad::ErrorStatus es = CheckAngle(angle); es != Acad::eOk) return es;
    Profile prepared;
    if (const Refusal refusal = ProfileOfEntity(profile, axisPoint, axisDirection, prepared))
        return refusal.Status();
    return SetShape(solid, std::make_shared<RevolvedShape>(std::move(prepared)));
}

// Host paths may have backslashes, which are separators on every system here.
std::string HostPath(const ACHAR* path) {
    std::string out = Narrow(path);
    for (char& c : out)
        if (c == '\\') c = '/';
    return out;
}

AcDbDatabase* DatabaseOf(const AcDbEntity& entity) {
    AcDbDatabase* const db = entity.database();
    return db != nullptr ? db : acdbHostApplicationServices()->workingDatabase();
}

}  // namespace

Refusal ProfileOfEntity(const AcDbEntity& entity, const AcGePoint3d& axisPoint,
                        const AcGeVector3d& axisDirection, Profile& out) {
    Outline outline;
    if (const auto* region = AcDbRegion::cast(&entity)) {
        const RegionShape* shape = RegionOf(*region);
        if (shape == nullptr) {
            Refusal refusal;
            refusal.fault = Refusal::Fault::kWrongKind;
            return refusal;
        }
        outline = shape->GetOutline();
    } else if (Refusal refusal = OutlineOfCurve(entity, outline)) {
        return refusal;
    }
    return Prepare(outline, axisPoint, axisDirection, out);
}

double MillimetresPerUnit(AcDb::UnitsValue units) {
    // By the numbers of the header variable INSUNITS (DXF reference).
    static const double kMillimetres[] = {1.0,
                                          25.4,
                                          304.8,
                                          1609344.0,
                                          1.0,
                                          10.0,
                                          1000.0,
                                          1e6,
                                          2.54e-5,
                                          0.0254,
                                          914.4,
                                          1e-7,
                                          1e-6,
                                          1e-3,
                                          100.0,
                                          1e4,
                                          1e5,
                                          1e12,
                                          1.495978707e14,
                                          9.4607304725808e18,
                                          3.0856775814913673e19};
    const auto index = static_cast<std::size_t>(units);
    return index < sizeof kMillimetres / sizeof *kMillimetres ? kMillimetres[index] : 1.0;
}

bool WriteSatFile(const std::string& path, const std::vector<const Profile*>& bodies,
                  const SatOptions& options, std::string& reason) {
    const std::string text = SatText(bodies, options);
    FileError error;
    if (WriteFileAtomically(path, {std::string_view(text)}, error)) return true;
    reason = error.reason;
    return false;
}

}  // namespace host::solid

using host::solid::Refusal;

Acad::ErrorStatus AcDb3dSolid::createRevolvedSolid(AcDbEntity* profile,
                                                   const AcGePoint3d& axisPoint,
                                                   const AcGeVector3d& axisDirection,
                                                   double revolveAngle, double startAngle,
                                                   AcDbRevolveOptions& options) {
    if (profile == nullptr) return Acad::eNullEntityPointer;
    profile->assertReadEnabled();
    if (!std::isfinite(startAngle)) return Acad::eInvalidInput;
    if (options.draftAngle() != 0.0 || options.twistAngle() != 0.0 || options.closeToAxis())
        return Acad::eNotImplementedYet;
    return host::solid::Revolve(*this, *profile, axisPoint, axisDirection, revolveAngle);
}

Acad::ErrorStatus AcDb3dSolid::revolve(const AcDbRegion* region, const AcGePoint3d& axisPoint,
                                       const AcGeVector3d& axisDirection,
                                       double angleOfRevolution) {
    if (region == nullptr) return Acad::eNullEntityPointer;
    region->assertReadEnabled();
    return host::solid::Revolve(*this, *region, axisPoint, axisDirection, angleOfRevolution);
}

Acad::ErrorStatus AcDb3dSolid::getVolume(double& volume) const {
    assertReadEnabled();
    const host::solid::Profile* profile = host::solid::ProfileOf(*this);
    if (profile == nullptr) return isNull() ? Acad::eInvalidInput : Acad::eNotImplementedYet;
    volume = host::solid::Measure(*profile).volume;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbRegion::createFromCurves(const AcDbVoidPtrArray& curves,
                                               AcDbVoidPtrArray& regions) {
    std::vector<host::solid::Outline> loops;
    if (const Refusal refusal = host::solid::LoopsOfCurves(curves, loops)) return refusal.Status();
    // Loops that cannot be regions are left out; when nothing is left, the last reason counts.
    Acad::ErrorStatus es = Acad::eInvalidInput;
    std::vector<std::unique_ptr<AcDbRegion>> made;
    for (host::solid::Outline& loop : loops) {
        double area = 0.0;
        if (const Refusal refusal = host::solid::CheckOutline(loop, area)) {
            es = refusal.Status();
            continue;
        }
        made.push_back(std::make_unique<AcDbRegion>());
        host::Access::ShapeOf(*made.back()) =
            std::make_shared<host::solid::RegionShape>(std::move(loop), area);
    }
    if (made.empty()) return es;
    for (auto& region : made) regions.append(region.release());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbRegion::getArea(double& area) const {
    assertReadEnabled();
    const host::solid::RegionShape* shape = host::solid::RegionOf(*this);
    if (shape == nullptr) return isNull() ? Acad::eInvalidInput : Acad::eNotImplementedYet;
    area = shape->Area();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBody::acisOut(const ACHAR* fileName, const AcDbVoidPtrArray& entities) {
    if (fileName == nullptr || *fileName == 0 || entities.isEmpty()) return Acad::eInvalidInput;
    std::vector<const host::solid::Profile*> bodies;
    host::solid::SatOptions options;
    for (int i = 0; i < entities.length(); ++i) {
        const auto* solid = AcDb3dSolid::cast(static_cast<AcRxObject*>(entities.at(i)));
        if (solid == nullptr || solid->isNull()) return Acad::eInvalidInput;
        const host::solid::Profile* profile = host::solid::ProfileOf(*solid);
        if (profile == nullptr)
            return Acad::eNotImplementedYet;  // unlike AutoCAD: read from a file
        bodies.push_back(profile);
        const AcDbDatabase* db = host::solid::DatabaseOf(*solid);
        if (db != nullptr)
            options.millimetresPerUnit = host::solid::MillimetresPerUnit(db->insunits());
    }
    options.date = host::solid::StampTime();
    std::string reason;
    return host::solid::WriteSatFile(host::solid::HostPath(fileName), bodies, options, reason)
               ? Acad::eOk
               : Acad::eFileAccessErr;
}

// Unlike AutoCAD: SAT files are written here, not read.
Acad::ErrorStatus AcDbBody::acisIn(const ACHAR*, AcDbVoidPtrArray&) {
    return Acad::eNotImplementedYet;
}

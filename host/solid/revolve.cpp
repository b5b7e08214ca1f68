#include "host/solid/revolve.h"

#include <cmath>

#include "dbapserv.h"
#include "host/base/angles.h"
#include "host/sys/file_io.h"
#include "host/base/format.h"
#include "host/solid/outline_of.h"
#include "host/solid/shapes.h"

namespace host::solid {

namespace {

// An angle this near to a full turn is one (radians): angles are computed from pi.
constexpr double kTurnTol = 1e-9;

SatFailureSink g_satFailureSink = nullptr;

Acad::ErrorStatus CheckAngle(double angle) {
    if (!std::isfinite(angle) || angle == 0.0) return Acad::eInvalidInput;
    // Unlike AutoCAD, full turns only.
    return std::fabs(angle) < kTwoPi - kTurnTol ? Acad::eNotImplementedYet : Acad::eOk;
}

// Host paths may have backslashes, which are separators on every system here.
std::string HostPath(const std::wstring& path) {
    std::string out = Narrow(path);
    for (char& c : out)
        if (c == '\\') c = '/';
    return out;
}

const AcDbDatabase* DatabaseOf(const AcDbEntity& entity) {
    const AcDbDatabase* const db = entity.database();
    return db != nullptr ? db : acdbHostApplicationServices()->workingDatabase();
}

class ExactModeller : public Modeller {
public:
    Acad::ErrorStatus Regions(const std::vector<const AcDbCurve*>& curves,
                              std::vector<std::shared_ptr<const Shape>>& shapes) override;
    Acad::ErrorStatus Revolve(const AcDbEntity& profile, const AcGePoint3d& axisPoint,
                              const AcGeVector3d& axisDirection, double angle, double startAngle,
                              std::shared_ptr<const Shape>& shape) override;
    Acad::ErrorStatus WriteSat(const std::wstring& path,
                               const std::vector<const ModelledEntity*>& entities) override;
    // Unlike AutoCAD: SAT files are written here, not read.
    Acad::ErrorStatus ReadSat(const std::wstring&, AcDbVoidPtrArray&) override {
        return Acad::eNotImplementedYet;
    }
};

// Loops that cannot be regions are left out; when nothing is left, the last reason counts.
Acad::ErrorStatus ExactModeller::Regions(const std::vector<const AcDbCurve*>& curves,
                                         std::vector<std::shared_ptr<const Shape>>& shapes) {
    std::vector<Outline> loops;
    if (const Refusal refusal = LoopsOfCurves(curves, loops)) return refusal.Status();
    Acad::ErrorStatus es = Acad::eInvalidInput;
    std::vector<std::shared_ptr<const Shape>> made;
    for (Outline& loop : loops) {
        double area = 0.0;
        if (const Refusal refusal = CheckOutline(loop, area))
            es = refusal.Status();
        else
            made.push_back(std::make_shared<RegionShape>(std::move(loop), area));
    }
    if (made.empty()) return es;
    shapes = std::move(made);
    return Acad::eOk;
}

// A full turn ends where it begins, so the start angle changes nothing.
Acad::ErrorStatus ExactModeller::Revolve(const AcDbEntity& profile, const AcGePoint3d& axisPoint,
                                         const AcGeVector3d& axisDirection, double angle,
                                         double startAngle, std::shared_ptr<const Shape>& shape) {
    if (!std::isfinite(startAngle)) return Acad::eInvalidInput;
    if (const Acad::ErrorStatus es = CheckAngle(angle); es != Acad::eOk) return es;
    Profile prepared;
    if (const Refusal refusal = ProfileOfEntity(profile, axisPoint, axisDirection, prepared))
        return refusal.Status();
    shape = std::make_shared<RevolvedShape>(std::move(prepared));
    return Acad::eOk;
}

// Unlike AutoCAD, only what was revolved here: neither regions nor solids of the drawing file.
Acad::ErrorStatus ExactModeller::WriteSat(const std::wstring& path,
                                          const std::vector<const ModelledEntity*>& entities) {
    std::vector<const Profile*> bodies;
    SatOptions options;
    options.date = StampTime();
    for (const ModelledEntity* entity : entities) {
        if (entity->isNull()) return Acad::eInvalidInput;
        const Profile* profile = ProfileOf(*entity);
        if (profile == nullptr) return Acad::eNotImplementedYet;
        bodies.push_back(profile);
        if (const AcDbDatabase* db = DatabaseOf(*entity))
            options.millimetresPerUnit = MillimetresPerUnit(db->insunits());
    }
    std::string reason;
    const std::string file = HostPath(path);
    if (WriteSatFile(file, bodies, options, reason)) return Acad::eOk;
    if (g_satFailureSink != nullptr) g_satFailureSink(file + ": cannot be written: " + reason);
    return Acad::eFileAccessErr;
}

}  // namespace

void SetSatFailureSink(SatFailureSink sink) { g_satFailureSink = sink; }

void InstallModeller() {
    static ExactModeller modeller;
    SetModeller(&modeller);
}

Refusal ProfileOfEntity(const AcDbEntity& entity, const AcGePoint3d& axisPoint,
                        const AcGeVector3d& axisDirection, Profile& out) {
    Outline outline;
    if (const auto* region = AcDbRegion::cast(&entity)) {
        const auto shape = std::dynamic_pointer_cast<const RegionShape>(ShapeOfEntity(*region));
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

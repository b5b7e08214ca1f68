#include "product/tool/SolidRun.h"

#include <filesystem>
#include <memory>

#include "EnvelopeAxis.h"
#include "ToolFrame.h"
#include "product/tool/Text.h"
#include "host/sys/file_io.h"
#include "host/solid/kernel.h"
#include "host/solid/picture.h"
#include "host/solid/revolve.h"
#include "host/solid/stl.h"
#include "host/solid/turned_mesh.h"

namespace app {

// The kernel's form of a solid, made when the first file needs it, and its last triangles.
class KernelForm {
public:
    KernelForm(host::solid::Profile profile, double volume)
        : m_profile(std::move(profile)), m_volume(volume) {}

    const host::solid::KernelSolid* Get(std::string& reason) {
        if (m_form == nullptr) {
            const host::solid::Kernel* kernel = host::solid::LoadKernel(reason);
            if (kernel != nullptr) m_form = kernel->Revolve(m_profile, m_volume, reason);
        }
        return m_form.get();
    }

    // Null with a reason on failure; stays valid until the next call.
    const host::solid::Mesh* Triangles(double chordTolerance, std::string& reason) {
        if (m_chord == chordTolerance) return &m_mesh;
        const host::solid::KernelSolid* form = Get(reason);
        if (form == nullptr || !form->Triangulate(chordTolerance, m_mesh, reason)) return nullptr;
        m_chord = chordTolerance;
        return &m_mesh;
    }

private:
    host::solid::Profile m_profile;
    double m_volume;
    std::unique_ptr<host::solid::KernelSolid> m_form;
    host::solid::Mesh m_mesh;
    double m_chord = 0;  // of m_mesh; 0: none yet
};

namespace {

constexpr int kPictureWidth = 1400;  // pixels
// Of the largest diameter: what a triangle may leave the surface by, in files and in pictures.
constexpr double kDefaultChord = 1e-3;
constexpr double kPictureChord = 5e-4;

SolidRun Told(const host::solid::Refusal& refusal, host::solid::Profile profile) {
    SolidRun solid;
    if (refusal) {
        solid.refusal = refusal;
        return solid;
    }
    solid.measures = Measure(profile);
    solid.profile = profile;
    solid.form = std::make_shared<KernelForm>(std::move(profile), solid.measures.volume);
    return solid;
}

host::solid::Mesh PictureTriangles(const SolidRun& solid) {
    return host::solid::TurnedMesh(*solid.profile, kPictureChord * solid.measures.largestDiameter);
}

bool EncodePng(const host::solid::Image& image, std::string& bytes, std::string& reason) {
    const host::solid::Kernel* kernel = host::solid::LoadKernel(reason);
    return kernel != nullptr && kernel->EncodePng(image, bytes, reason);
}

class FileMaker {
public:
    FileMaker(const SolidRun& solid, const std::string& product, AcDbDatabase& database,
              const ComputeOptions& options)
        : m_solid(solid), m_product(product), m_database(database), m_options(options) {}

    bool Sat(std::string& bytes, std::string&) {
        host::solid::SatOptions sat;
        sat.date = host::solid::StampTime();
        sat.millimetresPerUnit = host::solid::MillimetresPerUnit(m_database.insunits());
        bytes = host::solid::SatText({&*m_solid.profile}, sat);
        return true;
    }
    bool Step(std::string& bytes, std::string& reason) {
        host::solid::StepOptions step;
        step.product = m_product;
        step.unitsValue = static_cast<int>(m_database.insunits());
        step.timestamp = host::solid::IsoDateText(host::solid::StampTime());
        const host::solid::KernelSolid* form = m_solid.form->Get(reason);
        return form != nullptr && form->StepText(step, bytes, reason);
    }
    bool Stl(std::string& bytes, std::string& reason) {
        const double chord = m_options.chordTolerance > 0
                                 ? m_options.chordTolerance
                                 : kDefaultChord * m_solid.measures.largestDiameter;
        const host::solid::Mesh* mesh = m_solid.form->Triangles(chord, reason);
        if (mesh == nullptr) return false;
        bytes = host::solid::StlBytes(*mesh);
        return true;
    }
    bool Png(std::string& bytes, std::string& reason) {
        return EncodePng(
            host::solid::RenderPicture(*m_solid.profile, PictureTriangles(m_solid), kPictureWidth),
            bytes, reason);
    }

private:
    const SolidRun& m_solid;
    const std::string& m_product;
    AcDbDatabase& m_database;
    const ComputeOptions& m_options;
};

struct FileKind {
    const char* option;
    const char* name;
    std::string ComputeOptions::*path;
    bool (FileMaker::*make)(std::string& bytes, std::string& reason);
};
const FileKind kKinds[] = {
    {"--sat", "SAT file", &ComputeOptions::sat, &FileMaker::Sat},
    {"--step", "STEP file", &ComputeOptions::step, &FileMaker::Step},
    {"--stl", "STL file", &ComputeOptions::stl, &FileMaker::Stl},
    {"--png", "picture", &ComputeOptions::png, &FileMaker::Png},
};

}  // namespace

SolidRun RevolveRing(const std::vector<Vertex>& ring, bool closed, const Point& centre) {
    host::solid::Outline outline;
    outline.closed = closed;
    for (const Vertex& v : ring) outline.corners.push_back({AcGePoint2d(v.x, v.y), v.bulge});
    host::solid::Profile profile;
    const host::solid::Refusal refusal =
        Prepare(outline, AcGePoint3d(centre.x, centre.y, 0.0), AcGeVector3d(1, 0, 0), profile);
    return Told(refusal, std::move(profile));
}

SolidRun RevolveEnvelope(const AcDbObjectId& id) {
    AcGePoint3d axisPoint;
    if (!GetEnvelopeAxisPoint(id, axisPoint)) return {};
    const AcDbObjectPointer<AcDbEntity> envelope(id, AcDb::kForRead);
    if (envelope.openStatus() != Acad::eOk) return {};
    host::solid::Profile profile;
    const host::solid::Refusal refusal =
        host::solid::ProfileOfEntity(*envelope.object(), axisPoint, AcGeVector3d(1, 0, 0), profile);
    return Told(refusal, std::move(profile));
}

std::string ToolName(const Envelope& envelope, const std::string& input) {
    const Box& box = envelope.extents;
    const CString number = FindToolNumber(
        CollectToolFrames(),
        CQZRect(AcGePoint3d(box.minX, box.minY, 0.0), AcGePoint3d(box.maxX, box.maxY, 0.0)));
    if (!number.IsEmpty()) return ToUtf8(number);
    return std::filesystem::path(input).stem().string();
}

void WriteSolidFiles(const SolidRun& solid, const std::string& product, AcDbDatabase& database,
                     const ComputeOptions& options) {
    if (solid.refusal)
        throw Failure(kNoResult, options.input + ": no solid can be made of the envelope: " +
                                     solid.refusal->Text() + "; look at it with --svg");
    if (!solid.profile) return;
    FileMaker maker(solid, product, database, options);
    for (const FileKind& kind : kKinds) {
        const std::string& path = options.*kind.path;
        if (path.empty()) continue;
        std::string bytes, reason;
        if (!(maker.*kind.make)(bytes, reason))
            throw Failure(kNoResult, path + ": the " + kind.name + " cannot be made: " + reason);
        host::FileError error;
        if (!host::WriteFileAtomically(path, {std::string_view(bytes)}, error))
            throw Failure(kNoResult, path + ": the " + kind.name +
                                         " cannot be written: " + error.reason +
                                         "; choose another place with " + kind.option);
    }
}

std::optional<SolidPicture> DrawSolid(const SolidRun& solid, int width, std::string& reason) {
    const host::solid::Image image =
        host::solid::RenderSolid(*solid.profile, PictureTriangles(solid), width);
    SolidPicture picture;
    picture.width = image.width;
    picture.height = image.height;
    if (!EncodePng(image, picture.bytes, reason)) return std::nullopt;
    return picture;
}

}  // namespace app

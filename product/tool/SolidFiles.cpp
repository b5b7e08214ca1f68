#include <algorithm>
#include <string_view>
#include <utility>

#include "host/solid/revolve.h"
#include "host/solid/stamp.h"
#include "host/solid/step_text.h"
#include "host/solid/stl.h"
#include "host/sys/file_io.h"
#include "product/base/Failure.h"
#include "product/picture/SolidPicture.h"
#include "product/tool/KernelForm.h"
#include "product/tool/SolidBodies.h"

namespace product {

const host::solid::KernelSolid* KernelForm::Get(std::string& reason) {
    if (m_form == nullptr) {
        const host::solid::Kernel* kernel = host::solid::LoadKernel(reason);
        if (kernel != nullptr) m_form = kernel->Revolve(m_profile, m_volume, reason);
    }
    return m_form.get();
}

const host::solid::Mesh* KernelForm::Triangles(double chordTolerance, std::string& reason) {
    if (m_chord == chordTolerance) return &m_mesh;
    const host::solid::KernelSolid* form = Get(reason);
    if (form == nullptr || !form->Triangulate(chordTolerance, m_mesh, reason)) return nullptr;
    m_chord = chordTolerance;
    return &m_mesh;
}

namespace {

// What a triangle of an STL file may leave the surface by, of the largest diameter.
constexpr double kDefaultChord = 1e-3;

using FileBytes = std::vector<std::pair<std::string, std::string>>;  // path and content

class FileMaker {
public:
    FileMaker(const std::vector<SolidBody>& bodies, const AcDbDatabase& database,
              const SolidFiles& files)
        : m_bodies(bodies), m_database(database), m_files(files) {}

    bool Sat(FileBytes& out, std::string&) {
        host::solid::SatOptions sat;
        sat.date = host::solid::StampTime();
        sat.millimetresPerUnit = host::solid::MillimetresPerUnit(Units());
        std::vector<const host::solid::Profile*> profiles;
        for (const SolidBody& body : m_bodies) profiles.push_back(&body.profile);
        out.emplace_back(m_files.sat, host::solid::SatText(profiles, sat));
        return true;
    }
    bool Step(FileBytes& out, std::string&) {
        host::solid::StepOptions step;
        step.product = m_bodies.front().name;
        step.unitsValue = static_cast<int>(Units());
        step.timestamp = host::solid::IsoDateText(host::solid::StampTime());
        std::vector<host::solid::StepPart> parts;
        for (const SolidBody& body : m_bodies)
            parts.push_back({&body.profile, body.name, body.rgb});
        out.emplace_back(m_files.step, host::solid::StepText(parts, step));
        return true;
    }
    bool Stl(FileBytes& out, std::string& reason) {
        double chord = m_files.chordTolerance;
        if (chord <= 0)
            for (const SolidBody& body : m_bodies)
                chord = std::max(chord, kDefaultChord * body.measures.largestDiameter);
        for (const SolidBody& body : m_bodies) {
            const host::solid::Mesh* mesh = body.form->Triangles(chord, reason);
            if (mesh == nullptr) return false;
            out.emplace_back(WithSuffix(m_files.stl, body.suffix), host::solid::StlBytes(*mesh));
        }
        return true;
    }
    bool Png(FileBytes& out, std::string& reason) {
        std::vector<ShownSolid> shown;
        for (const SolidBody& body : m_bodies) shown.push_back({&body.profile, body.rgb});
        out.emplace_back(m_files.png, std::string());
        return DrawSolidSheet(shown, out.back().second, reason);
    }

private:
    AcDb::UnitsValue Units() const {
        return m_files.units ? *m_files.units : m_database.insunits();
    }

    const std::vector<SolidBody>& m_bodies;
    const AcDbDatabase& m_database;
    const SolidFiles& m_files;
};

struct FileKind {
    const char* option;
    const char* name;
    std::string SolidFiles::*path;
    bool (FileMaker::*make)(FileBytes& out, std::string& reason);
};
const FileKind kKinds[] = {
    {"--sat", "SAT file", &SolidFiles::sat, &FileMaker::Sat},
    {"--step", "STEP file", &SolidFiles::step, &FileMaker::Step},
    {"--stl", "STL file", &SolidFiles::stl, &FileMaker::Stl},
    {"--png", "picture", &SolidFiles::png, &FileMaker::Png},
};

}  // namespace

void WriteSolidFiles(const SolidRun& solid, const std::vector<SolidBody>& bodies,
                     const AcDbDatabase& database, const SolidFiles& files, const char* place,
                     std::vector<std::string>& written) {
    if (solid.refusal)
        throw Failure(Fault::NoSolid,
                      "no solid can be made of the envelope: " + solid.refusal->Text());
    if (bodies.empty()) return;
    FileMaker maker(bodies, database, files);
    for (const FileKind& kind : kKinds) {
        if ((files.*kind.path).empty()) continue;
        FileBytes made;
        std::string reason;
        if (!(maker.*kind.make)(made, reason))
            throw Failure(Fault::Output,
                          files.*kind.path + ": the " + kind.name + " cannot be made: " + reason);
        for (const auto& [path, bytes] : made) {
            host::FileError error;
            const std::string option = place != nullptr ? place : kind.option;
            if (!host::WriteFileAtomically(path, {std::string_view(bytes)}, error))
                throw Failure(Fault::Output, path + ": the " + kind.name + " cannot be written: " +
                                                 error.reason + "; choose another place" +
                                                 (option.empty() ? "" : " with " + option));
            written.push_back(path);
        }
    }
}

}  // namespace product

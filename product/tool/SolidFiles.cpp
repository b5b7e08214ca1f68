#include <string_view>

#include "host/solid/revolve.h"
#include "host/solid/stamp.h"
#include "host/solid/step_text.h"
#include "host/solid/stl.h"
#include "host/sys/file_io.h"
#include "product/base/Failure.h"
#include "product/picture/SolidPicture.h"
#include "product/tool/KernelForm.h"
#include "product/tool/SolidRun.h"

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

class FileMaker {
public:
    FileMaker(const SolidRun& solid, const std::string& name, const AcDbDatabase& database,
              const SolidFiles& files)
        : m_solid(solid), m_name(name), m_database(database), m_files(files) {}

    bool Sat(std::string& bytes, std::string&) {
        host::solid::SatOptions sat;
        sat.date = host::solid::StampTime();
        sat.millimetresPerUnit = host::solid::MillimetresPerUnit(Units());
        bytes = host::solid::SatText({&*m_solid.profile}, sat);
        return true;
    }
    bool Step(std::string& bytes, std::string&) {
        host::solid::StepOptions step;
        step.product = m_name;
        step.unitsValue = static_cast<int>(Units());
        step.timestamp = host::solid::IsoDateText(host::solid::StampTime());
        bytes = host::solid::StepText(*m_solid.profile, step);
        return true;
    }
    bool Stl(std::string& bytes, std::string& reason) {
        const double chord = m_files.chordTolerance > 0
                                 ? m_files.chordTolerance
                                 : kDefaultChord * m_solid.measures.largestDiameter;
        const host::solid::Mesh* mesh = m_solid.form->Triangles(chord, reason);
        if (mesh == nullptr) return false;
        bytes = host::solid::StlBytes(*mesh);
        return true;
    }
    bool Png(std::string& bytes, std::string& reason) {
        return DrawSolidSheet(*m_solid.profile, bytes, reason);
    }

private:
    AcDb::UnitsValue Units() const {
        return m_files.units ? *m_files.units : m_database.insunits();
    }

    const SolidRun& m_solid;
    const std::string& m_name;
    const AcDbDatabase& m_database;
    const SolidFiles& m_files;
};

struct FileKind {
    const char* option;
    const char* name;
    std::string SolidFiles::*path;
    bool (FileMaker::*make)(std::string& bytes, std::string& reason);
};
const FileKind kKinds[] = {
    {"--sat", "SAT file", &SolidFiles::sat, &FileMaker::Sat},
    {"--step", "STEP file", &SolidFiles::step, &FileMaker::Step},
    {"--stl", "STL file", &SolidFiles::stl, &FileMaker::Stl},
    {"--png", "picture", &SolidFiles::png, &FileMaker::Png},
};

}  // namespace

void WriteSolidFiles(const SolidRun& solid, const std::string& name, const AcDbDatabase& database,
                     const SolidFiles& files, const char* place,
                     std::vector<std::string>& written) {
    if (solid.refusal)
        throw Failure(Fault::NoSolid,
                      "no solid can be made of the envelope: " + solid.refusal->Text());
    if (!solid.profile) return;
    FileMaker maker(solid, name, database, files);
    for (const FileKind& kind : kKinds) {
        const std::string& path = files.*kind.path;
        if (path.empty()) continue;
        std::string bytes, reason;
        if (!(maker.*kind.make)(bytes, reason))
            throw Failure(Fault::Output,
                          path + ": the " + kind.name + " cannot be made: " + reason);
        host::FileError error;
        if (!host::WriteFileAtomically(path, {std::string_view(bytes)}, error))
            throw Failure(Fault::Output, path + ": the " + kind.name + " cannot be written: " +
                                             error.reason + "; choose another place with " +
                                             (place != nullptr ? place : kind.option));
        written.push_back(path);
    }
}

}  // namespace product

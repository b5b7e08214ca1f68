// The kernel's form of a solid, made when the first file needs it, and its last triangles.
#pragma once

#include <memory>
#include <string>

#include "host/solid/kernel.h"
#include "host/solid/profile.h"

namespace product {

class KernelForm {
public:
    // volume  of the profile's solid, which the kernel's is compared with
    KernelForm(host::solid::Profile profile, double volume)
        : m_profile(std::move(profile)), m_volume(volume) {}

    // Null with a reason when there is no kernel or it makes no solid.
    const host::solid::KernelSolid* Get(std::string& reason);

    // Triangles that leave the solid by no more than the tolerance, in drawing units. Null with a
    // reason on failure; stays valid until the next call.
    const host::solid::Mesh* Triangles(double chordTolerance, std::string& reason);

private:
    host::solid::Profile m_profile;
    double m_volume;
    std::unique_ptr<host::solid::KernelSolid> m_form;
    host::solid::Mesh m_mesh;
    double m_chord = 0;  // of m_mesh; 0: none yet
};

}  // namespace product

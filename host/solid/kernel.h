// The modelling kernel: what needs a boundary representation by others - triangles, STEP files to
// compare ours with - and PNG compression. It is a library of its own that is loaded on first use,
// because its start takes longer than everything else a short run of a program does.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "host/solid/profile.h"
#include "host/solid/step_parts.h"

namespace host::solid {

// Triangles, counter-clockwise seen from outside. Corners are shared within a face only, so that
// each has the normal of its face there; all faces together are closed within rounding.
struct Mesh {
    std::vector<AcGePoint3d> points;
    std::vector<AcGeVector3d> normals;  // outward, unit, one for each point
    std::vector<std::array<int, 3>> triangles;
};

// A solid in the kernel. Every function answers false with a reason instead of throwing.
class KernelSolid {
public:
    virtual ~KernelSolid() = default;
    virtual double Volume() const = 0;

    // A STEP file, application protocol 214, in the drawing's unit where STEP has it, else in
    // millimetres. The same bytes for the same solid and options.
    virtual bool StepText(const StepOptions& options, std::string& text,
                          std::string& reason) const = 0;

    // Triangles that leave the solid's surface by no more than the tolerance (drawing units).
    virtual bool Triangulate(double chordTolerance, Mesh& mesh, std::string& reason) const = 0;
};

class Kernel {
public:
    virtual ~Kernel() = default;

    // The solid of a profile, checked: valid by the kernel's own audit, and its volume the
    // profile's. Null with a reason otherwise.
    virtual std::unique_ptr<KernelSolid> Revolve(const Profile& profile, double expectedVolume,
                                                 std::string& reason) const = 0;
};

// The kernel of the library beside the program; null with a reason when it cannot be loaded. Loaded
// once, never unloaded.
const Kernel* LoadKernel(std::string& reason);

// The one symbol of that library.
inline constexpr char kKernelSymbol[] = "HostSolidKernel";
using KernelFunction = const Kernel* (*)();

}  // namespace host::solid

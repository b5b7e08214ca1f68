// The parts of the kernel library. Nothing here lets an exception out.
#pragma once

#include <memory>
#include <string>

#include <TopoDS_Shape.hxx>

#include "host/solid/kernel.h"

namespace host::solid {

// Open CASCADE tells of its doings on standard output unless told not to.
void SilenceMessages();

// As Kernel::Revolve.
std::unique_ptr<KernelSolid> MakeOcctSolid(const Profile& profile, double expectedVolume,
                                           std::string& reason);
// As KernelSolid::StepText.
bool WriteStep(const TopoDS_Shape& shape, const StepOptions& options, std::string& text,
               std::string& reason);
// As KernelSolid::Triangulate.
bool TriangulateShape(const TopoDS_Shape& shape, double chordTolerance, Mesh& mesh,
                      std::string& reason);  // as KernelSolid::Triangulate

}  // namespace host::solid

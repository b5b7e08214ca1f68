// The solid of an envelope: its figures, and the files and pictures that were asked for.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "apps/qzenvelope/Drawing.h"
#include "apps/qzenvelope/EnvelopeRun.h"
#include "apps/qzenvelope/Options.h"
#include "apps/qzenvelope/Picture.h"
#include "host/solid/profile.h"

namespace app {

class KernelForm;

struct SolidRun {
    // Neither: there was no envelope, or no axis.
    std::optional<host::solid::Profile> profile;
    std::optional<host::solid::Refusal> refusal;
    host::solid::Measures measures;
    std::shared_ptr<KernelForm> form;  // with a profile
};

// The solid of an outline about the horizontal through a point.
SolidRun RevolveRing(const std::vector<Vertex>& ring, bool closed, const Point& centre);

// The solid of an envelope in the drawing about its own longest horizontal edge; neither solid nor
// refusal when it has none.
SolidRun RevolveEnvelope(const AcDbObjectId& id);

// Writes every file of the solid that the options name, each as a whole or not at all. STEP names
// the product after the tool frame around the envelope, else after the input file.
//
// fails  Failure with kNoResult: the envelope has no solid, with the reason and the place; a file
//        cannot be written
void WriteSolidFiles(const SolidRun& solid, const EnvelopeRun& run, const Drawing& drawing,
                     const ComputeOptions& options);

// Puts the shaded solid below a picture. False with a reason when it cannot be drawn.
bool AddSolid(const SolidRun& solid, Picture& picture, std::string& reason);

}  // namespace app

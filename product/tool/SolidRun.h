// The solid of an envelope: its figures, and the files and pictures that were asked for.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "product/tool/EnvelopeRun.h"
#include "apps/qzenvelope/Options.h"
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

// The number of the tool frame around an envelope, else the name of the input file.
std::string ToolName(const Envelope& envelope, const std::string& input);

// Writes every file of the solid that the options name, each as a whole or not at all.
//
// product  what STEP names the product
// fails    Failure with kNoResult: the envelope has no solid, with the reason and the place; a file
//          cannot be written
void WriteSolidFiles(const SolidRun& solid, const std::string& product, AcDbDatabase& database,
                     const ComputeOptions& options);

// A PNG file of the solid, shaded.
struct SolidPicture {
    std::string bytes;
    int width = 0, height = 0;  // pixels
};
// Nothing, with a reason, when it cannot be drawn.
std::optional<SolidPicture> DrawSolid(const SolidRun& solid, int width, std::string& reason);

}  // namespace app

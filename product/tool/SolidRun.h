// The solid of an envelope and its figures.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "arxHeaders.h"
#include "host/solid/profile.h"
#include "product/tool/Envelope.h"
#include "product/tool/ToolRequest.h"

namespace product {

class KernelForm;

// One turn of an outline about an axis. It is made once; files, pictures and figures share it.
struct SolidRun {
    // Neither: there was no envelope, or no axis.
    std::optional<host::solid::Profile> profile;
    std::optional<host::solid::Refusal> refusal;
    host::solid::Measures measures;
    // What the modelling kernel makes of the profile, when the first file asks for it; with a
    // profile only.
    std::shared_ptr<KernelForm> form;
};

// The solid of an outline about an axis. Nothing in a drawing changes.
// cost  O(n log n) for n corners
SolidRun RevolveRing(const std::vector<Vertex>& ring, bool closed, const Axis& axis);

// The same as the plug-in's batch export makes it: as a solid in the drawing, on the scratch layer
// of solids, and erased again.
//
// drawing       the working database; gains that layer, loses the solids that were left there, and
//               uses up the solid's handle. A drawing that a batch has run on looks alike wherever
//               the batch was run.
// isLayerEmpty  the layer was emptied by a call before, and nobody else has put anything there;
//               becomes true. Without it every entity of model space is opened.
SolidRun RevolveInDrawing(const AcDbObjectId& envelopeId, const Envelope& envelope,
                          const Axis& axis, bool& isLayerEmpty);

// The solid of an envelope in the drawing about its own axis, by its mark or its longest horizontal
// edge; neither solid nor refusal when it has none. Nothing in the drawing changes.
SolidRun RevolveEnvelope(const AcDbObjectId& id);

}  // namespace product

#include "product/tool/SolidBodies.h"

#include "product/parts/Placing.h"
#include "product/tool/KernelForm.h"
#include "product/tool/PartDrawing.h"

namespace product {
namespace {

SolidBody BodyOf(host::solid::Profile profile, const std::string& name, const ACHAR* layer) {
    SolidBody body;
    body.measures = Measure(profile);
    body.profile = std::move(profile);
    body.name = name;
    body.layer = layer;
    body.form = std::make_shared<KernelForm>(body.profile, body.measures.volume);
    return body;
}

bool IsSplit(const ToolRun& run) { return run.parts && run.parts->isSplit; }

}  // namespace

std::vector<SolidBody> BodiesOf(const ToolRequest& request, const ToolRun& run,
                                const std::string& name) {
    if (!run.solid.profile) return {};
    const host::solid::Profile& whole = *run.solid.profile;
    const Placement& placement = request.parts.placement;
    ToolPlace place;
    if (!placement.IsAsDrawn())
        place = PlaceOf(whole, *request.axis, run.parts->tip.isHigh, placement);
    const auto standing = [&](const host::solid::Profile& profile) {
        return placement.IsAsDrawn() ? profile : Placed(profile, place);
    };
    std::vector<SolidBody> bodies;
    if (!IsSplit(run)) {
        bodies.push_back(BodyOf(standing(whole), name, kProfileLayer));
        // The kernel may have made it already.
        if (placement.IsAsDrawn()) bodies.front().form = run.solid.form;
        return bodies;
    }
    bodies.push_back(BodyOf(standing(run.parts->cut.profile), name + " CUT", kCutLayer));
    bodies.push_back(BodyOf(standing(run.parts->rest.profile), name + " NOCUT", kRestLayer));
    bodies[0].suffix = kCutSuffix;
    bodies[1].suffix = kRestSuffix;
    bodies[0].rgb = static_cast<int>(request.parts.colours.cut);
    bodies[1].rgb = static_cast<int>(request.parts.colours.rest);
    return bodies;
}

std::vector<ShownSolid> ShownParts(const ToolRequest& request, const ToolRun& run) {
    if (!IsSplit(run)) return {{&*run.solid.profile, -1}};
    return {{&run.parts->cut.profile, static_cast<int>(request.parts.colours.cut)},
            {&run.parts->rest.profile, static_cast<int>(request.parts.colours.rest)}};
}

}  // namespace product

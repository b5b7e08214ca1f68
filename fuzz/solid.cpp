// Solids of random profiles: an outline is refused with a reason, or its SAT text is sound, read by
// a reader that knows nothing of the writer, and encloses the volume that the profile has.
#include <cmath>
#include <cstring>
#include <string>

#include "fuzz/check.h"
#include "host/solid/profile.h"
#include "host/solid/sat_text.h"
#include "solid/sat_reader.h"

namespace {

// Corners on a grid, so that touching, closing and coinciding happen.
host::solid::Outline OutlineOf(const uint8_t* data, size_t size) {
    host::solid::Outline outline;
    static const double kBulges[] = {0, 0, 0, 0, 0.41421356237309503, -0.41421356237309503, 1, 0.1};
    for (size_t i = 0; i + 2 < size && i < 60; i += 3)
        outline.corners.push_back(
            {AcGePoint2d(data[i] / 4.0, data[i + 1] / 8.0), kBulges[data[i + 2] % 8]});
    return outline;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    host::solid::Profile profile;
    const host::solid::Outline outline = OutlineOf(data, size);
    const host::solid::Refusal refusal =
        Prepare(outline, AcGePoint3d(), AcGeVector3d(1, 0, 0), profile);
    if (refusal) {
        FUZZ_CHECK(!refusal.Text().empty());
        return 0;
    }
    const host::solid::Measures measures = Measure(profile);
    FUZZ_CHECK(measures.volume > 0 && std::isfinite(measures.volume));
    host::solid::SatOptions options;
    sat::File file;
    const std::string fault = sat::Parse(SatText({&profile}, options), file);
    FUZZ_CHECK(fault.empty());
    const sat::Audit audit = sat::Check(file);
    FUZZ_CHECK(audit.faults.empty());
    FUZZ_CHECK(std::fabs(audit.volume - measures.volume) <= 1e-6 * measures.volume);
    return 0;
}

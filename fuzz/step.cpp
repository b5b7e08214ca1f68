// STEP texts of random profiles: what is not refused is one valid solid to the modelling kernel, of
// the profile's volume and area.
#include <cmath>
#include <cstdio>

#include "fuzz/profiles.h"
#include "host/solid/step_text.h"
#include "solid_occt/step_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    host::solid::Profile profile;
    if (!fuzz::ProfileOf(data, size, profile)) return 0;
    host::solid::StepOptions options;
    options.product = "T-0001";
    options.timestamp = "2026-01-05T10:00:00";
    const step::Solid found = step::Read(StepText(profile, options));
    if (!found.fault.empty()) std::fprintf(stderr, "%s\n", found.fault.c_str());
    FUZZ_CHECK(found.fault.empty());
    const host::solid::Measures measures = Measure(profile);
    // The kernel integrates by its own tolerance.
    FUZZ_CHECK(std::fabs(found.volume - measures.volume) <= 1e-5 * measures.volume);
    FUZZ_CHECK(std::fabs(found.area - measures.area) <= 1e-5 * measures.area);
    return 0;
}

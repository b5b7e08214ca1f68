// Solids of random profiles: an outline is refused with a reason, or its SAT text is sound, read by
// a reader that knows nothing of the writer, and encloses the volume that the profile has.
#include <cmath>
#include <string>

#include "fuzz/profiles.h"
#include "host/solid/sat_text.h"
#include "solid/sat_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    host::solid::Profile profile;
    if (!fuzz::ProfileOf(data, size, profile)) return 0;
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

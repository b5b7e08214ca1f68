// The kernel on Open CASCADE. All its exceptions end here.
#include "host/solid/occt/occt_solid.h"

namespace host::solid {

namespace {

class OcctKernel : public Kernel {
public:
    OcctKernel() { SilenceMessages(); }

    std::unique_ptr<KernelSolid> Revolve(const Profile& profile, double expectedVolume,
                                         std::string& reason) const override {
        return MakeOcctSolid(profile, expectedVolume, reason);
    }
};

}  // namespace

}  // namespace host::solid

extern "C" __attribute__((visibility("default"))) const host::solid::Kernel* HostSolidKernel() {
    static const host::solid::OcctKernel kernel;
    return &kernel;
}

// The solids that a tool's files hold: one, or one for each part, where they are asked to stand.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "arxHeaders.h"
#include "host/solid/profile.h"
#include "product/picture/SolidPicture.h"
#include "product/tool/ToolRun.h"

namespace product {

class KernelForm;

struct SolidBody {
    host::solid::Profile profile;
    host::solid::Measures measures;
    std::string name;    // UTF-8, what STEP names the product
    std::string suffix;  // of files that hold this body alone; empty: it is the only one
    const ACHAR* layer = nullptr;
    int rgb = -1;  // 0xRRGGBB; -1: none asked for
    std::shared_ptr<KernelForm> form;
};

// The bodies of a run; none without a profile.
std::vector<SolidBody> BodiesOf(const ToolRequest& request, const ToolRun& run,
                                const std::string& name);

// The same as pictures show them, where the drawing has them. The run must outlive the result.
std::vector<ShownSolid> ShownParts(const ToolRequest& request, const ToolRun& run);

// Writes the files of a solid, each as a whole or not at all; none without a profile. SAT and STEP
// hold all bodies, of STL each has its own file.
//
// place    the option by which their folder is chosen, for messages; null: each file has its own,
//          empty: there is none to name
// written  receives the files, in the order of the writing
// fails    Failure: NoSolid with the reason and the place when the envelope has none, Output when
//          a file cannot be made or written; those before it stand
void WriteSolidFiles(const SolidRun& solid, const std::vector<SolidBody>& bodies,
                     const AcDbDatabase& database, const SolidFiles& files, const char* place,
                     std::vector<std::string>& written);

}  // namespace product

#include "apps/qzenvelope/FileRoles.h"

#include "product/base/Failure.h"
#include "product/base/Words.h"

namespace app {

using product::Tr;

using product::Failure;
using product::Fault;

void FileRoles::Input(const std::string& path) {
    if (!path.empty()) m_inputs.emplace(host::IdentityOf(path), path);
}

void FileRoles::Output(const std::string& path, const std::string& as, const std::string& remedy,
                       bool mayBeInput) {
    if (path.empty()) return;
    const host::FileIdentity file = host::IdentityOf(path);
    if (file.kind == host::FileIdentity::kStream) return;
    const auto input = m_inputs.find(file);
    if (input != m_inputs.end() && !mayBeInput) {
        const bool isSameName = input->second == path;
        throw Failure(Fault::Request,
                      as +
                          (isSameName ? Tr(" is an input") : Tr(" is the input ") + input->second) +
                          Tr(" and would be replaced; ") + remedy);
    }
    const auto [other, isNew] = m_outputs.emplace(file, as);
    if (!isNew)
        throw Failure(Fault::Request,
                      other->second + Tr(" and ") + as + Tr(" are one file; ") + remedy);
}

void CheckFiles(const product::ToolRequest& request) {
    FileRoles files;
    files.Input(request.input);
    const product::SolidFiles& solid = request.solid;
    // The drawing alone may replace the one that was read.
    files.Output(request.output, "-o " + request.output, Tr("choose another place"), true);
    const std::pair<const char*, std::string> outputs[] = {{"--svg ", request.svg},
                                                           {"--sat ", solid.sat},
                                                           {"--step ", solid.step},
                                                           {"--png ", solid.png},
                                                           {"--profile ", request.profile}};
    for (const auto& [option, path] : outputs)
        files.Output(path, option + path, Tr("choose another place"));
    for (const std::string& path : StlFiles(solid.stl, request.parts))
        files.Output(path, "--stl " + path, Tr("choose another place"));
}

std::vector<std::string> StlFiles(const std::string& path, const product::PartRequest& parts) {
    if (path.empty()) return {};
    if (!parts.IsSplit()) return {path};
    std::vector<std::string> files = {product::WithSuffix(path, product::kCutSuffix),
                                      product::WithSuffix(path, product::kRestSuffix)};
    // A tool at which nothing tells its parts is one.
    if (parts.split.kind == product::SplitRule::Kind::Auto) files.push_back(path);
    return files;
}

}  // namespace app

#include "apps/qzenvelope/FileRoles.h"

#include "product/base/Failure.h"

namespace app {

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
                      as + (isSameName ? " is an input" : " is the input " + input->second) +
                          " and would be replaced; " + remedy);
    }
    const auto [other, isNew] = m_outputs.emplace(file, as);
    if (!isNew)
        throw Failure(Fault::Request, other->second + " and " + as + " are one file; " + remedy);
}

void CheckFiles(const product::ToolRequest& request) {
    FileRoles files;
    files.Input(request.input);
    const product::SolidFiles& solid = request.solid;
    const std::pair<const char*, const std::string*> outputs[] = {
        {"-o ", &request.output}, {"--svg ", &request.svg}, {"--sat ", &solid.sat},
        {"--step ", &solid.step}, {"--stl ", &solid.stl},   {"--png ", &solid.png}};
    for (const auto& [option, path] : outputs)
        files.Output(*path, option + *path, "choose another place", path == &request.output);
}

}  // namespace app

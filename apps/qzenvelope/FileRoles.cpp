#include "apps/qzenvelope/FileRoles.h"

#include "apps/qzenvelope/Options.h"

namespace app {

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
        throw Failure(kUsage, as +
                                  (isSameName ? " is an input" : " is the input " + input->second) +
                                  " and would be replaced; " + remedy);
    }
    const auto [other, isNew] = m_outputs.emplace(file, as);
    if (!isNew) throw Failure(kUsage, other->second + " and " + as + " are one file; " + remedy);
}

void CheckFiles(const ComputeOptions& options) {
    FileRoles files;
    files.Input(options.input);
    const std::pair<const char*, const std::string*> outputs[] = {
        {"-o ", &options.output},   {"--svg ", &options.svg}, {"--sat ", &options.sat},
        {"--step ", &options.step}, {"--stl ", &options.stl}, {"--png ", &options.png}};
    for (const auto& [option, path] : outputs)
        files.Output(*path, option + *path, "choose another place", path == &options.output);
}

}  // namespace app

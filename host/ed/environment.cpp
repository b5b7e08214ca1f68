// acedGetEnv and acedSetEnv: variables in a file of the user's, one NAME=value a line.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "acedads.h"
#include "acutads.h"
#include "host/base/format.h"
#include "host/ed/text_compare.h"
#include "host/sys/file_io.h"

using namespace host;

namespace {

using Variables = std::vector<std::pair<std::wstring, std::wstring>>;

// Empty when the system names no place.
std::filesystem::path SettingsFile() {
    const auto from = [](const char* name, const char* below) {
        const char* const folder = std::getenv(name);
        return folder == nullptr || *folder == '\0'
                   ? std::filesystem::path()
                   : std::filesystem::path(folder) / below / "settings";
    };
    for (const auto& [name, below] :
         {std::pair("XDG_CONFIG_HOME", "qzhost"), std::pair("APPDATA", "qzhost"),
          std::pair("HOME", ".config/qzhost")})
        if (const std::filesystem::path file = from(name, below); !file.empty()) return file;
    return {};
}

Variables ReadVariables(const std::filesystem::path& file) {
    Variables variables;
    FileBytes bytes;
    FileError error;
    if (file.empty() || !ReadWholeFile(file.string(), bytes, error)) return variables;
    std::istringstream lines{std::string(bytes.View())};
    for (std::string line; std::getline(lines, line);) {
        const size_t split = line.find('=');
        if (split != std::string::npos)
            variables.emplace_back(Widen(line.substr(0, split)), Widen(line.substr(split + 1)));
    }
    return variables;
}

auto Find(Variables& variables, const ACHAR* name) {
    return std::find_if(variables.begin(), variables.end(), [&](const auto& variable) {
        return ToUpper(variable.first) == ToUpper(name);
    });
}

// What would not come back from the file as it is.
bool IsOneLine(const std::wstring& text) { return text.find_first_of(L"\r\n") == text.npos; }

}  // namespace

int acedGetEnv(const ACHAR* name, ACHAR* value, size_t n) {
    if (name == nullptr || value == nullptr || n == 0) return RTERROR;
    Variables variables = ReadVariables(SettingsFile());
    const auto found = Find(variables, name);
    if (found == variables.end()) return RTERROR;
    const size_t length = (std::min)(found->second.size(), n - 1);
    std::copy_n(found->second.c_str(), length, value);
    value[length] = 0;
    return RTNORM;
}

int acedSetEnv(const ACHAR* name, const ACHAR* value) {
    const std::filesystem::path file = SettingsFile();
    if (name == nullptr || value == nullptr || *name == 0 || file.empty()) return RTERROR;
    if (!IsOneLine(name) || !IsOneLine(value) ||
        std::wstring(name).find(L'=') != std::wstring::npos)
        return RTERROR;
    Variables variables = ReadVariables(file);
    const auto found = Find(variables, name);
    if (found == variables.end())
        variables.emplace_back(name, value);
    else
        found->second = value;
    std::string text;
    for (const auto& [known, kept] : variables) text += Narrow(known) + "=" + Narrow(kept) + "\n";
    std::error_code ignored;  // the writing below says what is wrong
    std::filesystem::create_directories(file.parent_path(), ignored);
    FileError error;
    return WriteFileAtomically(file.string(), {std::string_view(text)}, error) ? RTNORM : RTERROR;
}

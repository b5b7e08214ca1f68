#include "apps/qzenvelope/FileNumbers.h"

#include <map>
#include <set>

namespace app {
namespace {

std::string Lower(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return text;
}

}  // namespace

std::vector<std::string> NumberedNames(const std::vector<std::string>& names,
                                       std::vector<size_t>& renamed) {
    std::set<std::string> asked, taken;
    for (const std::string& name : names) asked.insert(Lower(name));
    std::map<std::string, int> last;
    std::vector<std::string> numbered;
    for (size_t i = 0; i < names.size(); ++i) {
        std::string name = names[i];
        if (!name.empty() && !taken.insert(Lower(name)).second) {
            int& number = last.try_emplace(Lower(name), 1).first->second;
            std::string key;
            do {
                name = names[i] + "-" + std::to_string(++number);
                key = Lower(name);
            } while (asked.count(key) != 0 || !taken.insert(key).second);
            renamed.push_back(i);
        }
        numbered.push_back(name);
    }
    return numbered;
}

}  // namespace app

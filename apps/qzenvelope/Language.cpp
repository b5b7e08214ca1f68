#include "apps/qzenvelope/Language.h"

#include <filesystem>

#include "product/base/Words.h"

namespace app {
namespace {

std::string& Spoken() {
    static std::string language = "en";
    return language;
}

}  // namespace

void ChooseLanguage(const std::vector<std::string>& arguments) {
    std::string language = product::LanguageOfLocale();
    for (size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i].rfind("--lang=", 0) == 0) language = arguments[i].substr(7);
        if (arguments[i] == "--lang" && i + 1 < arguments.size()) language = arguments[i + 1];
    }
    // Translations lie beside the program, wherever that was put.
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    product::UseLanguage(language, (program.parent_path() / "locale").string());
    Spoken() = language == "zh" ? "zh" : "en";
}

const std::string& Language() { return Spoken(); }

}  // namespace app

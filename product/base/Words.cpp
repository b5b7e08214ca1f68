#include "product/base/Words.h"

#include <libintl.h>

#include <clocale>
#include <cstdlib>

namespace product {
namespace {

constexpr const char* kDomain = "qzenvelope";

std::string Environment(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : value;
}

}  // namespace

const char* Tr(const char* text) { return ::dgettext(kDomain, text); }

std::string LanguageOfLocale() {
    std::string locale;
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (locale.empty()) locale = Environment(name);
    if (locale.empty() || locale == "C" || locale == "POSIX") return "en";
    const std::string wanted = Environment("LANGUAGE");
    return (wanted.empty() ? locale : wanted).rfind("zh", 0) == 0 ? "zh" : "en";
}

void UseLanguage(const std::string& language, const std::string& folder) {
    if (language != "zh") return;
    // The locale that is always there: gettext asks LANGUAGE in any but C itself.
    if (std::setlocale(LC_MESSAGES, "C.UTF-8") == nullptr) return;
    ::setenv("LANGUAGE", "zh_CN", 1);
    ::bindtextdomain(kDomain, folder.c_str());
    ::bind_textdomain_codeset(kDomain, "UTF-8");
}

}  // namespace product

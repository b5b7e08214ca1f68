#include "apps/qzenvelope/Output.h"

#include <cstdio>

#include "product/base/Failure.h"
#include "product/base/Words.h"

namespace app {

using product::Tr;

void Print(const std::string& raw) {
    const std::string text = Shown(raw);
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() || std::fflush(stdout) != 0)
        throw product::Failure(product::Fault::Output, Tr("the standard output cannot be written"));
}

void Complain(const std::string& text) {
    std::fprintf(stderr, "qzenvelope: %s\n", Shown(text).c_str());
}

std::string Shown(const std::string& text) {
    static const char* const kDigits = "0123456789abcdef";
    std::string shown;
    shown.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        auto c = static_cast<unsigned char>(text[i]);
        // The second set of controls, U+0080 to U+009F, is two bytes long.
        const bool isSecond = c == 0xC2 && i + 1 < text.size() &&
                              static_cast<unsigned char>(text[i + 1]) >= 0x80 &&
                              static_cast<unsigned char>(text[i + 1]) < 0xA0;
        if (isSecond) c = static_cast<unsigned char>(text[++i]);
        if (isSecond || (c < 0x20 && c != '\n' && c != '\t') || c == 0x7F)
            shown += {'\\', 'x', kDigits[c >> 4], kDigits[c & 15]};
        else
            shown += static_cast<char>(c);
    }
    return shown;
}

}  // namespace app

#include "host/sys/iconv_text.h"

#include <algorithm>

namespace host::dxf {

std::size_t CharsetConverter::DecodeOne(std::string_view bytes, char32_t& value) {
    std::u32string text;
    for (std::size_t n = 1; n <= (std::min)(bytes.size(), kLongestCharacter); ++n)
        if (Decode(bytes.substr(0, n), text) && text.size() == 1) {
            value = text[0];
            return n;
        }
    return 0;
}

}  // namespace host::dxf

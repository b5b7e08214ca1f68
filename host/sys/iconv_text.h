// Character sets through iconv, or the code pages of Windows; the only header that stands for them.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace host::dxf {

// Converts between one character set and Unicode scalar values. Opened on first use, because most
// drawings hold plain ASCII and the tables of a character set take time to load.
class CharsetConverter {
public:
    // charset: a name that iconv knows, "CP936". An unknown name converts nothing.
    explicit CharsetConverter(std::string charset);
    ~CharsetConverter();
    CharsetConverter(const CharsetConverter&) = delete;
    CharsetConverter& operator=(const CharsetConverter&) = delete;

    // Decodes the longest prefix that is one character. Number of bytes taken, 0 when the bytes at
    // the start are none of the character set; value receives the character.
    std::size_t DecodeOne(std::string_view bytes, char32_t& value);

    // Decodes all bytes; false when some are none of the character set (out is then unspecified).
    bool Decode(std::string_view bytes, std::u32string& out);

    // Appends the bytes of one character; false when the character set lacks it.
    bool EncodeOne(char32_t value, std::string& out);

    // Whether the system knows the character set.
    bool IsKnown();

private:
    // In bytes: no character of the code pages that drawings use is longer.
    static constexpr std::size_t kLongestCharacter = 8;

    struct Handles;
    Handles& Open();

    std::string charset_;
    std::unique_ptr<Handles> handles_;
};

}  // namespace host::dxf

// Strings of a drawing file: bytes in the drawing's code page with escapes, to and from wide
// strings.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "host/sys/iconv_text.h"

namespace host::dxf {

// Name of the character set for a value of $DWGCODEPAGE ("ANSI_936" gives "CP936"), without case;
// an empty string for an unknown page.
std::string CharsetOfCodePage(std::string_view codePage);

// What the bytes above 127 of a text look like as UTF-8.
struct Utf8Statistics {
    std::size_t twoByte = 0;           // well-formed sequences of two bytes
    std::size_t longer = 0;            // well-formed sequences of three or four bytes
    std::size_t invalid = 0;           // bytes outside any well-formed sequence
    void Add(std::string_view bytes);  // strict: no overlong form, no surrogate, at most U+10FFFF
};

// UTF-8 and wide strings of the platform, where wchar_t has 16 or 32 bits. Bytes that are no UTF-8
// become U+DC80..U+DCFF, one each, and go back to the same bytes.
std::wstring WideFromUtf8(std::string_view bytes);
std::string Utf8FromWide(std::wstring_view text);

// How the strings of one file are encoded. Not to be shared between threads.
class TextCodec {
public:
    enum class Mode {
        kCodePage,       // every string in the code page
        kUtf8,           // every string UTF-8
        kUtf8OrCodePage  // per string: UTF-8 when it is well-formed, else the code page
    };

    // charset as CharsetOfCodePage gives it; empty stands for Latin 1 of Windows.
    TextCodec(Mode mode, const std::string& charset);

    // Decodes a string of the file: character set first, then \U+XXXX and \M+nXXXX, then control
    // characters written as ^J. In this order, because the second byte of a Chinese character may
    // be a backslash. Undecodable bytes become U+DC80..U+DCFF.
    std::wstring Decode(std::string_view bytes) const;

    // The reverse: control characters and carets as ^J and "^ ", characters that the code page
    // lacks as \U+XXXX (two of them beyond U+FFFF), and so a backslash that would begin an escape.
    // Decode(Encode(s)) == s for every s without zero characters and surrogates.
    std::string Encode(std::wstring_view text) const;

    Mode mode() const { return mode_; }  // as given

private:
    std::u32string DecodeCharset(std::string_view bytes) const;  // by mode, without escapes
    std::u32string DecodePage(std::string_view bytes) const;     // by the code page
    bool ReplaceMultibyteEscape(const std::u32string& text, std::size_t& i,  // \M+nXXXX at a place
                                std::u32string& out) const;
    void EncodeOne(char32_t c, std::string& out) const;  // one character, escaped where needed
    CharsetConverter& EscapePage(int number) const;      // of the n in \M+n

    Mode mode_;
    // Loaded on first use; decoding a string is no change of the codec that a caller could see.
    mutable CharsetConverter page_;
    mutable std::array<std::unique_ptr<CharsetConverter>, 6> escapePages_;
};

}  // namespace host::dxf

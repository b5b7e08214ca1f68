#include "host/sys/iconv_text.h"

#include <iconv.h>

namespace host::dxf {

namespace {

const iconv_t kNone = reinterpret_cast<iconv_t>(-1);

}  // namespace

struct CharsetConverter::Handles {
    explicit Handles(const std::string& charset)
        : decode(iconv_open("UTF-32LE", charset.c_str())),
          encode(iconv_open(charset.c_str(), "UTF-32LE")) {}
    ~Handles() {
        if (decode != kNone) iconv_close(decode);
        if (encode != kNone) iconv_close(encode);
    }
    iconv_t decode, encode;
};

CharsetConverter::CharsetConverter(std::string charset) : charset_(std::move(charset)) {}

CharsetConverter::~CharsetConverter() = default;

CharsetConverter::Handles& CharsetConverter::Open() {
    if (!handles_) handles_ = std::make_unique<Handles>(charset_);
    return *handles_;
}

bool CharsetConverter::IsKnown() {
    const Handles& handles = Open();
    return handles.decode != kNone && handles.encode != kNone;
}

bool CharsetConverter::Decode(std::string_view bytes, std::u32string& out) {
    if (!IsKnown()) return false;
    const iconv_t handle = Open().decode;
    out.assign(bytes.size() + 1, U'\0');
    char* in = const_cast<char*>(bytes.data());
    std::size_t inLeft = bytes.size();
    char* to = reinterpret_cast<char*>(out.data());
    std::size_t toLeft = out.size() * sizeof(char32_t);
    iconv(handle, nullptr, nullptr, nullptr, nullptr);
    // A count above zero tells of characters that were replaced, which is not a faithful reading.
    if (iconv(handle, &in, &inLeft, &to, &toLeft) != 0 || inLeft != 0) return false;
    // Sets with combining marks hold the last character back until they are told that no mark
    // follows.
    iconv(handle, nullptr, nullptr, &to, &toLeft);
    out.resize(out.size() - toLeft / sizeof(char32_t));
    return true;
}

bool CharsetConverter::EncodeOne(char32_t value, std::string& out) {
    if (!IsKnown()) return false;
    const iconv_t handle = Open().encode;
    char* in = reinterpret_cast<char*>(&value);
    std::size_t inLeft = sizeof value;
    char buffer[kLongestCharacter];
    char* to = buffer;
    std::size_t toLeft = sizeof buffer;
    iconv(handle, nullptr, nullptr, nullptr, nullptr);
    if (iconv(handle, &in, &inLeft, &to, &toLeft) != 0 || inLeft != 0) return false;
    iconv(handle, nullptr, nullptr, &to, &toLeft);
    out.append(buffer, to);
    return true;
}

}  // namespace host::dxf

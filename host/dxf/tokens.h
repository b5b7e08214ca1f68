// Cuts the bytes of a file into tags. Header only, so that the scan of a large file is one loop.
#pragma once

#include <cstring>

#include "host/dxf/source.h"

namespace host::dxf {

enum class Step { kTag, kEnd, kFault };  // a tag was cut; nothing is left; see fault()

// Text files: a line with the code, a line with the value. Eol is '\n', or '\r' for files of old
// Macs; carriage returns before '\n' belong to the line end.
template <char Eol>
class TextTokens {  // over bytes that stay where they are
public:
    TextTokens(std::string_view bytes, std::size_t begin, std::size_t stop)
        : base_(bytes.data()), p_(base_ + begin), stop_(base_ + stop) {}

    // in the file, behind the last tag
    std::size_t position() const { return static_cast<std::size_t>(p_ - base_); }
    // what is wrong at position(); null without a fault
    const char* fault() const { return fault_; }

    // Cuts the next tag. Its value points into the file's bytes; nothing is copied or decoded.
    Step Next(Tag& tag) {
        const char* start = p_;
        const char* p = p_;
        // the code, right-aligned in most files
        while (p != stop_ && (*p == ' ' || *p == '\t')) ++p;
        if (p == stop_) return Step::kEnd;
        bool negative = *p == '-';  // codes of extended entity data in memory
        if (negative) ++p;
        int code = 0;
        const char* digits = p;
        // six digits are more than any code has
        while (p != stop_ && *p >= '0' && *p <= '9' && p - digits < 6)
            code = code * 10 + (*p++ - '0');
        // No digit: the end of the file, or no DXF.
        if (p == digits) return NoCode(start);
        while (p != stop_ && (*p == ' ' || *p == '\t' || (Eol == '\n' && *p == '\r'))) ++p;
        if (p == stop_) return Fault("the file ends after a group code, its value is missing");
        if (*p != Eol) return NoCode(start);
        tag.code = negative ? -code : code;
        if (tag.code < kLowestCode || tag.code > kHighestCode) return NoCode(start);
        ++p;
        if (p == stop_) return Fault("the file ends after a group code, its value is missing");
        // The value runs to the end of its line.
        const char* end =
            static_cast<const char*>(std::memchr(p, Eol, static_cast<std::size_t>(stop_ - p)));
        const char* next = end != nullptr ? end + 1 : stop_;
        if (end == nullptr) end = stop_;  // the last line of a file may lack its end
        if (Eol == '\n')                  // of "\r\n", and of "\r\r\n" as mail makes it
            while (end != p && end[-1] == '\r') --end;
        tag.value = std::string_view(p, static_cast<std::size_t>(end - p));
        tag.begin = static_cast<std::size_t>(start - base_);  // where the code's line begins
        p_ = next;
        tag.end = position();
        return Step::kTag;
    }

private:
    Step Fault(const char* text) {
        fault_ = text;
        return Step::kFault;
    }
    // Blank lines, a Ctrl-Z or zero bytes at the end of the file are no fault.
    Step NoCode(const char* start) {
        constexpr std::string_view kBlanks{" \t\r\n\x1a\0", 6};
        for (const char* p = start; p != stop_; ++p)
            if (kBlanks.find(*p) == std::string_view::npos)
                return Fault("the group code is not a number");
        return Step::kEnd;
    }

    const char *base_, *p_, *stop_;  // the file, the next byte, the end
    const char* fault_ = nullptr;
};

// Binary files; Wide tells the two forms of the group code apart.
template <bool Wide>
class BinaryTokens {  // over bytes that stay where they are
public:
    BinaryTokens(std::string_view bytes, std::size_t begin, std::size_t stop)
        : bytes_(bytes), position_(begin), stop_(stop) {}

    std::size_t position() const { return position_; }  // in the file, behind the last tag
    const char* fault() const { return fault_; }

    // As of text files.
    Step Next(Tag& tag) {
        if (position_ == stop_) return Step::kEnd;
        std::size_t at = position_;
        if (!ReadCode(at, tag.code)) return Fault("the file ends within a group code");
        if (tag.code < 0) return Fault("the group code is not known");
        std::size_t length = 0, skip = 0;  // of the value, and of its end mark
        switch (KindOf(tag.code)) {
            // A string up to its zero.
            case ValueKind::kText:
            case ValueKind::kHandle: {
                const std::size_t zero = bytes_.find('\0', at);
                if (zero == std::string_view::npos || zero >= stop_)
                    return Fault("the file ends within a string");
                length = zero - at;
                skip = 1;
                break;
            }
            // Numbers as the processor of a PC holds them, lowest byte first.
            case ValueKind::kReal:
            case ValueKind::kInt64:
                length = 8;
                break;
            case ValueKind::kInt32:
                length = 4;
                break;
            case ValueKind::kInt16:
                length = 2;
                break;
            case ValueKind::kBool:
                length = 1;
                break;
            // A length in one byte, then so many.
            case ValueKind::kChunk:
                if (at == stop_) return Fault("the file ends within a value");
                length = static_cast<unsigned char>(bytes_[at]);
                ++at;
                break;
            case ValueKind::kUnknown:
                return Fault("the group code is not known");
        }
        if (stop_ - at < length) return Fault("the file ends within a value");
        tag.value = bytes_.substr(at, length);
        tag.begin = position_;
        position_ = at + length + skip;
        tag.end = position_;
        return Step::kTag;
    }

private:
    // One byte, or two behind 255; in the wide form always two.
    bool ReadCode(std::size_t& at, int& code) const {
        const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes_[i]); };
        if (!Wide && byte(at) != 255) {
            code = byte(at);
            ++at;
            return true;
        }
        if (!Wide) ++at;
        if (stop_ - at < 2) return false;  // cut off
        code = static_cast<std::int16_t>(byte(at) | byte(at + 1) << 8);
        at += 2;
        return true;
    }
    Step Fault(const char* text) {
        fault_ = text;
        return Step::kFault;
    }

    std::string_view bytes_;       // the whole file
    std::size_t position_, stop_;  // the next byte, and behind the last
    const char* fault_ = nullptr;
};

// Calls use(tag) for every tag of a scanned range. One loop, where a TagWalker asks for the form of
// the file at every step.
template <class Use>
void ForEachTag(const Source& source, std::size_t begin, std::size_t stop, Use use) {
    const auto walk = [&](auto tokens) {
        for (Tag tag; tokens.Next(tag) == Step::kTag;) use(tag);
    };
    const std::string_view bytes = source.bytes.View();
    if (source.info.form == Form::kBinaryShort)
        walk(BinaryTokens<false>(bytes, begin, stop));  // up to R12
    else if (source.info.form == Form::kBinaryWide)
        walk(BinaryTokens<true>(bytes, begin, stop));  // R13 and later
    else if (source.layout.lineEnd == "\r")
        walk(TextTokens<'\r'>(bytes, begin, stop));
    else
        walk(TextTokens<'\n'>(bytes, begin, stop));
}

}  // namespace host::dxf

#include "host/base/format.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cwchar>

#include "host/base/number_text.h"

namespace host {
namespace {

// The size named between precision and letter. The two character sizes are Microsoft's.
enum class Size { None, Char, Short, Long, LongLong, Pointer };

// Widths and precisions beyond this are cut: a wrong one must not ask for gigabytes.
constexpr int kMaxField = 1 << 20;

// NOLINTBEGIN(clang-analyzer-valist.Uninitialized): it does not see va_copy fill a member.

// Reads one format from its start to its end. The argument list lives here, for it must not be
// copied between functions half used.
class Formatter {
public:
    Formatter(std::wstring& out, const wchar_t* format, va_list args) : m_out(out), m_at(format) {
        va_copy(m_args, args);
    }
    ~Formatter() { va_end(m_args); }
    Formatter(const Formatter&) = delete;
    Formatter& operator=(const Formatter&) = delete;

    void Run() {
        while (*m_at) {
            const wchar_t* const text = m_at;
            while (*m_at && *m_at != L'%') ++m_at;
            m_out.append(text, m_at);
            if (*m_at) Conversion();
        }
    }

private:
    void Conversion() {
        const wchar_t* const start = m_at++;
        m_part = FormatPart();
        ReadFlags();
        m_part.width = ReadNumber();
        if (m_part.width < 0) {
            m_part.left = true;
            m_part.width = -m_part.width;
        }
        if (*m_at == L'.') {
            ++m_at;
            m_part.precision = (std::max)(ReadNumber(), -1);
        }
        ReadSize();
        m_part.letter = *m_at;
        if (*m_at) ++m_at;
        if (!Write()) m_out.append(start, m_at);
    }

    void ReadFlags() {
        for (;; ++m_at) {
            switch (*m_at) {
                case L'-':
                    m_part.left = true;
                    break;
                case L'+':
                    m_part.plus = true;
                    break;
                case L' ':
                    m_part.blank = true;
                    break;
                case L'#':
                    m_part.alternate = true;
                    break;
                case L'0':
                    m_part.zero = true;
                    break;
                default:
                    return;
            }
        }
    }

    // A number or a * argument; 0 when there is none.
    int ReadNumber() {
        if (*m_at == L'*') {
            ++m_at;
            return (std::min)((std::max)(va_arg(m_args, int), -kMaxField), kMaxField);
        }
        int number = 0;
        for (; *m_at >= L'0' && *m_at <= L'9'; ++m_at)
            number = (std::min)(number * 10 + static_cast<int>(*m_at - L'0'), kMaxField);
        return number;
    }

    void ReadSize() {
        static const struct {
            const wchar_t* text;
            Size size;
        } kSizes[] = {{L"hh", Size::Char},   {L"h", Size::Short},    {L"ll", Size::LongLong},
                      {L"l", Size::Long},    {L"I32", Size::None},   {L"I64", Size::LongLong},
                      {L"I", Size::Pointer}, {L"w", Size::Long},     {L"z", Size::Pointer},
                      {L"t", Size::Pointer}, {L"j", Size::LongLong}, {L"L", Size::None}};
        m_size = Size::None;
        for (const auto& known : kSizes) {
            const std::size_t length = std::wcslen(known.text);
            if (std::wcsncmp(m_at, known.text, length) != 0) continue;
            m_at += length;
            m_size = known.size;
            return;
        }
    }

    // False for a letter without meaning.
    bool Write() {
        switch (m_part.letter) {
            case L'%':
                m_out += L'%';
                return true;
            case L'd':
            case L'i':
                WriteSigned();
                return true;
            case L'u':
            case L'x':
            case L'X':
            case L'o':
                WriteNumber(IntegerText(m_part, false, UnsignedArgument()));
                return true;
            case L'e':
            case L'E':
            case L'f':
            case L'F':
            case L'g':
            case L'G':
            case L'a':
            case L'A':
                WriteFloat();
                return true;
            case L'c':
            case L'C':
                WriteChar();
                return true;
            case L's':
            case L'S':
                WriteText();
                return true;
            case L'p':
                WritePointer();
                return true;
            default:
                return false;
        }
    }

    // Whether the argument has 64 bits; a long has on some machines.
    bool IsWide() const {
        const std::size_t size = m_size == Size::Long      ? sizeof(long)
                                 : m_size == Size::Pointer ? sizeof(void*)
                                                           : sizeof(int);
        return m_size == Size::LongLong || size == sizeof(std::int64_t);
    }

    std::int64_t SignedArgument() {
        if (IsWide()) return va_arg(m_args, std::int64_t);
        const int value = va_arg(m_args, int);
        if (m_size == Size::Char) return static_cast<signed char>(value);
        return m_size == Size::Short ? static_cast<short>(value) : value;
    }

    std::uint64_t UnsignedArgument() {
        if (IsWide()) return va_arg(m_args, std::uint64_t);
        const unsigned value = va_arg(m_args, unsigned);
        if (m_size == Size::Char) return static_cast<unsigned char>(value);
        return m_size == Size::Short ? static_cast<unsigned short>(value) : value;
    }

    void WriteSigned() {
        const std::int64_t value = SignedArgument();
        const bool negative = value < 0;
        const std::uint64_t bits = static_cast<std::uint64_t>(value);
        WriteNumber(IntegerText(m_part, negative, negative ? 0 - bits : bits));
    }

    // A precision switches zero padding of integers off.
    void WriteNumber(const std::string& text) {
        m_part.zero = m_part.zero && m_part.precision < 0;
        Pad(std::wstring(text.begin(), text.end()));
    }

    void WriteFloat() {
        const double value = va_arg(m_args, double);
        const std::string text = FloatText(m_part, value);
        m_part.zero = m_part.zero && std::isfinite(value);
        Pad(std::wstring(text.begin(), text.end()));
    }

    void WritePointer() {
        const auto bits = reinterpret_cast<std::uintptr_t>(va_arg(m_args, void*));
        m_part.letter = L'X';
        m_part.precision = 2 * static_cast<int>(sizeof(void*));
        m_part.alternate = false;
        WriteNumber(IntegerText(m_part, false, bits));
    }

    // %s and %c are wide, %S and %C narrow; h forces narrow, l and w wide.
    bool IsNarrow() const {
        if (m_size == Size::Short) return true;
        return m_size != Size::Long && (m_part.letter == L'S' || m_part.letter == L'C');
    }

    void WriteChar() {
        const int ch = va_arg(m_args, int);
        m_part.zero = false;
        Pad(IsNarrow() ? Widen(std::string(1, static_cast<char>(ch)))
                       : std::wstring(1, static_cast<wchar_t>(ch)));
    }

    // The precision is the greatest number of elements read, so the text needs no end mark then.
    void WriteText() {
        const void* const text = va_arg(m_args, const void*);
        m_part.zero = false;
        const std::size_t limit =
            m_part.precision < 0 ? SIZE_MAX : static_cast<std::size_t>(m_part.precision);
        if (!text)
            Pad(std::wstring(L"(null)").substr(0, limit));
        else if (IsNarrow())
            Pad(Widen(UpTo(static_cast<const char*>(text), limit)));
        else
            Pad(UpTo(static_cast<const wchar_t*>(text), limit));
    }

    template <class Char>
    static std::basic_string<Char> UpTo(const Char* text, std::size_t limit) {
        std::size_t length = 0;
        while (length < limit && text[length]) ++length;
        return {text, length};
    }

    void Pad(std::wstring text) {
        const std::size_t width = static_cast<std::size_t>(m_part.width);
        if (text.size() < width) {
            const std::size_t missing = width - text.size();
            if (m_part.left)
                text.append(missing, L' ');
            else if (m_part.zero)
                text.insert(DigitsAt(text), missing, L'0');
            else
                text.insert(0, missing, L' ');
        }
        m_out += text;
    }

    // Zeros go behind the sign and the 0x.
    std::size_t DigitsAt(const std::wstring& text) const {
        std::size_t at = !text.empty() && std::wcschr(L"+- ", text[0]) ? 1 : 0;
        const bool prefixed =
            text.size() > at + 1 && (text[at + 1] == L'x' || text[at + 1] == L'X');
        return prefixed ? at + 2 : at;
    }

    std::wstring& m_out;
    const wchar_t* m_at;
    va_list m_args;
    FormatPart m_part;
    Size m_size = Size::None;
};

// NOLINTEND(clang-analyzer-valist.Uninitialized)

}  // namespace

void AppendFormatted(std::wstring& out, const wchar_t* format, va_list args) {
    Formatter(out, format, args).Run();
}

}  // namespace host

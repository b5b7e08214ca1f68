// From the text of a resource script to words.
#include <climits>

#include "host/mfc/script_tokens.h"

namespace host {

void FailAt(const std::wstring& file, int line, const std::wstring& why) {
    throw ScriptError{file + L"(" + std::to_wstring(line) + L"): " + why};
}

void FailAt(const ScriptToken& token, const std::wstring& why) {
    FailAt(token.file, token.line, why);
}

namespace {

bool IsDigit(wchar_t ch) { return ch >= L'0' && ch <= L'9'; }
bool IsNameStart(wchar_t ch) {
    return (ch >= L'a' && ch <= L'z') || (ch >= L'A' && ch <= L'Z') || ch == L'_';
}
bool IsNamePart(wchar_t ch) { return IsNameStart(ch) || IsDigit(ch); }
bool IsBlank(wchar_t ch) { return ch == L' ' || ch == L'\t' || ch == L'\r' || ch == L'\n'; }

class Scanner {
public:
    Scanner(const std::wstring& text, const std::wstring& file, int line)
        : m_text(text), m_file(file), m_line(line) {}

    std::vector<ScriptToken> Scan() {
        std::vector<ScriptToken> tokens;
        for (SkipBlanks(); m_at < m_text.size(); SkipBlanks()) tokens.push_back(Next());
        return tokens;
    }

private:
    wchar_t Peek(std::size_t ahead = 0) const {
        return m_at + ahead < m_text.size() ? m_text[m_at + ahead] : 0;
    }
    void Step() {
        if (m_text[m_at] == L'\n') ++m_line;
        ++m_at;
    }

    void SkipBlanks() {
        while (m_at < m_text.size()) {
            if (Peek() == L'/' && Peek(1) == L'/') {
                while (m_at < m_text.size() && Peek() != L'\n') ++m_at;
            } else if (Peek() == L'/' && Peek(1) == L'*') {
                SkipComment();
            } else if (IsBlank(Peek())) {
                Step();
            } else {
                return;
            }
        }
    }

    void SkipComment() {
        const int begin = m_line;
        m_at += 2;
        while (m_at < m_text.size() && !(Peek() == L'*' && Peek(1) == L'/')) Step();
        if (m_at >= m_text.size()) FailAt(m_file, begin, L"the comment has no end");
        m_at += 2;
    }

    ScriptToken Next() {
        ScriptToken token;
        token.line = m_line;
        token.file = m_file;
        const wchar_t ch = Peek();
        if (ch == L'"' || (ch == L'L' && Peek(1) == L'"')) {
            if (ch == L'L') ++m_at;
            ScanText(token);
        } else if (IsDigit(ch)) {
            ScanNumber(token);
        } else if (IsNameStart(ch)) {
            token.kind = ScriptToken::kName;
            while (IsNamePart(Peek())) token.text += m_text[m_at++];
        } else {
            token.kind = ScriptToken::kSign;
            token.text = m_text[m_at++];
            const bool isDouble = (ch == L'&' || ch == L'|' || ch == L'=') && Peek() == ch;
            if (isDouble || (ch == L'!' && Peek() == L'=')) token.text += m_text[m_at++];
        }
        return token;
    }

    void ScanNumber(ScriptToken& token) {
        token.kind = ScriptToken::kNumber;
        const bool isHex = Peek() == L'0' && (Peek(1) == L'x' || Peek(1) == L'X');
        if (isHex) m_at += 2;
        const std::size_t begin = m_at;
        for (; IsNamePart(Peek()); ++m_at) {
            const wchar_t lower = Peek() | 0x20;
            const int digit = IsDigit(Peek())                           ? Peek() - L'0'
                              : isHex && lower >= L'a' && lower <= L'f' ? lower - L'a' + 10
                                                                        : -1;
            if (digit < 0) break;
            token.number = token.number * (isHex ? 16 : 10) + digit;
            if (token.number > UINT_MAX) FailAt(token, L"the number has more than 32 bits");
        }
        const bool isEmpty = m_at == begin;
        while (Peek() == L'L' || Peek() == L'l' || Peek() == L'U' || Peek() == L'u') ++m_at;
        if (isEmpty || IsNamePart(Peek())) FailAt(token, L"this is no number");
    }

    // "" is a quote; \n, \t, \r, \a, \\, \" as in C.
    void ScanText(ScriptToken& token) {
        token.kind = ScriptToken::kText;
        ++m_at;
        while (true) {
            if (m_at >= m_text.size() || Peek() == L'\n') FailAt(token, L"the text has no end");
            const wchar_t ch = m_text[m_at++];
            if (ch == L'"') {
                if (Peek() != L'"') return;
                token.text += m_text[m_at++];
            } else if (ch == L'\\') {
                ScanEscape(token);
            } else {
                token.text += ch;
            }
        }
    }

    void ScanEscape(ScriptToken& token) {
        static const wchar_t kPairs[] = L"n\nt\tr\ra\a\\\\\"\"";
        const wchar_t ch = Peek();
        for (const wchar_t* pair = kPairs; *pair != 0; pair += 2) {
            if (*pair != ch) continue;
            token.text += pair[1];
            ++m_at;
            return;
        }
        FailAt(token, L"unknown escape in a text");
    }

    const std::wstring& m_text;
    const std::wstring& m_file;
    std::size_t m_at = 0;
    int m_line;
};

}  // namespace

std::vector<ScriptToken> ScanScript(const std::wstring& text, const std::wstring& file,
                                    int firstLine) {
    return Scanner(text, file, firstLine).Scan();
}

bool EqualsIgnoringCase(const std::wstring& a, const wchar_t* b) {
    return _tcsicmp(a.c_str(), b) == 0;
}

}  // namespace host

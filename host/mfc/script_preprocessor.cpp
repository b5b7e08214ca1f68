// Directives and macros of resource scripts.
#include <map>
#include <algorithm>

#include "host/mfc/script_tokens.h"

namespace host {
namespace {

constexpr int kDeepestInclude = 16;
constexpr int kDeepestMacro = 32;
constexpr std::size_t kMostWords = 100000;  // macros within macros can grow without bound

// Headers of Windows: what scripts use of them is in FindScriptName.
bool IsWindowsHeader(const std::wstring& name) {
    static const wchar_t* const kNames[] = {L"afxres.h",   L"winres.h",   L"windows.h",
                                            L"winresrc.h", L"commctrl.h", L"winuser.rh",
                                            L"winver.h",   L"verrsrc.h"};
    for (const wchar_t* const known : kNames)
        if (EqualsIgnoringCase(name, known)) return true;
    return false;
}

class Preprocessor {
public:
    explicit Preprocessor(const IncludeReader& includes) : m_includes(includes) {
        m_macros[L"RC_INVOKED"] = {};
        m_macros[L"_WIN32"] = {};
    }

    void Read(const std::wstring& text, const std::wstring& file, int depth) {
        const std::size_t openBefore = m_conditions.size();
        std::size_t at = 0;
        int line = 1;
        std::wstring pending;  // lines between directives: comments may run over several
        int pendingLine = 1;
        bool isInComment = false;
        while (at <= text.size()) {
            const std::size_t end = (std::min)(text.find(L'\n', at), text.size());
            std::wstring content = text.substr(at, end - at);
            const int first = line++;
            at = end + 1;
            while (!content.empty() && EndsWithBackslash(content) && at <= text.size()) {
                const std::size_t next = (std::min)(text.find(L'\n', at), text.size());
                content.erase(content.rfind(L'\\'));
                content += L' ' + text.substr(at, next - at);
                at = next + 1;
                ++line;
            }
            const std::size_t start = content.find_first_not_of(L" \t\r");
            if (!isInComment && start != std::wstring::npos && content[start] == L'#') {
                Flush(pending, file, pendingLine);
                pending.clear();
                pendingLine = line;
                Directive(content.substr(start + 1), file, first, depth);
                continue;
            }
            if (IsSkipping()) {
                pendingLine = line;
                continue;
            }
            isInComment = EndsInComment(content, isInComment);
            pending += content + L'\n';
            if (line != first + 1)
                pending.append(static_cast<std::size_t>(line - first - 1), L'\n');
        }
        Flush(pending, file, pendingLine);
        if (m_conditions.size() != openBefore) FailAt(file, line - 1, L"#endif is missing");
    }

    std::vector<ScriptToken> Result(const std::wstring& file) {
        ScriptToken end;
        end.file = file;
        end.line = m_output.empty() ? 1 : m_output.back().line;
        m_output.push_back(end);
        return std::move(m_output);
    }

private:
    static bool EndsWithBackslash(const std::wstring& line) {
        const std::size_t last = line.find_last_not_of(L" \t\r");
        return last != std::wstring::npos && line[last] == L'\\';
    }

    static bool EndsInComment(const std::wstring& line, bool isInComment) {
        bool isInText = false;
        for (std::size_t i = 0; i < line.size(); ++i) {
            const bool hasNext = i + 1 < line.size();
            if (isInComment) {
                if (hasNext && line[i] == L'*' && line[i + 1] == L'/') {
                    isInComment = false;
                    ++i;
                }
            } else if (line[i] == L'"') {
                isInText = !isInText;
            } else if (isInText && line[i] == L'\\') {
                ++i;
            } else if (!isInText && hasNext && line[i] == L'/' && line[i + 1] == L'/') {
                return false;
            } else if (!isInText && hasNext && line[i] == L'/' && line[i + 1] == L'*') {
                isInComment = true;
                ++i;
            }
        }
        return isInComment;
    }

    bool IsSkipping() const {
        for (const Condition& condition : m_conditions)
            if (!condition.isTaken) return true;
        return false;
    }

    void Flush(const std::wstring& text, const std::wstring& file, int line) {
        if (text.empty()) return;
        for (const ScriptToken& token : ScanScript(text, file, line)) Expand(token, 0);
    }

    void Expand(const ScriptToken& token, int depth) {
        const auto macro =
            token.kind == ScriptToken::kName ? m_macros.find(token.text) : m_macros.end();
        if (macro == m_macros.end()) {
            if (m_output.size() >= kMostWords) FailAt(token, L"the script is too long");
            m_output.push_back(token);
            return;
        }
        if (depth >= kDeepestMacro) FailAt(token, token.text + L" is defined by itself");
        for (ScriptToken part : macro->second) {
            part.line = token.line;
            part.file = token.file;
            Expand(part, depth + 1);
        }
    }

    void Directive(const std::wstring& text, const std::wstring& file, int line, int depth) {
        const std::size_t begin = text.find_first_not_of(L" \t");
        if (begin == std::wstring::npos || text[begin] == L'\r') return;
        const std::size_t end = (std::min)(text.find_first_of(L" \t\r(\"<", begin), text.size());
        const std::wstring word = text.substr(begin, end - begin);
        const std::wstring rest = text.substr(end);
        if (Conditional(word, rest, file, line) || IsSkipping()) return;
        if (word == L"include") {
            Include(rest, file, line, depth);
        } else if (word == L"define") {
            const std::vector<ScriptToken> parts = ScanScript(rest, file, line);
            const std::wstring name = NameOf(parts, file, line);
            m_macros[name] = {parts.begin() + 1, parts.end()};
        } else if (word == L"undef") {
            m_macros.erase(NameOf(ScanScript(rest, file, line), file, line));
        } else if (word == L"error") {
            FailAt(file, line, L"#error" + rest);
        } else if (word != L"pragma") {
            FailAt(file, line, L"unknown directive #" + word);
        }
    }

    static std::wstring NameOf(const std::vector<ScriptToken>& parts, const std::wstring& file,
                               int line) {
        if (parts.empty() || parts[0].kind != ScriptToken::kName)
            FailAt(file, line, L"a name is missing");
        return parts[0].text;
    }

    void Include(const std::wstring& rest, const std::wstring& file, int line, int depth) {
        const std::size_t open = rest.find_first_of(L"\"<");
        const std::size_t close = open == std::wstring::npos
                                      ? open
                                      : rest.find(rest[open] == L'<' ? L'>' : L'"', open + 1);
        if (close == std::wstring::npos) FailAt(file, line, L"#include needs a file name");
        const std::wstring name = rest.substr(open + 1, close - open - 1);
        if (IsWindowsHeader(name)) return;
        const std::optional<std::wstring> text = m_includes(name);
        if (!text) FailAt(file, line, L"cannot read the included file " + name);
        if (depth >= kDeepestInclude) FailAt(file, line, name + L" includes itself");
        Read(*text, name, depth + 1);
    }

    bool Conditional(const std::wstring& word, const std::wstring& rest, const std::wstring& file,
                     int line) {
        if (word == L"ifdef" || word == L"ifndef") {
            const std::wstring name = NameOf(ScanScript(rest, file, line), file, line);
            Open((m_macros.count(name) != 0) == (word == L"ifdef"));
        } else if (word == L"if") {
            Open(!IsSkipping() && Evaluate(rest, file, line) != 0);
        } else if (word == L"else" || word == L"elif") {
            if (m_conditions.empty()) FailAt(file, line, L"#" + word + L" without #if");
            Condition& now = m_conditions.back();
            now.isTaken = !now.wasTaken && (word == L"else" || Evaluate(rest, file, line) != 0);
            now.wasTaken = now.wasTaken || now.isTaken;
        } else if (word == L"endif") {
            if (m_conditions.empty()) FailAt(file, line, L"#endif without #if");
            m_conditions.pop_back();
        } else {
            return false;
        }
        return true;
    }

    void Open(bool taken) { m_conditions.push_back({taken, taken}); }

    // --- #if: numbers, names, defined, !, ==, !=, &&, ||, parentheses ---
    std::int64_t Evaluate(const std::wstring& text, const std::wstring& file, int line) {
        m_expression = ScanScript(text, file, line);
        ScriptToken end;
        end.file = file;
        end.line = line;
        m_expression.push_back(end);
        m_position = 0;
        m_nesting = 0;
        const std::int64_t value = Either();
        if (m_expression[m_position].kind != ScriptToken::kEnd)
            FailAt(file, line, L"the condition cannot be understood");
        return value;
    }
    bool TakeSign(const wchar_t* sign) {
        const ScriptToken& token = m_expression[m_position];
        if (token.kind != ScriptToken::kSign || token.text != sign) return false;
        ++m_position;
        return true;
    }
    std::int64_t Either() {
        std::int64_t value = Both();
        while (TakeSign(L"||")) {
            const std::int64_t other = Both();
            value = value != 0 || other != 0;
        }
        return value;
    }
    std::int64_t Both() {
        std::int64_t value = Compared();
        while (TakeSign(L"&&")) {
            const std::int64_t other = Compared();
            value = value != 0 && other != 0;
        }
        return value;
    }
    std::int64_t Compared() {
        const std::int64_t value = Operand(0);
        if (TakeSign(L"==")) return value == Operand(0);
        if (TakeSign(L"!=")) return value != Operand(0);
        return value;
    }
    std::int64_t Operand(int depth) {
        if (depth > kDeepestMacro)
            FailAt(m_expression[m_position], L"the condition is nested too deeply");
        if (TakeSign(L"!")) return Operand(depth + 1) == 0;
        if (TakeSign(L"(")) {
            if (++m_nesting > kDeepestMacro)
                FailAt(m_expression[m_position], L"the condition is nested too deeply");
            const std::int64_t value = Either();
            --m_nesting;
            if (!TakeSign(L")")) FailAt(m_expression[m_position], L") is missing");
            return value;
        }
        const ScriptToken token = m_expression[m_position];
        if (token.kind != ScriptToken::kName && token.kind != ScriptToken::kNumber)
            FailAt(token, L"the condition cannot be understood");
        ++m_position;
        if (token.kind == ScriptToken::kNumber) return token.number;
        if (token.text == L"defined") return Defined();
        const auto macro = m_macros.find(token.text);
        const bool isNumber = macro != m_macros.end() && macro->second.size() == 1 &&
                              macro->second[0].kind == ScriptToken::kNumber;
        return isNumber ? macro->second[0].number : 0;
    }
    std::int64_t Defined() {
        const bool inParentheses = TakeSign(L"(");
        const ScriptToken name = m_expression[m_position];
        if (name.kind != ScriptToken::kName) FailAt(name, L"a name is missing");
        ++m_position;
        if (inParentheses && !TakeSign(L")")) FailAt(name, L") is missing");
        return m_macros.count(name.text) != 0;
    }

    struct Condition {
        bool isTaken;   // the present branch is read
        bool wasTaken;  // this or an earlier branch was
    };

    const IncludeReader& m_includes;
    std::map<std::wstring, std::vector<ScriptToken>> m_macros;
    std::vector<Condition> m_conditions;
    std::vector<ScriptToken> m_output;
    std::vector<ScriptToken> m_expression;
    std::size_t m_position = 0;
    int m_nesting = 0;
};

}  // namespace

std::vector<ScriptToken> PreprocessScript(const std::wstring& text, const std::wstring& file,
                                          const IncludeReader& includes) {
    Preprocessor preprocessor(includes);
    preprocessor.Read(text, file, 0);
    return preprocessor.Result(file);
}

}  // namespace host

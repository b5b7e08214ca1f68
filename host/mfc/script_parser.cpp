// The resources of a script.
#include <algorithm>
#include <set>

#include "host/mfc/script_tokens.h"

namespace host {
namespace {

constexpr int kDeepestExpression = 64;
constexpr std::int64_t kLargestUnit = 32767;  // dialog units are 16-bit words

struct Statement {
    const wchar_t* keyword;
    const wchar_t* windowClass;
    DWORD style;  // besides WS_CHILD and WS_VISIBLE
    bool hasText;
};

const Statement kStatements[] = {
    {L"LTEXT", L"static", SS_LEFT | WS_GROUP, true},
    {L"CTEXT", L"static", SS_CENTER | WS_GROUP, true},
    {L"RTEXT", L"static", SS_RIGHT | WS_GROUP, true},
    {L"PUSHBUTTON", L"button", BS_PUSHBUTTON | WS_TABSTOP, true},
    {L"DEFPUSHBUTTON", L"button", BS_DEFPUSHBUTTON | WS_TABSTOP, true},
    {L"GROUPBOX", L"button", BS_GROUPBOX, true},
    {L"CHECKBOX", L"button", BS_CHECKBOX | WS_TABSTOP, true},
    {L"AUTOCHECKBOX", L"button", BS_AUTOCHECKBOX | WS_TABSTOP, true},
    {L"AUTO3STATE", L"button", BS_AUTO3STATE | WS_TABSTOP, true},
    {L"RADIOBUTTON", L"button", BS_RADIOBUTTON | WS_TABSTOP, true},
    {L"AUTORADIOBUTTON", L"button", BS_AUTORADIOBUTTON | WS_TABSTOP, true},
    {L"EDITTEXT", L"edit", ES_LEFT | WS_BORDER | WS_TABSTOP, false},
};

const wchar_t* const kMemoryWords[] = {L"DISCARDABLE", L"MOVEABLE",   L"FIXED",
                                       L"PURE",        L"LOADONCALL", L"PRELOAD"};

class Parser {
public:
    explicit Parser(std::vector<ScriptToken> tokens) : m_tokens(std::move(tokens)) {}

    ResourceScript Parse() {
        while (Peek().kind != ScriptToken::kEnd) Resource();
        return std::move(m_script);
    }

private:
    const ScriptToken& Peek() const { return m_tokens[m_at]; }
    const ScriptToken& Take() {
        const ScriptToken& token = m_tokens[m_at];
        if (token.kind != ScriptToken::kEnd) ++m_at;
        return token;
    }
    bool IsWord(const wchar_t* word) const {
        return Peek().kind == ScriptToken::kName && EqualsIgnoringCase(Peek().text, word);
    }
    bool TakeWord(const wchar_t* word) {
        if (!IsWord(word)) return false;
        ++m_at;
        return true;
    }
    bool IsSign(const wchar_t* sign) const {
        return Peek().kind == ScriptToken::kSign && Peek().text == sign;
    }
    bool TakeSign(const wchar_t* sign) {
        if (!IsSign(sign)) return false;
        ++m_at;
        return true;
    }
    void Comma() {
        if (!TakeSign(L",")) FailAt(Peek(), L"a comma is missing before " + Shown(Peek()));
    }
    void Begin() {
        if (!TakeWord(L"BEGIN") && !TakeSign(L"{")) FailAt(Peek(), L"BEGIN is missing");
    }
    bool TakeEnd() { return TakeWord(L"END") || TakeSign(L"}"); }

    static std::wstring Shown(const ScriptToken& token) {
        switch (token.kind) {
            case ScriptToken::kNumber:
                return std::to_wstring(token.number);
            case ScriptToken::kText:
                return L'"' + token.text + L'"';
            case ScriptToken::kEnd:
                return L"the end of the script";
            default:
                return token.text;
        }
    }

    std::wstring Text() {
        if (Peek().kind != ScriptToken::kText)
            FailAt(Peek(), L"a text is missing before " + Shown(Peek()));
        return Take().text;
    }

    // --- numbers: a | b | NOT c, +, -, parentheses ---
    std::int64_t Expression(std::int64_t start = 0, int depth = 0) {
        std::int64_t value = start;
        do {
            if (TakeWord(L"NOT")) {
                value &= ~Sum(depth);
            } else {
                value |= Sum(depth);
            }
        } while (TakeSign(L"|"));
        return value;
    }
    std::int64_t Sum(int depth) {
        std::int64_t value = Operand(depth);
        while (IsSign(L"+") || IsSign(L"-")) {
            const bool isPlus = Take().text == L"+";
            const std::int64_t other = Operand(depth);
            value = static_cast<std::int32_t>(isPlus ? value + other : value - other);
        }
        return value;
    }
    std::int64_t Operand(int depth) {
        const ScriptToken& token = Peek();
        if (depth > kDeepestExpression) FailAt(token, L"the number is nested too deeply");
        if (TakeSign(L"-")) return static_cast<std::int32_t>(-Operand(depth + 1));
        if (TakeSign(L"(")) {
            const std::int64_t value = Expression(0, depth + 1);
            if (!TakeSign(L")")) FailAt(Peek(), L") is missing");
            return value;
        }
        if (token.kind == ScriptToken::kNumber) return Take().number;
        if (token.kind != ScriptToken::kName)
            FailAt(token, L"a number is missing before " + Shown(token));
        const std::optional<std::int64_t> value = FindScriptName(token.text);
        if (!value) FailAt(token, token.text + L" is not defined");
        Take();
        return *value;
    }
    LONG Unit() {
        const ScriptToken& token = Peek();
        const std::int64_t value = Expression();
        if (value < -kLargestUnit || value > kLargestUnit)
            FailAt(token, L"a place must lie within 16 bits");
        return static_cast<LONG>(value);
    }
    RECT Place() {
        const LONG x = Unit();
        Comma();
        const LONG y = Unit();
        Comma();
        const ScriptToken& token = Peek();
        const LONG width = Unit();
        Comma();
        const LONG height = Unit();
        if (width < 0 || height < 0) FailAt(token, L"a size must not be negative");
        return {x, y, x + width, y + height};
    }
    DWORD Style(DWORD defaults) {
        return static_cast<DWORD>(Expression(static_cast<std::int64_t>(defaults)));
    }

    // --- resources ---
    void Resource() {
        if (TakeWord(L"LANGUAGE")) {
            Expression();
            Comma();
            Expression();
            return;
        }
        if (TakeWord(L"STRINGTABLE")) return StringTable();
        const ScriptToken& first = Peek();
        if (first.kind == ScriptToken::kEnd) return;
        const std::int64_t id = Expression();
        if (!IsWord(L"DIALOGEX") && !IsWord(L"DIALOG"))
            FailAt(Peek(), L"resources of the kind " + Shown(Peek()) + L" are not known");
        Take();
        if (id < 1 || id > kLargestUnit) FailAt(first, L"the number of a dialog must be positive");
        Dialog(static_cast<int>(id), first);
    }

    void SkipMemoryWords() {
        for (const wchar_t* const word : kMemoryWords)
            while (TakeWord(word)) {
            }
    }

    void StringTable() {
        SkipMemoryWords();
        for (Begin(); !TakeEnd();) {
            const ScriptToken& token = Peek();
            const std::int64_t id = Expression();
            TakeSign(L",");
            if (id < 0 || id > 65535) FailAt(token, L"the number of a text has 16 bits");
            if (!m_script.strings.emplace(static_cast<UINT>(id), Text()).second)
                FailAt(token, L"the text " + std::to_wstring(id) + L" is there twice");
        }
    }

    void Dialog(int id, const ScriptToken& first) {
        DialogTemplate dialog;
        dialog.id = id;
        dialog.line = first.line;
        SkipMemoryWords();
        dialog.place = Place();
        if (TakeSign(L",")) Expression();  // help number
        bool hasStyle = false;
        while (!IsWord(L"BEGIN") && !IsSign(L"{")) hasStyle |= DialogStatement(dialog);
        if (!hasStyle) dialog.style = WS_POPUP | WS_BORDER | WS_SYSMENU;
        if (!dialog.caption.empty()) dialog.style |= WS_CAPTION;
        std::set<int> ids;
        for (Begin(); !TakeEnd();) {
            const ScriptToken& token = Peek();
            ControlTemplate control = Control();
            if (control.id != -1 && !ids.insert(control.id).second)
                FailAt(token, L"the dialog has two controls with the number " +
                                  std::to_wstring(control.id));
            dialog.controls.push_back(std::move(control));
        }
        if (!m_script.dialogs.emplace(id, std::move(dialog)).second)
            FailAt(first, L"the dialog " + std::to_wstring(id) + L" is there twice");
    }

    // True when it was the style.
    bool DialogStatement(DialogTemplate& dialog) {
        const ScriptToken& token = Peek();
        if (TakeWord(L"STYLE")) {
            dialog.style = Style(0);
            return true;
        }
        if (TakeWord(L"EXSTYLE")) {
            dialog.exStyle = Style(0);
        } else if (TakeWord(L"CAPTION")) {
            dialog.caption = Text();
        } else if (TakeWord(L"FONT")) {
            DialogFont(dialog);
        } else if (TakeWord(L"LANGUAGE")) {
            Expression();
            Comma();
            Expression();
        } else if (TakeWord(L"CHARACTERISTICS") || TakeWord(L"VERSION")) {
            Expression();
        } else {
            FailAt(token, L"unknown statement " + Shown(token) + L" before BEGIN");
        }
        return false;
    }

    void DialogFont(DialogTemplate& dialog) {
        const ScriptToken& token = Peek();
        const std::int64_t points = Expression();
        if (points < 1 || points > 100) FailAt(token, L"a font has 1 to 100 points");
        dialog.fontPoints = static_cast<double>(points);
        Comma();
        dialog.fontFace = Text();
        if (!TakeSign(L",")) return;
        dialog.fontWeight = static_cast<int>(Expression());
        if (!TakeSign(L",")) return;
        dialog.isItalic = Expression() != 0;
        if (TakeSign(L",")) Expression();  // character set: all texts here are Unicode
    }

    ControlTemplate Control() {
        const ScriptToken& token = Peek();
        if (token.kind == ScriptToken::kEnd) FailAt(token, L"END is missing");
        ControlTemplate control;
        control.line = token.line;
        if (TakeWord(L"CONTROL")) {
            GeneralControl(control);
            return control;
        }
        const auto statement =
            std::find_if(std::begin(kStatements), std::end(kStatements),
                         [&](const Statement& known) { return IsWord(known.keyword); });
        if (statement == std::end(kStatements))
            FailAt(token, L"unknown control statement " + Shown(token));
        Take();
        control.windowClass = statement->windowClass;
        if (statement->hasText) {
            control.text = Text();
            Comma();
        }
        control.id = static_cast<int>(Expression());
        Comma();
        control.place = Place();
        control.style = statement->style | WS_CHILD | WS_VISIBLE;
        if (TakeSign(L",")) control.style = Style(control.style);
        ExtendedStyle(control);
        return control;
    }

    void GeneralControl(ControlTemplate& control) {
        control.text = Text();
        Comma();
        control.id = static_cast<int>(Expression());
        Comma();
        const ScriptToken& token = Take();
        if (token.kind != ScriptToken::kText && token.kind != ScriptToken::kName)
            FailAt(token, L"the name of a window class is missing");
        const CString lower = CString(token.text.c_str()).MakeLower();
        control.windowClass = lower.GetString();
        Comma();
        control.style = Style(WS_CHILD | WS_VISIBLE);
        Comma();
        control.place = Place();
        ExtendedStyle(control);
    }

    void ExtendedStyle(ControlTemplate& control) {
        if (TakeSign(L",")) control.exStyle = Style(0);
        if (TakeSign(L",")) Expression();  // help number
    }

    std::vector<ScriptToken> m_tokens;
    std::size_t m_at = 0;
    ResourceScript m_script;
};

}  // namespace

ScriptFault ParseResourceScript(const std::wstring& text, const std::wstring& name,
                                const IncludeReader& includes, ResourceScript& out) {
    try {
        out = Parser(PreprocessScript(text, name, includes)).Parse();
        return {};
    } catch (const ScriptError& error) {
        return error.text;
    }
}

}  // namespace host

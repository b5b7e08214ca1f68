// acedGetPoint, acedGetString and what goes with them.
#include <algorithm>
#include <cwchar>
#include <sstream>
#include <vector>

#include "acedads.h"
#include "acutads.h"
#include "aced.h"
#include "host/ed/prompts.h"
#include "host/ed/session.h"

using namespace host;

namespace {

// Set by acedInitGet for the next input only.
int g_initGetBits = 0;
std::wstring g_keywords;

std::vector<std::wstring> Words(const std::wstring& text) {
    std::vector<std::wstring> words;
    std::wstringstream stream(text);
    for (std::wstring word; stream >> word;) words.push_back(word);
    return words;
}

// What an answer's keyword comes as; empty when the text is none.
std::wstring KeywordOf(const std::wstring& text) {
    const size_t split = g_keywords.find(L'_');
    const std::vector<std::wstring> words = Words(g_keywords.substr(0, split));
    const std::vector<std::wstring> names =
        split == std::wstring::npos ? words : Words(g_keywords.substr(split + 1));
    for (size_t i = 0; i < words.size(); ++i)
        if (!MatchKeyword(text, {words[i]}).empty()) return i < names.size() ? names[i] : words[i];
    return {};
}

bool TakesEnter() { return (g_initGetBits & RSG_NONULL) == 0; }

int CodeOf(const Answer& answer) {
    if (answer.kind == Answer::kGiven) return RTNORM;
    return answer.kind == Answer::kEnter ? RTNONE : RTCAN;
}

// A text that does not fit is cut, as the keyboard would stop taking characters.
void Give(const std::wstring& text, ACHAR* result, size_t n) {
    const size_t length = (std::min)(text.size(), n - 1);
    std::wmemcpy(result, text.c_str(), length);
    result[length] = 0;
}

std::wstring TextOf(const ACHAR* prompt) { return prompt == nullptr ? L"" : prompt; }

}  // namespace

int acedInitGet(int bits, const ACHAR* keywords) {
    g_initGetBits = bits;
    g_keywords = TextOf(keywords);
    return RTNORM;
}

int acedGetKword(const ACHAR* prompt, ACHAR* result, size_t n) {
    if (result == nullptr || n == 0 || g_keywords.empty() || Session::Get().Current() == nullptr)
        return RTERROR;
    std::wstring keyword;
    int code = RTNORM;
    while (keyword.empty() && code == RTNORM) {
        const Answer answer = AskText(TextOf(prompt), false);
        if (answer.kind == Answer::kEscape)
            code = RTCAN;
        else if (answer.text.empty())
            code = TakesEnter() ? RTNONE : RTNORM;
        else if ((keyword = KeywordOf(answer.text)).empty())
            Session::Get().Print(L"\nInvalid option keyword.");
    }
    g_initGetBits = 0;
    g_keywords.clear();
    if (code == RTNORM) Give(keyword, result, n);
    return code;
}

int acedGetPoint(const ads_point base, const ACHAR* prompt, ads_point result) {
    if (result == nullptr || Session::Get().Current() == nullptr) return RTERROR;
    const AcGePoint3d basePoint =
        base == nullptr ? AcGePoint3d() : AcGePoint3d(base[0], base[1], base[2]);
    PointRequest request;
    if (base != nullptr) request.base = &basePoint;
    Answer answer;
    do {
        answer = AskPoint(TextOf(prompt), request);
    } while (answer.kind == Answer::kEnter && !TakesEnter());
    g_initGetBits = 0;
    if (answer.kind == Answer::kGiven) {
        result[0] = answer.point.x;
        result[1] = answer.point.y;
        result[2] = answer.point.z;
    }
    return CodeOf(answer);
}

int acedGetString(int cronly, const ACHAR* prompt, ACHAR* result, size_t n) {
    if (result == nullptr || n == 0 || Session::Get().Current() == nullptr) return RTERROR;
    const Answer answer = AskText(TextOf(prompt), cronly != 0);
    g_initGetBits = 0;
    if (answer.kind == Answer::kEscape) return RTCAN;
    Give(answer.text, result, n);
    return RTNORM;
}

int acedGetString(int cronly, const ACHAR* prompt, AcString& result) {
    if (Session::Get().Current() == nullptr) return RTERROR;
    const Answer answer = AskText(TextOf(prompt), cronly != 0);
    g_initGetBits = 0;
    if (answer.kind == Answer::kEscape) return RTCAN;
    result = answer.text.c_str();
    return RTNORM;
}

int acedPrompt(const ACHAR* text) {
    if (text == nullptr) return RTERROR;
    Session::Get().Print(text);
    return RTNORM;
}

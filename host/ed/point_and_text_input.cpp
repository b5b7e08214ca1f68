// acedGetPoint, acedGetString and what goes with them.
#include <algorithm>
#include <cwchar>

#include "acedads.h"
#include "acutads.h"
#include "aced.h"
#include "host/ed/prompts.h"
#include "host/ed/session.h"

using namespace host;

namespace {

// Set by acedInitGet for the next input only.
int g_initGetBits = 0;

bool TakesEnter() { return (g_initGetBits & RSG_NONULL) == 0; }

int CodeOf(const Answer& answer) {
    if (answer.kind == Answer::kGiven) return RTNORM;
    return answer.kind == Answer::kEnter ? RTNONE : RTCAN;
}

std::wstring TextOf(const ACHAR* prompt) { return prompt == nullptr ? L"" : prompt; }

}  // namespace

int acedInitGet(int bits, const ACHAR*) {
    g_initGetBits = bits;
    return RTNORM;
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
    // A text that does not fit is cut, as the keyboard would stop taking characters.
    const size_t length = (std::min)(answer.text.size(), n - 1);
    std::wmemcpy(result, answer.text.c_str(), length);
    result[length] = 0;
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

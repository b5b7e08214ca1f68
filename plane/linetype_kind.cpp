#include "plane/linetype_kind.h"

#include <algorithm>

namespace plane {
namespace {

using Kind = LinetypeKind;

struct Word {
    const wchar_t* word;
    Kind kind;
    bool isWhole;  // the whole name, else any part of it
};

// The first row that fits decides, so what contains another word stands above it.
const Word kWords[] = {
    {L"CONTINUOUS", Kind::Continuous, true},
    {L"BYLAYER", Kind::Continuous, true},
    {L"BYBLOCK", Kind::Continuous, true},
    {L"SOLID", Kind::Continuous, true},
    {L"AUSGEZOGEN", Kind::Continuous, false},
    {L"VOLLLINIE", Kind::Continuous, false},
    {L"实线", Kind::Continuous, false},
    {L"连续", Kind::Continuous, false},
    // ISO 128-20 by number, as the line type files have them.
    {L"ISO01W", Kind::Continuous, false},
    {L"ISO02W", Kind::Dashed, false},
    {L"ISO03W", Kind::Dashed, false},
    {L"ISO04W", Kind::Centre, false},
    {L"ISO05W", Kind::Phantom, false},
    {L"ISO06W", Kind::Phantom, false},
    {L"ISO07W", Kind::Dot, false},
    {L"ISO08W", Kind::Centre, false},
    {L"ISO09W", Kind::Phantom, false},
    {L"ISO10W", Kind::Centre, false},
    {L"ISO11W", Kind::Other, false},
    {L"ISO12W", Kind::Phantom, false},
    {L"ISO13W", Kind::Phantom, false},
    {L"ISO14W", Kind::Phantom, false},
    {L"ISO15W", Kind::Phantom, false},
    // JIS Z 8312: hidden lines, chains with one mark, chains with two.
    {L"JIS02", Kind::Hidden, false},
    {L"JIS08", Kind::Centre, false},
    {L"JIS09", Kind::Phantom, false},
    {L"1SASEN", Kind::Centre, false},
    {L"2SASEN", Kind::Phantom, false},
    // GB/T 17450 and older Chinese words.
    {L"双点", Kind::Phantom, false},
    {L"三点", Kind::Phantom, false},
    {L"双短", Kind::Phantom, false},
    {L"假想", Kind::Phantom, false},
    {L"单点", Kind::Centre, false},
    {L"长画短画", Kind::Centre, false},
    {L"点画", Kind::Centre, false},
    {L"点划", Kind::Centre, false},
    {L"画点", Kind::Centre, false},
    {L"划点", Kind::Centre, false},
    {L"中心", Kind::Centre, false},
    {L"轴线", Kind::Centre, false},
    {L"点线", Kind::Dot, false},
    {L"虚线", Kind::Hidden, false},
    {L"隐藏", Kind::Hidden, false},
    {L"不可见", Kind::Hidden, false},
    // DIN and the German line type file.
    {L"STRICHZWEIPUNKT", Kind::Phantom, false},
    {L"STRICHPUNKTPUNKT", Kind::Phantom, false},
    {L"STRICHPUNKT", Kind::Centre, false},
    {L"MITTE", Kind::Centre, false},
    {L"VERDECKT", Kind::Hidden, false},
    {L"STRICHLINIE", Kind::Dashed, false},
    {L"GESTRICHELT", Kind::Dashed, false},
    {L"PUNKT", Kind::Dot, false},
    {L"RAND", Kind::Other, true},
    // ANSI and the line type files in English.
    {L"PHANTOM", Kind::Phantom, false},
    {L"DIVIDE", Kind::Phantom, false},
    {L"DASHDOTDOT", Kind::Phantom, false},
    {L"DASHDOT", Kind::Centre, false},
    {L"CENTER", Kind::Centre, false},
    {L"CENTRE", Kind::Centre, false},
    {L"HIDDEN", Kind::Hidden, false},
    {L"DASH", Kind::Dashed, false},
    {L"DOT", Kind::Dot, false},
    {L"BORDER", Kind::Other, false},
    {L"FENCELINE", Kind::Other, false},
    {L"TRACKS", Kind::Other, false},
    {L"BATTING", Kind::Other, false},
    {L"HOTWATER", Kind::Other, false},
    {L"GASLINE", Kind::Other, false},
    {L"ZIGZAG", Kind::Other, false},
};

// Without what writers put between words; ASCII letters as capitals.
std::wstring Plain(std::wstring text) {
    const size_t bar = text.rfind(L'|');
    if (bar != std::wstring::npos) text.erase(0, bar + 1);
    const std::wstring bound = L"$0$";
    const size_t at = text.rfind(bound);
    if (at != std::wstring::npos) text.erase(0, at + bound.size());
    const auto isBetween = [](wchar_t c) {
        return c == L' ' || c == L'_' || c == L'-' || c == L'.';
    };
    text.erase(std::remove_if(text.begin(), text.end(), isBetween), text.end());
    for (wchar_t& c : text)
        if (c >= L'a' && c <= L'z') c = static_cast<wchar_t>(c - L'a' + L'A');
    return text;
}

}  // namespace

LinetypeKind KindOfLinetypeName(const std::wstring& name, bool& isKnown) {
    const std::wstring plain = Plain(name);
    for (const Word& word : kWords) {
        isKnown = word.isWhole ? plain == word.word : plain.find(word.word) != std::wstring::npos;
        if (isKnown) return word.kind;
    }
    return Kind::Continuous;
}

LinetypeKind KindOfLinetypePattern(const std::vector<double>& pattern) {
    constexpr double kMarkShare = 0.5;
    const auto isGap = [](double d) { return d < 0.0; };
    if (std::none_of(pattern.begin(), pattern.end(), isGap)) return Kind::Continuous;
    const double longest = *std::max_element(pattern.begin(), pattern.end());
    if (!(longest > 0.0)) return Kind::Dot;
    int longs = 0, marks = 0;
    for (const double d : pattern) {
        if (isGap(d)) continue;
        if (d > kMarkShare * longest)
            ++longs;
        else
            ++marks;
    }
    if (marks == 0) return Kind::Dashed;
    if (longs > 1) return Kind::Other;
    return marks == 1 ? Kind::Centre : Kind::Phantom;
}

LinetypeKind KindOfLinetype(const std::wstring& name, const std::vector<double>& pattern) {
    bool isKnown = false;
    const Kind byName = KindOfLinetypeName(name, isKnown);
    return isKnown && byName != Kind::Continuous ? byName : KindOfLinetypePattern(pattern);
}

}  // namespace plane

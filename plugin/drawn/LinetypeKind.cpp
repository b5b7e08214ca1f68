#include "StdAfx.h"

#include "LinetypeKind.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace {

using Kind = ELinetypeKind;

struct SWord {
    const ACHAR* m_pWord;
    Kind m_kind;
    bool m_bWhole;  // the whole name, else any part of it
};

// The first row that fits decides, so what contains another word stands above it.
const SWord kWords[] = {
    {_T("CONTINUOUS"), Kind::Continuous, true},
    {_T("BYLAYER"), Kind::Continuous, true},
    {_T("BYBLOCK"), Kind::Continuous, true},
    {_T("SOLID"), Kind::Continuous, true},
    {_T("AUSGEZOGEN"), Kind::Continuous, false},
    {_T("VOLLLINIE"), Kind::Continuous, false},
    {_T("实线"), Kind::Continuous, false},
    {_T("连续"), Kind::Continuous, false},
    // ISO 128-20 by number, as the line type files have them.
    {_T("ISO01W"), Kind::Continuous, false},
    {_T("ISO02W"), Kind::Dashed, false},
    {_T("ISO03W"), Kind::Dashed, false},
    {_T("ISO04W"), Kind::Centre, false},
    {_T("ISO05W"), Kind::Phantom, false},
    {_T("ISO06W"), Kind::Phantom, false},
    {_T("ISO07W"), Kind::Dot, false},
    {_T("ISO08W"), Kind::Centre, false},
    {_T("ISO09W"), Kind::Phantom, false},
    {_T("ISO10W"), Kind::Centre, false},
    {_T("ISO11W"), Kind::Other, false},
    {_T("ISO12W"), Kind::Phantom, false},
    {_T("ISO13W"), Kind::Phantom, false},
    {_T("ISO14W"), Kind::Phantom, false},
    {_T("ISO15W"), Kind::Phantom, false},
    // JIS Z 8312: hidden lines, chains with one mark, chains with two.
    {_T("JIS02"), Kind::Hidden, false},
    {_T("JIS08"), Kind::Centre, false},
    {_T("JIS09"), Kind::Phantom, false},
    {_T("1SASEN"), Kind::Centre, false},
    {_T("2SASEN"), Kind::Phantom, false},
    // GB/T 17450 and older Chinese words.
    {_T("双点"), Kind::Phantom, false},
    {_T("三点"), Kind::Phantom, false},
    {_T("双短"), Kind::Phantom, false},
    {_T("假想"), Kind::Phantom, false},
    {_T("单点"), Kind::Centre, false},
    {_T("长画短画"), Kind::Centre, false},
    {_T("点画"), Kind::Centre, false},
    {_T("点划"), Kind::Centre, false},
    {_T("画点"), Kind::Centre, false},
    {_T("划点"), Kind::Centre, false},
    {_T("中心"), Kind::Centre, false},
    {_T("轴线"), Kind::Centre, false},
    {_T("点线"), Kind::Dot, false},
    {_T("虚线"), Kind::Hidden, false},
    {_T("隐藏"), Kind::Hidden, false},
    {_T("不可见"), Kind::Hidden, false},
    // DIN and the German line type file.
    {_T("STRICHZWEIPUNKT"), Kind::Phantom, false},
    {_T("STRICHPUNKTPUNKT"), Kind::Phantom, false},
    {_T("STRICHPUNKT"), Kind::Centre, false},
    {_T("MITTE"), Kind::Centre, false},
    {_T("VERDECKT"), Kind::Hidden, false},
    {_T("STRICHLINIE"), Kind::Dashed, false},
    {_T("GESTRICHELT"), Kind::Dashed, false},
    {_T("PUNKT"), Kind::Dot, false},
    {_T("RAND"), Kind::Other, true},
    // ANSI and the line type files in English.
    {_T("PHANTOM"), Kind::Phantom, false},
    {_T("DIVIDE"), Kind::Phantom, false},
    {_T("DASHDOTDOT"), Kind::Phantom, false},
    {_T("DASHDOT"), Kind::Centre, false},
    {_T("CENTER"), Kind::Centre, false},
    {_T("CENTRE"), Kind::Centre, false},
    {_T("HIDDEN"), Kind::Hidden, false},
    {_T("DASH"), Kind::Dashed, false},
    {_T("DOT"), Kind::Dot, false},
    {_T("BORDER"), Kind::Other, false},
    {_T("FENCELINE"), Kind::Other, false},
    {_T("TRACKS"), Kind::Other, false},
    {_T("BATTING"), Kind::Other, false},
    {_T("HOTWATER"), Kind::Other, false},
    {_T("GASLINE"), Kind::Other, false},
    {_T("ZIGZAG"), Kind::Other, false},
};

using Text = std::basic_string<ACHAR>;

// Without what writers put between words; ASCII letters as capitals.
Text Plain(const ACHAR* pName) {
    Text text(pName);
    const size_t bar = text.rfind(_T('|'));
    if (bar != Text::npos) text.erase(0, bar + 1);
    const Text bound = _T("$0$");
    const size_t at = text.rfind(bound);
    if (at != Text::npos) text.erase(0, at + bound.size());
    const auto isBetween = [](ACHAR c) {
        return c == _T(' ') || c == _T('_') || c == _T('-') || c == _T('.');
    };
    text.erase(std::remove_if(text.begin(), text.end(), isBetween), text.end());
    for (ACHAR& c : text)
        if (c >= _T('a') && c <= _T('z')) c = static_cast<ACHAR>(c - _T('a') + _T('A'));
    return text;
}

std::vector<double> PatternOf(const AcDbLinetypeTableRecord& record) {
    std::vector<double> pattern;
    for (int i = 0; i < record.numDashes(); ++i) pattern.push_back(record.dashLengthAt(i));
    return pattern;
}

}  // namespace

ELinetypeKind KindOfLinetypeName(const ACHAR* pName, bool& bKnown) {
    const Text name = Plain(pName);
    for (const SWord& word : kWords) {
        bKnown = word.m_bWhole ? name == word.m_pWord : name.find(word.m_pWord) != Text::npos;
        if (bKnown) return word.m_kind;
    }
    return Kind::Continuous;
}

ELinetypeKind KindOfLinetypePattern(const std::vector<double>& pattern) {
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

const SLinetype& CLinetypes::Look(const AcDbObjectId& linetypeId) {
    const auto [at, bNew] = m_known.try_emplace(linetypeId);
    SLinetype& linetype = at->second;
    if (!bNew) return linetype;
    AcDbObjectPointer<AcDbLinetypeTableRecord> record(linetypeId, AcDb::kForRead);
    AcString name;
    if (record.openStatus() != Acad::eOk || record->getName(name) != Acad::eOk) return linetype;
    linetype.m_strName = name.kACharPtr();
    const ELinetypeKind byPattern = KindOfLinetypePattern(PatternOf(*record.object()));
    linetype.m_bHasGaps = byPattern != Kind::Continuous;
    bool bKnown = false;
    linetype.m_kind = KindOfLinetypeName(linetype.m_strName, bKnown);
    if (!bKnown || linetype.m_kind == Kind::Continuous) linetype.m_kind = byPattern;
    return linetype;
}

// What line types mean, by their names and by their patterns.
#include "plugin/drawn/LinetypeKind.h"
#include "support/test_drawing.h"

namespace {

using Kind = ELinetypeKind;
using plane::KindOfLinetypeName;
using plane::KindOfLinetypePattern;

const char* Name(Kind kind) {
    static const char* const kNames[] = {"continuous", "dashed", "hidden", "centre",
                                         "phantom",    "dot",    "other"};
    return kNames[static_cast<int>(kind)];
}

TEST(LinetypeKind, NamesOfStandardsAndLanguages) {
    const struct {
        Kind kind;
        std::vector<const ACHAR*> names;
    } rows[] = {
        {Kind::Continuous,
         {_T("Continuous"), _T("CONTINUOUS"), _T("粗实线"), _T("细实线"), _T("Ausgezogen"),
          _T("ACAD_ISO01W100")}},
        {Kind::Dashed,
         {_T("DASHED"), _T("Dashed2"), _T("DASHEDX2"), _T("ACAD_ISO02W100"), _T("ACAD_ISO03W100"),
          _T("Strichlinie"), _T("xref|DASHED"), _T("part$0$dashed2")}},
        {Kind::Hidden,
         {_T("HIDDEN"), _T("hidden2"), _T("HIDDENX2"), _T("JIS_02_0.7"), _T("JIS_02_4.0"),
          _T("虚线"), _T("细虚线"), _T("隐藏线"), _T("VERDECKT2")}},
        {Kind::Centre,
         {_T("CENTER"),         _T("Center2"),        _T("CENTERX2"),     _T("CENTRE"),
          _T("DASHDOT"),        _T("Dash dot"),       _T("DASH-DOT2"),    _T("ACAD_ISO04W100"),
          _T("ACAD_ISO08W100"), _T("ACAD_ISO10W100"), _T("JIS_08_11"),    _T("JIS_08_50"),
          _T("点画线"),         _T("细点划线"),       _T("单点长画线"),   _T("长画短画线"),
          _T("中心线"),         _T("MITTE"),          _T("Strichpunkt2"), _T("轴线")}},
        {Kind::Phantom,
         {_T("PHANTOM"), _T("Phantom2"), _T("DIVIDE"), _T("ACAD_ISO05W100"), _T("ACAD_ISO12W100"),
          _T("JIS_09_29"), _T("双点画线"), _T("双点长画线"), _T("假想线"), _T("STRICHZWEIPUNKT"),
          _T("DASHDOTDOT")}},
        {Kind::Dot, {_T("DOT"), _T("DOT2"), _T("ACAD_ISO07W100"), _T("点线"), _T("PUNKT")}},
        {Kind::Other,
         {_T("BORDER"), _T("FENCELINE1"), _T("TRACKS"), _T("ZIGZAG"), _T("HOT_WATER_SUPPLY"),
          _T("ACAD_ISO11W100")}},
    };
    for (const auto& row : rows)
        for (const ACHAR* const name : row.names) {
            bool isKnown = false;
            EXPECT_STREQ(Name(row.kind), Name(KindOfLinetypeName(name, isKnown)))
                << test::Narrow(name);
            EXPECT_TRUE(isKnown) << test::Narrow(name);
        }
    for (const ACHAR* const name : {_T("LT1"), _T("MYLINE"), _T("线型1"), _T("")}) {
        bool isKnown = true;
        EXPECT_EQ(Kind::Continuous, KindOfLinetypeName(name, isKnown));
        EXPECT_FALSE(isKnown) << test::Narrow(name);
    }
}

TEST(LinetypeKind, PatternsOfTheLineTypeFiles) {
    const struct {
        Kind kind;
        std::vector<double> pattern;
    } rows[] = {
        {Kind::Continuous, {}},
        {Kind::Continuous, {1.0}},
        {Kind::Dashed, {0.5, -0.25}},
        {Kind::Dashed, {12, -18}},
        {Kind::Dashed, {3, -1, 2.5, -1}},
        {Kind::Dot, {0, -0.25}},
        {Kind::Centre, {1.25, -0.25, 0.25, -0.25}},
        {Kind::Centre, {0.5, -0.25, 0, -0.25}},
        {Kind::Centre, {24, -3, 0.5, -3}},
        {Kind::Phantom, {1.25, -0.25, 0.25, -0.25, 0.25, -0.25}},
        {Kind::Phantom, {24, -3, 0, -3, 0, -3, 0, -3}},
        {Kind::Other, {0.5, -0.25, 0.5, -0.25, 0, -0.25}},
    };
    for (const auto& row : rows)
        EXPECT_STREQ(Name(row.kind), Name(KindOfLinetypePattern(row.pattern)))
            << row.pattern.size();
}

TEST(LinetypeKind, PatternIsTheSecondWitness) {
    test::TestDrawing d;
    const auto define = [&](const wchar_t* name, const std::vector<double>& pattern) {
        const AcDbObjectId id = d.LinetypeId(name);
        AcDbObjectPointer<AcDbLinetypeTableRecord> record(id, AcDb::kForWrite);
        EXPECT_EQ(Acad::eOk, record->setNumDashes(static_cast<int>(pattern.size())));
        for (size_t i = 0; i < pattern.size(); ++i)
            EXPECT_EQ(Acad::eOk, record->setDashLengthAt(static_cast<int>(i), pattern[i]));
        return id;
    };
    const struct {
        const wchar_t* name;
        std::vector<double> pattern;
        Kind kind;
        bool hasGaps;
    } rows[] = {
        {L"CENTER", {1.25, -0.25, 0.25, -0.25}, Kind::Centre, true},
        {L"CENTER2", {}, Kind::Centre, false},  // a name alone still means one
        {L"LT1", {1.25, -0.25, 0.25, -0.25}, Kind::Centre, true},
        {L"LT2", {0.5, -0.25}, Kind::Dashed, true},
        {L"LT3", {}, Kind::Continuous, false},
        {L"HIDDEN", {12, -3, 0, -3}, Kind::Hidden, true},  // the name is the first witness
        {L"SOLID", {0.5, -0.25}, Kind::Dashed, true},      // what shows gaps is not solid
    };
    CLinetypes linetypes;
    for (const auto& row : rows) {
        const SLinetype& found = linetypes.Look(define(row.name, row.pattern));
        EXPECT_STREQ(Name(row.kind), Name(found.m_kind)) << test::Narrow(row.name);
        EXPECT_EQ(row.hasGaps, found.m_bHasGaps) << test::Narrow(row.name);
        EXPECT_STREQ(row.name, found.m_strName.GetString());
    }
    EXPECT_TRUE(linetypes.Look(AcDbObjectId::kNull).IsContinuous());
    EXPECT_TRUE(linetypes.Look(d.db().continuousLinetype()).IsContinuous());
}

}  // namespace

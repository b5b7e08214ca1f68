// What the dialogs compute and show, without their windows.
#include <gtest/gtest.h>

#include <cmath>

#include "StdAfx.h"

#include "DialogProgress.h"
#include "EncircleValues.h"
#include "GridCtrl/GridCtrl.h"
#include "ToolNumber.h"
#include "host/base/format.h"

AC_IMPLEMENT_EXTENSION_MODULE(theArxDLL);

namespace {

std::string Narrow(const CString& text) { return host::Narrow(text.GetString()); }
CString Wide(const char* text) { return CString(host::Widen(text).c_str()); }

TEST(ToolNumber, TheNextOneCountsTheClosingDigitsUp) {
    const struct {
        const char* number;
        const char* next;
    } cases[] = {
        {"0001", "0002"},
        {"0007", "0008"},
        {"0009", "00010"},  // the zeros stay, the digits behind them grow
        {"9", "10"},
        {"099", "0100"},
        {"T12-8", "T12-9"},
        {"A", "A1"},
        {"", "1"},
        {"D10R2.", "D10R2.1"},
        {"0000", "00001"},
        {"刀具3", "刀具4"},
        {"99999999999999999999", "100000000000000000000"},
    };
    for (const auto& c : cases) EXPECT_EQ(c.next, Narrow(GetNextToolNumber(Wide(c.number))));
}

TEST(ProgressText, TellsWhatIsDoneAndHowLongItTakes) {
    const struct {
        int total, current, failed, elapsed;
        double factor;
        const char* text;
    } cases[] = {
        // Before the first item there is nothing to estimate from.
        {3, 0, 0, 7, 1.0,
         "总计：3个 当前处理:第0个|失败：0个 成功：0个|已经用时：7秒 预计还需：0秒"},
        {3, 2, 0, 10, 1.0,
         "总计：3个 当前处理:第2个|失败：0个 成功：2个|已经用时：10秒 预计还需：5秒"},
        {8, 3, 1, 10, 1.0,
         "总计：8个 当前处理:第3个|失败：1个 成功：2个|已经用时：10秒 预计还需：16秒"},
        {8, 3, 1, 10, 0.5,
         "总计：8个 当前处理:第3个|失败：1个 成功：2个|已经用时：10秒 预计还需：8秒"},
        {0, 0, 0, 0, 1.0,
         "总计：0个 当前处理:第0个|失败：0个 成功：0个|已经用时：0秒 预计还需：0秒"},
    };
    for (const auto& c : cases) {
        CString text = GetProgressText(c.total, c.current, c.failed, c.elapsed, c.factor);
        EXPECT_EQ(_T('\n'), text[0]);
        EXPECT_EQ(_T('\n'), text[text.GetLength() - 1]);
        text.Trim();
        text.Replace(_T("\n"), _T("|"));
        EXPECT_EQ(c.text, Narrow(text));
    }
    EXPECT_EQ("\n总计：4个 失败：1个 成功：3个 用时：10秒 平均：2.500秒/个\n",
              Narrow(GetProgressSummary(4, 1, 10)));
    EXPECT_EQ("\n总计：0个 失败：0个 成功：0个 用时：1秒 平均：0.000秒/个\n",
              Narrow(GetProgressSummary(0, 0, 1)));
}

TEST(GridColumns, AreSharesOfTheWidth) {
    using Widths = std::vector<int>;
    EXPECT_EQ((Widths{54, 167, 113, 113}), GetColumnWidths(_T("12;37;25;25"), 453));
    EXPECT_EQ((Widths{10, 70, 20}), GetColumnWidths(_T("10;+;20"), 100));
    EXPECT_EQ((Widths{90, 0, 90}), GetColumnWidths(_T("90;+;90"), 100)) << "nothing is left";
    EXPECT_EQ((Widths{0}), GetColumnWidths(_T(""), 100));
}

TEST(EncircleValues, GoIntoTheRecordAndComeBack) {
    SEncircleValues values;
    CEncircleCalInfo info;
    values.WriteTo(info);
    EXPECT_EQ(0.0005, info.m_tolPoint.equalPoint());
    EXPECT_EQ(0.0005, info.m_tolPoint.equalVector());
    EXPECT_EQ(1e-6, info.m_tolHorVer.equalVector());
    EXPECT_TRUE(info.m_bExcludeDashed && !info.m_bSideLinesVertical);
    info.m_nHalfSide = 7;  // anything but 0 is the lower half
    info.m_bExcludeDashed = false;
    info.m_bSideLinesVertical = true;
    info.m_tolLine.setEqualPoint(0.002);
    info.m_tolLine.setEqualVector(0.5);
    info.m_dSideLength = -1.0;
    values.ReadFrom(info);
    EXPECT_EQ(1, values.m_nHalf);
    EXPECT_EQ(0, values.m_nExcludeDashed);
    EXPECT_EQ(1, values.m_nSidesVertical);
    EXPECT_EQ(0.002, values.m_dLineTol);
    EXPECT_EQ(-1.0, values.m_dSideLength);
    values.WriteTo(info);
    EXPECT_EQ(1, info.m_nHalfSide);
    EXPECT_EQ(0.002, info.m_tolLine.equalVector());
}

TEST(EncircleValues, NumbersOutsideTheirSenseAreFound) {
    const double nan = std::nan("");
    const struct {
        double SEncircleValues::*value;
        double number;
        bool sound;
    } cases[] = {
        {&SEncircleValues::m_dArcPrecision, 0.0, false},
        {&SEncircleValues::m_dArcPrecision, -0.3, false},
        {&SEncircleValues::m_dArcPrecision, nan, false},
        {&SEncircleValues::m_dArcPrecision, HUGE_VAL, false},
        {&SEncircleValues::m_dArcPrecision, 500.0, true},
        {&SEncircleValues::m_dArcPrecision, 0.0005, false},  // as far apart as points are one
        {&SEncircleValues::m_dArcPrecision, 0.0006, true},
        {&SEncircleValues::m_dSideLength, 0.0, true},
        {&SEncircleValues::m_dSideLength, -1e-9, false},
        {&SEncircleValues::m_dPointTol, 0.0, false},
        {&SEncircleValues::m_dPointTol, 100.0, false},  // as large as the drawing
        {&SEncircleValues::m_dLineTol, 99.0, true},
        {&SEncircleValues::m_dHorVerTol, -1.0, false},
    };
    for (const auto& c : cases) {
        SEncircleValues values;
        values.*c.value = c.number;
        const SValueField* const fault = values.FindFault(100.0);
        EXPECT_EQ(c.sound, fault == nullptr) << c.number;
        EXPECT_TRUE(fault == nullptr || fault->m_pValue == c.value);
    }
    SEncircleValues values;
    values.m_dLineTol = 100.0;
    EXPECT_EQ(nullptr, values.FindFault(0.0)) << "an empty drawing has no size";
}

}  // namespace

// The module's own dialogs: every control that the code and the scripts name, and layouts that no
// text outgrows.
#include <algorithm>

#include "host/mfc/dialog_builder.h"
#include "mfc/support.h"

using namespace host;

namespace {

// One line a control: number, class, text. Static labels and frames have no number.
struct DialogCase {
    int id;
    const char* caption;
    std::vector<std::string> controls;
};
const DialogCase kDialogs[] = {
    {186,
     "包络线计算",
     {"1008 radio 上半边", "1009 radio 下半边", "1010 check 是否排除虚线",
      "1012 check 是否删除包络线", "1013 check 是否删除三维模型", "1014 check 左右包络线是否竖直",
      "1007 edit ", "1022 edit ", "1024 edit ", "1023 edit ", "1026 edit ",
      "1021 button 选择刀具图", "1025 button 选择包络线导出3D", "1011 hidden 算法1"}},
    {188,
     "批量生成包络线",
     {"1041 button 任务", "1017 list ", "1018 button 新建任务", "1019 button 执行任务",
      "1020 button 删除任务", "1035 button 导出3D(多)", "1024 button 参数设置",
      "1025 button 删除包络线(多)", "1042 button 刀具", "1021 list ", "1022 button 新增刀具",
      "1032 button 删除刀具", "1037 button 计算包络线", "1036 button 导出3D(单)",
      "1033 button 高亮刀具", "1034 button 高亮包络线", "1038 button 取消所有高亮",
      "1039 button 删除包络线(单)"}},
    {190, "输入名称", {"1040 edit ", "1 button 确定"}},
    {207, "任务进度", {"1602 progress ", "1603 label "}},
    {241,
     "包络线参数设置",
     {"1008 radio 上半边", "1009 radio 下半边", "1010 check 是否排除虚线",
      "1014 check 左右包络线是否竖直", "1007 edit ", "1022 edit ", "1024 edit ", "1023 edit ",
      "1026 edit ", "1 button 确定"}},
};

std::string KindOf(const Window& control) {
    if (!control.Has(WS_VISIBLE)) return "hidden";
    if (control.IsRadio()) return "radio";
    if (control.IsCheckBox()) return "check";
    static const char* const kNames[] = {"dialog", "button", "edit", "label", "progress", "list"};
    return kNames[static_cast<int>(control.kind)];
}

class ModuleDialogs : public test::HostTest {
protected:
    ModuleDialogs() { UseModuleScript(); }
};

TEST_F(ModuleDialogs, HoldEveryControl) {
    for (const DialogCase& c : kDialogs) {
        SCOPED_TRACE(c.id);
        CDialogEx dialog;
        ASSERT_TRUE(dialog.Create(static_cast<UINT>(c.id)));
        EXPECT_FALSE(dialog.IsWindowVisible());
        const Window& window = *System().Find(dialog.m_hWnd);
        EXPECT_EQ(test::Narrow(window.text), c.caption);
        std::vector<std::string> controls;
        for (const Window* const control : window.children)
            if (control->id != -1)
                controls.push_back(std::to_string(control->id) + " " + KindOf(*control) + " " +
                                   test::Narrow(control->text));
        EXPECT_EQ(controls, c.controls);
        // A run cannot be closed away; everything else can.
        EXPECT_EQ(window.Has(WS_SYSMENU), c.id != 207);
    }
}

std::vector<std::string> LabelsOf(const DialogTemplate& dialog) {
    std::vector<std::string> labels;
    for (const ControlTemplate& control : dialog.controls)
        if (control.windowClass == L"static" && control.id == -1)
            labels.push_back(test::Narrow(control.text));
    return labels;
}

TEST_F(ModuleDialogs, LabelsHeadTheirRows) {
    std::wstring reason;
    const std::vector<std::string> precision = {"点公差：", "线公差：", "水平竖直线判断公差：",
                                                "圆弧离散精度：", "左右识别长度："};
    std::vector<std::string> single = {"计算方位：", "排除虚线：", "删除包络线：", "删除三维模型：",
                                       "包络线："};
    std::vector<std::string> params = {"计算方位：", "排除虚线：", "包络线："};
    single.insert(single.end(), precision.begin(), precision.end());
    params.insert(params.end(), precision.begin(), precision.end());
    EXPECT_EQ(LabelsOf(*FindDialog(AfxGetInstanceHandle(), 186, reason)), single);
    EXPECT_EQ(LabelsOf(*FindDialog(AfxGetInstanceHandle(), 241, reason)), params);
    EXPECT_EQ(LabelsOf(*FindDialog(AfxGetInstanceHandle(), 190, reason)),
              std::vector<std::string>{"名称:"});
}

bool IsFrame(const ControlTemplate& control) {
    return control.windowClass == L"button" && (control.style & BS_TYPEMASK) == BS_GROUPBOX;
}

// A Chinese letter takes 8 units with the narrowest of the usual dialog fonts, a Latin one 5; a
// button keeps 8 units for its edges, a check box 14 for its mark.
int UnitsOf(const ControlTemplate& control) {
    int units = 0;
    for (const wchar_t ch : control.text) units += ch < 0x80 ? 5 : 8;
    if (control.windowClass == L"static") return units;
    const UINT type = control.style & BS_TYPEMASK;
    return units + (type == BS_PUSHBUTTON || type == BS_DEFPUSHBUTTON ? 8 : 14);
}

TEST_F(ModuleDialogs, NothingOverlapsOrIsCutOff) {
    std::wstring reason;
    for (const DialogCase& c : kDialogs) {
        const DialogTemplate& dialog = *FindDialog(AfxGetInstanceHandle(), c.id, reason);
        const CRect inside(0, 0, dialog.place.right, dialog.place.bottom);
        for (std::size_t i = 0; i < dialog.controls.size(); ++i) {
            const ControlTemplate& one = dialog.controls[i];
            SCOPED_TRACE("line " + std::to_string(one.line));
            const CRect place(one.place);
            EXPECT_TRUE(place.left >= 7 && place.top >= 7 && place.right <= inside.right - 7 &&
                        place.bottom <= inside.bottom - 6);
            if (!(one.style & WS_VISIBLE)) continue;
            if (!IsFrame(one)) {
                EXPECT_LE(UnitsOf(one), place.Width()) << test::Narrow(one.text);
            }
            for (std::size_t j = 0; j < i; ++j) {
                const ControlTemplate& other = dialog.controls[j];
                const CRect rect(other.place);
                const bool apart = place.left >= rect.right || rect.left >= place.right ||
                                   place.top >= rect.bottom || rect.top >= place.bottom;
                const bool within = IsFrame(other) && place.left > rect.left &&
                                    place.right < rect.right && place.top > rect.top + 8 &&
                                    place.bottom < rect.bottom;
                EXPECT_TRUE(apart || within) << "meets line " << other.line;
            }
        }
    }
}

// Tab goes down the rows (and from left to right in one), through every control that takes input.
TEST_F(ModuleDialogs, TabOrderFollowsTheEye) {
    for (const DialogCase& c : kDialogs) {
        if (c.id == 207 || c.id == 188) continue;
        SCOPED_TRACE(c.id);
        CDialogEx dialog;
        ASSERT_TRUE(dialog.Create(static_cast<UINT>(c.id)));
        dialog.ShowWindow(SW_SHOW);
        const HWND first = ::GetFocus();
        HWND at = first;
        int stops = 0;
        do {
            const HWND next = ::GetNextDlgTabItem(dialog.m_hWnd, at, FALSE);
            CRect here;
            CRect there;
            ::GetWindowRect(at, &here);
            ::GetWindowRect(next, &there);
            if (next != first) {
                EXPECT_TRUE(there.top >= here.bottom ||
                            (there.bottom > here.top && there.left >= here.right));
            }
            at = next;
            ++stops;
        } while (at != first && stops < 100);
        // The two radio buttons are one stop; the hidden button is none.
        const auto& all = c.controls;
        const auto skipped = std::count_if(all.begin(), all.end(), [](const std::string& line) {
            return line.find("hidden") != line.npos || line.find("1009 radio") != line.npos;
        });
        EXPECT_EQ(stops, static_cast<int>(all.size() - static_cast<std::size_t>(skipped)));
    }
}

// The grids' widths are shares of the client width that the dialog gives them.
TEST_F(ModuleDialogs, PixelsComeFromTheFont) {
    CDialogEx dialog;
    ASSERT_TRUE(dialog.Create(188));
    CRect client;
    dialog.GetDlgItem(1017)->GetClientRect(client);
    // 260 units of 7/4 pixels, less a border of one pixel on each side.
    EXPECT_EQ(client.Width(), 455 - 2);
    const LOGFONT small = {-11, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, L""};
    EXPECT_EQ(BaseUnitsOf(small).x, 6);
    EXPECT_EQ(BaseUnitsOf(small).y, 13);
}

}  // namespace

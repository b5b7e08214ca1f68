// Data exchange: which texts are numbers, what a failure does, groups of radio buttons.
#include <climits>
#include <cmath>

#include "mfc/support.h"

namespace {

class CValuesDlg : public CDialogEx {
public:
    explicit CValuesDlg(CWnd* pParent = nullptr) : CDialogEx(100, pParent) {}
    double m_dReal = 7;
    int m_nWhole = 7;
    CString m_strText = _T("before");
    int m_nCheck = 0;
    int m_nRadio = 0;
    int m_nMissing = 0;  // number of a control that is exchanged too
    int m_nChanges = 0;  // EN_CHANGE told to the dialog

    void OnEditChange() { ++m_nChanges; }

protected:
    void DoDataExchange(CDataExchange* pDX) override {
        CDialogEx::DoDataExchange(pDX);
        DDX_Text(pDX, 1, m_strText);
        DDX_Text(pDX, 2, m_dReal);
        DDX_Text(pDX, 3, m_nWhole);
        DDX_Check(pDX, 4, m_nCheck);
        DDX_Radio(pDX, 5, m_nRadio);
        if (m_nMissing != 0) DDX_Text(pDX, m_nMissing, m_strText);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CValuesDlg, CDialogEx)
ON_EN_CHANGE(2, &CValuesDlg::OnEditChange)
END_MESSAGE_MAP()

constexpr const char* kControls =
    "EDITTEXT 1, 1,1,50,12\nEDITTEXT 2, 1,20,50,12\nEDITTEXT 3, 1,40,50,12\n"
    "CONTROL \"c\", 4, \"Button\", BS_AUTO3STATE | WS_GROUP | WS_TABSTOP, 1,60,50,12\n"
    "CONTROL \"r\", 5, \"Button\", BS_AUTORADIOBUTTON | WS_GROUP | WS_TABSTOP, 1,70,20,12\n"
    "CONTROL \"x\", 9, \"Static\", 0, 30,70,20,12\n"
    "CONTROL \"r\", 6, \"Button\", BS_AUTORADIOBUTTON, 60,70,20,12\n"
    "CONTROL \"r\", 7, \"Button\", BS_AUTORADIOBUTTON | WS_GROUP, 90,70,20,12\n";

class DataExchange : public test::HostTest {
protected:
    DataExchange() {
        UseDialog(kControls);
        EXPECT_TRUE(m_dialog.Create(100));
        m_dialog.ShowWindow(SW_SHOW);
    }
    std::string TextOf(int id) {
        CString text;
        m_dialog.GetDlgItemText(id, text);
        return test::Narrow(text);
    }
    CValuesDlg m_dialog;
};

struct NumberCase {
    const wchar_t* text;
    bool isReal;
    double real;
    bool isWhole;
    int whole;
};
const NumberCase kNumbers[] = {
    {L"0.0005", true, 0.0005, false, 0},
    {L"1e-06", true, 1e-6, false, 0},
    {L"-2.5E+1", true, -25, false, 0},
    {L"  3\t ", true, 3, true, 3},
    {L"+4", true, 4, true, 4},
    {L"0", true, 0, true, 0},
    {L"0.0", true, 0, false, 0},
    {L"007", true, 7, true, 7},
    // A zero begins with its digit, because a text without a number reads as zero.
    {L".0", false, 0, false, 0},
    {L"-0.0", false, 0, false, 0},
    {L".5", true, 0.5, false, 0},
    {L"", false, 0, false, 0},
    {L"   ", false, 0, false, 0},
    {L"abc", false, 0, false, 0},
    {L"1,5", false, 0, false, 0},
    {L"1 2", false, 0, false, 0},
    {L"3mm", false, 0, false, 0},
    {L"1e", false, 0, false, 0},
    {L"--1", false, 0, false, 0},
    {L"nan", false, 0, false, 0},
    {L"inf", false, 0, false, 0},
    {L"0x10", false, 0, false, 0},
    {L"1e400", false, 0, false, 0},
    {L"２", false, 0, false, 0},
    {L"2147483647", true, INT_MAX, true, INT_MAX},
    {L"-2147483648", true, INT_MIN, true, INT_MIN},
    {L"2147483648", true, 2147483648.0, false, 0},
    {L"99999999999999999999", true, 1e20, false, 0},
};

TEST_F(DataExchange, Numbers) {
    for (const NumberCase& c : kNumbers) {
        SCOPED_TRACE(test::Narrow(std::wstring(c.text)));
        script.boxes.clear();
        m_dialog.m_dReal = m_dialog.m_nWhole = 7;
        m_dialog.SetDlgItemText(2, c.text);
        m_dialog.SetDlgItemText(3, L"1");
        m_dialog.GotoDlgCtrl(m_dialog.GetDlgItem(1));
        EXPECT_EQ(m_dialog.UpdateData(TRUE), c.isReal ? TRUE : FALSE);
        EXPECT_DOUBLE_EQ(m_dialog.m_dReal, c.isReal ? c.real : 7);
        if (!c.isReal) {
            EXPECT_EQ(script.boxes, std::vector<std::string>{"Please enter a number."});
            EXPECT_EQ(::GetDlgCtrlID(::GetFocus()), 2);
        }
        script.boxes.clear();
        m_dialog.m_nWhole = 7;
        m_dialog.SetDlgItemText(2, L"1");
        m_dialog.SetDlgItemText(3, c.text);
        EXPECT_EQ(m_dialog.UpdateData(TRUE), c.isWhole ? TRUE : FALSE);
        EXPECT_EQ(m_dialog.m_nWhole, c.isWhole ? c.whole : 7);
        if (!c.isWhole) {
            EXPECT_EQ(script.boxes, std::vector<std::string>{"Please enter an integer."});
            EXPECT_EQ(::GetDlgCtrlID(::GetFocus()), 3);
        }
    }
}

TEST_F(DataExchange, NumbersAreShownWithFifteenDigits) {
    const struct {
        double value;
        const char* text;
    } kCases[] = {{0.0005, "0.0005"}, {1e-6, "1e-06"},         {0.3, "0.3"},
                  {5, "5"},           {-0.001, "-0.001"},      {1.0 / 3, "0.333333333333333"},
                  {1e15, "1e+15"},    {123456789, "123456789"}};
    for (const auto& c : kCases) {
        m_dialog.m_dReal = c.value;
        ASSERT_TRUE(m_dialog.UpdateData(FALSE));
        EXPECT_EQ(TextOf(2), c.text);
    }
}

// Exchanges before the failing one have changed their members, later ones have not.
TEST_F(DataExchange, AFailureStopsHalfWay) {
    m_dialog.SetDlgItemText(1, L"after");
    m_dialog.SetDlgItemText(2, L"bad");
    m_dialog.SetDlgItemText(3, L"8");
    m_dialog.CheckDlgButton(4, BST_CHECKED);
    EXPECT_FALSE(m_dialog.UpdateData(TRUE));
    EXPECT_EQ(m_dialog.m_strText, _T("after"));
    EXPECT_EQ(m_dialog.m_dReal, 7);
    EXPECT_EQ(m_dialog.m_nWhole, 7);
    EXPECT_EQ(m_dialog.m_nCheck, 0);
    // The bad text is selected, to be typed over.
    int start = 0;
    int end = 0;
    static_cast<CEdit*>(m_dialog.GetDlgItem(2))->GetSel(start, end);
    EXPECT_EQ(start, 0);
    EXPECT_EQ(end, 3);
}

// The group ends before the next control with WS_GROUP; what is no radio button does not count.
TEST_F(DataExchange, RadioGroups) {
    for (const int value : {-1, 0, 1}) {
        m_dialog.m_nRadio = value;
        ASSERT_TRUE(m_dialog.UpdateData(FALSE));
        EXPECT_EQ(m_dialog.IsDlgButtonChecked(5), value == 0 ? 1u : 0u);
        EXPECT_EQ(m_dialog.IsDlgButtonChecked(6), value == 1 ? 1u : 0u);
        m_dialog.CheckDlgButton(7, BST_CHECKED);
        m_dialog.m_nRadio = 42;
        ASSERT_TRUE(m_dialog.UpdateData(TRUE));
        EXPECT_EQ(m_dialog.m_nRadio, value);
    }
}

TEST_F(DataExchange, CheckBoxes) {
    for (const int value : {0, 1, 2}) {
        m_dialog.m_nCheck = value;
        ASSERT_TRUE(m_dialog.UpdateData(FALSE));
        m_dialog.m_nCheck = 9;
        ASSERT_TRUE(m_dialog.UpdateData(TRUE));
        EXPECT_EQ(m_dialog.m_nCheck, value);
    }
    m_dialog.m_nCheck = 3;
    ASSERT_TRUE(m_dialog.UpdateData(FALSE));
    EXPECT_EQ(m_dialog.IsDlgButtonChecked(4), 0u);
}

TEST_F(DataExchange, AMissingControlIsNamed) {
    m_dialog.m_nMissing = 55;
    EXPECT_FALSE(m_dialog.UpdateData(TRUE));
    EXPECT_EQ(script.boxes, std::vector<std::string>{"The dialog 100 has no control 55."});
}

// Loading is no editing: the dialog hears of its own exchange nothing.
TEST_F(DataExchange, ControlsAreQuietMeanwhile) {
    m_dialog.m_dReal = 3;
    ASSERT_TRUE(m_dialog.UpdateData(FALSE));
    EXPECT_EQ(m_dialog.m_nChanges, 0);
    m_dialog.SetDlgItemText(2, L"4");
    EXPECT_EQ(m_dialog.m_nChanges, 1);
}

}  // namespace

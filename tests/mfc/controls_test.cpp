// Lists, progress bars, texts and the operations of scripts on them.
#include "mfc/support.h"
#include "shlobj.h"

namespace {

class Controls : public test::HostTest {
protected:
    Controls() {
        UseDialog(
            "CONTROL \"\", 30, \"SysListView32\", LVS_REPORT | WS_BORDER | WS_TABSTOP, 1,1,100,50\n"
            "CONTROL \"\", 31, \"SysListView32\", LVS_REPORT | LVS_SINGLESEL, 110,1,80,50\n"
            "CONTROL \"\", 32, \"msctls_progress32\", 0, 1,60,100,10\n"
            "LTEXT \"&Label\", 33, 1,75,50,10\nEDITTEXT 34, 60,75,50,12, ES_READONLY\n"
            "CONTROL \"c\", 35, \"Button\", BS_AUTOCHECKBOX, 120,75,20,12\n"
            "CONTROL \"r\", 36, \"Button\", BS_AUTORADIOBUTTON | WS_GROUP, 150,75,20,12\n"
            "CONTROL \"r\", 37, \"Button\", BS_AUTORADIOBUTTON, 175,75,20,12\n"
            "PUSHBUTTON \"p\", 38, 1,88,30,12, WS_DISABLED\nEDITTEXT 39, 60,88,50,12\n");
        EXPECT_TRUE(m_dialog.Create(100));
        m_dialog.ShowWindow(SW_SHOW);
        EXPECT_TRUE(m_list.SubclassDlgItem(30, &m_dialog));
        EXPECT_TRUE(m_bar.SubclassDlgItem(32, &m_dialog));
    }
    void FillList(CListCtrl& list, int rows) {
        list.InsertColumn(0, L"one", LVCFMT_LEFT, 40);
        list.InsertColumn(1, L"two", LVCFMT_LEFT, 60);
        for (int i = 0; i < rows; ++i) {
            EXPECT_EQ(list.InsertItem(i, std::to_wstring(i).c_str()), i);
            EXPECT_TRUE(list.SetItemText(i, 1, L"b"));
        }
    }
    CDialogEx m_dialog;
    CListCtrl m_list;
    CProgressCtrl m_bar;
};

TEST_F(Controls, ListColumnsAndRows) {
    FillList(m_list, 2);
    EXPECT_EQ(m_list.InsertColumn(99, L"last"), 2) << "behind the others";
    EXPECT_EQ(m_list.InsertItem(1, L"middle"), 1);
    EXPECT_EQ(m_list.GetColumnWidth(1), 60);
    EXPECT_TRUE(m_list.SetColumnWidth(1, 70));
    EXPECT_EQ(m_list.GetColumnWidth(1), 70);
    std::vector<std::vector<std::wstring>> rows;
    ASSERT_TRUE(host::ListRows(100, 30, rows));
    EXPECT_EQ(rows, (std::vector<std::vector<std::wstring>>{
                        {L"0", L"b", L""}, {L"middle", L"", L""}, {L"1", L"b", L""}}));
    EXPECT_TRUE(m_list.DeleteColumn(0));
    EXPECT_EQ(m_list.GetItemText(0, 0), _T("b"));
    // What is not there: refused, and nothing changes.
    EXPECT_FALSE(m_list.SetItemText(7, 0, L"x"));
    EXPECT_FALSE(m_list.SetItemText(0, 7, L"x"));
    EXPECT_FALSE(m_list.DeleteColumn(7));
    EXPECT_FALSE(m_list.DeleteItem(-1));
    EXPECT_EQ(m_list.GetItemText(7, 0), _T(""));
    EXPECT_EQ(m_list.InsertItem(-1, L"x"), -1);
    EXPECT_EQ(m_list.GetItemCount(), 3);
    EXPECT_TRUE(m_list.DeleteAllItems());
    EXPECT_EQ(m_list.GetItemCount(), 0);
    while (m_list.DeleteColumn(0)) {
    }
    std::vector<std::wstring> headers;
    ASSERT_TRUE(host::ListHeaders(100, 30, headers));
    EXPECT_TRUE(headers.empty());
}

TEST_F(Controls, ListSelection) {
    FillList(m_list, 4);
    m_list.SetItemState(1, LVIS_SELECTED, LVIS_SELECTED);
    m_list.SetItemState(3, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    m_list.SetItemState(2, LVIS_FOCUSED, LVIS_FOCUSED);
    EXPECT_EQ(m_list.GetItemState(3, LVIS_SELECTED | LVIS_FOCUSED), LVIS_SELECTED)
        << "one row has the focus";
    std::vector<int> rows;
    for (POSITION at = m_list.GetFirstSelectedItemPosition(); at != nullptr;)
        rows.push_back(m_list.GetNextSelectedItem(at));
    EXPECT_EQ(rows, (std::vector<int>{1, 3}));
    EXPECT_EQ(m_list.GetNextItem(-1, LVNI_SELECTED), 1);
    EXPECT_EQ(m_list.GetNextItem(3, LVNI_SELECTED), -1);
    m_list.InsertItem(0, L"new");
    ASSERT_TRUE(host::SelectedRows(100, 30, rows));
    EXPECT_EQ(rows, (std::vector<int>{3, 5})) << "a state belongs to its row";
    m_list.SetItemState(-1, 0, LVIS_SELECTED);
    EXPECT_EQ(m_list.GetSelectedCount(), 0u);
    CListCtrl& single = *static_cast<CListCtrl*>(m_dialog.GetDlgItem(31));
    FillList(single, 3);
    single.SetItemState(0, LVIS_SELECTED, LVIS_SELECTED);
    single.SetItemState(2, LVIS_SELECTED, LVIS_SELECTED);
    EXPECT_EQ(single.GetSelectedCount(), 1u);
    EXPECT_EQ(single.GetNextItem(-1, LVNI_SELECTED), 2);
}

TEST_F(Controls, ProgressRanges) {
    const struct {
        int total;
        int high;  // of the range: the total's lower 16 bits
    } kCases[] = {{100, 100}, {0, 0}, {40000, 40000}, {65535, 65535}, {70000, 4464}};
    for (const auto& c : kCases) {
        m_bar.SetRange(0, static_cast<short>(c.total));
        int low = -1;
        int high = -1;
        m_bar.GetRange(low, high);
        EXPECT_EQ(low, 0);
        EXPECT_EQ(high, c.high);
    }
    m_bar.SetRange32(-10, 1000000);
    EXPECT_EQ(m_bar.SetPos(500), 0);
    EXPECT_EQ(m_bar.SetPos(2000000), 500);
    EXPECT_EQ(m_bar.GetPos(), 1000000);
    m_bar.SetPos(-99);
    EXPECT_EQ(m_bar.GetPos(), -10);
    m_bar.SetRange32(0, 25);
    EXPECT_EQ(m_bar.GetPos(), 0) << "cut to the new range";
    m_bar.SetStep(20);
    m_bar.StepIt();
    EXPECT_EQ(m_bar.GetPos(), 20);
    m_bar.StepIt();
    EXPECT_EQ(m_bar.GetPos(), 0) << "begins again behind the end";
    m_bar.OffsetPos(7);
    EXPECT_EQ(m_bar.GetPos(), 7);
}

TEST_F(Controls, FontsOutliveTheirUse) {
    EXPECT_NE(m_dialog.GetFont(), nullptr);
    EXPECT_EQ(m_bar.GetFont(), m_dialog.GetFont()) << "controls share the dialog's";
    LOGFONT description;
    ASSERT_NE(m_dialog.GetFont()->GetLogFont(&description), 0);
    EXPECT_EQ(description.lfHeight, -12) << "9 points";
    {
        CFont own;
        ASSERT_TRUE(own.CreatePointFont(120, L"Serif"));
        m_bar.SetFont(&own);
        EXPECT_EQ(m_bar.GetFont(), &own);
    }
    EXPECT_EQ(m_bar.GetFont(), nullptr);
}

TEST_F(Controls, NumbersInTexts) {
    m_dialog.SetDlgItemInt(39, static_cast<UINT>(-5));
    BOOL ok = FALSE;
    EXPECT_EQ(static_cast<int>(m_dialog.GetDlgItemInt(39, &ok)), -5);
    EXPECT_TRUE(ok);
    m_dialog.GetDlgItemInt(39, &ok, FALSE);
    EXPECT_FALSE(ok);
    m_dialog.SetDlgItemText(39, L"99999999999");
    m_dialog.GetDlgItemInt(39, &ok);
    EXPECT_FALSE(ok);
    wchar_t buffer[4];
    EXPECT_EQ(m_dialog.GetDlgItem(39)->GetWindowText(buffer, 4), 3);
    EXPECT_STREQ(buffer, L"999");
}

struct ProbeCase {
    const char* name;
    std::function<host::ProbeResult()> act;
    const char* reason;  // empty: done
};

TEST_F(Controls, ScriptsDoWhatAPersonCould) {
    std::wstring value;
    std::vector<std::vector<std::wstring>> rows;
    const ProbeCase cases[] = {
        {"unknown dialog", [] { return host::PressControl(7, 1); }, "there is no dialog 7"},
        {"unknown control", [] { return host::PressControl(100, 1); },
         "there is no control 1 of dialog 100"},
        {"disabled button", [] { return host::PressControl(100, 38); },
         "control 38 of dialog 100 is disabled"},
        {"no button", [] { return host::PressControl(100, 33); },
         "control 33 of dialog 100 is no button"},
        {"read-only text", [] { return host::SetControl(100, 34, L"x"); },
         "control 34 of dialog 100 is for reading only"},
        {"label", [] { return host::SetControl(100, 33, L"x"); },
         "control 33 of dialog 100 cannot be set"},
        {"text", [] { return host::SetControl(100, 39, L"包络 x"); }, ""},
        {"check", [] { return host::SetControl(100, 35, L"1"); }, ""},
        {"check again", [] { return host::SetControl(100, 35, L"1"); }, ""},
        {"check box without a third state", [] { return host::SetControl(100, 35, L"2"); },
         "control 35 of dialog 100 has no state 2"},
        {"radio", [] { return host::SetControl(100, 36, L"1"); }, ""},
        {"radio off", [] { return host::SetControl(100, 36, L"0"); },
         "control 36 of dialog 100 is a radio button: press another one instead"},
        {"list as text", [&] { return host::GetControl(100, 30, value); },
         "control 30 of dialog 100 is a list: ask for its rows"},
        {"rows of no list", [&] { return host::ListRows(100, 39, rows); },
         "control 39 of dialog 100 is no list"},
        {"row that is not there", [] { return host::SelectRows(100, 30, {1}); },
         "control 30 of dialog 100 has 0 rows, no 1"},
        {"picture without a display", [] { return host::SaveScreenshot(L"x.png"); },
         "there is no display to take a picture of"},
    };
    for (const ProbeCase& c : cases) {
        SCOPED_TRACE(c.name);
        const host::ProbeResult result = c.act();
        EXPECT_EQ(test::Narrow(result.reason), c.reason);
        EXPECT_EQ(result.ok, *c.reason == 0);
    }
    const std::pair<int, const wchar_t*> kStates[] = {
        {39, L"包络 x"}, {36, L"1"}, {37, L"0"}, {33, L"&Label"}, {32, L"0"}};
    for (const auto& [id, expected] : kStates) {
        EXPECT_TRUE(host::GetControl(100, id, value));
        EXPECT_EQ(value, expected);
    }
    EXPECT_TRUE(host::PressControl(100, 37));
    EXPECT_EQ(m_dialog.IsDlgButtonChecked(36), 0u) << "the others of the group go out";
    EXPECT_EQ(::GetDlgCtrlID(::GetFocus()), 37);
    m_dialog.EnableWindow(FALSE);
    EXPECT_EQ(host::PressControl(100, 35).reason, L"dialog 100 waits for a dialog in front of it");
    UseDialog("", "WS_POPUP | WS_CAPTION");
    m_dialog.DestroyWindow();
    CDialogEx plain;
    ASSERT_TRUE(plain.Create(100));
    plain.ShowWindow(SW_SHOW);
    EXPECT_EQ(host::CloseDialog(100).reason, L"dialog 100 has no close box");
}

struct FileCase {
    const wchar_t* path;
    const wchar_t* name;
    const wchar_t* title;
    const wchar_t* extension;
    const wchar_t* folder;
    const wchar_t* whole;
};

TEST_F(Controls, FileChooser) {
    const FileCase cases[] = {
        {L"/a.b/tool", L"tool.sat", L"tool", L"sat", L"/a.b", L"/a.b/tool.sat"},
        {L"C:\\out\\t.SAT", L"t.SAT", L"t", L"SAT", L"C:\\out", L"C:\\out\\t.SAT"},
        {L"/x.y.z", L"x.y.z", L"x.y", L"z", L"/", L"/x.y.z"},
        {L"C:\\刀具", L"刀具.sat", L"刀具", L"sat", L"C:\\", L"C:\\刀具.sat"},
    };
    for (const FileCase& c : cases) {
        SCOPED_TRACE(test::Narrow(std::wstring(c.path)));
        CFileDialog dialog(FALSE, _T("sat"), _T("0001"), OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT,
                           _T("SAT (*.sat)|*.sat|All (*.*)|*.*||"));
        dialog.m_ofn.lpstrTitle = _T("Save");
        script.paths = {c.path};
        EXPECT_EQ(dialog.DoModal(), IDOK);
        EXPECT_EQ(dialog.GetPathName(), c.whole);
        EXPECT_EQ(dialog.GetFileName(), c.name);
        EXPECT_EQ(dialog.GetFileTitle(), c.title);
        EXPECT_EQ(dialog.GetFileExt(), c.extension);
        EXPECT_EQ(dialog.GetFolderPath(), c.folder);
    }
    const host::ChooserRequest& asked = script.choosers.at(0);
    EXPECT_TRUE(asked.isSave && asked.asksBeforeOverwriting);
    EXPECT_EQ(asked.title, L"Save");
    EXPECT_EQ(asked.start, L"0001");
    EXPECT_EQ(asked.filters,
              (std::vector<host::FileFilter>{{L"SAT (*.sat)", L"*.sat"}, {L"All (*.*)", L"*.*"}}));
    CFileDialog cancelled(TRUE);
    script.paths = {L""};
    EXPECT_EQ(cancelled.DoModal(), IDCANCEL);
    EXPECT_EQ(cancelled.GetPathName(), _T(""));
}

// One without a parent may come to lie behind the host's window, and is told of; the others are
// not.
TEST_F(Controls, ChoosersWithoutParentAreReported) {
    script.paths = {L"/a.sat", L"/a.sat", L"/out", L"/out"};
    CFileDialog lost(FALSE, _T("sat"));
    lost.m_ofn.lpstrTitle = _T("Save");
    EXPECT_EQ(lost.DoModal(), IDOK);
    CFileDialog kept(FALSE, _T("sat"), nullptr, OFN_HIDEREADONLY, nullptr, &m_dialog);
    EXPECT_EQ(kept.DoModal(), IDOK);
    EXPECT_EQ(reports, std::vector<std::string>{"a chooser has no parent: Save"});
    CFolderPickerDialog lostFolder;
    EXPECT_EQ(lostFolder.DoModal(), IDOK);
    CFolderPickerDialog keptFolder(nullptr, 0, &m_dialog);
    EXPECT_EQ(keptFolder.DoModal(), IDOK);
    EXPECT_EQ(reports.size(), 2u);
}

TEST_F(Controls, FolderChoosers) {
    const std::pair<const wchar_t*, const wchar_t*> kCases[] = {
        {L"/out/", L"/out"}, {L"/", L"/"}, {L"C:\\", L"C:\\"}, {L"C:\\out\\", L"C:\\out"}};
    for (const auto& [chosen, path] : kCases) {
        CFolderPickerDialog dialog;
        script.paths = {chosen, chosen};
        EXPECT_EQ(dialog.DoModal(), IDOK);
        EXPECT_EQ(dialog.GetPathName(), path);
        EXPECT_EQ(dialog.GetFolderPath(), path);
        wchar_t name[MAX_PATH];
        wchar_t whole[MAX_PATH];
        BROWSEINFO info = {};
        info.lpszTitle = L"prompt";
        info.pszDisplayName = name;
        LPITEMIDLIST const item = SHBrowseForFolder(&info);
        ASSERT_TRUE(SHGetPathFromIDList(item, whole));
        EXPECT_STREQ(whole, path);
        CoTaskMemFree(item);
    }
    EXPECT_EQ(script.choosers.back().title, L"prompt");
    CFolderPickerDialog cancelled;
    EXPECT_EQ(cancelled.DoModal(), IDCANCEL);
}

TEST_F(Controls, MessageBoxes) {
    script.buttons = {IDNO};
    EXPECT_EQ(AfxMessageBox(_T("question"), MB_YESNO | MB_ICONQUESTION), IDNO);
    EXPECT_EQ(m_dialog.MessageBox(_T("told"), _T("title")), IDOK);
    EXPECT_EQ(script.boxes, (std::vector<std::string>{"question", "told"}));
    // Without script and display the first button answers, and nothing waits for ever.
    System().SetAnswers(nullptr);
    EXPECT_EQ(AfxMessageBox(_T("again"), MB_YESNO), IDYES);
    MSG msg;
    EXPECT_FALSE(::GetMessage(&msg, nullptr, 0, 0));
    System().SetAnswers(&script);
}

}  // namespace

// The dialogs as real windows, on Qt's offscreen platform.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QTimer>
#include <cstdlib>

#include "afxcmn.h"
#include "afxdialogex.h"
#include "host/mfc/dialog_probe.h"
#include "host/mfc/host_frame.h"
#include "host/mfc/qt/qt_window_driver.h"
#include "host/mfc/resources.h"
#include "support/scratch.h"
#include "support/offscreen_application.h"

using namespace host;

namespace {

using test::Application;

class Display : public ::testing::Test {
protected:
    Display() {
        Application();
        SetResourceScript(AfxGetInstanceHandle(), L"plugin/ui/res/QZEncircleLine.rc");
        MakeHostWindows();
        m_driver = std::make_unique<QtWindowDriver>();
        WindowSystem::Get().SetDriver(m_driver.get());
    }
    ~Display() override {
        CloseHostWindows();
        m_driver->Poll();
        m_driver.reset();
    }

    static QWidget* Shown(const CWnd& dialog) {
        CString title;
        dialog.GetWindowText(title);
        for (QWidget* const widget : QApplication::topLevelWidgets())
            if (widget->isVisible() && widget->windowTitle().toStdWString() == title.GetString())
                return widget;
        return nullptr;
    }
    // The control's widget: the one that lies where the control lies.
    static QWidget* WidgetOf(const CWnd& dialog, int id) {
        QWidget* const window = Shown(dialog);
        if (window == nullptr) return nullptr;
        const CRect place(WindowSystem::Get().Find(::GetDlgItem(dialog.m_hWnd, id))->bounds);
        for (QWidget* const child : window->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
            if (child->geometry().topLeft() == QPoint(place.left, place.top)) return child;
        return nullptr;
    }

    std::unique_ptr<QtWindowDriver> m_driver;
};

void Fill(CDialogEx& dialog, UINT id) {
    if (id == 186 || id == 241) {
        const struct {
            int id;
            const wchar_t* text;
        } kValues[] = {
            {1007, L"0.0005"}, {1022, L"0.001"}, {1024, L"1e-06"}, {1023, L"0.3"}, {1026, L"5"}};
        for (const auto& value : kValues) dialog.SetDlgItemText(value.id, value.text);
        dialog.CheckRadioButton(1008, 1009, 1008);
        dialog.CheckDlgButton(1010, BST_CHECKED);
    }
    if (id == 207) {
        dialog.SetWindowText(L"执行进度");
        dialog.SendMessage(WM_NULL);
        ::SendMessage(::GetDlgItem(dialog.m_hWnd, 1602), PBM_SETRANGE, 0, MAKELPARAM(0, 120));
        ::SendMessage(::GetDlgItem(dialog.m_hWnd, 1602), PBM_SETPOS, 45, 0);
        dialog.SetDlgItemText(1603,
                              L"\n总计：120个 当前处理:第45个\n失败：0个 成功：45个\n"
                              L"已经用时：3600秒 预计还需：6000秒\n");
    }
    if (id == 188) {
        CListCtrl tasks;
        tasks.SubclassDlgItem(1017, &dialog);
        const wchar_t* const kHeads[] = {L"序号", L"任务名称", L"执行状态", L"导出状态"};
        CRect client;
        tasks.GetClientRect(client);
        const int widths[] = {12, 37, 25, 25};
        tasks.SetExtendedStyle(LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES);
        for (int i = 0; i < 4; ++i)
            tasks.InsertColumn(i, kHeads[i], LVCFMT_LEFT, widths[i] * client.Width() / 100);
        for (int i = 0; i < 3; ++i) {
            tasks.InsertItem(i, std::to_wstring(i + 1).c_str());
            tasks.SetItemText(i, 1, L"成型刀任务");
            tasks.SetItemText(i, 2, L"未执行");
            tasks.SetItemText(i, 3, L"未导出");
        }
        tasks.SetItemState(1, LVIS_SELECTED, LVIS_SELECTED);
        tasks.UnsubclassWindow();
    }
}

// Set QZ_PICTURES to a folder to look at the dialogs.
TEST_F(Display, EveryTextFitsItsControl) {
    const char* const folder = std::getenv("QZ_PICTURES");
    for (const UINT id : {186u, 188u, 190u, 207u, 241u}) {
        SCOPED_TRACE(id);
        CDialogEx dialog;
        ASSERT_TRUE(dialog.Create(id));
        Fill(dialog, id);
        dialog.ShowWindow(SW_SHOW);
        m_driver->Poll();
        QWidget* const window = Shown(dialog);
        ASSERT_NE(window, nullptr);
        for (const QLabel* const label : window->findChildren<QLabel*>())
            EXPECT_TRUE(label->wordWrap() ? label->heightForWidth(label->width()) <= label->height()
                                          : label->sizeHint().width() <= label->width())
                << label->text().toStdString();
        for (const QAbstractButton* const button : window->findChildren<QAbstractButton*>()) {
            // Qt likes push buttons wide; what counts is the text with some air.
            const int text = button->fontMetrics().horizontalAdvance(button->text()) + 16;
            const int needed =
                qobject_cast<const QPushButton*>(button) ? text : button->sizeHint().width();
            if (button->isVisible() && !button->text().isEmpty()) {
                EXPECT_LE(needed, button->width()) << button->text().toStdString();
            }
        }
        const std::string path = (folder ? std::string(folder) + "/" : test::ScratchFolder()) +
                                 std::to_string(id) + ".png";
        ASSERT_TRUE(SaveScreenshot(std::wstring(path.begin(), path.end())));
        EXPECT_GT(QImage(QString::fromStdString(path)).width(), window->width());
        if (!folder) std::remove(path.c_str());
    }
}

void Key(QWidget* widget, int key) {
    ASSERT_NE(widget, nullptr);
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(widget, &press);
}

class CNameDlg : public CDialogEx {
public:
    CNameDlg() : CDialogEx(190) {}
    CString m_strName = _T("0001");

protected:
    void DoDataExchange(CDataExchange* pDX) override { DDX_Text(pDX, 1040, m_strName); }
};

// What a person does to the widgets arrives in the model, through the modal loop.
TEST_F(Display, TypingAndPressingInAModalDialog) {
    CNameDlg dialog;
    QTimer::singleShot(0, [&] {
        auto* const edit = qobject_cast<QLineEdit*>(WidgetOf(dialog, 1040));
        ASSERT_NE(edit, nullptr);
        EXPECT_EQ(edit->text(), "0001");
        EXPECT_EQ(edit->selectedText(), "0001") << "to be typed over";
        edit->setText("");
        edit->insert(QString::fromUtf8("刀"));
        Q_EMIT edit->textEdited(edit->text());
        qobject_cast<QPushButton*>(WidgetOf(dialog, IDOK))->click();
    });
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.m_strName, _T("刀"));
}

TEST_F(Display, KeysAndCloseBox) {
    for (const auto& [act, result] : {std::pair<int, INT_PTR>(Qt::Key_Return, IDOK),
                                      {Qt::Key_Escape, IDCANCEL},
                                      {0, IDCANCEL}}) {
        CNameDlg dialog;
        QTimer::singleShot(0, [&, key = act] {
            if (key == 0) {
                Shown(dialog)->close();
            } else {
                Key(WidgetOf(dialog, 1040), key);
            }
        });
        EXPECT_EQ(dialog.DoModal(), result);
    }
}

TEST_F(Display, ChecksAndRadioButtonsFollowTheModel) {
    CDialogEx dialog;
    ASSERT_TRUE(dialog.Create(186));
    dialog.ShowWindow(SW_SHOW);
    dialog.CheckRadioButton(1008, 1009, 1008);
    auto* const upper = qobject_cast<QRadioButton*>(WidgetOf(dialog, 1008));
    auto* const lower = qobject_cast<QRadioButton*>(WidgetOf(dialog, 1009));
    ASSERT_TRUE(upper && lower);
    EXPECT_TRUE(upper->isChecked());
    lower->click();
    EXPECT_FALSE(lower->isChecked()) << "not before its message is handled";
    WindowSystem::Get().DispatchPending();
    EXPECT_TRUE(lower->isChecked());
    EXPECT_FALSE(upper->isChecked());
    EXPECT_EQ(dialog.IsDlgButtonChecked(1009), 1u);
    // A dialog behind a modal one takes nothing in.
    dialog.EnableWindow(FALSE);
    upper->click();
    WindowSystem::Get().DispatchPending();
    EXPECT_EQ(dialog.IsDlgButtonChecked(1008), 0u);
    EXPECT_FALSE(WidgetOf(dialog, 1011)->isVisible());
}

TEST_F(Display, ListsAndProgress) {
    CDialogEx dialog;
    ASSERT_TRUE(dialog.Create(188));
    dialog.ShowWindow(SW_SHOW);
    Fill(dialog, 188);
    m_driver->Poll();
    auto* const table = qobject_cast<QTableWidget*>(WidgetOf(dialog, 1017));
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->rowCount(), 3);
    EXPECT_EQ(table->item(2, 1)->text(), QString::fromUtf8("成型刀任务"));
    const auto rows = table->selectionModel()->selectedRows();
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(rows[0].row(), 1);
    EXPECT_EQ(table->columnWidth(1), 37 * 453 / 100);
    table->selectRow(2);
    WindowSystem::Get().DispatchPending();
    std::vector<int> selected;
    ASSERT_TRUE(SelectedRows(188, 1017, selected));
    EXPECT_EQ(selected, std::vector<int>{3});
    dialog.DestroyWindow();
    CDialogEx progress;
    ASSERT_TRUE(progress.Create(207));
    progress.ShowWindow(SW_SHOW);
    Fill(progress, 207);
    auto* const bar = qobject_cast<QProgressBar*>(WidgetOf(progress, 1602));
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(bar->maximum(), 120);
    EXPECT_EQ(bar->value(), 45);
}

// Under Qt's own loop messages are handled when Qt is idle; boxes let them through.
TEST_F(Display, BoxesLetMessagesThrough) {
    CDialogEx dialog;
    ASSERT_TRUE(dialog.Create(186));
    dialog.ShowWindow(SW_SHOW);
    QTimer::singleShot(0, [&] {
        qobject_cast<QAbstractButton*>(WidgetOf(dialog, 1010))->click();
        QTimer::singleShot(20, [&] {
            EXPECT_EQ(dialog.IsDlgButtonChecked(1010), 1u);
            for (QWidget* const widget : QApplication::topLevelWidgets())
                if (auto* const box = qobject_cast<QMessageBox*>(widget))
                    box->button(QMessageBox::No)->click();
        });
    });
    EXPECT_EQ(AfxMessageBox(_T("question"), MB_YESNO), IDNO);
    QTimer::singleShot(0, [&] {
        qobject_cast<QAbstractButton*>(WidgetOf(dialog, 1010))->click();
        QTimer::singleShot(20, [&] { QCoreApplication::exit(0); });
    });
    Application().exec();
    EXPECT_EQ(dialog.IsDlgButtonChecked(1010), 0u);
}

// A display that comes later shows what is there already.
TEST_F(Display, ADriverCanComeLater) {
    WindowSystem::Get().SetDriver(nullptr);
    CDialogEx dialog;
    ASSERT_TRUE(dialog.Create(241));
    dialog.ShowWindow(SW_SHOW);
    dialog.SetDlgItemText(1007, L"0.25");
    EXPECT_EQ(Shown(dialog), nullptr);
    WindowSystem::Get().SetDriver(m_driver.get());
    auto* const edit = qobject_cast<QLineEdit*>(WidgetOf(dialog, 1007));
    ASSERT_NE(edit, nullptr);
    EXPECT_EQ(edit->text(), "0.25");
}

}  // namespace

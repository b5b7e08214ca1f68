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
#include <QTableWidget>
#include <QTimer>
#include <cstdlib>

#include "afxcmn.h"
#include "afxdialogex.h"
#include "host/mfc/dialog_probe.h"
#include "host/mfc/host_windows.h"
#include "host/mfc/qt/qt_window_driver.h"
#include "host/mfc/resources.h"

using namespace host;

namespace {

QApplication& Application() {
    static QApplication* const application = [] {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        static int count = 1;
        static char name[] = "mfc_qt_tests";
        static char* arguments[] = {name, nullptr};
        return new QApplication(count, arguments);
    }();
    return *application;
}

class Display : public ::testing::Test {
protected:
    Display() {
        Application();
        SetResourceScript(AfxGetInstanceHandle(), L"ui/res/QZEncircleLine.rc");
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
        } kValues[] = {{1007, L"0.0005"}, {1022, L"0.001"}, {1024, L"1e-06"}, {1023, L"0.3"},
                       {1026, L"5"}};
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
            EXPECT_TRUE(label->wordWrap()
                            ? label->heightForWidth(label->width()) <= label->height()
                            : label->sizeHint().width() <= label->width())
                << label->text().toStdString();
        for (const QAbstractButton* const button : window->findChildren<QAbstractButton*>())
            EXPECT_LE(button->sizeHint().width(), (std::max)(button->width(), 75))
                << button->text().toStdString();
        const std::string path =
            (folder ? std::string(folder) + "/" : ::testing::TempDir()) + std::to_string(id) + ".png";
        ASSERT_TRUE(SaveScreenshot(std::wstring(path.begin(), path.end())));
        EXPECT_GT(QImage(QString::fromStdString(path)).width(), window->width());
        if (!folder) std::remove(path.c_str());
    }
}

}  // namespace

// Message boxes, choosers and pictures.
#include <QApplication>
#include <QBuffer>
#include <QFileDialog>
#include <QMenu>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QScreen>

#include "host/base/format.h"
#include "host/mfc/qt/qt_window_driver.h"
#include "host/mfc/qt/widgets.h"
#include "host/mfc/window_system.h"
#include "host/sys/file_io.h"

namespace host {
namespace {

constexpr int kCaptionHeight = 24;  // of the caption drawn into pictures, pixels
constexpr int kPictureMargin = 12;  // around the windows in a picture, pixels

struct BoxButton {
    QMessageBox::StandardButton qt;
    int id;
};

std::vector<BoxButton> ButtonsOf(UINT type) {
    switch (type & MB_TYPEMASK) {
        case MB_OKCANCEL:
            return {{QMessageBox::Ok, IDOK}, {QMessageBox::Cancel, IDCANCEL}};
        case MB_ABORTRETRYIGNORE:
            return {{QMessageBox::Abort, IDABORT},
                    {QMessageBox::Retry, IDRETRY},
                    {QMessageBox::Ignore, IDIGNORE}};
        case MB_YESNOCANCEL:
            return {{QMessageBox::Yes, IDYES},
                    {QMessageBox::No, IDNO},
                    {QMessageBox::Cancel, IDCANCEL}};
        case MB_YESNO:
            return {{QMessageBox::Yes, IDYES}, {QMessageBox::No, IDNO}};
        case MB_RETRYCANCEL:
            return {{QMessageBox::Retry, IDRETRY}, {QMessageBox::Cancel, IDCANCEL}};
        default:
            return {{QMessageBox::Ok, IDOK}};
    }
}

QMessageBox::Icon IconOf(UINT type) {
    switch (type & MB_ICONMASK) {
        case MB_ICONERROR:
            return QMessageBox::Critical;
        case MB_ICONQUESTION:
            return QMessageBox::Question;
        case MB_ICONWARNING:
            return QMessageBox::Warning;
        case MB_ICONINFORMATION:
            return QMessageBox::Information;
        default:
            return QMessageBox::NoIcon;
    }
}

// Windows' boxes let other windows get their messages, so the host's queue goes on.
void RunUntilClosed(QDialog& dialog) {
    dialog.setWindowModality(Qt::ApplicationModal);
    dialog.show();
    while (dialog.isVisible()) {
        WindowSystem::Get().DispatchPending();
        if (dialog.isVisible() && !WindowSystem::Get().Driver().Wait()) return;
    }
}

std::optional<std::wstring> Choose(QFileDialog& dialog, const ChooserRequest& request) {
    if (!request.title.empty()) dialog.setWindowTitle(ToQt(request.title));
    RunUntilClosed(dialog);
    const QStringList chosen = dialog.selectedFiles();
    if (dialog.result() != QDialog::Accepted || chosen.isEmpty()) return {};
    return chosen.first().toStdWString();
}

// The window with a caption such as a desktop would give it, for displays that give none.
QPixmap Draw(QWidget& widget) {
    const QPixmap inside = widget.grab();
    QPixmap whole(inside.width() + 2, inside.height() + kCaptionHeight + 2);
    whole.fill(QColor(0x60, 0x60, 0x60));
    QPainter painter(&whole);
    const QRect caption(1, 1, inside.width(), kCaptionHeight);
    painter.fillRect(caption, QColor(0xE4, 0xE8, 0xF0));
    painter.setFont(widget.font());
    painter.setPen(Qt::black);
    QString title = widget.windowTitle();
    title.replace("[*]", widget.isWindowModified() ? "*" : "");
    painter.drawText(caption.adjusted(8, 0, -8, 0), Qt::AlignVCenter | Qt::AlignLeft, title);
    if (widget.windowFlags() & Qt::WindowCloseButtonHint)
        painter.drawText(caption.adjusted(8, 0, -8, 0), Qt::AlignVCenter | Qt::AlignRight,
                         QString(QChar(0x00D7)));
    painter.drawPixmap(1, kCaptionHeight + 1, inside);
    return whole;
}

}  // namespace

int QtWindowDriver::ShowBox(const BoxRequest& request) {
    QMessageBox box(IconOf(request.type), ToQt(request.title), ToQt(request.text),
                    QMessageBox::NoButton, QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    const std::vector<BoxButton> buttons = ButtonsOf(request.type);
    for (const BoxButton& button : buttons) box.addButton(button.qt);
    RunUntilClosed(box);
    const QMessageBox::StandardButton pressed = box.standardButton(box.clickedButton());
    for (const BoxButton& button : buttons)
        if (button.qt == pressed) return button.id;
    // Closed by its caption: what Escape means.
    return buttons.size() == 1 ? buttons.front().id : IDCANCEL;
}

int QtWindowDriver::ShowMenu(const MenuRequest& request) {
    QMenu menu(QApplication::activeWindow());
    for (const MenuItem& item : request.items) {
        if (item.id == 0) {
            menu.addSeparator();
            continue;
        }
        QAction* const action = menu.addAction(ToQt(item.text));
        action->setEnabled(item.isEnabled);
        action->setData(item.id);
    }
    const QAction* const chosen =
        menu.exec(QPoint(static_cast<int>(request.place.x), static_cast<int>(request.place.y)));
    return chosen == nullptr ? 0 : chosen->data().toInt();
}

std::optional<std::wstring> QtWindowDriver::ChooseFile(const ChooserRequest& request) {
    QFileDialog dialog(QApplication::activeWindow());
    dialog.setAcceptMode(request.isSave ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(request.isSave ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !request.asksBeforeOverwriting);
    QStringList filters;
    for (const FileFilter& filter : request.filters) {
        QString patterns = ToQt(filter.second);
        patterns.replace(';', ' ');
        filters << ToQt(filter.first).section('(', 0, 0) + "(" + patterns + ")";
    }
    if (!filters.isEmpty()) dialog.setNameFilters(filters);
    if (!request.start.empty()) dialog.selectFile(ToQt(request.start));
    return Choose(dialog, request);
}

std::optional<std::wstring> QtWindowDriver::ChooseFolder(const ChooserRequest& request) {
    QFileDialog dialog(QApplication::activeWindow());
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly, true);
    if (!request.start.empty()) dialog.setDirectory(ToQt(request.start));
    return Choose(dialog, request);
}

bool QtWindowDriver::Capture(const std::wstring& path, std::wstring& reason) {
    Refresh();
    std::vector<QWidget*> shown;
    if (m_main && m_main->isVisible()) shown.push_back(m_main);
    for (const HWND handle : WindowSystem::Get().TopLevelWindows())
        if (QWidget* const widget = Find(handle); widget != nullptr && widget->isVisible())
            shown.push_back(widget);
    if (shown.empty()) {
        reason = L"no window is shown";
        return false;
    }
    QRect area;
    for (const QWidget* const widget : shown)
        area |= widget->geometry().adjusted(-kPictureMargin, -kCaptionHeight - kPictureMargin,
                                            kPictureMargin, kPictureMargin);
    QPixmap picture(area.size());
    picture.fill(QColor(0x30, 0x38, 0x44));
    QPainter painter(&picture);
    for (QWidget* const widget : shown)
        painter.drawPixmap(
            widget->geometry().topLeft() - area.topLeft() - QPoint(1, kCaptionHeight + 1),
            Draw(*widget));
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    FileError error{0, "the picture cannot be made"};
    if (picture.save(&buffer, "PNG") &&
        WriteFileAtomically(
            Narrow(path), {std::string_view(bytes.constData(), static_cast<size_t>(bytes.size()))},
            error))
        return true;
    reason = path + L" cannot be written: " + Widen(error.reason);
    return false;
}

}  // namespace host

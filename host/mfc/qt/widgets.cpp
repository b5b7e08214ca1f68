#include "host/mfc/qt/widgets.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QFontDatabase>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTableWidget>
#include <algorithm>

#include "host/mfc/fonts.h"
#include "host/mfc/host_frame.h"
#include "host/mfc/qt/control_events.h"
#include "host/mfc/window_system.h"

namespace host {
namespace {

WindowSystem& System() { return WindowSystem::Get(); }

// Check boxes and radio buttons change only when the model says so.
class ModelCheckBox : public QCheckBox {
public:
    using QCheckBox::QCheckBox;

protected:
    void nextCheckState() override {}
};
class ModelRadioButton : public QRadioButton {
public:
    using QRadioButton::QRadioButton;

protected:
    void nextCheckState() override {}
};

class DialogWidget : public QWidget {
public:
    DialogWidget(HWND handle, QWidget* owner, Qt::WindowFlags flags)
        : QWidget(owner, flags), m_handle(handle) {}

protected:
    void closeEvent(QCloseEvent* event) override {
        event->ignore();
        const HWND handle = m_handle;
        System().PostInput(handle, [handle] { System().Send(handle, WM_CLOSE, 0, 0); });
    }
    void leaveEvent(QEvent* event) override {
        const HWND handle = m_handle;
        System().PostInput(handle, [handle] { PointerLeft(handle); });
        QWidget::leaveEvent(event);
    }
    void moveEvent(QMoveEvent* event) override {
        if (Window* const window = System().Find(m_handle)) {
            const QPoint corner = mapToGlobal(QPoint(0, 0));
            const CRect before(window->bounds);
            window->bounds = CRect(CPoint(corner.x(), corner.y()), before.Size());
        }
        QWidget::moveEvent(event);
    }
    // The user pulls the frame: the model follows, and asks the dialog how far.
    void resizeEvent(QResizeEvent* event) override {
        const HWND handle = m_handle;
        const QSize size = event->size();
        const Window* const window = System().Find(handle);
        if (window != nullptr && window->Has(WS_THICKFRAME) &&
            CRect(window->bounds).Size() != CSize(size.width(), size.height()))
            System().PostInput(handle, [=] { PullToSize(handle, size.width(), size.height()); });
        QWidget::resizeEvent(event);
    }

private:
    HWND m_handle;
};

void PostClick(HWND handle) {
    System().PostInput(handle, [handle] { System().Send(handle, BM_CLICK, 0, 0); });
}

QWidget* MakeButton(const Window& control, QWidget* parent) {
    if (control.ButtonType() == BS_GROUPBOX) {
        auto* const box = new QGroupBox(parent);
        box->lower();
        return box;
    }
    QAbstractButton* button = nullptr;
    if (control.IsRadio()) {
        button = new ModelRadioButton(parent);
        button->setAutoExclusive(false);
    } else if (control.IsCheckBox()) {
        auto* const check = new ModelCheckBox(parent);
        check->setTristate(control.ButtonType() == BS_3STATE ||
                           control.ButtonType() == BS_AUTO3STATE);
        button = check;
    } else {
        auto* const push = new QPushButton(parent);
        push->setDefault(control.ButtonType() == BS_DEFPUSHBUTTON);
        button = push;
    }
    const HWND handle = control.handle;
    QObject::connect(button, &QAbstractButton::clicked, button, [handle] { PostClick(handle); });
    return button;
}

QWidget* MakeEdit(const Window& control, QWidget* parent) {
    const HWND handle = control.handle;
    if (control.Has(ES_MULTILINE)) {
        auto* const edit = new QPlainTextEdit(parent);
        QObject::connect(edit, &QPlainTextEdit::textChanged, edit, [handle, edit] {
            System().PostInput(handle, [handle, safe = QPointer<QPlainTextEdit>(edit)] {
                if (safe) TypeText(handle, safe->toPlainText().toStdWString());
            });
        });
        return edit;
    }
    auto* const edit = new QLineEdit(parent);
    // The text is read when the input's turn comes, so that fast typing is not set back.
    QObject::connect(edit, &QLineEdit::textEdited, edit, [handle, edit] {
        System().PostInput(handle, [handle, safe = QPointer<QLineEdit>(edit)] {
            if (safe) TypeText(handle, safe->text().toStdWString());
        });
    });
    return edit;
}

QWidget* MakeStatic(const Window& control, QWidget* parent) {
    auto* const label = new QLabel(parent);
    const UINT type = control.style & SS_TYPEMASK;
    if (type == SS_ETCHEDHORZ || type == SS_ETCHEDVERT) {
        label->setFrameShape(type == SS_ETCHEDHORZ ? QFrame::HLine : QFrame::VLine);
        label->setFrameShadow(QFrame::Sunken);
    }
    const Qt::Alignment across = type == SS_CENTER  ? Qt::AlignHCenter
                                 : type == SS_RIGHT ? Qt::AlignRight
                                                    : Qt::AlignLeft;
    const bool isMiddle = control.Has(SS_CENTERIMAGE);
    label->setAlignment(across | (isMiddle ? Qt::AlignVCenter : Qt::AlignTop));
    label->setWordWrap(type != SS_LEFTNOWORDWRAP && !isMiddle);
    label->setTextFormat(Qt::PlainText);
    return label;
}

std::vector<int> SelectedRowsOf(const QTableWidget& table) {
    std::vector<int> rows;
    for (const QModelIndex& index : table.selectionModel()->selectedRows())
        rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

QWidget* MakeList(const Window& control, QWidget* parent) {
    auto* const table = new QTableWidget(parent);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(control.Has(LVS_SINGLESEL) ? QAbstractItemView::SingleSelection
                                                       : QAbstractItemView::ExtendedSelection);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->verticalHeader()->hide();
    table->horizontalHeader()->setHighlightSections(false);
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table->horizontalHeader()->setMinimumSectionSize(1);
    const HWND handle = control.handle;
    QObject::connect(table, &QTableWidget::itemSelectionChanged, table, [handle, table] {
        System().PostInput(handle, [handle, safe = QPointer<QTableWidget>(table)] {
            if (safe) SelectListRows(handle, SelectedRowsOf(*safe));
        });
    });
    QObject::connect(table, &QTableWidget::cellDoubleClicked, table, [handle](int row, int) {
        System().PostInput(handle, [handle, row] { DoubleClickListRow(handle, row); });
    });
    table->setContextMenuPolicy(Qt::CustomContextMenu);
    QObject::connect(table, &QWidget::customContextMenuRequested, table,
                     [handle, table](const QPoint& at) {
                         const QPoint place = table->viewport()->mapToGlobal(at);
                         System().PostInput(handle, [handle, place] {
                             System().Send(handle, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(handle),
                                           MAKELPARAM(place.x(), place.y()));
                         });
                     });
    QObject::connect(table->verticalScrollBar(), &QScrollBar::valueChanged, table,
                     [handle](int row) {
                         Window* const window = System().Find(handle);
                         if (window != nullptr) window->list->top = row;
                     });
    return table;
}

QWidget* MakeProgress(QWidget* parent) {
    auto* const bar = new QProgressBar(parent);
    bar->setTextVisible(false);
    return bar;
}

// "&x" marks a key, "&&" is an ampersand.
QString WithoutMarks(const QString& text) {
    QString plain;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == '&' && ++i >= text.size()) break;
        plain += text[i];
    }
    return plain;
}

}  // namespace

QString ToQt(const std::wstring& text) { return QString::fromStdWString(text); }

QFont MakeQtFont(HFONT font) {
    static const QString family = [] {
        const QStringList known = QFontDatabase::families();
        for (const char* const name :
             {"Microsoft YaHei UI", "Noto Sans CJK SC", "Source Han Sans SC", "WenQuanYi Micro Hei",
              "WenQuanYi Zen Hei"})
            if (known.contains(QLatin1String(name))) return QString::fromLatin1(name);
        return QString();
    }();
    const LOGFONT* const description = FindFont(font);
    QFont made;
    if (description == nullptr) return made;
    const QString face = QString::fromWCharArray(description->lfFaceName);
    if (QFontDatabase::families().contains(face)) {
        made.setFamily(face);
    } else if (!family.isEmpty()) {
        made.setFamily(family);
    }
    made.setPixelSize(description->lfHeight < 0 ? -description->lfHeight : description->lfHeight);
    made.setBold(description->lfWeight >= FW_BOLD);
    made.setItalic(description->lfItalic != 0);
    return made;
}

QWidget* MakeDialogWidget(const Window& dialog, QWidget* owner) {
    Qt::WindowFlags flags = Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint;
    if (dialog.Has(WS_SYSMENU)) flags |= Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;
    auto* const widget = new DialogWidget(dialog.handle, owner, flags);
    widget->installEventFilter(new ControlEvents(dialog.handle, widget));
    return widget;
}

QWidget* MakeControlWidget(const Window& control, QWidget* parent) {
    QWidget* widget = nullptr;
    switch (control.kind) {
        case WindowKind::kButton:
            widget = MakeButton(control, parent);
            break;
        case WindowKind::kEdit:
            widget = MakeEdit(control, parent);
            break;
        case WindowKind::kList:
            widget = MakeList(control, parent);
            break;
        case WindowKind::kProgress:
            widget = MakeProgress(parent);
            break;
        default:
            widget = MakeStatic(control, parent);
            break;
    }
    widget->installEventFilter(new ControlEvents(control.handle, widget));
    return widget;
}

void ShowText(QWidget& widget, const Window& window) {
    const QString text = ToQt(window.text);
    const QSignalBlocker quiet(widget);
    if (auto* const edit = qobject_cast<QLineEdit*>(&widget)) {
        if (edit->text() != text) edit->setText(text);
    } else if (auto* const box = qobject_cast<QPlainTextEdit*>(&widget)) {
        if (box->toPlainText() != text) box->setPlainText(text);
    } else if (auto* const label = qobject_cast<QLabel*>(&widget)) {
        label->setText(window.Has(SS_NOPREFIX) ? text : WithoutMarks(text));
    } else if (auto* const button = qobject_cast<QAbstractButton*>(&widget)) {
        button->setText(text);
    } else if (auto* const group = qobject_cast<QGroupBox*>(&widget)) {
        group->setTitle(text);
    } else if (widget.isWindow()) {
        widget.setWindowTitle(text);
    }
}

void ShowCheck(QWidget& widget, const Window& window) {
    const QSignalBlocker quiet(widget);
    if (auto* const check = qobject_cast<QCheckBox*>(&widget)) {
        check->setCheckState(window.check == BST_INDETERMINATE ? Qt::PartiallyChecked
                             : window.check == BST_CHECKED     ? Qt::Checked
                                                               : Qt::Unchecked);
    } else if (auto* const radio = qobject_cast<QRadioButton*>(&widget)) {
        radio->setChecked(window.check == BST_CHECKED);
    }
}

// A dialog behind a modal one keeps its looks and takes no input.
void ShowEnabled(QWidget& widget, const Window& window) {
    const bool isDisabled = window.Has(WS_DISABLED);
    if (window.parent == nullptr) {
        widget.setAttribute(Qt::WA_TransparentForMouseEvents, isDisabled);
        return;
    }
    widget.setEnabled(!isDisabled);
    if (auto* const edit = qobject_cast<QLineEdit*>(&widget))
        edit->setReadOnly(window.Has(ES_READONLY));
}

void ShowPlace(QWidget& widget, const Window& window) {
    const CRect place(window.bounds);
    if (window.parent == nullptr) {
        if (window.Has(WS_THICKFRAME))
            widget.resize(place.Width(), place.Height());
        else
            widget.setFixedSize(place.Width(), place.Height());
        widget.move(place.left, place.top);
    } else {
        widget.setGeometry(place.left, place.top, place.Width(), place.Height());
    }
}

void ShowFont(QWidget& widget, const Window& window) { widget.setFont(MakeQtFont(window.font)); }

void ShowSelection(QWidget& widget, const Window& window) {
    if (auto* const edit = qobject_cast<QLineEdit*>(&widget)) {
        if (window.selectionEnd > window.selectionStart)
            edit->setSelection(window.selectionStart, window.selectionEnd - window.selectionStart);
    } else if (auto* const table = qobject_cast<QTableWidget*>(&widget)) {
        const QSignalBlocker quiet(table);
        QItemSelection selection;
        const auto& rows = window.list->rows;
        for (int i = 0; i < static_cast<int>(rows.size()) && i < table->rowCount(); ++i)
            if (rows[static_cast<std::size_t>(i)].state & LVIS_SELECTED)
                selection.select(table->model()->index(i, 0),
                                 table->model()->index(i, table->columnCount() - 1));
        table->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
        const auto focused = std::find_if(rows.begin(), rows.end(), [](const ListRow& row) {
            return (row.state & LVIS_FOCUSED) != 0;
        });
        const int current = static_cast<int>(focused - rows.begin());
        table->selectionModel()->setCurrentIndex(
            table->model()->index(current, 0),  // none behind the last row
            QItemSelectionModel::NoUpdate);
    }
}

void ShowProgress(QWidget& widget, const Window& window) {
    auto* const bar = qobject_cast<QProgressBar*>(&widget);
    if (bar == nullptr) return;
    const ProgressState& progress = window.progress;
    // An empty range would be shown as a bar that runs for ever.
    const bool isEmpty = progress.high <= progress.low;
    bar->setRange(progress.low, isEmpty ? progress.low + 1 : progress.high);
    bar->setValue(progress.position);
}

void ShowList(QWidget& widget, const Window& window) {
    auto* const table = qobject_cast<QTableWidget*>(&widget);
    if (table == nullptr) return;
    const QSignalBlocker quiet(table);
    const QSignalBlocker still(table->verticalScrollBar());
    const ListState& list = *window.list;
    table->setShowGrid((list.extendedStyle & LVS_EX_GRIDLINES) != 0);
    table->setColumnCount(static_cast<int>(list.columns.size()));
    table->setRowCount(static_cast<int>(list.rows.size()));
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 4);
    for (int column = 0; column < table->columnCount(); ++column) {
        const ListColumn& shown = list.columns[static_cast<std::size_t>(column)];
        table->setHorizontalHeaderItem(column, new QTableWidgetItem(ToQt(shown.text)));
        table->setColumnWidth(column, shown.width);
    }
    for (int row = 0; row < table->rowCount(); ++row) {
        const ListRow& shown = list.rows[static_cast<std::size_t>(row)];
        for (int column = 0; column < table->columnCount(); ++column) {
            const std::size_t at = static_cast<std::size_t>(column);
            const QString text = at < shown.texts.size() ? ToQt(shown.texts[at]) : QString();
            table->setItem(row, column, new QTableWidgetItem(text));
        }
    }
    ShowSelection(widget, window);
    table->verticalScrollBar()->setValue(list.top);
}

void ShowAll(QWidget& widget, const Window& window) {
    ShowFont(widget, window);
    ShowText(widget, window);
    ShowCheck(widget, window);
    ShowEnabled(widget, window);
    ShowPlace(widget, window);
    ShowProgress(widget, window);
    ShowList(widget, window);
    if (window.parent != nullptr) widget.setVisible(window.Has(WS_VISIBLE));
}

}  // namespace host

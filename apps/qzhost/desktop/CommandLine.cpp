#include "apps/qzhost/desktop/CommandLine.h"

#include <QFontDatabase>
#include <QKeyEvent>
#include <QRegularExpression>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

namespace app {

CommandLine::CommandLine(QWidget* parent)
    : QWidget(parent),
      m_history(new QPlainTextEdit(this)),
      m_edit(new QLineEdit(this)),
      m_transcript([this](const std::string& text) {
          m_log << text << std::flush;
          m_history->moveCursor(QTextCursor::End);
          m_history->insertPlainText(QString::fromStdString(text));
          m_history->verticalScrollBar()->setValue(m_history->verticalScrollBar()->maximum());
      }) {
    const QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    m_history->setReadOnly(true);
    m_history->setMaximumBlockCount(5000);
    m_history->setFont(font);
    m_history->setFocusPolicy(Qt::ClickFocus);
    m_edit->setFont(font);
    m_edit->setPlaceholderText("Type a command");
    m_edit->installEventFilter(this);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(2);
    layout->addWidget(m_history);
    layout->addWidget(m_edit);
}

bool CommandLine::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::ShortcutOverride && event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto* const key = static_cast<QKeyEvent*>(event);
    if (event->type() == QEvent::ShortcutOverride && !IsForText(*key)) {
        event->ignore();
        return true;
    }
    if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    switch (key->key()) {
        case Qt::Key_Space:
            if (takesBlanks && takesBlanks()) return QWidget::eventFilter(watched, event);
            Enter(true);
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            Enter(false);
            return true;
        case Qt::Key_Escape:
            m_edit->clear();
            if (onEscape) onEscape();
            return true;
        case Qt::Key_Tab:
            return Complete() || QWidget::eventFilter(watched, event);
        case Qt::Key_Up:
            Recall(-1);
            return true;
        case Qt::Key_Down:
            Recall(1);
            return true;
        default:
            return QWidget::eventFilter(watched, event);
    }
}

// Keys that edit what is typed; every other shortcut is the desktop's. A line editor of its own
// takes more: Ctrl+E and Ctrl+K, on X11.
bool CommandLine::IsForText(const QKeyEvent& key) const {
    if (m_edit->text().isEmpty()) return false;
    for (const QKeySequence::StandardKey own :
         {QKeySequence::Undo, QKeySequence::Redo, QKeySequence::SelectAll, QKeySequence::Delete,
          QKeySequence::Copy, QKeySequence::Cut, QKeySequence::Paste})
        if (key.matches(own)) return true;
    return false;
}

// The same beginning again gives the next name.
bool CommandLine::Complete() {
    const QString typed = m_edit->text();
    if (typed.isEmpty() || !names) return false;
    const QStringList all = names();
    const bool isNext = !m_beginning.isEmpty() &&
                        typed.startsWith(m_beginning, Qt::CaseInsensitive) && all.contains(typed);
    if (!isNext) {
        m_beginning = typed;
        m_completed = 0;
    }
    const QStringList fitting = all.filter(QRegularExpression(
        "^" + QRegularExpression::escape(m_beginning), QRegularExpression::CaseInsensitiveOption));
    if (fitting.isEmpty()) return true;
    m_edit->setText(fitting[m_completed++ % fitting.size()]);
    return true;
}

bool CommandLine::LogTo(const std::string& path) {
    m_log.open(path, std::ios::binary | std::ios::trunc);
    return m_log.good();
}

void CommandLine::Enter(bool isByBlank) {
    const QString line = m_edit->text();
    m_edit->clear();
    if (!line.isEmpty() && (m_typed.isEmpty() || m_typed.last() != line)) m_typed << line;
    m_recalled = m_typed.size();
    if (onEnter) onEnter(line.toStdWString(), isByBlank);
}

void CommandLine::Recall(int step) {
    m_recalled = (std::clamp)(m_recalled + step, qsizetype{0}, m_typed.size());
    m_edit->setText(m_recalled == m_typed.size() ? QString() : m_typed[m_recalled]);
}

}  // namespace app

// The command line: what was said, and the line to type on.
#pragma once

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QWidget>
#include <fstream>
#include <functional>

#include "apps/qzhost/session/Transcript.h"

namespace app {

// Up and Down bring back what was typed before.
class CommandLine : public QWidget {
public:
    explicit CommandLine(QWidget* parent = nullptr);

    // Writes what is said from now on to a file as well. False when it cannot be written.
    bool LogTo(const std::string& path);

    Transcript& Output() { return m_transcript; }
    QLineEdit& Edit() { return *m_edit; }
    QString History() const { return m_history->toPlainText(); }

    // The line, which may be empty, and whether a blank ended it: what is typed next belongs to it.
    std::function<void(const std::wstring&, bool)> onEnter;
    std::function<void()> onEscape;
    // Whether a blank is part of what is typed now; else it ends it, as Enter does.
    std::function<bool()> takesBlanks;
    // What Tab completes a beginning to, one after the other; may be empty.
    std::function<QStringList()> names;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Enter(bool isByBlank);
    void Recall(int step);
    bool Complete();
    bool IsForText(const QKeyEvent& key) const;

    QPlainTextEdit* m_history;
    std::ofstream m_log;
    QLineEdit* m_edit;
    Transcript m_transcript;
    QStringList m_typed;
    QString m_beginning;  // that was completed last
    qsizetype m_completed = 0;
    qsizetype m_recalled = 0;  // index into m_typed; its size: the line being typed
};

}  // namespace app

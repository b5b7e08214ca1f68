// Copies of changed drawings, kept until they are saved or closed, for the start after a crash.
#pragma once

#include <QLockFile>
#include <QString>
#include <QTimer>
#include <map>
#include <memory>
#include <vector>

class AcApDocument;

namespace app {

// What an earlier run has left behind.
struct Rescued {
    QString copy;      // the file
    QString original;  // whose copy it is; a title for a drawing without file
};

class Autosave {
public:
    // folder  of the copies; empty: the user's own
    explicit Autosave(const QString& folder = {});
    ~Autosave();
    Autosave(const Autosave&) = delete;
    Autosave& operator=(const Autosave&) = delete;

    // Copies of runs that are no more, the oldest first.
    std::vector<Rescued> Left() const;
    // A copy that was opened or is not wanted.
    static void Drop(const Rescued& rescued);

    // Writes a copy of each drawing that has changed since its last copy, and takes away those of
    // drawings that are saved or closed. A drawing itself is not changed.
    // result  why a copy could not be written, which is tried again; empty when all went well
    QString Write();
    // Drawing or changes are no more.
    void Forget(const AcApDocument* document);
    // The program ends as it should.
    void ForgetAll();
    // How long to wait from a change to its copy, milliseconds: soon, and long beside what the last
    // copies took.
    int Pause() const;
    // Something in the drawing has changed.
    void Note(const AcApDocument* document) { m_stale[document] = true; }

private:
    QString PathOf(const AcApDocument* document);

    QString m_folder;
    std::unique_ptr<QLockFile> m_lock;
    std::map<const AcApDocument*, bool> m_stale;
    std::map<const AcApDocument*, QString> m_copies;
    int m_count = 0;
    qint64 m_took = 0;  // milliseconds, the last copies
};

}  // namespace app

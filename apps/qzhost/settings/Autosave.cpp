#include "apps/qzhost/settings/Autosave.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <algorithm>

#include "acdocman.h"
#include "apps/qzhost/words/Words.h"
#include "host/db/build.h"
#include "host/dxf/dxf_file.h"
#include "host/ed/session.h"

namespace app {
namespace {

// Milliseconds from a change to its copy; copies take no more than one part in so many of the time.
constexpr qint64 kSoonest = 10 * 1000, kLatest = 5 * 60 * 1000, kShare = 50;

// Each run has a lock RUN.lock and copies RUN-1.dxf, ... with the original's name in RUN-1.txt.
QString NoteOf(const QString& copy) { return copy.chopped(3) + "txt"; }

void Remove(const QString& copy) {
    QFile::remove(copy);
    QFile::remove(NoteOf(copy));
}

}  // namespace

Autosave::Autosave(const QString& folder)
    : m_folder(!folder.isEmpty()
                   ? folder
                   : QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) +
                         "/autosave") {
    QDir().mkpath(m_folder);
    for (int run = 1; run < 1000 && m_lock == nullptr; ++run) {
        const QString name = QString("%1/%2").arg(m_folder).arg(run);
        // A lock of a run that is no more is taken over; its copies are offered first.
        if (!QDir(m_folder).entryList({QString("%1-*.dxf").arg(run)}).isEmpty()) continue;
        auto lock = std::make_unique<QLockFile>(name + ".lock");
        lock->setStaleLockTime(0);
        if (lock->tryLock()) m_lock = std::move(lock);
    }
}

Autosave::~Autosave() { ForgetAll(); }

std::vector<Rescued> Autosave::Left() const {
    std::vector<Rescued> left;
    const QFileInfoList copies =
        QDir(m_folder).entryInfoList({"*-*.dxf"}, QDir::Files, QDir::Time | QDir::Reversed);
    for (const QFileInfo& copy : copies) {
        QLockFile lock(QString("%1/%2.lock").arg(m_folder, copy.fileName().section('-', 0, 0)));
        lock.setStaleLockTime(0);
        if (!lock.tryLock()) continue;
        QFile note(NoteOf(copy.filePath()));
        const bool isNoted = note.open(QIODevice::ReadOnly);
        left.push_back(
            {copy.filePath(), isNoted ? QString::fromUtf8(note.readAll()) : copy.fileName()});
    }
    return left;
}

void Autosave::Drop(const Rescued& rescued) { Remove(rescued.copy); }

QString Autosave::PathOf(const AcApDocument* document) {
    QString& path = m_copies[document];
    if (path.isEmpty()) path = m_lock->fileName().chopped(5) + QString("-%1.dxf").arg(++m_count);
    return path;
}

QString Autosave::Write() {
    if (m_lock == nullptr) return Tr("there is no place for automatic copies: %1").arg(m_folder);
    QElapsedTimer clock;
    clock.start();
    for (const auto& document : host::Session::Get().Documents()) {
        const AcApDocument* const changed = document.get();
        if (!host::IsModified(*document->database())) {
            Forget(changed);
            continue;
        }
        if (!m_stale[changed]) continue;
        const QString path = PathOf(changed);
        host::dxf::Report report;
        const host::dxf::Result result =
            host::dxf::WriteFile(*document->database(), path.toStdString(), report);
        if (!result.ok()) return QString::fromStdString(result.message);
        QFile note(NoteOf(path));
        if (!note.open(QIODevice::WriteOnly)) return note.errorString();
        if (note.write(QString::fromWCharArray(document->fileName()).toUtf8()) < 0 || !note.flush())
            return note.errorString();
        m_stale[changed] = false;
    }
    m_took = clock.elapsed();
    return {};
}

int Autosave::Pause() const {
    return static_cast<int>((std::clamp)(kShare * m_took, kSoonest, kLatest));
}

void Autosave::Forget(const AcApDocument* document) {
    const auto copy = m_copies.find(document);
    if (copy != m_copies.end()) Remove(copy->second);
    m_copies.erase(document);
    m_stale.erase(document);
}

void Autosave::ForgetAll() {
    while (!m_copies.empty()) Forget(m_copies.begin()->first);
}

}  // namespace app

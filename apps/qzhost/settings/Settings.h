// What the desktop keeps from one start to the next.
#pragma once

#include <QMainWindow>
#include <QSettings>
#include <QStringList>

#include "apps/qzhost/view/PointAid.h"

namespace app {

enum class Theme { kSystem, kDark, kLight };

class Settings {
public:
    static constexpr int kMostRecent = 10;

    Settings();

    void KeepWindow(const QMainWindow& window);
    // False when none was kept.
    bool RestoreWindow(QMainWindow& window) const;

    QStringList Recent() const;
    // Comes first from now on.
    void AddRecent(const QString& path);

    Theme Look() const;
    void SetLook(Theme theme);
    QString Language() const;  // empty: the locale's
    void SetLanguage(const QString& language);
    bool Flag(const QString& name, bool usual) const;
    void SetFlag(const QString& name, bool isOn);

    void KeepAids(const PointAid& aid);
    void RestoreAids(PointAid& aid) const;

private:
    QSettings m_kept;
};

// Dark or light, for the desktop itself; the module's dialogs keep their look.
bool IsDark(Theme theme);
void ApplyTheme(QWidget& desktop, bool isDark);

}  // namespace app

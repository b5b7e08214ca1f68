#include "apps/qzhost/settings/Settings.h"

#include <QApplication>
#include <QPalette>

namespace app {
namespace {

constexpr int kLayout = 2;  // of the panels; another number forgets where they were

QPalette DarkPalette() {
    const QColor window(0x2B, 0x30, 0x38), base(0x1F, 0x24, 0x2B), ink(0xE4, 0xE7, 0xEB);
    QPalette palette(QColor(0x3A, 0x41, 0x4B), window);  // of buttons and headings, and behind all
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::Text, ink);
    palette.setColor(QPalette::WindowText, ink);
    palette.setColor(QPalette::ButtonText, ink);
    palette.setColor(QPalette::ToolTipBase, window);
    palette.setColor(QPalette::ToolTipText, ink);
    palette.setColor(QPalette::PlaceholderText, QColor(0x90, 0x98, 0xA4));
    palette.setColor(QPalette::Highlight, QColor(0x2F, 0x6F, 0xB5));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    for (const QPalette::ColorRole role :
         {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(0x78, 0x80, 0x8C));
    return palette;
}

QPalette LightPalette() { return QPalette(QColor(0xF0, 0xF0, 0xF0)); }

}  // namespace

Settings::Settings() : m_kept("QZHost", "QZHost") {}

void Settings::KeepWindow(const QMainWindow& window) {
    m_kept.setValue("window/geometry", window.saveGeometry());
    m_kept.setValue("window/state", window.saveState(kLayout));
}

bool Settings::RestoreWindow(QMainWindow& window) const {
    const QByteArray geometry = m_kept.value("window/geometry").toByteArray();
    return !geometry.isEmpty() && window.restoreGeometry(geometry) &&
           window.restoreState(m_kept.value("window/state").toByteArray(), kLayout);
}

QStringList Settings::Recent() const { return m_kept.value("recent").toStringList(); }

void Settings::AddRecent(const QString& path) {
    QStringList recent = Recent();
    recent.removeAll(path);
    recent.prepend(path);
    m_kept.setValue("recent", QStringList(recent.mid(0, kMostRecent)));
}

Theme Settings::Look() const {
    const QString look = m_kept.value("look").toString();
    return look == "dark" ? Theme::kDark : look == "light" ? Theme::kLight : Theme::kSystem;
}

void Settings::SetLook(Theme theme) {
    m_kept.setValue("look", theme == Theme::kDark    ? "dark"
                            : theme == Theme::kLight ? "light"
                                                     : "system");
}

QString Settings::Language() const { return m_kept.value("language").toString(); }
void Settings::SetLanguage(const QString& language) { m_kept.setValue("language", language); }

bool Settings::Flag(const QString& name, bool usual) const {
    return m_kept.value("flags/" + name, usual).toBool();
}
void Settings::SetFlag(const QString& name, bool isOn) { m_kept.setValue("flags/" + name, isOn); }

void Settings::KeepAids(const PointAid& aid) {
    m_kept.setValue("aids/modes", aid.modes);
    m_kept.setValue("aids/snap", aid.isSnapping);
    m_kept.setValue("aids/ortho", aid.isOrtho);
    m_kept.setValue("aids/polar", aid.isPolar);
    m_kept.setValue("aids/grid", aid.isOnGrid);
}

void Settings::RestoreAids(PointAid& aid) const {
    aid.modes = m_kept.value("aids/modes", aid.modes).toUInt();
    aid.isSnapping = m_kept.value("aids/snap", aid.isSnapping).toBool();
    aid.isOrtho = m_kept.value("aids/ortho", aid.isOrtho).toBool();
    aid.isPolar = m_kept.value("aids/polar", aid.isPolar).toBool();
    aid.isOnGrid = m_kept.value("aids/grid", aid.isOnGrid).toBool();
}

bool IsDark(Theme theme) {
    if (theme != Theme::kSystem) return theme == Theme::kDark;
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::Text).lightness();
}

void ApplyTheme(QWidget& desktop, bool isDark) {
    const QPalette palette = isDark ? DarkPalette() : LightPalette();
    desktop.setPalette(palette);
    for (const char* const popup : {"QMenu", "QComboBoxPrivateContainer", "QTipLabel"})
        QApplication::setPalette(palette, popup);
}

}  // namespace app

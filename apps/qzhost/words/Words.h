// What the desktop says, in the language of its user.
#pragma once

#include <QString>
#include <QStringList>

namespace app {

// A text of the desktop in the language that was chosen; English is what stands in the code.
QString Tr(const char* english);
// Marks a text that is translated when it is shown.
constexpr const char* Word(const char* english) { return english; }

// "en", "zh"; chosen by setting, else by the locale.
QString Language();
// Takes effect for all texts that are asked for later: at the next start for menus.
// language  "en", "zh", or empty: the locale's
void UseLanguage(const QString& language);

}  // namespace app

// What the host says on the command line, in the language of the desktop.
#pragma once

#include <QString>
#include <QString>

namespace app {

// The text of the host in the language that was chosen; unchanged where it is not known, as texts
// of modules are. Values in it stay as they are, and so do keywords and the blanks around it.
QString InLanguage(const QString& said);

}  // namespace app

// Small pictures for menus and buttons, drawn when they are asked for: sharp at any size.
#pragma once

#include <QIcon>

namespace app {

// Null for a name that has no picture.
// ink  the colour of the lines
QIcon MakeIcon(const QString& name, const QColor& ink);

}  // namespace app

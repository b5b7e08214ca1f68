// Widgets for dialogs and controls.
#pragma once

#include <QFont>
#include <QWidget>

#include "host/mfc/window_driver.h"

namespace host {

// A top-level widget without controls.
QWidget* MakeDialogWidget(const Window& dialog, QWidget* owner);
// The widget of a control, a child of its dialog's; reports what the user does with PostInput.
QWidget* MakeControlWidget(const Window& control, QWidget* parent);

// Brings one side of a widget up to its window.
void ShowText(QWidget& widget, const Window& window);  // title or contents
void ShowCheck(QWidget& widget, const Window& window);
void ShowEnabled(QWidget& widget, const Window& window);
void ShowPlace(QWidget& widget, const Window& window);
void ShowFont(QWidget& widget, const Window& window);
void ShowSelection(QWidget& widget, const Window& window);
void ShowProgress(QWidget& widget, const Window& window);
void ShowList(QWidget& widget, const Window& window);
// All of them.
void ShowAll(QWidget& widget, const Window& window);

// The letters of a description, in a family that has Chinese where the described one is not there.
QFont MakeQtFont(HFONT font);
QString ToQt(const std::wstring& text);

}  // namespace host

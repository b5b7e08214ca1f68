// Keys and focus of widgets, handed to the host.
#pragma once

#include <QObject>

#include "host_winuser.h"

namespace host {

// Filters the events of one widget: the keys of the dialog keyboard go to the host's queue instead
// of Qt, and a focus that the user moved is told.
class ControlEvents : public QObject {
public:
    ControlEvents(HWND handle, QObject* widget) : QObject(widget), m_handle(handle) {}

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    HWND m_handle;  // the control's, never followed as a pointer
};

}  // namespace host

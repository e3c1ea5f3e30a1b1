// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/support/ScreenResources.h"

// Last, since it defines macros such as None and Bool.
#include <X11/Xatom.h>
#include <X11/Xlib.h>

void ScreenResources::set(const QByteArray &text)
{
    Display *const display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        qFatal("cannot connect to the X server");
    }
    XChangeProperty(display, DefaultRootWindow(display), XA_RESOURCE_MANAGER, XA_STRING, 8,
                    PropModeReplace, reinterpret_cast<const unsigned char *>(text.constData()),
                    int(text.size()));
    XCloseDisplay(display);
}

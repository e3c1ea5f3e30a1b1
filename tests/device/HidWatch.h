// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "device/HidPlugHook_p.h"
#include "tests/device/PlugRecorder.h"

#include <QStringList>

// Shared by the tests of the HID watch on both platforms.

inline const Plug kArrival = {1, 0x7F3C, 0x0C51, 0x74, 0xFF31, "Device"};

inline Plug removal(Plug arrival)
{
    arrival.arrived = 0;
    return arrival;
}

inline QStringList namesOf(const QList<Plug> &plugs)
{
    QStringList names;
    for (const Plug &plug : plugs) {
        names.append(plug.name);
    }
    return names;
}

/// Keeps a watch running during its lifetime.
class Watch
{
public:
    Watch() { startHidPlugWatch(); }
    ~Watch() { stopHidPlugWatch(); }

    Watch(const Watch &) = delete;
    Watch &operator=(const Watch &) = delete;
};

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "device/HidPlugHook_p.h"

/// Keeps a watch running during its lifetime.
class Watch
{
public:
    Watch() { startHidPlugWatch(); }
    ~Watch() { stopHidPlugWatch(); }

    Watch(const Watch &) = delete;
    Watch &operator=(const Watch &) = delete;
};

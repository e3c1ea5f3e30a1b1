// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/Desktop.h"

// This is home: there is nothing to set.
Desktop::Desktop() = default;

void Desktop::leaveOutPicturePlugins() { }

void Desktop::restoreEnvironment() { }

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/Desktop.h"

Desktop::Desktop() = default;

void Desktop::restoreEnvironment() { }

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/StatusAccessibility.h"

QAccessibleInterface *describeStatus(QLabel * /*label*/)
{
    // Here, Qt has no role and no event that would have a text spoken.
    return nullptr;
}

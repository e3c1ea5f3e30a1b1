// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

/// The X resources, which a desktop sets for the clients of its screen.
namespace ScreenResources {

/// Sets the resources to \a text, such as "Xft.dpi: 96". An empty text removes them.
void set(const QByteArray &text);

} // namespace ScreenResources

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

/// What a desktop tells the clients of its X screen.
namespace ScreenResources {

/// From now on tells \a text, such as "Xft.dpi: 96"; an empty one tells nothing.
void set(const QByteArray &text);

} // namespace ScreenResources

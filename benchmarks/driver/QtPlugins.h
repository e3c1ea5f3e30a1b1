// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QDir>

/// The plugins that Debian installs with Qt itself. What desktops add costs every Qt program some
/// memory and time, so figures of a machine with desktops would differ from those of another.
namespace QtPlugins {

/// Lets the programs in \a folder find no others. Exits the process if that fails.
void restrictTo(const QDir &folder);

} // namespace QtPlugins

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "benchmarks/driver/Row.h"

/// Starts of the program on the desktops that users have, compared with a bare X screen.
namespace DesktopRuns {

/// Measures \a program \a rounds times on each desktop, and on a bare screen the same one at
/// \a bareProgram, which finds no desktop's plugins.
Rows run(const QString &bareProgram, const QString &program, int rounds);

} // namespace DesktopRuns

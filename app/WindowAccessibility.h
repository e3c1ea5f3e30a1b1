// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

/// Describes the window to screen readers: only the parts that a user sees, and a status line that
/// is spoken when it changes.
namespace WindowAccessibility {

/// Registers the window with Qt's accessibility. Call it once, before you create the window.
void install();

} // namespace WindowAccessibility

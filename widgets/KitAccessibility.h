// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

/// Describes the kit's painted widgets to screen readers.
///
/// The name of a button is its accessible name, or else its caption, or else its tool tip. Give a
/// button without a caption one of the other two. Screen readers also learn its role and whether it
/// is checked or selected, and the value of a progress bar in steps of five percent.
namespace KitAccessibility {

/// Registers the kit with Qt's accessibility. Call it once, before you create any of the widgets.
/// A static library cannot register itself: the linker would drop the code.
void install();

} // namespace KitAccessibility

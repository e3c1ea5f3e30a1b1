// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

/// Tells screen readers what the kit's widgets are, which they cannot see from pictures.
///
/// A button is named by its accessible name, or else by its caption or else by its tool tip; so
/// give a button without a caption one of the other two. Its role and its mark, checked or
/// selected, are told as well. A progress bar tells its value, and that it has changed.
namespace KitAccessibility {

/// Makes Qt ask the kit about its widgets; a program calls it once, before it makes any of them. A
/// registration that ran by itself would be lost when the static library is linked.
void install();

} // namespace KitAccessibility

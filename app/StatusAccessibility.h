// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

class QAccessibleInterface;
class QLabel;

/// Returns what describes the status line to screen readers, or null if Qt's description of a label
/// suffices. Qt owns the result.
QAccessibleInterface *describeStatus(QLabel *label);

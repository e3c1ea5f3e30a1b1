// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "benchmarks/driver/Row.h"

/// Formats the results of the benchmarks.
namespace Report {

/// A description of the machine, without its name.
QString machine();

/// A table in Markdown.
QString table(const Rows &rows);

/// The ratios as bars with their targets, as an SVG picture.
QByteArray picture(const Rows &rows);

} // namespace Report

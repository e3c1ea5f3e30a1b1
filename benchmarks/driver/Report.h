// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "benchmarks/driver/Row.h"

/// What the benchmarks have found, for people.
namespace Report {

/// The machine in general words.
QString machine();

/// A table in Markdown.
QString table(const Rows &rows);

/// The ratios as bars against their targets, as an SVG picture.
QByteArray picture(const Rows &rows);

} // namespace Report

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "benchmarks/driver/Series.h"

#include <QList>
#include <QString>

/// One line of the report: what was measured of the program, and of a floor where there is one.
struct Row
{
    enum Kind {
        Information, ///< has no target
        Drifting, ///< a time; a busy machine moves it
        Gate, ///< a count, the same on every run; missing it fails the benchmarks
    };

    QString what;
    QString unit;
    QString floorName;
    Series ours;
    Series floor;
    Kind kind = Information;
    double target = 0; ///< largest ratio of the medians, or largest value where there is no floor

    bool hasFloor() const { return !floor.isEmpty(); }
    double ratio() const { return ours.median() / floor.median(); }

    /// Without a floor the worst run counts.
    bool isMet() const
    {
        return kind == Information || (hasFloor() ? ratio() : ours.largest()) <= target;
    }
};

using Rows = QList<Row>;

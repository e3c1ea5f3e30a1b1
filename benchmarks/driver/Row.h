// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "benchmarks/driver/Series.h"

#include <QList>
#include <QString>

/// One line of the report: the figures of the program and, if there is one, of a floor.
struct Row
{
    enum Kind {
        Information, ///< has no target
        Drifting, ///< a time, which depends on the load of the machine
        Gate, ///< a figure that hardly depends on the load; missing the target fails the benchmarks
    };

    QString what;
    QString unit;
    QString floorName;
    Series ours;
    Series floor;
    Kind kind = Information;
    double target = 0; ///< largest ratio of the medians, or largest value without a floor

    bool hasFloor() const { return !floor.isEmpty(); }
    double ratio() const { return ours.median() / floor.median(); }

    /// Compares the worst run if there is no floor.
    bool isMet() const
    {
        return kind == Information || (hasFloor() ? ratio() : ours.largest()) <= target;
    }
};

using Rows = QList<Row>;

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "app/MainWindow.h"
#include "widgets/CustomProgressBar.h"
#include "widgets/MButton.h"

#include <QLabel>

/// The parts of a window, found as a user tells them apart.
namespace WindowParts {

inline QLabel *titleLabel(const QWidget &window)
{
    return window.findChildren<QLabel *>(QString(), Qt::FindDirectChildrenOnly).at(0);
}

inline QLabel *statusLabel(const QWidget &window)
{
    return window.findChildren<QLabel *>(QString(), Qt::FindDirectChildrenOnly).at(1);
}

inline MButton *closeButton(const QWidget &window)
{
    return window.findChildren<MButton *>().at(0);
}

inline MButton *upgradeButton(const QWidget &window)
{
    return window.findChildren<MButton *>().at(1);
}

inline CustomProgressBar *progressBar(const QWidget &window)
{
    return window.findChild<CustomProgressBar *>();
}

} // namespace WindowParts

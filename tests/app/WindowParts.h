// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "app/MainWindow.h"
#include "widgets/CustomProgressBar.h"
#include "widgets/MButton.h"

#include <QImage>
#include <QLabel>

/// The parts of a window as a user tells them apart.
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

/// How many pixels of the bar's 430 are filled.
inline int filledPixels(const QWidget &window)
{
    QImage bar(430, 30, QImage::Format_RGB32);
    window.findChild<CustomProgressBar *>()->render(&bar);
    int x = 1; // column 0 is outline
    while (x < bar.width() && bar.pixelColor(x, 15) == QColor(0x19, 0xF0, 0xEA)) {
        ++x;
    }
    return x == 1 ? 0 : x;
}

} // namespace WindowParts

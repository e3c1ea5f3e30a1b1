// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "app/MainWindow.h"
#include "widgets/CustomProgressBar.h"
#include "widgets/MButton.h"

#include <QImage>
#include <QLabel>

#include <algorithm>

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

/// The bar's value, which only a bar much wider than it tells without rounding.
inline int progressValue(const QWidget &window)
{
    auto *shown = window.findChild<CustomProgressBar *>();
    const QRect place = shown->geometry();
    QImage wide(20001, 3, QImage::Format_RGB32);
    shown->resize(wide.size());
    shown->render(&wide);
    shown->setGeometry(place);
    const auto *pixels = reinterpret_cast<const QRgb *>(wide.constScanLine(1));
    const auto isFilled = [](QRgb pixel) {
        return pixel == qRgb(0x19, 0xF0, 0xEA);
    };
    const auto *end = std::partition_point(pixels + 1, pixels + wide.width(), isFilled);
    return static_cast<int>(end - pixels) / 2;
}

} // namespace WindowParts

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QImage>
#include <QRect>

class QWidget;

/// What a widget paints, and nothing else: no window background below it.
namespace WidgetPicture {

/// Shows where a widget painted nothing; no picture or caption of the tests has this colour.
constexpr QRgb kGround = 0xffff00ff;

/// An empty picture of the size of a widget, to paint what is expected.
QImage canvas(const QSize &size, QRgb ground = kGround);

/// Lets \a widget paint over \a ground, in its own size but at least one pixel.
QImage of(QWidget &widget, QRgb ground = kGround);

/// canvas(\a size) with \a picture at \a topLeft, cut off at the edges.
QImage with(const QSize &size, const QPoint &topLeft, const QImage &picture, QRgb ground = kGround);

/// The smallest rectangle around all pixels in which the pictures differ; null if none does.
QRect changedRegion(const QImage &before, const QImage &after);

/// Whether \a after is \a before with something written on it in \a ink alone. Smoothed edges may
/// mix the two, but somewhere the ink must prevail, and it must be there at all.
bool isWrittenIn(const QColor &ink, const QImage &before, const QImage &after);

} // namespace WidgetPicture

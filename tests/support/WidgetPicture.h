// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QImage>
#include <QRect>

class QWidget;

/// Pictures of what a widget paints, without a window background.
namespace WidgetPicture {

/// The colour of unpainted pixels. No picture or caption in the tests has this colour.
constexpr QRgb kGround = 0xffff00ff;

/// An empty picture on which to paint the expected result.
QImage canvas(const QSize &size, QRgb ground = kGround);

/// Paints \a widget over \a ground, in its own size but at least one pixel.
QImage of(QWidget &widget, QRgb ground = kGround);

/// Returns canvas(\a size) with \a picture at \a topLeft, clipped at the edges.
QImage with(const QSize &size, const QPoint &topLeft, const QImage &picture, QRgb ground = kGround);

/// The smallest rectangle around all pixels that differ; null if there are none.
QRect changedRegion(const QImage &before, const QImage &after);

/// Whether \a after is \a before with a text in the colour \a ink. Anti-aliased pixels may mix the
/// two colours, but some pixels must be mostly \a ink.
bool isWrittenIn(const QColor &ink, const QImage &before, const QImage &after);

} // namespace WidgetPicture

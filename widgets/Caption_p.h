// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

class QColor;
class QPainter;
class QRect;
class QString;

/// The lettering of the buttons that keep a caption of their own instead of using text().
namespace Caption {

/// Draws \a text in Arial at 12 points and in the colour \a ink into \a rect, aligned by \a flags.
/// Leaves \a painter alone if \a text is empty.
void draw(QPainter &painter, const QRect &rect, int flags, const QString &text, const QColor &ink);

} // namespace Caption

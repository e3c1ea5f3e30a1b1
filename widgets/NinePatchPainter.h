// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

#include <memory>

class NinePatchPainterPrivate;
class QPainter;
class QPixmap;
class QRect;

/// Paints a picture stretched to any rectangle while its border stays undistorted.
///
/// The picture is cut once, at construction, into four corners, four edges and a centre; to change
/// picture or borders make a new painter. GUI thread only. A null picture paints nothing.
class NinePatchPainter
{
public:
    /// Cuts \a picture by border widths in its own pixels. The two flags are kept and select
    /// nothing: all pieces stretch, whatever they say.
    NinePatchPainter(const QPixmap &picture, int left, int top, int right, int bottom,
                     bool horizontalStretch, bool verticalStretch);
    ~NinePatchPainter();
    Q_DISABLE_COPY(NinePatchPainter)

    /// Draws the picture with the given border widths in target pixels, which may differ from
    /// those of the picture.
    ///
    /// Only the size of \a target counts; the drawing starts at (0, 0), so translate \a painter to
    /// draw elsewhere. The centre is never drawn: what is below shows through. The painter's pen,
    /// brush and transformation are left as they were.
    void paint(QPainter *painter, const QRect &target, int left, int top, int right,
               int bottom) const;

private:
    std::unique_ptr<NinePatchPainterPrivate> d;
};

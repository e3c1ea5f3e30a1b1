// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QList>
#include <QPixmap>
#include <QRect>
#include <QString>

class QPainter;

/// The pictures and colours of a button with a background, an icon and a title.
///
/// A plain value. The button decides which event leads to which state and where the title goes.
struct TitledFace
{
    QList<QPixmap> backgrounds; ///< indexed by state; the frames of all strips in the order added
    int backgroundCount = 0; ///< as last set; may differ from the list's size
    QList<QPixmap> icons; ///< as above
    int iconCount = 0; ///< as last set; 1 means that the first icon serves all states
    QRect iconRect; ///< its top-left corner places the icon; its size is not used
    QRect spareRect; ///< reserved
    QList<QColor> textColors = {QColor(55, 55, 55), QColor(255, 255, 255), QColor(255, 255, 255),
                                QColor(50, 50, 50)}; ///< no state uses the last one

    /// Appends the \a count frames of the strip at \a path; those of earlier strips stay in front.
    /// A count below 1 is stored and appends nothing.
    void addBackgrounds(const QString &path, int count);
    /// The same for icons, drawn at the top left of \a rect.
    void addIcons(const QString &path, int count, const QRect &rect);

    /// Draws the background of \a state centred in \a size pixels and the icon over it. A picture
    /// that is missing from a list is skipped.
    void drawPictures(QPainter &painter, const QSize &size, int state) const;
    /// Draws \a title into \a rect, aligned by \a flags, in the colour of \a state.
    void drawTitle(QPainter &painter, const QRect &rect, int flags, const QString &title,
                   int state) const;
};

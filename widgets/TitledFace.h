// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QList>
#include <QPixmap>
#include <QRect>
#include <QString>

class QPainter;

/// What a button with a background, an icon and a title is painted from, by pointer state.
///
/// A plain value: which event leads to which state, and where the title stands, is its button's own
/// rule.
struct TitledFace
{
    QList<QPixmap> backgrounds; ///< by state; those of all strips, in the order of adding
    int backgroundCount = 0; ///< as last given, whatever the list holds
    QList<QPixmap> icons; ///< likewise
    int iconCount = 0; ///< as last given; 1 means that the first icon serves every state
    QRect iconRect; ///< the icon is drawn at its top left, its size plays no part in that
    QRect spareRect; ///< reserved
    QList<QColor> textColors = {QColor(55, 55, 55), QColor(255, 255, 255), QColor(255, 255, 255),
                                QColor(50, 50, 50)}; ///< no state reaches the last one

    /// Appends the \a count frames of the strip at \a path; those of earlier strips stay in front.
    /// A count below 1 is stored and appends nothing.
    void addBackgrounds(const QString &path, int count);
    /// The same for icons, drawn at the top left of \a rect.
    void addIcons(const QString &path, int count, const QRect &rect);

    /// Draws the background of \a state in the middle of \a size pixels and its icon over it. A
    /// picture that the lists are too short for is left out.
    void drawPictures(QPainter &painter, const QSize &size, int state) const;
    /// Draws \a title into \a rect, aligned by \a flags, in the colour of \a state.
    void drawTitle(QPainter &painter, const QRect &rect, int flags, const QString &title,
                   int state) const;
};

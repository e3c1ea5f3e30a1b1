// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QImage>
#include <QRect>
#include <QString>

/// How a title or a caption must look, letter by letter: written here without a widget.
struct Lettering
{
    QRect rect;
    int flags; ///< of QPainter::drawText
    QColor ink;

    /// \a ground with \a text written on it.
    QImage on(QImage ground, const QString &text) const;

    /// Makes Arial look like no other sans-serif font even where none of them is installed.
    static void makeArialStandOut();

    /// Adds the column "font": fonts of a widget that must not show in its title.
    static void addWidgetFonts();
};

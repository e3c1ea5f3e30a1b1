// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QFont>
#include <QGuiApplication>
#include <QMouseEvent>

/// What Qt 5 and Qt 6 spell differently.
namespace QtCompat {

/// The event of a pointer that enters a widget. In Qt 6 it has a position.
#if QT_VERSION_MAJOR == 5
using EnterEvent = QEvent;
#else
using EnterEvent = QEnterEvent;
#endif

/// Marks all attributes of \a font as set. Qt 6 has renamed the function.
inline void setAllAttributes(QFont &font)
{
#if QT_VERSION_MAJOR == 5
    font.resolve(~0U);
#else
    font.setResolveMask(~0U);
#endif
}

/// The position of \a event on the screens. Qt 6 has given all pointer events the same functions.
inline QPointF globalPosition(const QMouseEvent &event)
{
#if QT_VERSION_MAJOR == 5
    return event.screenPos();
#else
    return event.globalPosition();
#endif
}

/// Sets whether Qt scales windows by the density of the screen, in whole steps. Qt 6 always scales,
/// also by fractions, unless the environment variable QT_ENABLE_HIGHDPI_SCALING is 0.
inline void setScaling([[maybe_unused]] bool scales)
{
#if QT_VERSION_MAJOR == 5
    QCoreApplication::setAttribute(scales ? Qt::AA_EnableHighDpiScaling
                                          : Qt::AA_DisableHighDpiScaling);
#else
    using Policy = Qt::HighDpiScaleFactorRoundingPolicy;
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Policy::Round);
#endif
}

} // namespace QtCompat

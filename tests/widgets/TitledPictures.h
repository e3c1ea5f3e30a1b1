// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/support/PointerEvents.h"

#include <QImage>
#include <QString>

class QTemporaryDir;

/// Pictures for buttons with background, icon and title, and how such a button looks in them.
namespace TitledPictures {

constexpr QSize kSize(100, 40); ///< the button
constexpr QSize kIcon(24, 24);
constexpr QSize kStrip(300, 30); ///< striped backgrounds for the three states

/// The background of \a state in the striped picture of the size kStrip.
QImage background(int state);

/// A frame in a colour of its own, made from \a number and \a green; a null picture for a negative
/// number.
QImage plain(int number, const QSize &size, int green);

/// Saves \a count plain frames side by side, the first with the number \a first; gives the path.
QString savePlain(const QTemporaryDir &folder, int first, int count, const QSize &size, int green);

/// A button of kSize with \a background in its middle and \a icon over it.
QImage dressed(const QImage &background, const QImage &icon, const QPoint &iconTopLeft);

/// Brings \a button into a state: 0 normal, 1 hover, 2 pressed.
template <class Button> void bring(PointerEvents::Open<Button> &button, int state)
{
    PointerEvents::call(button, PointerEvents::Leave);
    if (state > 0) {
        PointerEvents::call(button, PointerEvents::Enter);
    }
    if (state > 1) {
        PointerEvents::call(button, PointerEvents::LeftPress);
    }
}

} // namespace TitledPictures

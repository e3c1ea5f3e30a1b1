// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QString>
#include <QStringList>

/// Recognises texts and states in a picture of the program's window.
///
/// The picture has 500 x 260 pixels, or an integer multiple of that on a dense screen. Texts are
/// recognised by drawing the possible ones in this process, whose fonts must have the same settings
/// as the program's.
namespace WindowLook {

/// Click positions of the buttons.
constexpr QPoint kUpgradeButton(250, 218);
constexpr QPoint kCloseButton(470, 27);

/// The progress bar.
constexpr QRect kProgressArea(35, 150, 430, 30);

/// The status line in the picture \a window.
QRect statusArea(const QImage &window);

/// The status text: one of those in StatusText that are visible long enough to read, empty, or one
/// of \a others, such as an error text of the tool. Null for any other text.
QString statusText(const QImage &window, const QStringList &others = {});

/// The value of the progress bar, 0 to 10000, with the precision of its 430 pixels.
int progress(const QImage &window);

/// Whether the upgrade button looks enabled.
bool isUpgradeEnabled(const QImage &window);

} // namespace WindowLook

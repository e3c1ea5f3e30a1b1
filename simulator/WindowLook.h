// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QString>
#include <QStringList>

/// Reads the program's window from a picture of it, as a user does from the screen.
///
/// The picture is 500 x 260 pixels. Text is recognised by drawing what it may say with this
/// process's fonts, which have to be set up as the program's own are.
namespace WindowLook {

/// The one of \a candidates that the status line shows; null when it shows none of them. An empty
/// candidate is a status line without text.
QString statusText(const QImage &window, const QStringList &candidates);

/// How far the progress bar is filled, 0 to 10000, in steps of one of its 430 pixels.
int progress(const QImage &window);

/// Whether the upgrade button looks as if it could be clicked.
bool isUpgradeEnabled(const QImage &window);

} // namespace WindowLook

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QPoint>
#include <QString>
#include <QStringList>

/// Reads the program's window from a picture of it, as a user does from the screen.
///
/// The picture is 500 x 260 pixels. Text is recognised by drawing what it may say with this
/// process's fonts, which have to be set up as the program's own are.
namespace WindowLook {

/// Where its buttons can be clicked.
constexpr QPoint kUpgradeButton(250, 218);
constexpr QPoint kCloseButton(470, 27);

/// The texts of the status line that a user has time to read.
constexpr char kNoDeviceFound[] = "Find Upgrade Device Error!";
constexpr char kUpgrading[] = "Upgrading, please do not plug or unplug the device!";
constexpr char kSuccess[] = "Upgrade Successfully";

/// The text that the status line shows: one of these, none (then it is empty) or one of \a others,
/// such as words of the tool's. Null when it shows another one.
QString statusText(const QImage &window, const QStringList &others = {});

/// How far the progress bar is filled, 0 to 10000, in steps of one of its 430 pixels.
int progress(const QImage &window);

/// Whether the upgrade button looks as if it could be clicked.
bool isUpgradeEnabled(const QImage &window);

} // namespace WindowLook

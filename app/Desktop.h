// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QList>

/// Makes the window look the same on every desktop as on its home platform, where a point is a
/// pixel and the window grows with the screen's scale by itself, and keeps away what costs memory
/// and time there and gives the window nothing.
///
/// Make one before QApplication: Qt reads these settings from the environment only. A setting that
/// the user has made already stays as it is.
class Desktop
{
public:
    Desktop();

    /// Spares the program the picture plugins of the system: its own pictures need none. Call it
    /// between QApplication, which finds its plugins as ever, and the first picture.
    void leaveOutPicturePlugins();

    /// Takes back what the constructor added to the environment, so that child processes do not
    /// inherit it. Call it once the window is shown; Qt has read everything by then.
    void restoreEnvironment();

private:
    /// Leaves a setting of the user's as it is; returns whether it was added.
    bool addSetting(const QByteArray &name, const QByteArray &value);

    QList<QByteArray> m_added;
};

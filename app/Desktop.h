// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QMap>
#include <QStringList>

#include <memory>

class MainWindow;
class QApplication;

/// Deletes the application object, or leaves it to the end of the process where Qt cannot delete it
/// safely.
struct ApplicationDeleter
{
    void operator()(QApplication *application) const;
};

using ApplicationPointer = std::unique_ptr<QApplication, ApplicationDeleter>;

/// Makes the window look and move the same on every desktop as on its home platform, where a point
/// is a pixel and the window grows with the screen's scale by itself, and keeps away what costs
/// memory and time there and gives the window nothing.
///
/// Make one before QApplication: Qt reads these settings from the environment only. A setting that
/// the user has made already stays as it is.
class Desktop
{
public:
    Desktop();

    /// Makes the application object. \a argc and \a argv must outlive it.
    ApplicationPointer startQt(int &argc, char **argv);

    /// Spares the program the picture plugins of the system: its own pictures need none. Call it
    /// before the first picture is loaded; adopt() ends it.
    void leaveOutPicturePlugins();

    /// Prepares the finished \a window for this desktop. Call it before the window is shown.
    void adopt(MainWindow &window);

    /// Takes back what was added to the environment, so that child processes do not inherit it.
    /// Call it once the window is shown; Qt has read everything by then.
    void restoreEnvironment();

private:
    /// Leaves a setting of the user's as it is; returns whether it was added.
    bool addSetting(const QByteArray &name, const QByteArray &value);
    bool changeSetting(const QByteArray &name, const QByteArray &value);

    QMap<QByteArray, QByteArray> m_before; ///< what was set before; null for nothing
    bool m_findsScale = false;
    bool m_makesPointPixel = false;
    QStringList m_libraryPaths;
};

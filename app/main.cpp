// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/Desktop.h"
#include "app/MainWindow.h"
#include "widgets/KitAccessibility.h"

#include <QApplication>
#include <QPixmapCache>

int main(int argc, char *argv[])
{
    Desktop desktop;
    QApplication application(argc, argv);
    desktop.leaveOutPicturePlugins();
    KitAccessibility::install();
    // Every picture is loaded once. Kept for another time, it would only wake the program up half a
    // minute later to be thrown away.
    QPixmapCache::setCacheLimit(0);
    MainWindow window;
    window.show();
    desktop.restoreEnvironment();
    return QApplication::exec();
}

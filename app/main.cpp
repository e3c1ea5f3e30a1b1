// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/Desktop.h"
#include "app/MainWindow.h"
#include "app/WindowAccessibility.h"
#include "widgets/KitAccessibility.h"

#include <QApplication>
#include <QPixmapCache>

int main(int argc, char *argv[])
{
    Desktop desktop;
    const ApplicationPointer application = desktop.startQt(argc, argv);
    KitAccessibility::install();
    WindowAccessibility::install();
    // Every picture is loaded once. Kept for another time, it would only wake the program up half a
    // minute later to be thrown away.
    QPixmapCache::setCacheLimit(0);
    desktop.leaveOutPicturePlugins();
    MainWindow window;
    desktop.adopt(window);
    window.show();
    desktop.restoreEnvironment();
    return QApplication::exec();
}

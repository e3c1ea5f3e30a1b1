// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/Desktop.h"
#include "app/MainWindow.h"
#include "widgets/KitAccessibility.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    Desktop desktop;
    QApplication application(argc, argv);
    desktop.leaveOutPicturePlugins();
    KitAccessibility::install();
    MainWindow window;
    window.show();
    desktop.restoreEnvironment();
    return QApplication::exec();
}

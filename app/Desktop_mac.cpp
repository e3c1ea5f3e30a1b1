// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/Desktop.h"

#include <QApplication>

void ApplicationDeleter::operator()(QApplication *application) const
{
    delete application;
}

// This is home: there is nothing to set.
Desktop::Desktop() = default;

ApplicationPointer Desktop::startQt(int &argc, char **argv)
{
    return ApplicationPointer(new QApplication(argc, argv));
}

void Desktop::leaveOutPicturePlugins() { }

void Desktop::adopt(MainWindow & /*window*/) { }

void Desktop::restoreEnvironment() { }

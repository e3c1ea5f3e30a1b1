// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/Desktop.h"

#include <QApplication>

// This is home: there is nothing to set.
Desktop::Desktop() = default;

std::unique_ptr<QApplication> Desktop::startQt(int &argc, char **argv)
{
    return std::make_unique<QApplication>(argc, argv);
}

void Desktop::leaveOutPicturePlugins() { }

void Desktop::adopt(MainWindow & /*window*/) { }

void Desktop::restoreEnvironment() { }

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include <QAccessible>
#include <QApplication>
#include <QTimer>
#include <QWidget>

#include <cstdio>

// A library that a test has loaded into the program as it ships, to tell from inside what a screen
// reader finds there: the name of each button on a line of its own. Then it ends the program.

namespace {

void tellButtons()
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        const QAccessibleInterface *root = QAccessible::queryAccessibleInterface(window);
        for (int i = 0; root != nullptr && i < root->childCount(); ++i) {
            const QAccessibleInterface *child = root->child(i);
            if (child->role() == QAccessible::PushButton) {
                std::puts(qPrintable(child->text(QAccessible::Name)));
            }
        }
    }
    QCoreApplication::quit();
}

/// Called within the application object's constructor; the window is there once events are handled.
void waitForWindow()
{
    QTimer::singleShot(0, tellButtons);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(waitForWindow)

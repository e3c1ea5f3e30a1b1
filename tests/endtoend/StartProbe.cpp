// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include <QAccessible>
#include <QApplication>
#include <QPixmapCache>
#include <QTimer>
#include <QWidget>

#include <cstdio>

// A library that a test has loaded into the program as it ships, to tell from inside what cannot be
// seen from outside, each on a line of its own: the names that a screen reader finds for the
// buttons, and how many kilobytes of pictures Qt may keep. Then it ends the program.

namespace {

void tell()
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
    std::printf("%d kB\n", QPixmapCache::cacheLimit());
    QCoreApplication::quit();
}

/// Called within the application object's constructor; the window is there once events are handled.
void waitForWindow()
{
    QTimer::singleShot(0, tell);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(waitForWindow)

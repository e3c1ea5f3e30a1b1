// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include <QAccessible>
#include <QApplication>
#include <QPixmapCache>
#include <QTimer>
#include <QWidget>

#include <cstdio>

// A library that a test preloads into the unmodified program. It prints the names of the buttons
// for screen readers and the limit of the pixmap cache in kilobytes, one per line, and exits the
// program.

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

/// Called in the application object's constructor. The window exists once events are processed.
void waitForWindow()
{
    QTimer::singleShot(0, qApp, tell);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(waitForWindow)

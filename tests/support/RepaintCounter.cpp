// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/support/RepaintCounter.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTest>
#include <QWidget>

#include <utility>

RepaintCounter::RepaintCounter(QWidget *widget)
{
    if (!QTest::qWaitForWindowExposed(widget->window())) {
        qFatal("a test widget does not become visible");
    }
    widget->installEventFilter(this);
    take();
}

int RepaintCounter::take()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents();
    return std::exchange(m_count, 0);
}

bool RepaintCounter::eventFilter(QObject * /*watched*/, QEvent *event)
{
    if (event->type() == QEvent::Paint) {
        ++m_count;
    }
    return false;
}

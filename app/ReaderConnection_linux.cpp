// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/ReaderConnection_linux.h"

#include <QAbstractEventDispatcher>
#include <QApplication>

ReaderConnection::ReaderConnection(QApplication &application)
    : QObject(&application)
{
    application.installEventFilter(this);
    QAccessible::installActivationObserver(this);
}

ReaderConnection::~ReaderConnection()
{
    QAccessible::removeActivationObserver(this);
}

bool ReaderConnection::eventFilter(QObject *watched, QEvent * /*event*/)
{
    // The patch makes this object call itself. When it is connected, another object calls it.
    m_isEarly = watched->inherits("QSpiAccessibleBridge");
    return false;
}

void ReaderConnection::accessibilityActiveChanged(bool /*active*/)
{
    if (m_connecting.isRunning()) {
        m_connecting.quit();
        return;
    }
    if (m_isEarly) {
        // Otherwise the loop would sleep on events that have been posted already.
        QCoreApplication::eventDispatcher()->wakeUp();
        m_connecting.exec();
    }
    QCoreApplication::instance()->removeEventFilter(this);
    m_isEarly = false;
}

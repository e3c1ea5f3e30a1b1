// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QPointer>
#include <QProcess>
#include <QTimer>
#include <QVector>

/// Gets to know the window's tool process and poll timers, which nobody hands out, by the events
/// that reach them, and holds the timers' ticks back unless told otherwise: a test gives its own.
class EventWatch : public QObject
{
public:
    EventWatch() { QCoreApplication::instance()->installEventFilter(this); }

    bool holdsTicks = true;
    /// Poll timers that wanted to tick, oldest first; null once deleted.
    QVector<QPointer<QTimer>> timers;
    /// Tool processes that were started, oldest first; null once deleted.
    QVector<QPointer<QProcess>> processes;

    /// Deletes what the window has left behind; its tool must be at its end.
    void deleteAll()
    {
        for (const QPointer<QTimer> &timer : qAsConst(timers)) {
            delete timer.data();
        }
        for (const QPointer<QProcess> &process : qAsConst(processes)) {
            if (!process.isNull()) {
                process->waitForFinished();
            }
            delete process.data();
        }
    }

    bool eventFilter(QObject *receiver, QEvent *event) override
    {
        auto *process = qobject_cast<QProcess *>(receiver->parent());
        if (event->type() == QEvent::SockAct && process != nullptr
            && !processes.contains(process)) {
            processes.append(process);
        }
        auto *timer = qobject_cast<QTimer *>(receiver);
        if (event->type() != QEvent::Timer || timer == nullptr || timer->parent() != nullptr
            || timer->interval() != 30) {
            return false;
        }
        if (!timers.contains(timer)) {
            timers.append(timer);
        }
        return holdsTicks;
    }
};

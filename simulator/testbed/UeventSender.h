// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <thread>

/// Sends device events to the programs that listen inside a testbed.
///
/// umockdev's own sender aborts the process if a listener has about ten unread events. This one
/// queues events and sends them from a separate thread. Each listener gets its events in order. The
/// destructor discards queued events.
class UeventSender
{
public:
    /// \a directory is the testbed's root, which contains the listeners' sockets.
    explicit UeventSender(QString directory);
    ~UeventSender();

    UeventSender(const UeventSender &) = delete;
    UeventSender &operator=(const UeventSender &) = delete;

    /// Sends an event to all current listeners. \a properties are "KEY=value" entries, each with a
    /// zero byte at its end, including ACTION, DEVPATH, SUBSYSTEM and SEQNUM.
    void send(const QByteArray &subsystem, const QByteArray &deviceType,
              const QByteArray &properties);

private:
    using Queue = std::deque<QByteArray>;

    void run();
    void deliver(const QByteArray &listener, Queue &queue) const;

    const QString m_directory;
    const int m_socket;
    std::map<QByteArray, Queue> m_queues;
    bool m_stopping = false;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::thread m_thread;
};

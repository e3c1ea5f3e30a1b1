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

/// Sends device events to the programs that listen for them inside a testbed.
///
/// umockdev's own sender stops the process when about ten events lie unread at a listener. This
/// one queues what a listener cannot take yet and tries again on a thread of its own; each listener
/// gets its events in order. What is still queued when the sender goes is lost.
class UeventSender
{
public:
    /// \a directory is the testbed's root, where the listeners' sockets lie.
    explicit UeventSender(QString directory);
    ~UeventSender();

    UeventSender(const UeventSender &) = delete;
    UeventSender &operator=(const UeventSender &) = delete;

    /// Sends one event to everybody who listens now. \a properties are "KEY=value" entries, each
    /// with a zero byte at its end; ACTION, DEVPATH, SUBSYSTEM and SEQNUM must be among them.
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

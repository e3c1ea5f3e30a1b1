// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

#include <atomic>
#include <functional>
#include <thread>

/// A device behind a pseudo terminal, played by a function on a thread of its own.
class PtyDevice
{
public:
    /// Gets the bytes as they come and returns what the device sends back.
    using Answer = std::function<QByteArray(const QByteArray &)>;

    enum Manner {
        Quiet, ///< speaks when it is spoken to
        Talkative ///< its answer is asked for all the time; what the host does not read is lost
    };

    /// \a answer runs on the device's thread, from now until unplug().
    explicit PtyDevice(Answer answer, Manner manner = Quiet);
    ~PtyDevice();

    PtyDevice(const PtyDevice &) = delete;
    PtyDevice &operator=(const PtyDevice &) = delete;

    /// The device pulls its own plug once it has received as many bytes. Set it before it has.
    void unplugAfter(int bytes) { m_unplugAfter = bytes; }

    /// Ends the terminal and the thread; what \a answer used may be looked at afterwards.
    void unplug();

    /// The terminal to open.
    QString path() const { return m_path; }

    /// A terminal that is open already, for both directions; it stays the device's.
    int fd() const { return m_terminal; }

    /// Bytes received so far.
    int received() const { return m_received; }

private:
    void serve();
    bool exchange();

    Answer m_answer;
    Manner m_manner;
    QString m_path;
    int m_master = -1;
    int m_terminal = -1;
    int m_stopReceiver = -1;
    int m_stopSender = -1;
    std::atomic_int m_unplugAfter;
    std::atomic_int m_received{0};
    std::thread m_thread;
};

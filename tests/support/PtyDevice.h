// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

#include <atomic>
#include <functional>
#include <thread>

/// A device behind a pseudo terminal, simulated by a function in a separate thread.
class PtyDevice
{
public:
    /// Receives the bytes as they arrive and returns the response.
    using Answer = std::function<QByteArray(const QByteArray &)>;

    enum Manner {
        Quiet, ///< only responds to the host
        Talkative ///< sends responses all the time; what the host does not read is lost
    };

    /// Calls \a answer in the device's thread until unplug().
    explicit PtyDevice(Answer answer, Manner manner = Quiet);
    ~PtyDevice();

    PtyDevice(const PtyDevice &) = delete;
    PtyDevice &operator=(const PtyDevice &) = delete;

    /// Unplugs the device once it has received this number of bytes. Set it before then.
    void unplugAfter(int bytes) { m_unplugAfter = bytes; }

    /// Closes the terminal and ends the thread. The state of the callback is accessible afterwards.
    void unplug();

    /// The terminal to open.
    QString path() const { return m_path; }

    /// A descriptor of the terminal for reading and writing, owned by this object.
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

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/dfu/DfuClient.h"
#include "simulator/dfu/DfuPackage.h"
#include "tests/fuzz/FuzzBytes.h"

#include <QVector>

#include <array>

#include <sys/socket.h>
#include <unistd.h>

/// Lets the client flash a small package to a device whose answers are known beforehand.
///
/// The device's end of a socket pair holds all answers before the client asks, so that there is no
/// thread. After the last answer, the client sees the end of the line.
namespace HostSession {

struct Outcome
{
    bool succeeded = false;
    QString error;
    QVector<QByteArray> requests;
};

/// Small, so that the requests fit into the socket's buffer.
inline DfuPackage package()
{
    return DfuPackage::forFirmware("abcdefghijklmnopqrstuvwx");
}

inline QByteArray receivedBy(int device)
{
    QByteArray bytes;
    std::array<char, 4096> chunk{};
    for (ssize_t size = 1; size > 0; bytes.append(chunk.data(), static_cast<int>(size))) {
        size = qMax<ssize_t>(::read(device, chunk.data(), chunk.size()), 0);
    }
    return bytes;
}

/// Reads the input of the client's target: the number of writes per receipt and the answers.
inline Outcome play(FuzzBytes &input)
{
    static const DfuPackage flashed = package();
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        qFatal("cannot create a socket pair");
    }
    DfuClient client(ends[0], FramedPort::Line::Socket);
    client.setTimeout(1000);
    client.setReceiptInterval(static_cast<quint16>(input.byte()));
    const QByteArray answers = input.rest();
    const auto size = static_cast<std::size_t>(answers.size());
    if (::write(ends[1], answers.constData(), size) != static_cast<ssize_t>(size)) {
        qFatal("cannot write the answers");
    }
    shutdown(ends[1], SHUT_WR);

    Outcome outcome;
    outcome.succeeded = client.flash(flashed.initPacket, flashed.firmware);
    outcome.error = client.errorString();
    ::close(ends[0]);
    outcome.requests = Slip(4096).decode(receivedBy(ends[1]));
    ::close(ends[1]);
    return outcome;
}

} // namespace HostSession

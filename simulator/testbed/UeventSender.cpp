// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/testbed/UeventSender.h"

#include <QDir>
#include <QtEndian>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <utility>

namespace {

/// The header that udevd sends before the properties. Some numbers are in network byte order.
struct Header
{
    std::array<char, 8> prefix = {'l', 'i', 'b', 'u', 'd', 'e', 'v', '\0'};
    quint32 magic = 0; // network order
    quint32 headerSize = 0;
    quint32 propertiesOffset = 0;
    quint32 propertiesLength = 0;
    quint32 subsystemHash = 0; // network order
    quint32 deviceTypeHash = 0; // network order
    quint32 tagBloomHigh = 0;
    quint32 tagBloomLow = 0;
};

/// MurmurHash2 with seed 0. Listeners filter events by the hash of their subsystem.
quint32 hash(const QByteArray &text)
{
    constexpr quint32 kMultiplier = 0x5bd1e995;
    const auto *bytes = reinterpret_cast<const uchar *>(text.constData());
    auto left = static_cast<quint32>(text.size());
    quint32 result = left;
    for (; left >= 4; left -= 4, bytes += 4) {
        quint32 block = qFromLittleEndian<quint32>(bytes) * kMultiplier;
        block = (block ^ (block >> 24)) * kMultiplier;
        result = (result * kMultiplier) ^ block;
    }
    if (left > 0) {
        std::array<uchar, 4> tail = {};
        std::copy_n(bytes, left, tail.begin());
        result = (result ^ qFromLittleEndian<quint32>(tail.data())) * kMultiplier;
    }
    result = (result ^ (result >> 13)) * kMultiplier;
    return result ^ (result >> 15);
}

QByteArray message(const QByteArray &subsystem, const QByteArray &deviceType,
                   const QByteArray &properties)
{
    Header header;
    header.magic = qToBigEndian<quint32>(0xfeedcafe);
    header.headerSize = sizeof header;
    header.propertiesOffset = sizeof header;
    header.propertiesLength = static_cast<quint32>(properties.size());
    header.subsystemHash = qToBigEndian(hash(subsystem));
    header.deviceTypeHash = deviceType.isEmpty() ? 0 : qToBigEndian(hash(deviceType));
    return QByteArray(reinterpret_cast<const char *>(&header), sizeof header) + properties;
}

} // namespace

UeventSender::UeventSender(QString directory)
    : m_directory(std::move(directory))
    , m_socket(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0))
    , m_thread([this] { run(); })
{ }

UeventSender::~UeventSender()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_changed.notify_one();
    m_thread.join();
    ::close(m_socket);
}

void UeventSender::send(const QByteArray &subsystem, const QByteArray &deviceType,
                        const QByteArray &properties)
{
    const QByteArray event = message(subsystem, deviceType, properties);
    const QStringList listeners = QDir(m_directory).entryList({"event*"}, QDir::System);
    const std::lock_guard lock(m_mutex);
    for (const QString &listener : listeners) {
        // Sends at once: a later listener may reuse the socket of one that has gone.
        const QByteArray path = QFile::encodeName(m_directory + '/' + listener);
        m_queues[path].push_back(event);
        deliver(path, m_queues[path]);
    }
    m_changed.notify_one();
}

void UeventSender::run()
{
    constexpr auto kRetryAfter = std::chrono::milliseconds(10);
    std::unique_lock lock(m_mutex);
    while (!m_stopping) {
        if (m_queues.empty()) {
            m_changed.wait(lock);
        } else {
            m_changed.wait_for(lock, kRetryAfter);
        }
        for (auto entry = m_queues.begin(); entry != m_queues.end();) {
            deliver(entry->first, entry->second);
            entry = entry->second.empty() ? m_queues.erase(entry) : std::next(entry);
        }
    }
}

void UeventSender::deliver(const QByteArray &listener, Queue &queue) const
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::copy_n(listener.constData(),
                std::min<std::size_t>(static_cast<std::size_t>(listener.size()),
                                      sizeof address.sun_path - 1),
                address.sun_path);
    while (!queue.empty()) {
        const QByteArray &event = queue.front();
        const auto sent
            = sendto(m_socket, event.constData(), static_cast<std::size_t>(event.size()),
                     MSG_NOSIGNAL, reinterpret_cast<const sockaddr *>(&address), sizeof address);
        if (sent < 0 && errno == EAGAIN) {
            return;
        }
        if (sent < 0) { // the listener is gone
            queue.clear();
            return;
        }
        queue.pop_front();
    }
}

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QList>

#include <functional>
#include <memory>
#include <mutex>

// Names of the umockdev library.
struct _UMockdevIoctlBase; // NOLINT(bugprone-reserved-identifier)
struct _UMockdevIoctlClient; // NOLINT(bugprone-reserved-identifier)

/// The kernel's side of a hidraw node: responds to ioctl requests and takes reports.
///
/// It serves programs in the testbed's thread. The functions of this class are thread-safe.
class HidNode
{
public:
    using WriteHandler = std::function<void(const QByteArray &bytes, bool failed)>;

    struct Identity
    {
        int vendorId = 0;
        int productId = 0;
        QByteArray name;
        QByteArray serialNumber;
        QByteArray reportDescriptor;
    };

    HidNode(Identity identity, WriteHandler onWrite);
    ~HidNode();

    HidNode(const HidNode &) = delete;
    HidNode &operator=(const HidNode &) = delete;

    /// The object to attach to the node, owned by this object.
    _UMockdevIoctlBase *handler() const { return m_handler; }

    void setWriteFails(bool fails);
    QList<QByteArray> reports() const;
    QList<QByteArray> failedReports() const;
    /// The number of times that programs have opened the node.
    int handlesSoFar() const;

private:
    static int onControl(_UMockdevIoctlBase *, _UMockdevIoctlClient *client, void *self);
    static int onWrite(_UMockdevIoctlBase *, _UMockdevIoctlClient *client, void *self);
    static void onConnected(_UMockdevIoctlBase *, _UMockdevIoctlClient *client, void *self);

    QByteArray answer(unsigned long request) const;

    const Identity m_identity;
    const WriteHandler m_onWrite;
    _UMockdevIoctlBase *const m_handler;
    mutable std::mutex m_mutex;
    QList<QByteArray> m_reports;
    QList<QByteArray> m_failedReports;
    bool m_writeFails = false;
    int m_handlesSoFar = 0;
};

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QList>

#include <functional>
#include <memory>
#include <mutex>

// The library's own names.
struct _UMockdevIoctlBase; // NOLINT(bugprone-reserved-identifier)
struct _UMockdevIoctlClient; // NOLINT(bugprone-reserved-identifier)

/// The kernel's side of one hidraw node: answers what programs ask it and takes what they write.
///
/// Programs are served on the testbed's thread; the functions here may be called on any.
class HidNode
{
public:
    using WriteHandler = std::function<void(const QByteArray &bytes)>;

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

    /// The object to attach to the node; it stays this one's own.
    _UMockdevIoctlBase *handler() const { return m_handler; }

    void setWriteFails(bool fails);
    QList<QByteArray> reports() const;
    /// How often programs have opened the node.
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
    bool m_writeFails = false;
    int m_handlesSoFar = 0;
};

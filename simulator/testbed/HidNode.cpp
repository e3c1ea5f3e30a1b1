// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/testbed/HidNode.h"

#include <umockdev.h>

#include <linux/hidraw.h>
#include <linux/input.h>

#include <cerrno>
#include <cstring>
#include <utility>

namespace {

template <typename T> QByteArray bytesOf(const T &value)
{
    return {reinterpret_cast<const char *>(&value), sizeof value};
}

void replace(UMockdevIoctlData *data, const QByteArray &bytes)
{
    QByteArray copy = bytes; // the library's pointer is not const, although it only reads
    umockdev_ioctl_data_update(data, 0, reinterpret_cast<guint8 *>(copy.data()), int(copy.size()));
}

} // namespace

HidNode::HidNode(Identity identity, WriteHandler onWrite)
    : m_identity(std::move(identity))
    , m_onWrite(std::move(onWrite))
    , m_handler(umockdev_ioctl_base_new())
{
    const auto connect = [this](const char *signal, auto function) {
        g_signal_connect_data(m_handler, signal, reinterpret_cast<GCallback>(function), this,
                              nullptr, GConnectFlags(0));
    };
    connect("handle-ioctl", &HidNode::onControl);
    connect("handle-write", &HidNode::onWrite);
    connect("client-connected", &HidNode::onConnected);
}

HidNode::~HidNode()
{
    g_signal_handlers_disconnect_matched(m_handler, G_SIGNAL_MATCH_DATA, 0, 0, nullptr, nullptr,
                                         this);
    const std::lock_guard lock(m_mutex); // waits for a request in progress
    g_object_unref(m_handler);
}

void HidNode::setWriteFails(bool fails)
{
    const std::lock_guard lock(m_mutex);
    m_writeFails = fails;
}

QList<QByteArray> HidNode::reports() const
{
    const std::lock_guard lock(m_mutex);
    return m_reports;
}

QList<QByteArray> HidNode::failedReports() const
{
    const std::lock_guard lock(m_mutex);
    return m_failedReports;
}

int HidNode::handlesSoFar() const
{
    const std::lock_guard lock(m_mutex);
    return m_handlesSoFar;
}

int HidNode::onControl(UMockdevIoctlBase * /*base*/, UMockdevIoctlClient *client, void *self)
{
    const gulong request = umockdev_ioctl_client_get_request(client);
    const QByteArray answer = static_cast<HidNode *>(self)->answer(request);
    if (answer.isEmpty()) {
        umockdev_ioctl_client_complete(client, -1, EINVAL);
        return TRUE;
    }
    UMockdevIoctlData *const argument = umockdev_ioctl_client_get_arg(client);
    UMockdevIoctlData *const target
        = umockdev_ioctl_data_resolve(argument, 0, static_cast<gsize>(answer.size()), nullptr);
    replace(target, answer);
    g_object_unref(target);
    umockdev_ioctl_client_complete(client, 0, 0);
    return TRUE;
}

int HidNode::onWrite(UMockdevIoctlBase * /*base*/, UMockdevIoctlClient *client, void *self)
{
    auto *const node = static_cast<HidNode *>(self);
    const UMockdevIoctlData *const data = umockdev_ioctl_client_get_arg(client);
    const QByteArray bytes(reinterpret_cast<const char *>(data->data), data->data_len);
    const std::lock_guard lock(node->m_mutex);
    const bool fails = node->m_writeFails;
    (fails ? node->m_failedReports : node->m_reports).append(bytes);
    node->m_onWrite(bytes, fails);
    umockdev_ioctl_client_complete(client, fails ? -1 : bytes.size(), fails ? EIO : 0);
    return TRUE;
}

void HidNode::onConnected(UMockdevIoctlBase * /*base*/, UMockdevIoctlClient * /*client*/,
                          void *self)
{
    auto *const node = static_cast<HidNode *>(self);
    const std::lock_guard lock(node->m_mutex);
    ++node->m_handlesSoFar;
}

QByteArray HidNode::answer(unsigned long request) const
{
    if (request == HIDIOCGRDESCSIZE) {
        return bytesOf(int(m_identity.reportDescriptor.size()));
    }
    if (request == HIDIOCGRDESC) {
        hidraw_report_descriptor descriptor = {};
        descriptor.size = static_cast<__u32>(m_identity.reportDescriptor.size());
        std::memcpy(descriptor.value, m_identity.reportDescriptor.constData(), descriptor.size);
        return bytesOf(descriptor);
    }
    if (request == HIDIOCGRAWINFO) {
        return bytesOf(hidraw_devinfo{BUS_USB, static_cast<__s16>(m_identity.vendorId),
                                      static_cast<__s16>(m_identity.productId)});
    }
    // These requests contain the size of the caller's buffer.
    const QByteArray terminator(1, '\0');
    if (_IOC_TYPE(request) == 'H' && _IOC_NR(request) == _IOC_NR(HIDIOCGRAWNAME(0))) {
        return (m_identity.name + terminator).left(_IOC_SIZE(request));
    }
    if (_IOC_TYPE(request) == 'H' && _IOC_NR(request) == _IOC_NR(HIDIOCGRAWUNIQ(0))) {
        return (m_identity.serialNumber + terminator).left(_IOC_SIZE(request));
    }
    return {};
}

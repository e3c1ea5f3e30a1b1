// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "device/HidPlugHook.h"

#include <QList>
#include <QMetaType>
#include <QString>
#include <QThread>

#include <algorithm>
#include <functional>

/// One call of the plug callback.
struct Plug
{
    int arrived = 0;
    int vendorId = 0;
    int productId = 0;
    int usage = 0;
    int usagePage = 0;
    QString name = {};

    bool operator==(const Plug &other) const
    {
        return arrived == other.arrived && vendorId == other.vendorId
            && productId == other.productId && usage == other.usage && usagePage == other.usagePage
            && name == other.name;
    }
};

inline char *toString(const Plug &plug)
{
    return qstrdup(qPrintable(QString("arrived %1 ids %2:%3 usage %4 page %5 name \"%6\"")
                                  .arg(plug.arrived)
                                  .arg(plug.vendorId, 0, 16)
                                  .arg(plug.productId, 0, 16)
                                  .arg(plug.usage, 0, 16)
                                  .arg(plug.usagePage, 0, 16)
                                  .arg(plug.name)));
}

Q_DECLARE_METATYPE(Plug)

/// Registers a plug callback during its lifetime and records the calls.
class PlugRecorder
{
public:
    PlugRecorder() { register_hid_plug_callback(record, this); }
    ~PlugRecorder() { register_hid_plug_callback(nullptr, nullptr); }

    PlugRecorder(const PlugRecorder &) = delete;
    PlugRecorder &operator=(const PlugRecorder &) = delete;

    static void record(int arrived, int vendorId, int productId, int usage, int usagePage,
                       const wchar_t *productName, void *context)
    {
        auto *const self = static_cast<PlugRecorder *>(context);
        self->m_threads.append(QThread::currentThread());
        self->plugs.append(
            {arrived, vendorId, productId, usage, usagePage, QString::fromWCharArray(productName)});
        if (self->onPlug) {
            self->onPlug();
        }
    }

    /// Whether all calls so far were in the calling thread.
    bool wasCalledHere() const
    {
        return std::all_of(m_threads.begin(), m_threads.end(), [](const QThread *thread) {
            return thread == QThread::currentThread();
        });
    }

    QList<Plug> plugs;
    std::function<void()> onPlug = {};

private:
    QList<const QThread *> m_threads;
};

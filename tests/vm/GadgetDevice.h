// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/device/DeviceIdentity.h"
#include "simulator/dfu/Bootloader.h"
#include "tests/vm/Gadget.h"

#include <QElapsedTimer>
#include <QObject>

#include <memory>

class DeviceFile;
class OpenWatch;
class QTimer;

/// The device that the program upgrades, as a USB device for the machine's own kernel.
///
/// Its application has a keyboard interface and one with the vendor's usage. On the report 0xAA
/// 0xBB the device disconnects and returns after a while as a CDC ACM device, whose port leads to
/// its bootloader. Once it has received a whole image, it restarts into its application.
///
/// Needs a running event loop and belongs to that loop's thread.
class GadgetDevice : public QObject
{
    Q_OBJECT

public:
    enum class State { Absent, Application, Bootloader };

    struct Settings
    {
        QString controller; ///< The USB device controller to plug it into.
        DeviceIdentity identity;
        int returnAfter = 1000; ///< Milliseconds from disconnecting until the host has set it up.
    };

    explicit GadgetDevice(const Settings &settings, QObject *parent = nullptr);
    ~GadgetDevice() override;

    /// Plugs it in, running its application or its bootloader.
    void plugIn(State state);

    /// Pulls the cable: now, when a program opens one of the machine's HID nodes, or whenever this
    /// number of bytes of an image has arrived (never if -1).
    void pull();
    void pullWhenOpened();
    void pullAfter(qint64 bytes) { m_pullAfter = bytes; }

signals:
    /// Emitted for each event, with a short description.
    void happened(const QString &event);

private slots:
    void comeBack();
    void lookForHost();
    void takeReport(const QByteArray &bytes);
    void answer(const QByteArray &bytes);
    void restart();

private:
    void attach(State state);
    void leave();
    void returnAs(State state, int after);
    void open(const QString &node, void (GadgetDevice::*handler)(const QByteArray &));

    const Settings m_settings;
    Gadget m_application;
    Gadget m_bootloader;
    const QStringList m_hidNodes;
    const QString m_portNode;
    Bootloader m_protocol;
    State m_state = State::Absent;
    State m_next = State::Application; ///< Its state after the restart.
    QList<DeviceFile *> m_files; ///< Children; closed and deleted when it disconnects.
    std::unique_ptr<OpenWatch> m_openWatch;
    qint64 m_pullAfter = -1;
    QElapsedTimer m_sinceAttached;
    QElapsedTimer m_sinceLeft;
    qint64 m_setUpTime = 0; ///< How long the host took last time, in milliseconds.
    QTimer *const m_hostTimer;
    QTimer *const m_returnTimer;
};

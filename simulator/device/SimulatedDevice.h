// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/device/DeviceBehaviour.h"
#include "simulator/device/DeviceIdentity.h"
#include "simulator/dfu/Bootloader.h"
#include "simulator/testbed/Testbed.h"

#include <QObject>

#include <memory>

class QSocketNotifier;
class QTimer;

/// The device that the program upgrades, played in a testbed.
///
/// In its application it has a keyboard interface and one with the vendor's own usage. On the
/// report 0xAA 0xBB it leaves, and comes back after a while as a serial port behind which its
/// bootloader speaks. With a whole image in it, it restarts into its application.
///
/// It needs a running event loop and lives in that loop's thread, as does its testbed.
class SimulatedDevice : public QObject
{
    Q_OBJECT

public:
    /// What programs can see of it.
    enum class State { Absent, Application, Bootloader };

    /// \a testbed is not owned and has to live longer. The device starts absent.
    SimulatedDevice(Testbed &testbed, const DeviceBehaviour &behaviour, QObject *parent = nullptr);
    ~SimulatedDevice() override;

    /// Plugs it in, with its application running or with its bootloader.
    void startInApplication();
    void startInBootloader();

    /// Pulls its cable.
    void unplug();

    State state() const { return m_state; }

    /// Whether it is about to change its state by itself.
    bool isRestarting() const;

    /// Each report that one of its HID interfaces has received, in their order.
    QList<QByteArray> reports() const { return m_reports; }

    /// The image that was flashed into it last; empty when there is none.
    QByteArray image() const { return m_image; }

signals:
    /// Tells an onlooker what happens, one plain sentence each, at the time when it does.
    void happened(const QString &event);

private slots:
    void takeReport(const QString &node, const QByteArray &bytes);
    void comeBack();
    void readPort();
    void restartWhenHeard();

private:
    void leave();
    void answer(const QByteArray &bytes);
    void tellProgress();

    Testbed &m_testbed;
    const DeviceBehaviour m_behaviour;
    const DeviceIdentity m_identity;
    State m_state = State::Absent;
    State m_next = State::Application; ///< What it comes back as.
    QString m_usbPath;
    QString m_triggerNode;
    QList<QByteArray> m_reports;
    Bootloader m_bootloader;
    QByteArray m_image;
    qint64 m_toldBytes = 0;
    std::unique_ptr<QSocketNotifier> m_portNotifier;
    QTimer *const m_returnTimer;
    QTimer *const m_restartTimer;
};

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/device/DeviceDescription.h"
#include "simulator/device/DeviceEvent.h"
#include "simulator/dfu/Bootloader.h"
#include "simulator/testbed/Testbed.h"

#include <QObject>

#include <memory>

class QSocketNotifier;
class QTimer;

/// The device that the program upgrades, simulated in a testbed.
///
/// Its application has a keyboard interface and one with the vendor's usage. On a certain report to
/// the latter, the device disconnects and returns after a while as a serial port of its bootloader.
/// Once it has received a whole image, it restarts into its application.
///
/// Needs a running event loop. The device and its testbed belong to that loop's thread.
class SimulatedDevice : public QObject
{
    Q_OBJECT

public:
    /// What programs see of the device.
    enum class State { Absent, Application, Bootloader };

    /// \a testbed is not owned and must outlive the device. The device is not plugged in yet.
    SimulatedDevice(Testbed &testbed, const DeviceDescription &description,
                    QObject *parent = nullptr);
    SimulatedDevice(Testbed &testbed, const DeviceBehaviour &behaviour, QObject *parent = nullptr);
    ~SimulatedDevice() override;

    /// Plugs it in as its description says.
    void start();

    /// Plugs it in, running its application or its bootloader.
    void startInApplication();
    void startInBootloader();

    /// Pulls the cable.
    void unplug();

    State state() const { return m_state; }

    /// Whether it is restarting.
    bool isRestarting() const;

    /// All reports that its HID interfaces have received, in order.
    QList<QByteArray> reports() const { return m_reports; }

    /// All reports that programs could not write, in order.
    QList<QByteArray> failedReports() const { return m_failedReports; }

    /// The last image that it has accepted; empty if there is none.
    QByteArray image() const { return m_image; }

    /// Why its bootloader refused a package, in a few words; empty if it did not.
    QString refusal() const { return m_refusal; }

signals:
    void happened(const DeviceEvent &event);

private slots:
    void comeBack();
    void readPort();
    void restartWhenHeard();

private:
    void takeReport(const Testbed::Report &report);
    void leave();
    void answer(const QByteArray &bytes);
    void tellProgress();
    void tellRefusal();
    void tell(const QString &name, const QString &text, const QJsonObject &details = {});

    Testbed &m_testbed;
    const DeviceDescription::Start m_start;
    const DeviceBehaviour m_behaviour;
    const DeviceIdentity m_identity;
    State m_state = State::Absent;
    State m_next = State::Application; ///< Its state after the restart.
    QString m_usbPath;
    QString m_triggerNode;
    QList<QByteArray> m_reports;
    QList<QByteArray> m_failedReports;
    Bootloader m_bootloader;
    QByteArray m_image;
    QString m_refusal;
    qint64 m_toldBytes = 0;
    std::unique_ptr<QSocketNotifier> m_portNotifier;
    QTimer *const m_returnTimer;
    QTimer *const m_restartTimer;
};

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/dfu/Bootloader.h"
#include "tests/vm/Gadget.h"

#include <QElapsedTimer>
#include <QObject>

#include <memory>

class DeviceFile;
class OpenWatch;
class QTimer;

/// The device that the program upgrades, as a USB device that the machine's own kernel talks to.
///
/// In its application it has a keyboard interface and one with the vendor's own usage. On the
/// report 0xAA 0xBB it leaves, and comes back after a while as a CDC ACM device behind whose port
/// its bootloader speaks. With a whole image in it, it restarts into its application.
///
/// It needs a running event loop and lives in that loop's thread.
class GadgetDevice : public QObject
{
    Q_OBJECT

public:
    enum class State { Absent, Application, Bootloader };

    struct Settings
    {
        QString controller; ///< The USB device controller that it is plugged into.
        QString serialNumber;
        int usagePage = 0xFF31; ///< What its HID interface beside the keyboard is for.
        int usage = 0x74;
        int returnAfter = 1000; ///< Milliseconds from its leaving until the host has set it up.
    };

    explicit GadgetDevice(const Settings &settings, QObject *parent = nullptr);
    ~GadgetDevice() override;

    /// Plugs it in, running what \a state says.
    void plugIn(State state);

    /// Pulls its cable: now, when a program opens one of the machine's HID nodes, or whenever so
    /// many bytes of an image have arrived (-1 for never).
    void pull();
    void pullWhenOpened();
    void pullAfter(qint64 bytes) { m_pullAfter = bytes; }

signals:
    /// Tells an onlooker what happens, one plain sentence each, at the time when it does.
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
    State m_next = State::Application; ///< What it comes back as.
    QList<DeviceFile *> m_files; ///< Its children, closed and gone when it leaves.
    std::unique_ptr<OpenWatch> m_openWatch;
    qint64 m_pullAfter = -1;
    QElapsedTimer m_sinceAttached;
    QElapsedTimer m_sinceLeft;
    qint64 m_setUpTime = 0; ///< Milliseconds that the host took the last time.
    QTimer *const m_hostTimer;
    QTimer *const m_returnTimer;
};

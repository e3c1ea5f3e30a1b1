// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/vm/GadgetDevice.h"

#include "simulator/dfu/Checksum.h"
#include "tests/vm/DeviceFile.h"
#include "tests/vm/OpenWatch.h"

#include <QDir>
#include <QFile>
#include <QTimer>

#include <utility>

namespace {

/// Whether the host has set up the device on this controller of dummy_hcd. Until then, the state of
/// the controller is that of the previous device, so this checks the host's side of the cable.
bool isConfigured(const QString &controller)
{
    const QDir host("/sys/devices/platform/" + QString(controller).replace("_udc", "_hcd"));
    const QStringList buses = host.entryList({"usb*"}, QDir::Dirs);
    for (const QString &bus : buses) {
        const QString device = bus.mid(3) + "-1";
        QFile file(host.filePath(bus + '/' + device + "/bConfigurationValue"));
        if (file.open(QIODevice::ReadOnly) && file.readAll().trimmed() == "1") {
            return true;
        }
    }
    return false;
}

} // namespace

GadgetDevice::GadgetDevice(const Settings &settings, QObject *parent)
    : QObject(parent)
    , m_settings(settings)
    , m_application("application-" + settings.controller,
                    {settings.identity.vendorId, settings.identity.applicationId, "Device",
                     settings.identity.serialNumber})
    , m_bootloader("bootloader-" + settings.controller,
                   {settings.identity.vendorId, settings.identity.bootloaderId, "Bootloader",
                    settings.identity.serialNumber})
    , m_hidNodes({m_application.addHid("keyboard", HidDescriptor::keyboard(), 8),
                  m_application.addHid("vendor", settings.identity.reportDescriptor(),
                                       settings.identity.reportSize)})
    , m_portNode(m_bootloader.addSerialPort())
    , m_hostTimer(new QTimer(this))
    , m_returnTimer(new QTimer(this))
{
    constexpr int kLookEach = 5;
    m_hostTimer->setInterval(kLookEach);
    m_returnTimer->setSingleShot(true);
    m_returnTimer->setTimerType(Qt::PreciseTimer);
    connect(m_hostTimer, &QTimer::timeout, this, &GadgetDevice::lookForHost);
    connect(m_returnTimer, &QTimer::timeout, this, &GadgetDevice::comeBack);
}

GadgetDevice::~GadgetDevice()
{
    leave();
}

void GadgetDevice::plugIn(State state)
{
    m_sinceLeft.invalidate();
    attach(state);
}

void GadgetDevice::pull()
{
    m_returnTimer->stop();
    leave();
    m_protocol.reset();
    emit happened("the cable was pulled");
}

void GadgetDevice::pullWhenOpened()
{
    m_openWatch = std::make_unique<OpenWatch>();
    connect(m_openWatch.get(), &OpenWatch::opened, this, &GadgetDevice::pull);
    emit happened("waiting for a HID node to be opened");
}

void GadgetDevice::comeBack()
{
    attach(m_next);
}

void GadgetDevice::lookForHost()
{
    if (!isConfigured(m_settings.controller)) {
        return;
    }
    m_hostTimer->stop();
    m_setUpTime = m_sinceAttached.elapsed();
    emit happened(m_state == State::Application ? "the application runs" : "the bootloader runs");
    if (m_sinceLeft.isValid()) {
        emit happened(QString("milliseconds away: %1").arg(m_sinceLeft.elapsed()));
    }
}

void GadgetDevice::takeReport(const QByteArray &bytes)
{
    emit happened("report received: " + bytes.toHex());
    if (!m_settings.identity.isEnterBootloader(bytes)) {
        return;
    }
    leave();
    returnAs(State::Bootloader, m_settings.returnAfter);
}

void GadgetDevice::answer(const QByteArray &bytes)
{
    constexpr int kAnswerTime = 15;
    constexpr int kHeardAfter = 300;
    // The bootloader stays finished until the host starts another transfer.
    const bool wasFinished = m_protocol.isFinished();
    const QByteArray answer = m_protocol.receive(bytes);
    if (m_pullAfter >= 0 && m_protocol.imageBytesReceived() >= m_pullAfter) {
        pull();
        return;
    }
    // About as long as writing to flash memory takes.
    QTimer::singleShot(kAnswerTime, m_files.first(), [this, answer] {
        if (!m_files.first()->write(answer)) {
            emit happened("a response was lost");
        }
    });
    if (m_protocol.isFinished() && !wasFinished) {
        emit happened("image flashed: " + Checksum::sha256(m_protocol.image()));
        // The last response must reach the tool before the port disappears.
        QTimer::singleShot(kHeardAfter, m_files.first(), [this] { restart(); });
    }
}

void GadgetDevice::restart()
{
    constexpr int kRestartTime = 1000;
    leave();
    m_protocol.reset();
    returnAs(State::Application, kRestartTime);
}

void GadgetDevice::attach(State state)
{
    m_state = state;
    if (state == State::Bootloader) {
        // Opened first: the terminal would echo whatever the host sends before.
        open(m_portNode, &GadgetDevice::answer);
        m_bootloader.attach(m_settings.controller);
    } else {
        m_application.attach(m_settings.controller);
        for (const QString &node : m_hidNodes) {
            open(node, &GadgetDevice::takeReport);
        }
    }
    m_sinceAttached.start();
    m_hostTimer->start();
}

void GadgetDevice::leave()
{
    if (m_openWatch) {
        m_openWatch.release()->deleteLater(); // its signal may have called this function
    }
    m_hostTimer->stop();
    m_sinceLeft.start();
    for (DeviceFile *const file : std::as_const(m_files)) {
        file->close();
        file->deleteLater();
    }
    m_files.clear();
    if (m_state != State::Absent) {
        (m_state == State::Bootloader ? m_bootloader : m_application).detach();
    }
    m_state = State::Absent;
}

void GadgetDevice::returnAs(State state, int after)
{
    emit happened("the device restarts");
    m_next = state;
    // Setting up the device takes the host about as long as last time.
    const qint64 lead = m_setUpTime + m_sinceLeft.elapsed();
    m_returnTimer->start(static_cast<int>(qMax<qint64>(0, after - lead)));
}

void GadgetDevice::open(const QString &node, void (GadgetDevice::*handler)(const QByteArray &))
{
    auto *const file = new DeviceFile(node, this);
    connect(file, &DeviceFile::received, this, handler);
    m_files.append(file);
}

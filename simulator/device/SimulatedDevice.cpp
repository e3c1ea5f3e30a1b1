// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/device/SimulatedDevice.h"

#include "simulator/dfu/Checksum.h"
#include "simulator/dfu/ResultText.h"

#include <QSocketNotifier>
#include <QTimer>

#include <unistd.h>

#include <array>

namespace {

QString shortened(const QByteArray &report)
{
    const QByteArray bytes = report.left(8).toHex(' ').toUpper();
    return report.size() > 8 ? bytes + " …" : bytes;
}

} // namespace

SimulatedDevice::SimulatedDevice(Testbed &testbed, const DeviceDescription &description,
                                 QObject *parent)
    : QObject(parent)
    , m_testbed(testbed)
    , m_start(description.start)
    , m_behaviour(description.behaviour)
    , m_identity(description.identity)
    , m_bootloader(description.bootloader)
    , m_returnTimer(new QTimer(this))
    , m_restartTimer(new QTimer(this))
{
    constexpr int kLookAgainAfter = 10;
    m_bootloader.setWrongCrc(m_behaviour.wrongCrc);
    m_bootloader.setHashFails(m_behaviour.hashFails);
    m_returnTimer->setSingleShot(true);
    m_returnTimer->setTimerType(Qt::PreciseTimer);
    m_restartTimer->setInterval(kLookAgainAfter);
    connect(m_returnTimer, &QTimer::timeout, this, &SimulatedDevice::comeBack);
    connect(m_restartTimer, &QTimer::timeout, this, &SimulatedDevice::restartWhenHeard);
    testbed.setReportHandler([this](const Testbed::Report &report) {
        QMetaObject::invokeMethod(
            this, [this, report] { takeReport(report); }, Qt::QueuedConnection);
    });
}

SimulatedDevice::SimulatedDevice(Testbed &testbed, const DeviceBehaviour &behaviour,
                                 QObject *parent)
    : SimulatedDevice(testbed, DeviceDescription{behaviour}, parent)
{ }

SimulatedDevice::~SimulatedDevice()
{
    m_testbed.setReportHandler({});
}

void SimulatedDevice::start()
{
    if (m_start == DeviceDescription::Start::Application) {
        startInApplication();
    } else if (m_start == DeviceDescription::Start::Bootloader) {
        startInBootloader();
    }
}

void SimulatedDevice::startInApplication()
{
    m_usbPath = m_testbed.addUsbDevice({m_identity.vendorId, m_identity.applicationId,
                                        "Simulated device", m_identity.serialNumber});
    const QString keyboard
        = m_testbed.addHidInterface(m_usbPath, {0x01, 0x06, HidDescriptor::keyboard(), {}});
    m_triggerNode = m_testbed.addHidInterface(
        m_usbPath, {m_identity.usagePage, m_identity.usage, m_identity.reportDescriptor(), {}});
    for (const QString &node : {keyboard, m_triggerNode}) {
        m_testbed.setOpenFails(node, m_behaviour.openFails);
        m_testbed.setWriteFails(node, m_behaviour.writeFails);
    }
    m_state = State::Application;
    tell("application", "the device runs its application");
}

void SimulatedDevice::startInBootloader()
{
    m_usbPath = m_testbed.addUsbDevice({m_identity.vendorId, m_identity.bootloaderId,
                                        "Simulated bootloader", m_identity.serialNumber});
    m_state = State::Bootloader;
    m_toldBytes = 0;
    for (const QString &port : m_behaviour.ports) {
        m_testbed.addSerialPort(m_usbPath, port);
        tell("port", "port appeared: " + port, {{"port", port}});
    }
    m_portNotifier = std::make_unique<QSocketNotifier>(
        m_testbed.portDescriptor(m_behaviour.ports.first()), QSocketNotifier::Read);
    connect(m_portNotifier.get(), &QSocketNotifier::activated, this, &SimulatedDevice::readPort);
}

void SimulatedDevice::unplug()
{
    m_returnTimer->stop();
    leave();
}

bool SimulatedDevice::isRestarting() const
{
    return m_returnTimer->isActive() || m_restartTimer->isActive();
}

void SimulatedDevice::takeReport(const Testbed::Report &report)
{
    const QByteArray &bytes = report.bytes;
    const QJsonObject details{{"node", report.node}, {"bytes", QString(bytes.toHex())}};
    const QString size = QString("%1 bytes, %2").arg(bytes.size()).arg(shortened(bytes));
    if (report.failed) {
        m_failedReports.append(bytes);
        tell("report-failed", "a report could not be written: " + size, details);
        return;
    }
    m_reports.append(bytes);
    tell("report", "report received: " + size, details);
    if (m_state != State::Application || report.node != m_triggerNode
        || !m_identity.isEnterBootloader(bytes)) {
        return;
    }
    leave();
    tell("bootloader-restart", "the device restarts into its bootloader");
    m_next = State::Bootloader;
    if (m_behaviour.returns) {
        m_returnTimer->start(m_behaviour.returnAfter);
    }
}

void SimulatedDevice::comeBack()
{
    if (m_next == State::Application) {
        startInApplication();
    } else {
        startInBootloader();
    }
}

void SimulatedDevice::readPort()
{
    std::array<char, 4096> chunk{};
    const auto count
        = ::read(m_testbed.portDescriptor(m_behaviour.ports.first()), chunk.data(), chunk.size());
    if (count <= 0 || m_behaviour.silent) {
        return;
    }
    const QByteArray bytes(chunk.data(), static_cast<int>(count));
    if (m_behaviour.answerDelay == 0) {
        answer(bytes);
        return;
    }
    QTimer::singleShot(m_behaviour.answerDelay, m_portNotifier.get(),
                       [this, bytes] { answer(bytes); });
}

void SimulatedDevice::restartWhenHeard()
{
    // The last response must reach the tool before the port disappears.
    if (!m_testbed.isHeard(m_behaviour.ports.first())) {
        return;
    }
    m_restartTimer->stop();
    leave();
    tell("application-restart", "the device restarts into its application");
    m_next = State::Application;
    m_returnTimer->start(qMin(m_behaviour.returnAfter, 1000));
}

void SimulatedDevice::leave()
{
    m_restartTimer->stop();
    m_portNotifier.reset();
    if (m_state != State::Absent) {
        m_testbed.removeUsbDevice(m_usbPath);
    }
    m_state = State::Absent;
    m_bootloader.reset();
}

void SimulatedDevice::answer(const QByteArray &bytes)
{
    // The bootloader stays finished until the next upgrade writes to it.
    const bool wasFinished = m_bootloader.isFinished();
    const QByteArray answer = m_bootloader.receive(bytes);
    const qint64 received = m_bootloader.imageBytesReceived();
    tellProgress();
    tellRefusal();
    if (m_behaviour.dropOutAfter >= 0 && received >= m_behaviour.dropOutAfter) {
        // Deferred, since it deletes the notifier that called this function.
        QTimer::singleShot(0, m_portNotifier.get(), [this, received] {
            tell("cable-pulled", QString("the cable was pulled after %1 bytes").arg(received),
                 {{"bytes", received}});
            unplug();
        });
        return;
    }
    const int port = m_testbed.portDescriptor(m_behaviour.ports.first());
    if (::write(port, answer.constData(), static_cast<std::size_t>(answer.size()))
        != answer.size()) {
        tell("response-lost", "a response was lost, since no program reads the port");
    }
    if (m_bootloader.isFinished() && !wasFinished) {
        m_image = m_bootloader.image();
        const QString hash = Checksum::sha256(m_image);
        tell("image", "image flashed: SHA-256 " + hash,
             {{"bytes", m_image.size()}, {"sha256", hash}});
        m_restartTimer->start();
    }
}

void SimulatedDevice::tellProgress()
{
    constexpr qint64 kTellEach = 32768;
    const qint64 received = m_bootloader.imageBytesReceived();
    const bool isNews = received >= m_toldBytes + kTellEach || m_bootloader.isFinished();
    if (isNews && received != m_toldBytes) {
        m_toldBytes = received;
        tell("progress", QString("bytes flashed: %1").arg(received), {{"bytes", received}});
    }
}

void SimulatedDevice::tellRefusal()
{
    const QByteArray result = m_bootloader.refusal();
    const QString refusal = result.isEmpty() ? QString() : Dfu::resultText(result);
    if (refusal == m_refusal) {
        return;
    }
    m_refusal = refusal;
    if (!refusal.isEmpty()) {
        tell("refused", "package refused: " + refusal,
             {{"code", QString(result.toHex())}, {"reason", refusal}});
    }
}

void SimulatedDevice::tell(const QString &name, const QString &text, const QJsonObject &details)
{
    emit happened({name, text, details});
}

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/vm/DeviceProcess.h"

#include "simulator/demo/ScreenUser.h"

#include <QDir>
#include <QtTest>

namespace {

constexpr int kLongest = 10000;
constexpr int kHidInterfaces = 2;

/// Waits until udev has processed all events and set permissions.
void settle()
{
    QProcess::execute("udevadm", {"settle"});
}

void awaitNodes(int (*nodes)(), int number)
{
    if (!ScreenUser::waitUntil([&] { return nodes() == number; }, kLongest)) {
        qFatal("the machine has %d nodes instead of %d", nodes(), number);
    }
    settle();
}

} // namespace

DeviceProcess::DeviceProcess(const QStringList &arguments)
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(GADGET_DEVICE, arguments);
    await("ready", 1);
}

DeviceProcess::~DeviceProcess()
{
    if (QTest::currentTestFailed()) {
        qInfo("output of the device:\n%s", log().constData());
    }
    m_process.closeWriteChannel();
    m_process.waitForFinished();
    settle();
}

void DeviceProcess::plugInApplication()
{
    const int before = hidNodes();
    command("plug application");
    awaitNodes(hidNodes, before + kHidInterfaces);
}

void DeviceProcess::plugInBootloader()
{
    const int before = ports();
    command("plug bootloader");
    awaitNodes(ports, before + 1);
}

void DeviceProcess::pull()
{
    const int before = count("the cable was pulled");
    command("pull");
    await("the cable was pulled", before + 1);
    settle();
}

void DeviceProcess::pullWhenOpened()
{
    const int before = count("waiting for a HID node to be opened");
    command("pull when opened");
    await("waiting for a HID node to be opened", before + 1);
}

void DeviceProcess::pullAfter(int bytes)
{
    command("pull after " + QByteArray::number(bytes));
}

int DeviceProcess::hidNodes()
{
    const QDir nodes("/sys/class/hidraw");
    return int(nodes.entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size());
}

int DeviceProcess::ports()
{
    return int(QDir("/sys/class/tty").entryList({"ttyACM*"}).size());
}

void DeviceProcess::setRules(bool areThere)
{
    const QString target = "/run/udev/rules.d/70-fw-update.rules";
    QFile::remove(target);
    QDir().mkpath("/run/udev/rules.d");
    if (areThere && !QFile::copy(UDEV_RULES, target)) {
        qFatal("cannot copy the rules");
    }
    QProcess::execute("udevadm", {"control", "--reload"});
}

int DeviceProcess::count(const QByteArray &event)
{
    return int(('\n' + log()).count('\n' + event + '\n'));
}

QList<QByteArray> DeviceProcess::reports()
{
    return valuesOf("report received");
}

QList<QByteArray> DeviceProcess::images()
{
    return valuesOf("image flashed");
}

QList<int> DeviceProcess::timesAway()
{
    QList<int> times;
    const QList<QByteArray> values = valuesOf("milliseconds away");
    for (const QByteArray &value : values) {
        times.append(value.toInt());
    }
    return times;
}

QByteArray DeviceProcess::log()
{
    m_output += m_process.readAllStandardOutput();
    return m_output;
}

void DeviceProcess::command(const QByteArray &line)
{
    m_process.write(line + '\n');
}

void DeviceProcess::await(const QByteArray &event, int times)
{
    if (!ScreenUser::waitUntil([&] { return count(event) >= times; }, kLongest)) {
        qFatal("the device did not report \"%s\":\n%s", event.constData(), log().constData());
    }
}

QList<QByteArray> DeviceProcess::valuesOf(const QByteArray &event)
{
    QList<QByteArray> values;
    const QList<QByteArray> lines = log().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith(event + ": ")) {
            values.append(line.mid(event.size() + 2));
        }
    }
    return values;
}

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/models/MachineDouble.h"

#include <QCoreApplication>
#include <QHash>
#include <QSerialPortInfo>
#include <QThread>
#include <QTimerEvent>

#include <hidapi.h>

#include <utility>

namespace {

struct Unread
{
    QByteArray output;
    QByteArray error;
};

MachineDouble *machine = nullptr;
QHash<const QProcess *, Unread> unread;
QtMessageHandler otherHandler = nullptr;

void countLine(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtDebugMsg && qstrcmp(context.category, "default") == 0) {
        ++machine->logLines;
        return;
    }
    otherHandler(type, context, text);
}

} // namespace

// The linker uses these definitions instead of the libraries' for all code of this program.

void QProcess::start(const QString &program, const QStringList & /*arguments*/, OpenMode /*mode*/)
{
    unread.insert(this, {});
    if (program.endsWith("/nrfutil-mac")) {
        machine->tools.append(this);
    }
}

bool QProcess::waitForFinished(int /*msecs*/)
{
    return true;
}

QByteArray QProcess::readAllStandardOutput()
{
    return std::exchange(unread[this].output, {});
}

QByteArray QProcess::readAllStandardError()
{
    return std::exchange(unread[this].error, {});
}

void QTimer::start(int msec)
{
    machine->timers.append(this);
    setInterval(msec);
    start();
}

void QThread::sleep(unsigned long /*secs*/)
{
    machine->hasPort = machine->hasPortAfterWait;
}

QList<QSerialPortInfo> QSerialPortInfo::availablePorts()
{
    return machine->hasPort ? QList<QSerialPortInfo>{QSerialPortInfo()} : QList<QSerialPortInfo>();
}

QString QSerialPortInfo::systemLocation() const
{
    return "/dev/cu.usbmodem14201";
}

hid_device_info *hid_enumerate(unsigned short /*vendor*/, unsigned short /*product*/)
{
    ++machine->triggers;
    return nullptr;
}

MachineDouble::MachineDouble()
{
    Q_ASSERT(machine == nullptr);
    machine = this;
    otherHandler = qInstallMessageHandler(countLine);
}

MachineDouble::~MachineDouble()
{
    for (const QPointer<QTimer> &timer : std::as_const(timers)) {
        delete timer.data();
    }
    for (const QPointer<QProcess> &tool : std::as_const(tools)) {
        delete tool.data();
    }
    unread.clear();
    qInstallMessageHandler(otherHandler);
    machine = nullptr;
}

void MachineDouble::say(const QByteArray &chunk, bool noticed)
{
    unread[tools.last()].output += chunk;
    if (noticed) {
        QMetaObject::invokeMethod(tools.last(), "readyReadStandardOutput");
    }
}

void MachineDouble::complain(const QByteArray &chunk)
{
    unread[tools.last()].error += chunk;
    QMetaObject::invokeMethod(tools.last(), "readyReadStandardError");
}

void MachineDouble::tick(int index, int times)
{
    const QPointer<QTimer> timer = timers.at(index);
    for (int i = 0; i < times && !timer.isNull() && timer->isActive(); ++i) {
        QTimerEvent event(timer->timerId());
        QCoreApplication::sendEvent(timer, &event);
    }
}

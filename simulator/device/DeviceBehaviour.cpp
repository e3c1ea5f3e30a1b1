// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/device/DeviceBehaviour.h"

#include <QList>

namespace {

struct Fault
{
    const char *name;
    int defaultValue; ///< -1 if the fault has no value
    const char *explanation;
    void (*apply)(DeviceBehaviour &behaviour, int value);
};

const QList<Fault> &faults()
{
    static const QList<Fault> list = {
        {"never-return", -1, "the device does not restart into its bootloader",
         [](DeviceBehaviour &behaviour, int) {
             behaviour.returns = false;
         }},
        {"late-return", 2500, "the bootloader appears after VALUE milliseconds, too late",
         [](DeviceBehaviour &behaviour, int value) {
             behaviour.returnAfter = value;
         }},
        {"several-ports", -1, "the bootloader has three ports, and only one of them works",
         [](DeviceBehaviour &behaviour, int) {
             behaviour.ports << "/dev/cu.usbmodem14203"
                             << "/dev/cu.usbmodem14205";
         }},
        {"open-fails", -1, "the HID interfaces cannot be opened",
         [](DeviceBehaviour &behaviour, int) {
             behaviour.openFails = true;
         }},
        {"write-fails", -1, "the report to the HID interface is lost",
         [](DeviceBehaviour &behaviour, int) {
             behaviour.writeFails = true;
         }},
        {"drop-out", 60000, "the cable is pulled after VALUE bytes of the image",
         [](DeviceBehaviour &behaviour, int value) {
             behaviour.dropOutAfter = value;
         }},
        {"wrong-crc", -1, "the bootloader reports wrong checksums",
         [](DeviceBehaviour &behaviour, int) {
             behaviour.wrongCrc = true;
         }},
        {"no-hash", -1, "the bootloader cannot calculate the hash of the image",
         [](DeviceBehaviour &behaviour, int) {
             behaviour.hashFails = true;
         }},
        {"slow", 60, "the bootloader takes VALUE milliseconds for each response",
         [](DeviceBehaviour &behaviour, int value) {
             behaviour.answerDelay = value;
         }},
        {"silent", -1, "the bootloader never responds",
         [](DeviceBehaviour &behaviour, int) {
             behaviour.silent = true;
         }},
    };
    return list;
}

} // namespace

bool DeviceBehaviour::addFault(const QString &fault)
{
    const QString name = fault.section('=', 0, 0);
    const bool hasValue = fault.contains('=');
    for (const Fault &known : faults()) {
        if (name != known.name) {
            continue;
        }
        bool isNumber = true;
        const int value = hasValue ? fault.section('=', 1).toInt(&isNumber) : known.defaultValue;
        if (!isNumber || (hasValue && (known.defaultValue < 0 || value < 0))) {
            return false;
        }
        known.apply(*this, value);
        return true;
    }
    return false;
}

QStringList DeviceBehaviour::faultNames()
{
    QStringList result;
    for (const Fault &fault : faults()) {
        result.append(fault.name);
    }
    return result;
}

QString DeviceBehaviour::help()
{
    QString result;
    for (const Fault &fault : faults()) {
        QString name = fault.name;
        if (fault.defaultValue >= 0) {
            name += QString("[=%1]").arg(fault.defaultValue);
        }
        result += QString("  %1 %2\n").arg(name.leftJustified(20), fault.explanation);
    }
    return result;
}

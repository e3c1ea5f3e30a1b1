// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

// Prints a line for each HID device that arrives or is removed, until it is interrupted.

#include "device/DeviceComm.h"
#include "device/HidPlugHook.h"

#include <QCoreApplication>
#include <QString>

#include <cstdio>

namespace {

/// Replaces control characters: the name is from the device and must not control the terminal.
QString printable(QString text)
{
    for (QChar &character : text) {
        if (!character.isPrint() && !character.isSurrogate()) {
            character = '?';
        }
    }
    return text;
}

void printPlug(int arrived, int vendorId, int productId, int usage, int usagePage,
               const wchar_t *productName, void *context)
{
    const QString line = QString("%1 %2:%3 usage %4:%5 %6\n")
                             .arg(QString(arrived != 0 ? "arrived" : "removed"))
                             .arg(vendorId, 4, 16, QChar('0'))
                             .arg(productId, 4, 16, QChar('0'))
                             .arg(usagePage, 4, 16, QChar('0'))
                             .arg(usage, 4, 16, QChar('0'))
                             .arg(printable(QString::fromWCharArray(productName)));
    auto *const output = static_cast<std::FILE *>(context);
    std::fputs(qUtf8Printable(line), output);
    std::fflush(output);
}

} // namespace

int main(int argc, char *argv[])
{
    // Without this, macOS does not notify a program without windows.
    qputenv("QT_EVENT_DISPATCHER_CORE_FOUNDATION", "1");
    QCoreApplication application(argc, argv);
    register_hid_plug_callback(printPlug, stdout);
    DeviceComm::GetInst(); // starts watching
    return QCoreApplication::exec();
}

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

// Built for the device layer of either platform. Without its headers, the declarations here show
// which names a program can link to. IO_ITERATOR is the platform's type.

#include <QtTest>

#include <set>

extern "C" {
using PlugCallback = void (*)(int, int, int, int, int, const wchar_t *, void *);
struct Interface;

void register_hid_plug_callback(PlugCallback callback, void *context);
int init_plug();
void usbDeviceAdded(void *reference, IO_ITERATOR iterator);
void usbDeviceRemoved(void *reference, IO_ITERATOR iterator);
Interface **getUSBDeviceInterface(IO_ITERATOR iterator);
}

class tst_UnmangledNames : public QObject
{
    Q_OBJECT

private slots:
    void eachIsAFunctionOfItsOwn();
};

void tst_UnmangledNames::eachIsAFunctionOfItsOwn()
{
    const std::set<void *> functions = {
        reinterpret_cast<void *>(&register_hid_plug_callback),
        reinterpret_cast<void *>(&init_plug),
        reinterpret_cast<void *>(&usbDeviceAdded),
        reinterpret_cast<void *>(&usbDeviceRemoved),
        reinterpret_cast<void *>(&getUSBDeviceInterface),
    };
    QCOMPARE(functions.size(), std::size_t(5));
}

QTEST_APPLESS_MAIN(tst_UnmangledNames)
#include "tst_UnmangledNames.moc"

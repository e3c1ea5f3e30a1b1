// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/app/UpgradeStage.h"
#include "tests/device/PlugRecorder.h"

#include <QtTest>

/// In a process of its own, since the device layer lives until the process ends.
class tst_DeviceOnDemand : public QObject
{
    Q_OBJECT

private slots:
    void isMadeByTheFirstClickThatNeedsIt();
};

void tst_DeviceOnDemand::isMadeByTheFirstClickThatNeedsIt()
{
    const PlugRecorder recorder; // hears of what is attached once the device layer is made
    UpgradeStage stage;
    const QString usb = stage.testbed->addUsbDevice({0x7F3C, 0x0C51, "Device", "2"});
    stage.testbed->addHidInterface(usb, {0xFF31, 0x74, {}, {}});

    stage.addPort();
    stage.startUpgrade();
    QCoreApplication::processEvents();
    QCOMPARE(recorder.plugs.size(), 0);

    stage.tool->complain("trouble");
    QTRY_VERIFY(stage.canClick());
    stage.testbed->removeUsbDevice(stage.usbPath);
    stage.click();
    QTRY_COMPARE(recorder.plugs.size(), 1);
}

QTEST_MAIN(tst_DeviceOnDemand)
#include "tst_DeviceOnDemand.moc"

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "device/DeviceComm.h"
#include "tests/device/HidWatch_mac.h"
#include "tests/doubles/HidapiDouble.h"

#include <QCoreApplication>
#include <QProcess>
#include <QtTest>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int kVendor = 0x7F3C;
constexpr int kProduct = 0x0C51;

using Interfaces = std::vector<HidapiDouble::Interface>;

HidapiDouble::Interface trigger(const std::string &path, bool opens = true)
{
    return {path, kVendor, kProduct, 0xFF31, 0x74, opens};
}

const HidapiDouble::Interface kKeyboard = {"keyboard", kVendor, kProduct, 1, 6};

/// The expected calls for an interface that can be opened.
QStringList reported(const QString &path)
{
    return {"open " + path, "write " + path + " 64 aabb" + QString("00").repeated(62),
            "close " + path};
}

/// A program that creates DeviceComm and uses it. It prints the calls when it exits.
int useDeviceComm(const QString &role)
{
    static const HidManagerDouble hid;
    std::atexit([] { std::printf("%s\n", qPrintable(calls().join('\n'))); });
    if (role == "use-in-vain") {
        HidapiDouble::failToInitialise();
    }
    DeviceComm &deviceComm = DeviceComm::GetInst();
    if (role != "exit") {
        return deviceComm.startUpdate(kVendor, kProduct) ? 1 : 0;
    }
    PlugRecorder recorder;
    recorder.onPlug = [] {
        std::exit(0);
    };
    HidManagerDouble::attach(kTarget);
    turnRunLoop();
    return 1;
}

} // namespace

Q_DECLARE_METATYPE(Interfaces)

class tst_DeviceComm_mac : public QObject
{
    Q_OBJECT

private slots:
    void cleanupTestCase();
    void startUpdate_data();
    void startUpdate();
    void fromStartToEnd_data();
    void fromStartToEnd();

private:
    const HidManagerDouble m_hid;
};

void tst_DeviceComm_mac::cleanupTestCase()
{
    stopHidPlugWatch(); // before the double is destroyed
}

void tst_DeviceComm_mac::startUpdate_data()
{
    QTest::addColumn<Interfaces>("interfaces");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<bool>("reached");
    QTest::newRow("nothing attached") << Interfaces() << QStringList("free null") << false;
    QTest::newRow("no match") << Interfaces{kKeyboard} << QStringList("free list") << false;
    QTest::newRow("matches that cannot be opened")
        << Interfaces{trigger("a", false)} << QStringList{"open a", "free list"} << false;
    QTest::newRow("two matches and one that cannot be opened")
        << Interfaces{trigger("a"), kKeyboard, trigger("b", false), trigger("c")}
        << reported("a") + QStringList("open b") + reported("c") + QStringList("free list") << true;
    QTest::newRow("last match cannot be opened")
        << Interfaces{trigger("a"), trigger("b", false)}
        << reported("a") + QStringList{"open b", "free list"} << true;
}

void tst_DeviceComm_mac::startUpdate()
{
    QFETCH(const Interfaces, interfaces);
    QFETCH(const QStringList, expected);
    DeviceComm &deviceComm = DeviceComm::GetInst();
    const auto before = calls().size();
    HidapiDouble::setInterfaces(interfaces);
    QTEST(deviceComm.startUpdate(kVendor, kProduct), "reached");
    QCOMPARE(calls().mid(before), QStringList("enumerate 0 0") + expected);
}

void tst_DeviceComm_mac::fromStartToEnd_data()
{
    QTest::addColumn<QString>("role");
    QTest::addColumn<QStringList>("rest");
    const QStringList use = {"enumerate 0 0", "free null", "unschedule kCFRunLoopDefaultMode",
                             "manager is gone", "hid_exit"};
    QTest::newRow("hidapi works") << "use" << use;
    QTest::newRow("hidapi cannot be initialised") << "use-in-vain" << use;
    // The manager calls the callback and must not be touched by it.
    QTest::newRow("the callback exits") << "exit" << QStringList{"matching handler", "hid_exit"};
}

void tst_DeviceComm_mac::fromStartToEnd()
{
    QFETCH(const QString, role);
    QFETCH(const QStringList, rest);
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {"--as", role});
    QVERIFY(process.waitForFinished(60000));
    QCOMPARE(process.exitCode(), 0);
    const QStringList start = {"hid_init",
                               "create 0",
                               "match all",
                               "register matching null",
                               "register removal null",
                               "schedule kCFRunLoopDefaultMode"};
    QCOMPARE(QString(process.readAllStandardOutput()).trimmed().split('\n'), start + rest);
}

int main(int argc, char *argv[])
{
    const QString role = argc == 3 && qstrcmp(argv[1], "--as") == 0 ? argv[2] : "";
    if (!role.isEmpty()) {
        return useDeviceComm(role);
    }
    QCoreApplication application(argc, argv);
    tst_DeviceComm_mac test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_DeviceComm_mac.moc"

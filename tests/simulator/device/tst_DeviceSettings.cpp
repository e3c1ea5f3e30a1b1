// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/device/DeviceSettings.h"
#include "tests/support/GoldenPackages.h"

#include <QCommandLineParser>
#include <QTemporaryDir>
#include <QtTest>

class tst_DeviceSettings : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void reads_data();
    void reads();
    void refuses_data();
    void refuses();
    void refusesAFile_data();
    void refusesAFile();
    void prefersTheCommandLine();
    void keepsTheDefaults();
    void knowsOnlyItsNames();

private:
    QString path(const char *name) const { return m_folder.filePath(name); }
    bool read(const QStringList &arguments);
    bool readFile(const QByteArray &json);

    QTemporaryDir m_folder;
    DeviceDescription m_device;
    QString m_error;
};

namespace {

void write(const QString &path, const QByteArray &contents)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(contents), qint64(contents.size()));
}

/// The settings of a device as text, to compare them.
QStringList textOf(const DeviceDescription &device)
{
    const DeviceIdentity &identity = device.identity;
    const DeviceBehaviour &behaviour = device.behaviour;
    const BootloaderSettings &bootloader = device.bootloader;
    return {QString::number(identity.vendorId, 16) + ':'
                + QString::number(identity.applicationId, 16),
            QString::number(identity.bootloaderId, 16),
            QString::number(identity.usagePage, 16) + ':' + QString::number(identity.usage, 16),
            identity.enterBootloader.toHex() + '/' + QString::number(identity.reportSize),
            behaviour.ports.join(' '),
            QString("%1 %2").arg(behaviour.returnAfter).arg(behaviour.answerDelay),
            QString("%1 %2").arg(behaviour.silent).arg(behaviour.dropOutAfter),
            QString("%1 %2 %3")
                .arg(bootloader.hardwareVersion)
                .arg(bootloader.firmwareVersion)
                .arg(bootloader.softDeviceId),
            QString("%1 %2").arg(int(bootloader.key.type())).arg(bootloader.signatureRequired),
            QString::number(int(device.start))};
}

const QStringList kDefaults = {"7f3c:c51", "c52",  "ff31:74", "aabb/64", "/dev/cu.usbmodem14201",
                               "1000 0",   "0 -1", "52 0 0",  "0 0",     "0"};

QStringList changed(int index, const QString &text)
{
    QStringList result = kDefaults;
    result[index] = text;
    return result;
}

} // namespace

void tst_DeviceSettings::initTestCase()
{
    write(path("key.pem"), GoldenPackages::ed25519Key());
    write(path("empty.pem"), {});
}

bool tst_DeviceSettings::read(const QStringList &arguments)
{
    QCommandLineParser parser;
    DeviceSettings settings;
    settings.addOptions(parser);
    if (!parser.parse(QStringList("program") + arguments)) {
        qFatal("%s", qPrintable(parser.errorText()));
    }
    m_device = {};
    const bool isRead = settings.read(parser, &m_device);
    m_error = settings.errorString();
    return isRead;
}

bool tst_DeviceSettings::readFile(const QByteArray &json)
{
    write(path("device.json"), json);
    return read({"--device", path("device.json")});
}

void tst_DeviceSettings::reads_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QStringList>("device");

    const auto row = [](const char *name, const QStringList &options, const char *json, int index,
                        const char *text) {
        QTest::newRow(name) << options << QByteArray(json) << changed(index, text);
    };
    row("ids", {"--app-id", "12AB:ffff"}, R"("app-id": "12AB:ffff")", 0, "12ab:ffff");
    row("the bootloader's id", {"--bootloader-id", "1"}, R"("bootloader-id": "1")", 1, "1");
    row("usage", {"--usage", "FF00:1"}, R"("usage": "FF00:1")", 2, "ff00:1");
    row("report", {"--report", "01"}, R"("report": "01")", 3, "01/64");
    row("report's size", {"--report-size", "256"}, R"("report-size": 256)", 3, "aabb/256");
    row("a port", {"--port", "/dev/ttyACM0"}, R"("port": "/dev/ttyACM0")", 4, "/dev/ttyACM0");
    row("two ports", {"--port", "/dev/a", "--port", "/dev/b"}, R"("port": ["/dev/a", "/dev/b"])", 4,
        "/dev/a /dev/b");
    row("times", {"--return-after", "0", "--answer-delay", "5"},
        R"("return-after": 0, "answer-delay": 5)", 5, "0 5");
    row("a fault", {"--fault", "silent"}, R"("fault": "silent")", 6, "1 -1");
    row("two faults", {"--fault", "silent", "--fault", "drop-out=7"},
        R"("fault": ["silent", "drop-out=7"])", 6, "1 7");
    row("versions", {"--hardware-version", "4294967295", "--firmware-version", "7"},
        R"("hardware-version": 4294967295, "firmware-version": 7)", 7, "4294967295 7 0");
    row("a SoftDevice", {"--softdevice", "0x100"}, R"("softdevice": "0x100")", 7, "52 0 256");
    row("a key", {"--key", path("key.pem")}, R"("key": "key.pem")", 8, "2 0");
    row("signatures required", {"--require-signature"}, R"("require-signature": true)", 8, "0 1");
    row("starts in its bootloader", {"--start", "bootloader"}, R"("start": "bootloader")", 9, "1");
    row("starts absent", {"--start", "absent"}, R"("start": "absent")", 9, "2");
}

void tst_DeviceSettings::reads()
{
    QFETCH(const QStringList, options);
    QFETCH(const QByteArray, json);
    QFETCH(const QStringList, device);

    QVERIFY2(read(options), qPrintable(m_error));
    QCOMPARE(textOf(m_device), device);
    QVERIFY2(readFile('{' + json + '}'), qPrintable(m_error));
    QCOMPARE(textOf(m_device), device);
}

void tst_DeviceSettings::refuses_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *name, const char *value, const char *expected) {
        QTest::addRow("%s %s", name, value) << QString(name) << QString(value) << QString(expected);
    };
    const auto ids = "two hexadecimal numbers, such as 7F3C:0C51";
    row("app-id", "7F3C", ids);
    row("app-id", "7F3C:", ids);
    row("app-id", "7F3C:10000", ids);
    row("app-id", "7F3C:1:2", ids);
    row("app-id", "-1:2", ids);
    row("bootloader-id", "no", "a hexadecimal number, such as 0C52");
    row("usage", "FF31:100", "two hexadecimal numbers, such as FF31:74");
    row("report", "AAB", "hexadecimal digits, such as AABB");
    row("report", "no", "hexadecimal digits, such as AABB");
    row("report-size", "1", "a number from 2 to 256");
    row("report-size", "257", "a number from 2 to 256");
    row("port", "ttyACM0", "a file in /dev, such as /dev/ttyACM0");
    row("port", "/dev/", "a file in /dev, such as /dev/ttyACM0");
    row("return-after", "-1", "a number of milliseconds");
    row("return-after", "soon", "a number of milliseconds");
    row("answer-delay", "2147483648", "a number of milliseconds");
    row("fault", "explodes", "one of the names in --help");
    row("hardware-version", "4294967296", "a number from 0 to 4294967295");
    row("firmware-version", "1.5", "a number from 0 to 4294967295");
    row("softdevice", "0x", "a number from 0 to 4294967295");
    row("key", "/none", "a PEM file with a public key for ECDSA P-256 or Ed25519");
    QTest::newRow("an empty key") << "key" << path("empty.pem")
                                  << "a PEM file with a public key for ECDSA P-256 or Ed25519";
    row("start", "sleeping", "application, bootloader or absent");
}

void tst_DeviceSettings::refuses()
{
    QFETCH(const QString, name);
    QFETCH(const QString, value);
    QFETCH(const QString, expected);

    QVERIFY(!read({"--" + name, value}));
    QCOMPARE(m_error, name + " must be " + expected);
}

void tst_DeviceSettings::refusesAFile_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("error");

    const auto row = [](const char *name, const char *json, const char *error) {
        QTest::newRow(name) << QByteArray(json) << QString(error);
    };
    row("not JSON", "{", "is not a JSON object: ");
    row("a list", "[]", "is not a JSON object: ");
    row("an unknown setting", R"({"colour": "red"})", R"(: unknown setting "colour")");
    row("an object", R"({"port": {}})", R"(: the value of "port" is wrong)");
    row("an empty list", R"({"port": []})", R"(: the value of "port" is wrong)");
    row("a list of objects", R"({"port": [{}]})", R"(: the value of "port" is wrong)");
    row("nothing", R"({"port": null})", R"(: the value of "port" is wrong)");
    row("an empty text", R"({"port": ""})", R"(: the value of "port" is wrong)");
    row("true", R"({"port": true})", R"(: the value of "port" is wrong)");
    row("a number for a switch", R"({"require-signature": 1})",
        R"(: the value of "require-signature" is wrong)");
}

void tst_DeviceSettings::refusesAFile()
{
    QFETCH(const QByteArray, json);
    QFETCH(const QString, error);

    QVERIFY(!readFile(json));
    QVERIFY2(m_error.startsWith(path("device.json") + (error.startsWith(':') ? "" : " ") + error),
             qPrintable(m_error));
}

void tst_DeviceSettings::prefersTheCommandLine()
{
    write(path("device.json"),
          R"({"port": "/dev/a", "start": "absent", "require-signature": false})");

    QVERIFY(read({"--port", "/dev/b", "--device", path("device.json")}));

    QCOMPARE(m_device.behaviour.ports, QStringList("/dev/b"));
    QCOMPARE(m_device.start, DeviceDescription::Start::Absent);
    QVERIFY(!m_device.bootloader.signatureRequired);
    QVERIFY(!read({"--device", path("missing.json")}));
    QVERIFY(m_error.startsWith(path("missing.json") + ": "));
}

void tst_DeviceSettings::keepsTheDefaults()
{
    QVERIFY(read({}));
    QCOMPARE(textOf(m_device), kDefaults);
}

void tst_DeviceSettings::knowsOnlyItsNames()
{
    QCommandLineParser parser;
    DeviceSettings({"app-id"}).addOptions(parser);

    QVERIFY(parser.parse({"program", "--app-id", "1:2", "--device", "file"}));
    QVERIFY(!parser.parse({"program", "--start", "absent"}));
}

QTEST_GUILESS_MAIN(tst_DeviceSettings)
#include "tst_DeviceSettings.moc"

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/demo/Demo.h"
#include "simulator/device/DeviceBehaviour.h"
#include "simulator/dfu/DfuPackage.h"
#include "tests/support/GoldenPackages.h"
#include "tests/support/ZipFile.h"

#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

class tst_Demo : public QObject
{
    Q_OBJECT

private slots:
    void saysHowItEnded_data();
    void saysHowItEnded();
    void rehearses_data();
    void rehearses();
    void findsTheDisplay_data();
    void findsTheDisplay();
    void helpNamesEveryFault();
    void helpNamesEverySetting();
    void refusesWhatItDoesNotKnow_data();
    void refusesWhatItDoesNotKnow();

private:
    QString path(const QString &name) const { return m_folder.filePath(name); }
    void write(const QString &name, const QByteArray &contents) const;

    QTemporaryDir m_folder;
};

void tst_Demo::write(const QString &name, const QByteArray &contents) const
{
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(contents), qint64(contents.size()));
}

void tst_Demo::saysHowItEnded_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QByteArray>("lastLine");
    QTest::newRow("no fault") << QString() << QByteArray("demo: upgraded, image verified");
    QTest::newRow("no device") << "no-device"
                               << QByteArray("demo: failed as expected with fault \"no-device\"");
    QTest::newRow("no package") << "no-package"
                                << QByteArray("demo: failed as expected with fault \"no-package\"");
    QTest::newRow("returns late, but in time")
        << "late-return=1500" << QByteArray("demo: upgraded, image verified");
    QTest::newRow("cable pulled after the end")
        << "drop-out=60001" << QByteArray("demo: upgraded, image verified");
}

void tst_Demo::saysHowItEnded()
{
    QFETCH(const QString, fault);
    QFETCH(const QByteArray, lastLine);
    const QTemporaryDir folder;
    QFile::copy(FW_UPDATE_PROGRAM, folder.filePath("fw-update"));
    QFile::copy(STAND_IN_TOOL, folder.filePath("nrfutil-mac"));
    QCOMPARE(DfuPackage::forFirmware(QByteArray(60000, 'x')).write(folder.filePath("dfu.zip")),
             DfuPackage::Error::None);

    QProcess demo;
    demo.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    demo.start(WITH_SCREEN,
               {FW_DEMO, "--fault", fault, "--pictures", folder.path(), folder.path()});
    QVERIFY(demo.waitForFinished(120000));

    const QByteArray output = demo.readAllStandardOutput();
    QCOMPARE(output.trimmed().split('\n').last(), lastLine);
    QCOMPARE(demo.exitCode(), 0);
    for (const char *name : {"idle.png", "running.png", "finished.png"}) {
        QCOMPARE(QImage(folder.filePath(name)).size(), QSize(500, 260));
    }
}

void tst_Demo::rehearses_data()
{
    QTest::addColumn<QByteArray>("initPacket");
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("lastLine");

    const QByteArray upgraded = "demo: upgraded, image verified";
    const QByteArray refused = "demo: the device refused the package: ";
    const QStringList key = {"--key", path("key.pem"), "--require-signature"};
    const QByteArray unsignedPacket = GoldenPackages::unsignedPacket();
    QTest::newRow("an unsigned package") << unsignedPacket << QStringList() << upgraded;
    QTest::newRow("a signed package") << GoldenPackages::ecdsaPacket() << key << upgraded;
    QTest::newRow("a package without a signature")
        << unsignedPacket << key << refused + "the package is not signed";
    QTest::newRow("a package for other hardware")
        << unsignedPacket << QStringList{"--hardware-version", "51"}
        << refused + "the firmware is for other hardware";
    QTest::newRow("an old version") << unsignedPacket << QStringList{"--firmware-version", "4"}
                                    << refused + "the firmware version is too low";
    QTest::newRow("another SoftDevice") << unsignedPacket << QStringList{"--softdevice", "0x101"}
                                        << refused + "the firmware needs another SoftDevice";
    QTest::newRow("no package") << QByteArray() << QStringList()
                                << "demo: " + path("package.zip").toUtf8()
            + ": the file is not a zip archive";
    const QByteArray noDevice = "demo: the program did not find the device";
    QTest::newRow("a device with other ids")
        << unsignedPacket << QStringList{"--app-id", "7F3C:0C53"} << noDevice;
    QTest::newRow("a device with another usage")
        << unsignedPacket << QStringList{"--usage", "FF31:75"} << noDevice;
}

/// Runs the script with a copy of the stand-in tool in place of somebody's own.
void tst_Demo::rehearses()
{
    QFETCH(const QByteArray, initPacket);
    QFETCH(const QStringList, options);
    QFETCH(const QByteArray, lastLine);
    write("key.pem", GoldenPackages::ecdsaKey());
    write("package.zip", "no archive");
    if (!initPacket.isEmpty()) {
        QVERIFY(ZipFile::write(path("package.zip"), GoldenPackages::files(initPacket)));
    }
    QFile::copy(STAND_IN_TOOL, path("a tool"));

    QProcess script;
    script.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    script.start(DEMO_SCRIPT,
                 QStringList{"--build", BUILD_FOLDER, "--headless", "--tool", path("a tool"),
                             "--package", path("package.zip")}
                     + options);
    QVERIFY(script.waitForFinished(120000));

    const QByteArray output = script.readAllStandardOutput();
    QCOMPARE(output.trimmed().split('\n').last(), lastLine);
    QCOMPARE(script.exitCode() == 0, lastLine.startsWith("demo: upgraded"));
}

void tst_Demo::findsTheDisplay_data()
{
    QTest::addColumn<QStringList>("screen");
    QTest::addColumn<QStringList>("change");
    QTest::addColumn<int>("result");
    const QStringList noX = {"-u", "DISPLAY"};
    QTest::newRow("X") << QStringList() << QStringList() << 0;
    QTest::newRow("an X server that is gone") << QStringList() << QStringList{"DISPLAY=:4711"} << 1;
    QTest::newRow("neither") << QStringList() << noX << 1;
    QTest::newRow("Wayland without X") << QStringList{"--weston"} << noX << 0;
    QTest::newRow("a compositor that is gone")
        << QStringList{"--weston"} << noX + QStringList{"WAYLAND_DISPLAY=nowhere"} << 1;
}

void tst_Demo::findsTheDisplay()
{
    QFETCH(const QStringList, screen);
    QFETCH(const QStringList, change);
    QProcess demo;
    demo.setProcessChannelMode(QProcess::ForwardedErrorChannel);

    demo.start(WITH_SCREEN,
               screen + QStringList{"env"} + change + QStringList{FW_DEMO, "--can-see"});
    QVERIFY(demo.waitForFinished());

    QTEST(demo.exitCode(), "result");
}

void tst_Demo::helpNamesEveryFault()
{
    QProcess script;
    script.start(DEMO_SCRIPT, {"--help"});
    QVERIFY(script.waitForFinished());

    QCOMPARE(script.exitCode(), 0);
    const QString help = script.readAllStandardOutput();
    const QStringList lines = Demo::help().trimmed().split('\n');
    for (const QString &line : lines) {
        const QString name = line.simplified().section(' ', 0, 0);
        QVERIFY2(help.contains("    " + name + ' '), qPrintable(name));
    }
}

void tst_Demo::helpNamesEverySetting()
{
    QProcess script;
    script.start(DEMO_SCRIPT, {"--help"});
    QVERIFY(script.waitForFinished());

    const QString help = script.readAllStandardOutput();
    for (const char *name : {"tool", "package", "app-id", "usage", "hardware-version",
                             "firmware-version", "softdevice", "key", "require-signature"}) {
        QVERIFY2(help.contains(QString("  --%1 ").arg(name)), name);
    }
}

void tst_Demo::refusesWhatItDoesNotKnow_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("sentence");
    write("plain", "text");
    const QByteArray plain = path("plain").toUtf8();
    QTest::newRow("a fault") << FW_DEMO << QStringList{"--fault", "explodes", "/"}
                             << QByteArray("demo: unknown fault \"explodes\"");
    QTest::newRow("no folder") << FW_DEMO << QStringList() << QByteArray("Usage: ");
    QTest::newRow("a wrong setting") << FW_DEMO << QStringList{"--usage", "1", "/"}
                                     << QByteArray("demo: usage must be two hexadecimal numbers");
    QTest::newRow("an option of the script")
        << DEMO_SCRIPT << QStringList{"--explode"} << QByteArray("demo: unknown option --explode");
    QTest::newRow("a fault without a name")
        << DEMO_SCRIPT << QStringList{"--fault"} << QByteArray("demo: --fault needs a name");
    QTest::newRow("a tool without a name")
        << DEMO_SCRIPT << QStringList{"--tool"} << QByteArray("demo: --tool needs a file");
    QTest::newRow("a setting without a value")
        << DEMO_SCRIPT << QStringList{"--usage"} << QByteArray("demo: --usage needs a value");
    QTest::newRow("a missing tool") << DEMO_SCRIPT << QStringList{"--tool", "/missing"}
                                    << QByteArray("demo: /missing does not exist\n");
    QTest::newRow("a tool that is not executable")
        << DEMO_SCRIPT << QStringList{"--tool", plain}
        << "demo: " + plain + " is not an executable file\n";
    QTest::newRow("a tool that is a folder")
        << DEMO_SCRIPT << QStringList{"--tool", "/usr"}
        << QByteArray("demo: /usr is not an executable file\n");
    QTest::newRow("a preset") << TEST_SCRIPT << QStringList{"explode"}
                              << QByteArray("test: unknown preset explode\n");
    const QByteArray noTemporaryFolder = ": /proc is not writable; set TMPDIR to another folder\n";
    QTest::newRow("tests without a folder for temporary files")
        << "env" << QStringList{"TMPDIR=/proc", TEST_SCRIPT, "explode"}
        << "test" + noTemporaryFolder;
    QTest::newRow("the demo without a folder for temporary files")
        << "env" << QStringList{"TMPDIR=/proc", DEMO_SCRIPT, "--headless", "--build", BUILD_FOLDER}
        << "demo" + noTemporaryFolder;
    QTest::newRow("a build that is not writable")
        << DEMO_SCRIPT << QStringList{"--build", "/proc"}
        << QByteArray("demo: /proc is not writable; copy it to another folder\n");
    QTest::newRow("a missing package") << DEMO_SCRIPT << QStringList{"--package", "/missing"}
                                       << QByteArray("demo: /missing does not exist\n");
}

void tst_Demo::refusesWhatItDoesNotKnow()
{
    QFETCH(const QString, program);
    QFETCH(const QStringList, arguments);
    QFETCH(const QByteArray, sentence);
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);

    process.start(program, arguments);
    QVERIFY(process.waitForFinished());

    const QByteArray output = process.readAllStandardOutput();
    QVERIFY2(output.startsWith(sentence), output.constData());
    QVERIFY(process.exitCode() != 0);
}

QTEST_GUILESS_MAIN(tst_Demo)
#include "tst_Demo.moc"

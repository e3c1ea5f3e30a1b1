// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/demo/Demo.h"
#include "simulator/device/DeviceBehaviour.h"
#include "simulator/dfu/DfuPackage.h"

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
    void findsTheDisplay_data();
    void findsTheDisplay();
    void helpNamesEveryFault();
    void refusesWhatItDoesNotKnow_data();
    void refusesWhatItDoesNotKnow();
};

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

void tst_Demo::refusesWhatItDoesNotKnow_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("a fault") << FW_DEMO << QStringList{"--fault", "explodes", "/"};
    QTest::newRow("no folder") << FW_DEMO << QStringList();
    QTest::newRow("an option of the script") << DEMO_SCRIPT << QStringList{"--explode"};
    QTest::newRow("a fault without a name") << DEMO_SCRIPT << QStringList{"--fault"};
}

void tst_Demo::refusesWhatItDoesNotKnow()
{
    QFETCH(const QString, program);
    QFETCH(const QStringList, arguments);
    QProcess process;

    process.start(program, arguments);
    QVERIFY(process.waitForFinished());

    QCOMPARE(process.exitCode(), 2);
    QVERIFY(!(process.readAllStandardError() + process.readAllStandardOutput()).isEmpty());
}

QTEST_GUILESS_MAIN(tst_Demo)
#include "tst_Demo.moc"

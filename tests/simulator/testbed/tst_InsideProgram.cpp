// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/testbed/InsideProgram.h"

#include <QTemporaryDir>
#include <QtTest>

class tst_InsideProgram : public QObject
{
    Q_OBJECT

private slots:
    void endsAsTheProgramDid_data();
    void endsAsTheProgramDid();
    void waitsForWhatItLeftRunning();
    void doesNotWaitForDaemons();
    void canBeTerminated();
    void seesTheTestbed();
    void cannotStartWhatIsNotThere();
};

void tst_InsideProgram::endsAsTheProgramDid_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<int>("exitCode");
    QTest::newRow("success") << "exit 0" << 0;
    QTest::newRow("failure") << "exit 3" << 3;
    QTest::newRow("a signal") << "kill -TERM $$" << 143;
}

void tst_InsideProgram::endsAsTheProgramDid()
{
    QFETCH(const QString, command);
    QFETCH(const int, exitCode);
    const Testbed testbed;
    InsideProgram program(testbed);
    QSignalSpy finished(&program, &InsideProgram::finished);

    QVERIFY(program.start("sh", {"-c", command}));

    QTRY_VERIFY(program.isAllFinished());
    QCOMPARE(program.exitCode(), exitCode);
    QCOMPARE(finished, QList<QVariantList>{{exitCode}});
}

void tst_InsideProgram::waitsForWhatItLeftRunning()
{
    const QTemporaryDir folder;
    const Testbed testbed;
    InsideProgram program(testbed);

    QVERIFY(program.start("sh", {"-c", "(sleep 0.5; echo > late) & exit 3"}, folder.path()));

    QTRY_VERIFY(!program.isRunning());
    QVERIFY(!program.isAllFinished());
    QTRY_VERIFY(program.isAllFinished());
    QVERIFY(QFileInfo::exists(folder.filePath("late")));
    QCOMPARE(program.exitCode(), 3);
}

void tst_InsideProgram::doesNotWaitForDaemons()
{
    const QTemporaryDir folder;
    const Testbed testbed;
    InsideProgram program(testbed);

    QVERIFY(program.start("sh", {"-c", "setsid sh -c 'sleep 1; echo > late' & sleep 0.2"},
                          folder.path()));

    QTRY_VERIFY(program.isAllFinished());
    QVERIFY(!QFileInfo::exists(folder.filePath("late")));
}

void tst_InsideProgram::canBeTerminated()
{
    const Testbed testbed;
    InsideProgram program(testbed);
    QVERIFY(program.start("sleep", {"60"}));

    program.terminate();

    QTRY_VERIFY(program.isAllFinished());
    QCOMPARE(program.exitCode(), 143);
}

void tst_InsideProgram::seesTheTestbed()
{
    const QTemporaryDir folder;
    Testbed testbed;
    testbed.addHidInterface(testbed.addUsbDevice({0x7F3C, 0x0C51, "Device", "0001"}),
                            {0xFF31, 0x74, {}, {}});
    InsideProgram program(testbed);
    program.setLog(folder.filePath("log"));

    QVERIFY(program.start("ls", {"/sys/class/hidraw"}));

    QTRY_VERIFY(program.isAllFinished());
    QFile log(folder.filePath("log"));
    QVERIFY(log.open(QIODevice::ReadOnly));
    QCOMPARE(log.readAll(), QByteArray("hidraw0\n"));
}

void tst_InsideProgram::cannotStartWhatIsNotThere()
{
    const Testbed testbed;
    InsideProgram program(testbed);

    QVERIFY(!program.start("/nowhere/program", {}));
}

QTEST_GUILESS_MAIN(tst_InsideProgram)
#include "tst_InsideProgram.moc"

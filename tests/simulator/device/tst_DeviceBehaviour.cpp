// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/device/DeviceBehaviour.h"

#include <QtTest>

class tst_DeviceBehaviour : public QObject
{
    Q_OBJECT

private slots:
    void faultsAreKnownByName_data();
    void faultsAreKnownByName();
    void numbersGoWhereTheyBelong();
    void helpNamesEveryFault();
};

void tst_DeviceBehaviour::faultsAreKnownByName_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<bool>("known");
    QTest::newRow("without a number") << "silent" << true;
    QTest::newRow("default number") << "late-return" << true;
    QTest::newRow("given number") << "late-return=4000" << true;
    QTest::newRow("unknown") << "explodes" << false;
    QTest::newRow("empty") << "" << false;
    QTest::newRow("unexpected number") << "silent=1" << false;
    QTest::newRow("not a number") << "late-return=soon" << false;
    QTest::newRow("empty number") << "late-return=" << false;
    QTest::newRow("a negative number") << "late-return=-1" << false;
}

void tst_DeviceBehaviour::faultsAreKnownByName()
{
    QFETCH(const QString, fault);
    QFETCH(const bool, known);

    QCOMPARE(DeviceBehaviour().addFault(fault), known);
}

void tst_DeviceBehaviour::numbersGoWhereTheyBelong()
{
    DeviceBehaviour behaviour;
    QVERIFY(behaviour.addFault("late-return"));
    QCOMPARE(behaviour.returnAfter, 2500);
    QVERIFY(behaviour.addFault("late-return=4000"));
    QCOMPARE(behaviour.returnAfter, 4000);
    QVERIFY(behaviour.addFault("drop-out=7"));
    QCOMPARE(behaviour.dropOutAfter, qint64(7));
    QVERIFY(behaviour.addFault("slow=9"));
    QCOMPARE(behaviour.answerDelay, 9);
}

void tst_DeviceBehaviour::helpNamesEveryFault()
{
    const QString help = DeviceBehaviour::help();
    const QStringList names = DeviceBehaviour::faultNames();
    QVERIFY(names.size() >= 9);
    for (const QString &name : names) {
        QVERIFY2(help.contains("  " + name), qPrintable(name));
        QVERIFY2(DeviceBehaviour().addFault(name), qPrintable(name));
    }
}

QTEST_GUILESS_MAIN(tst_DeviceBehaviour)
#include "tst_DeviceBehaviour.moc"

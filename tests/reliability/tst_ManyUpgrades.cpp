// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/reliability/RepeatedUpgrades.h"

#include <QtTest>

/// A short form of the soak, which also runs with the sanitizers.
class tst_ManyUpgrades : public QObject
{
    Q_OBJECT

private slots:
    void leaveNothingOpen_data();
    void leaveNothingOpen();
};

void tst_ManyUpgrades::leaveNothingOpen_data()
{
    QTest::addColumn<int>("times");
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("status");
    QTest::newRow("successful") << 50 << QByteArray("echo 'Device programmed.'\n")
                                << StatusText::kSuccess;
    QTest::newRow("failed") << 20 << QByteArray("echo 'No such port' >&2; exit 1\n")
                            << "No such port\n";
}

void tst_ManyUpgrades::leaveNothingOpen()
{
    QFETCH(int, times);
    QFETCH(QByteArray, script);
    QFETCH(QString, status);

    RepeatedUpgrades upgrades;
    upgrades.run(1, script, status);
    const int before = RepeatedUpgrades::descriptors();
    QVERIFY(before > 0); // -1 if a child process is left
    upgrades.run(times, script, status);
    QCOMPARE(RepeatedUpgrades::descriptors(), before);
}

QTEST_MAIN(tst_ManyUpgrades)
#include "tst_ManyUpgrades.moc"

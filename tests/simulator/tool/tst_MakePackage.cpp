// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/dfu/DfuPackage.h"

#include <QCryptographicHash>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

class tst_MakePackage : public QObject
{
    Q_OBJECT

private slots:
    void makesAPackage_data();
    void makesAPackage();
    void dependsOnTheSeedAlone();
    void refuses_data();
    void refuses();

private:
    QString path() const { return m_folder.filePath("demo package.zip"); }
    QByteArray firmware(const QStringList &options);

    QTemporaryDir m_folder;
};

namespace {

struct Outcome
{
    int exitCode;
    QByteArray out;
    QByteArray err;
};

Outcome run(const QStringList &arguments)
{
    QProcess process;
    process.start(MAKE_PACKAGE, arguments);
    process.waitForFinished();
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

} // namespace

QByteArray tst_MakePackage::firmware(const QStringList &options)
{
    DfuPackage package;
    return run(options + QStringList{path()}).exitCode == 0
            && package.read(path()) == DfuPackage::Error::None
        ? package.firmware
        : QByteArray();
}

void tst_MakePackage::makesAPackage_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<int>("size");

    QTest::newRow("default size") << QStringList() << 200000;
    QTest::newRow("one byte") << QStringList{"--size", "1"} << 1;
    QTest::newRow("largest size") << QStringList{"--size", "786432"} << 786432;
}

void tst_MakePackage::makesAPackage()
{
    QFETCH(QStringList, options);
    QFETCH(int, size);
    const Outcome outcome = run(options + QStringList{path()});
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.err, QByteArray());
    DfuPackage package;
    QCOMPARE(package.read(path()), DfuPackage::Error::None);
    QCOMPARE(package.firmware.size(), size);
    QCOMPARE(package.initPacket, DfuPackage::forFirmware(package.firmware).initPacket);
    const QByteArray hash
        = QCryptographicHash::hash(package.firmware, QCryptographicHash::Sha256).toHex();
    QCOMPARE(outcome.out, hash + '\n');
}

void tst_MakePackage::dependsOnTheSeedAlone()
{
    const QByteArray usual = firmware({});
    QCOMPARE(usual.size(), 200000);
    QVERIFY(firmware({}) == usual);
    QVERIFY(firmware({"--seed", "1"}) == usual);
    QVERIFY(firmware({"--seed", "2"}) != usual);
    QVERIFY(firmware({"--size", "100"}) == usual.left(100));
    QCOMPARE(firmware({"--size", "8"}).toHex(), QByteArray("25eb8c48ff89cb85"));
}

void tst_MakePackage::refuses_data()
{
    QTest::addColumn<QStringList>("arguments");

    QTest::newRow("no output") << QStringList();
    QTest::newRow("two outputs") << QStringList{path(), path()};
    QTest::newRow("size 0") << QStringList{"--size", "0", path()};
    QTest::newRow("a size too large") << QStringList{"--size", "786433", path()};
    QTest::newRow("a size that is not a number") << QStringList{"--size", "large", path()};
    QTest::newRow("a negative seed") << QStringList{"--seed", "-1", path()};
    QTest::newRow("an unknown option") << QStringList{"--colour", path()};
    QTest::newRow("a missing folder") << QStringList{m_folder.filePath("no/demo.zip")};
}

void tst_MakePackage::refuses()
{
    QFETCH(QStringList, arguments);
    QFile::remove(path());
    const Outcome outcome = run(arguments);
    QVERIFY(outcome.exitCode != 0);
    QVERIFY(!QFile::exists(path()));
    QVERIFY(!(outcome.out + outcome.err).isEmpty());
}

QTEST_GUILESS_MAIN(tst_MakePackage)
#include "tst_MakePackage.moc"

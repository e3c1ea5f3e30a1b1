// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/app/UpgradeStage.h"
#include "tests/reliability/Outcome.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const char *const kRunning = "Upgrading, please do not plug or unplug the device!";
constexpr int kAtTimeOut = 9105;

} // namespace

/// What is wrong with chmod or with the vendor's tool, on a device that is in its bootloader. The
/// search path leads to a chmod of the test's own first.
class tst_ToolFaults : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void chmod_data();
    void chmod();
    void chmodHangs();
    void cannotBeStarted_data();
    void cannotBeStarted();
    void endsWithoutThePhrase_data();
    void endsWithoutThePhrase();

private:
    void compareUntilTimeOut(int processes);

    QByteArray m_searchPath;
    QString m_workingDirectory;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<UpgradeStage> m_stage;
};

void tst_ToolFaults::init()
{
    m_searchPath = qgetenv("PATH");
    m_workingDirectory = QDir::currentPath();
    m_folder = std::make_unique<QTemporaryDir>();
    m_stage = std::make_unique<UpgradeStage>();
    m_stage->addPort();
}

void tst_ToolFaults::cleanup()
{
    qputenv("PATH", m_searchPath);
    QDir::setCurrent(m_workingDirectory);
    m_stage.reset();
    QDir(DirectedTool::path()).removeRecursively(); // where it is a directory
    m_folder.reset();
}

/// The outcome now, just before the time-out and at it.
void tst_ToolFaults::compareUntilTimeOut(int processes)
{
    QTRY_COMPARE(Outcome::of(*m_stage), (Outcome{kRunning, false, 0, processes}));
    QTRY_COMPARE(m_stage->watch->timers.size(), 1);
    m_stage->tick(UpgradeStage::kTicksToTimeOut - 1);
    QCOMPARE(Outcome::of(*m_stage), (Outcome{kRunning, false, 9100, processes}));
    m_stage->tick();
    QCOMPARE(Outcome::of(*m_stage), (Outcome{kRunning, true, kAtTimeOut, processes}));
}

void tst_ToolFaults::chmod_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<bool>("inToolsDirectory");
    QTest::addColumn<int>("processes");

    const QByteArray works = "PATH=${PATH#*:} exec chmod \"$@\"\n";
    QTest::newRow("works") << works << true << 1;
    QTest::newRow("in the wrong directory") << works << false << 0;
    QTest::newRow("missing") << QByteArray() << true << 0;
    QTest::newRow("fails") << QByteArray("exit 1\n") << true << 0;
    QTest::newRow("prints a megabyte")
        << "head -c 1000000 /dev/zero; head -c 1000000 /dev/zero >&2\n" + works << true << 1;
}

/// The tool has no execute bit until chmod gives it one.
void tst_ToolFaults::chmod()
{
    QFETCH(QByteArray, script);
    QFETCH(bool, inToolsDirectory);
    QFETCH(int, processes);

    QFile::setPermissions(DirectedTool::path(), QFile::ReadOwner | QFile::WriteOwner);
    QDir::setCurrent(inToolsDirectory ? QCoreApplication::applicationDirPath() : m_folder->path());
    if (script.isEmpty()) {
        qputenv("PATH", m_folder->path().toLocal8Bit());
    } else {
        QFile file(m_folder->filePath("chmod"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\n" + script);
        file.setPermissions(file.permissions() | QFile::ExeOwner);
        qputenv("PATH", m_folder->path().toLocal8Bit() + ':' + m_searchPath);
    }
    m_stage->click();
    qputenv("PATH", m_searchPath);
    QTRY_COMPARE(m_stage->tool->starts(), processes);
    compareUntilTimeOut(processes);
}

void tst_ToolFaults::chmodHangs()
{
    QFile file(m_folder->filePath("chmod"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\nexec sleep 60\n");
    file.setPermissions(file.permissions() | QFile::ExeOwner);
    file.close();
    qputenv("PATH", m_folder->path().toLocal8Bit() + ':' + m_searchPath);

    QElapsedTimer clock;
    clock.start();
    m_stage->click();
    QVERIFY(clock.elapsed() >= 30000);
    QVERIFY(clock.elapsed() < 32000);
    QTRY_COMPARE(m_stage->tool->starts(), 1);
    // It is gone, and only the tool is left.
    QCOMPARE(Outcome::of(*m_stage), (Outcome{kRunning, false, 0, 1}));
}

void tst_ToolFaults::cannotBeStarted_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("executable");

    QTest::newRow("missing") << QByteArray() << false;
    QTest::newRow("without execute bit") << QByteArray("#!/bin/sh\n") << false;
    QTest::newRow("not a program") << QByteArray("Device programmed") << true;
    QTest::newRow("a directory") << QByteArray("directory") << true;
    QTest::newRow("with a missing interpreter") << QByteArray("#!/nowhere/sh\n") << true;
}

void tst_ToolFaults::cannotBeStarted()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, executable);

    m_stage->tool.reset();
    QDir::setCurrent(m_folder->path()); // out of chmod's reach
    if (content == "directory") {
        QVERIFY(QDir().mkdir(DirectedTool::path()));
    } else if (!content.isEmpty()) {
        QFile file(DirectedTool::path());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.setPermissions(executable ? file.permissions() | QFile::ExeOwner
                                       : QFile::ReadOwner | QFile::WriteOwner);
    }
    m_stage->click();
    compareUntilTimeOut(0);
    QFile::remove(DirectedTool::path());
}

void tst_ToolFaults::endsWithoutThePhrase_data()
{
    QTest::addColumn<QByteArray>("script");

    QTest::newRow("exit 0") << QByteArray("exit 0\n");
    QTest::newRow("exit 1") << QByteArray("exit 1\n");
    QTest::newRow("segmentation fault") << QByteArray("kill -SEGV $$\n");
    QTest::newRow("killed") << QByteArray("kill -KILL $$\n");
    QTest::newRow("after some words") << QByteArray("echo Sending; exit 1\n");
}

void tst_ToolFaults::endsWithoutThePhrase()
{
    QFETCH(QByteArray, script);

    m_stage->tool->setScript(script);
    m_stage->click();
    QTRY_COMPARE(m_stage->tool->starts(), 1);
    compareUntilTimeOut(0);
    QCOMPARE(m_stage->tool->starts(), 1);
}

QTEST_MAIN(tst_ToolFaults)
#include "tst_ToolFaults.moc"

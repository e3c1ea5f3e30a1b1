// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/app/fixtures/UpgradeStage.h"

#include <QTemporaryDir>
#include <QtTest>

/// An upgrade of a device in its bootloader, with every kind of chmod and tool.
class tst_UpgradeTool : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void chmod_data();
    void chmod();
    void startsWithSixArguments();
    void silentUntilTheTimeOut_data();
    void silentUntilTheTimeOut();

private:
    QByteArray withSearchPath(const QByteArray &script) const;
    void installChmod(const QByteArray &script);

    QByteArray m_searchPath;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<UpgradeStage> m_stage;
};

void tst_UpgradeTool::init()
{
    m_searchPath = qgetenv("PATH");
    m_folder = std::make_unique<QTemporaryDir>();
    m_stage = std::make_unique<UpgradeStage>();
    m_stage->addPort();
}

void tst_UpgradeTool::cleanup()
{
    qputenv("PATH", m_searchPath);
    m_stage.reset();
    QDir(UpgradeStage::toolPath()).removeRecursively(); // if it is a directory
    m_folder.reset();
}

/// A script that finds the system's programs even if the window does not.
QByteArray tst_UpgradeTool::withSearchPath(const QByteArray &script) const
{
    return "PATH='" + m_searchPath + "'\n" + script;
}

/// Makes a script the only chmod in the search path. It records how it is called.
void tst_UpgradeTool::installChmod(const QByteArray &script)
{
    QFile file(m_folder->filePath("chmod"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\n" + withSearchPath("echo \"$PWD|$*\" >> \"$0.calls\"\n" + script));
    file.setPermissions(file.permissions() | QFile::ExeOwner);
}

void tst_UpgradeTool::chmod_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<bool>("besideTheTool");
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<QByteArray>("error");
    QTest::addColumn<int>("processes");

    const QByteArray none;
    const QByteArray works = "chmod \"$@\"\n";
    const QByteArray megabyte(1000000, 'x');
    QTest::newRow("works") << works << true << none << none << 1;
    QTest::newRow("in another directory") << QByteArray("chmod \"$@\" 2>&-\n") << false << none
                                          << none << 0; // chmod does not reach the tool
    QTest::newRow("missing") << none << true << none << none << 0;
    QTest::newRow("fails") << QByteArray("exit 1\n") << true << none << none << 0;
    QTest::newRow("is killed") << QByteArray("kill -KILL $$\n") << true << none << none << 0;
    QTest::newRow("speaks") << works + "echo out; echo err >&2\n"
                            << true << QByteArray("out\n") << QByteArray("err\n") << 1;
    QTest::newRow("prints megabytes")
        << works + "head -c 1000000 /dev/zero | tr '\\0' x | tee /dev/stderr\n"
        << true << megabyte << megabyte << 1;
    QTest::newRow("hangs") << QByteArray("exec sleep 1000\n") << true << none << none << 0;
}

/// The tool has no execute bit until chmod gives it one.
void tst_UpgradeTool::chmod()
{
    QFETCH(QByteArray, script);
    QFETCH(bool, besideTheTool);
    QFETCH(QByteArray, output);
    QFETCH(QByteArray, error);
    QFETCH(int, processes);

    UpgradeStage::setTool(withSearchPath("exec sleep 1000\n"));
    QFile::setPermissions(UpgradeStage::toolPath(), QFile::ReadOwner | QFile::WriteOwner);
    if (!besideTheTool) {
        QDir::setCurrent(m_folder->path());
    }
    const QString directory = QDir::currentPath();
    if (!script.isEmpty()) {
        installChmod(script);
    }
    qputenv("PATH", m_folder->path().toLocal8Bit());
    int limit = 0;
    LibraryHooks::current.finishLimit = [&](int msecs) {
        limit = msecs;
        return script.contains("sleep") ? 100 : msecs; // need not take 30 s
    };
    m_stage->click();

    QCOMPARE(limit, 30000);
    QFile calls(m_folder->filePath("chmod.calls"));
    QCOMPARE(calls.open(QIODevice::ReadOnly), !script.isEmpty());
    if (!script.isEmpty()) {
        QCOMPARE(QString(calls.readAll()), directory + "|+x ./nrfutil-mac\n");
    }
    const QStringList journal = m_stage->takeJournal();
    QCOMPARE(journal.filter("log:"),
             QStringList(
                 {UpgradeStage::logged("Output:", output), UpgradeStage::logged("Error:", error)}));
    QCOMPARE(journal.filter("status:").size(), 4); // the upgrade goes on
    Outcome expected = Outcome::upgrading();
    expected.processes = processes; // a chmod that hangs has been killed
    QCOMPARE(m_stage->awaitOutcome(expected), expected);
}

void tst_UpgradeTool::startsWithSixArguments()
{
    m_stage->setTool("printf '%s\\n' \"$PWD\" \"$@\" >&2\n");
    m_stage->click();
    Outcome expected = Outcome::upgrading();
    expected.canClick = true;
    expected.processes = 0;
    const QString package = QCoreApplication::applicationDirPath() + "/dfu.zip";
    const QStringList lines = {QDir::currentPath(), "dfu", "usb-serial", "-pkg", package, "-p",
                               UpgradeStage::kPort, ""};
    expected.status = lines.join('\n');
    QCOMPARE(m_stage->awaitOutcome(expected), expected);
    QCOMPARE(m_stage->tools.first()->openMode(), QIODevice::ReadWrite);
}

void tst_UpgradeTool::silentUntilTheTimeOut_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("processes");

    const QByteArray script = "#!/bin/sh\n";
    QTest::newRow("missing") << QByteArray() << 0;
    QTest::newRow("not executable") << script << 0;
    QTest::newRow("not a program") << QByteArray("Device programmed") << 0;
    QTest::newRow("a directory") << QByteArray("directory") << 0;
    QTest::newRow("its interpreter is missing") << QByteArray("#!/nowhere/sh\n") << 0;
    QTest::newRow("exits with 0") << script + "exit 0\n" << 0;
    QTest::newRow("exits with 1") << script + "exit 1\n" << 0;
    QTest::newRow("crashes") << script + "kill -SEGV $$\n" << 0;
    QTest::newRow("is killed") << script + "kill -KILL $$\n" << 0;
    QTest::newRow("exits after some words") << script + "echo Sending; exit 1\n" << 0;
    QTest::newRow("says nothing") << script + "exec sleep 1000\n" << 1;
}

/// Neither a tool that cannot be started nor one that ends is noticed before the time-out.
void tst_UpgradeTool::silentUntilTheTimeOut()
{
    QFETCH(QByteArray, content);
    QFETCH(int, processes);

    UpgradeStage::removeTool();
    QDir::setCurrent(m_folder->path()); // where chmod does not reach the tool
    if (content == "directory") {
        QVERIFY(QDir().mkdir(UpgradeStage::toolPath()));
    } else if (!content.isEmpty()) {
        QFile file(UpgradeStage::toolPath());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.setPermissions(content == "#!/bin/sh\n" ? QFile::ReadOwner
                                                     : QFile::ReadOwner | QFile::ExeOwner);
    }
    m_stage->click();
    Outcome expected = Outcome::upgrading();
    expected.processes = processes;
    QCOMPARE(m_stage->awaitOutcome(expected), expected);
    m_stage->takeJournal();
    m_stage->tick(UpgradeStage::kTicksToTimeOut - 1);
    expected.progress = 9100;
    QCOMPARE(m_stage->outcome(), expected);
    m_stage->tick();
    expected = {StatusText::kUpgrading, true, 9105, {Outcome::Stopped}, processes};
    QCOMPARE(m_stage->outcome(), expected);
    QCOMPARE(m_stage->takeJournal().filter("status:"), QStringList());
}

QTEST_MAIN(tst_UpgradeTool)
#include "tst_UpgradeTool.moc"

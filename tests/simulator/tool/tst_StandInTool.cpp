// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/dfu/Bootloader.h"
#include "simulator/dfu/DfuPackage.h"
#include "tests/support/PacketProcess.h"
#include "tests/support/PtyDevice.h"
#include "tests/support/ZipFile.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <memory>

using Chunks = QVector<QByteArray>;

class tst_StandInTool : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void flashesThePackage();
    void writesTheEmptyLineBeforeItTalksToTheDevice();
    void flashesOnWhenNobodyReadsAnyMore();
    void goesOnWhereAKilledOneWasStopped();
    void failsWithATraceback_data();
    void failsWithATraceback();
    void refusesAMissingPackage();
    void refusesOtherArguments_data();
    void refusesOtherArguments();
    void writesWhatTheScriptSays_data();
    void writesWhatTheScriptSays();
    void endsAsTheScriptSays_data();
    void endsAsTheScriptSays();
    void floodsAChannel_data();
    void floodsAChannel();
    void sleeps();
    void ignoresASignal_data();
    void ignoresASignal();
    void leavesAChildBehind();
    void recordsHowItWasCalled();
    void flashesWithinAScript();
    void endsTheScriptWhenFlashingFails();
    void refusesABadScript_data();
    void refusesABadScript();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    QString tool() const { return path("nrfutil-mac"); }
    void writeScript(const QByteArray &script) const;
    QStringList arguments(const QString &port) const;

    std::unique_ptr<QTemporaryDir> m_folder;
    DfuPackage m_package;
};

namespace {

QByteArray joined(const Chunks &chunks)
{
    QByteArray all;
    for (const QByteArray &chunk : chunks) {
        all += chunk;
    }
    return all;
}

/// A package that consists of a manifest only.
QByteArray zipped(const QByteArray &manifest)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("package.zip"));
    return ZipFile::write(file.fileName(), {{"manifest.json", manifest}})
            && file.open(QIODevice::ReadOnly)
        ? file.readAll()
        : QByteArray();
}

const Chunks kSuccess{"\n", "Device programmed.\n"};

} // namespace

void tst_StandInTool::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(QFile::link(STAND_IN_TOOL, tool()));
    m_package = DfuPackage::forFirmware(QByteArray("firmware").repeated(5000));
    QCOMPARE(m_package.write(path("dfu.zip")), DfuPackage::Error::None);
}

void tst_StandInTool::cleanup()
{
    m_folder.reset();
}

void tst_StandInTool::writeScript(const QByteArray &script) const
{
    QFile file(path("nrfutil-mac.script"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(script);
}

QStringList tst_StandInTool::arguments(const QString &port) const
{
    return {"dfu", "usb-serial", "-pkg", path("dfu.zip"), "-p", port};
}

void tst_StandInTool::flashesThePackage()
{
    Bootloader bootloader;
    PtyDevice device([&](const QByteArray &bytes) { return bootloader.receive(bytes); });
    PacketProcess process(tool(), arguments(device.path()));
    QCOMPARE(process.finish(), 0);
    QCOMPARE(process.out(), kSuccess);
    QCOMPARE(process.err(), Chunks());
    device.unplug();
    QVERIFY(bootloader.isFinished());
    QCOMPARE(bootloader.image(), m_package.firmware);
    QCOMPARE(bootloader.initPacket(), m_package.initPacket);
}

void tst_StandInTool::writesTheEmptyLineBeforeItTalksToTheDevice()
{
    QSemaphore lineSeen;
    Bootloader bootloader;
    PtyDevice device([&](const QByteArray &bytes) {
        return lineSeen.tryAcquire(1, 5000) ? bootloader.receive(bytes) : QByteArray();
    });
    PacketProcess process(tool(), arguments(device.path()));
    QVERIFY(process.waitForOut(1));
    QCOMPARE(process.out(), Chunks{"\n"});
    lineSeen.release(10000);
    QCOMPARE(process.finish(), 0);
    QCOMPARE(process.out(), kSuccess);
}

void tst_StandInTool::flashesOnWhenNobodyReadsAnyMore()
{
    QSemaphore nobodyReads;
    Bootloader bootloader;
    PtyDevice device([&](const QByteArray &bytes) {
        return nobodyReads.tryAcquire(1, 5000) ? bootloader.receive(bytes) : QByteArray();
    });
    PacketProcess process(tool(), arguments(device.path()));
    QVERIFY(process.waitForOut(1));
    process.closeChannels();
    nobodyReads.release(10000);
    QCOMPARE(process.waitForEnd(), 0);
    device.unplug();
    QCOMPARE(bootloader.image(), m_package.firmware);
}

void tst_StandInTool::goesOnWhereAKilledOneWasStopped()
{
    QSemaphore halfReceived;
    QSemaphore killed;
    Bootloader bootloader;
    PtyDevice device([&](const QByteArray &bytes) {
        if (bootloader.imageBytesReceived() > 20000 && halfReceived.available() == 0) {
            halfReceived.release();
            killed.acquire();
        }
        return bootloader.receive(bytes);
    });
    {
        const PacketProcess process(tool(), arguments(device.path()));
        halfReceived.acquire();
        kill(process.pid(), SIGKILL);
    }
    halfReceived.release();
    killed.release();
    PacketProcess process(tool(), arguments(device.path()));
    QCOMPARE(process.finish(), 0);
    device.unplug();
    QCOMPARE(bootloader.image(), m_package.firmware);
    QVERIFY(device.received() < 60000);
}

void tst_StandInTool::failsWithATraceback_data()
{
    QTest::addColumn<QByteArray>("package");
    QTest::addColumn<bool>("portExists");
    QTest::addColumn<bool>("wrongCrc");
    QTest::addColumn<QByteArray>("lastLine");

    QTest::newRow("a package that is not a ZIP file")
        << QByteArray("text") << true << false << QByteArray("the file is not a zip archive");
    QTest::newRow("a bootloader")
        << zipped(R"({"manifest": {"bootloader": {"bin_file": "a", "dat_file": "b"}}})") << true
        << false
        << QByteArray(
               "the package contains a bootloader, but the device accepts only an application");
    QTest::newRow("no such port") << QByteArray() << false << false
                                  << QByteArray("No such file or directory");
    QTest::newRow("a wrong CRC") << QByteArray() << true << true
                                 << QByteArray("a wrong CRC after 63 bytes");
}

void tst_StandInTool::failsWithATraceback()
{
    QFETCH(QByteArray, package);
    QFETCH(bool, portExists);
    QFETCH(bool, wrongCrc);
    QFETCH(QByteArray, lastLine);
    if (!package.isEmpty()) {
        QFile file(path("dfu.zip"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(package);
    }
    Bootloader bootloader;
    bootloader.setWrongCrc(wrongCrc);
    PtyDevice device([&](const QByteArray &bytes) { return bootloader.receive(bytes); });
    PacketProcess process(tool(), arguments(portExists ? device.path() : path("no-port")));
    QCOMPARE(process.finish(), 1);
    QCOMPARE(process.out(), Chunks{"\n"});
    QVERIFY(process.err().size() > 10);
    const QByteArray text = joined(process.err());
    QVERIFY(text.startsWith("Traceback (most recent call last):\n"));
    QVERIFY2(text.endsWith(lastLine + '\n'), text.constData());
    QVERIFY(text.count('\n') > 3);
}

void tst_StandInTool::refusesAMissingPackage()
{
    QVERIFY(QFile::remove(path("dfu.zip")));
    PacketProcess process(tool(), arguments(path("no-port")));
    QCOMPARE(process.finish(), 2);
    QCOMPARE(process.out(), Chunks());
    QCOMPARE(process.err().size(), 1);
    QVERIFY(process.err().constFirst().startsWith("Error: "));
    QVERIFY(process.err().constFirst().contains(path("dfu.zip").toUtf8()));
}

void tst_StandInTool::refusesOtherArguments_data()
{
    QTest::addColumn<QStringList>("words");

    QTest::newRow("none") << QStringList();
    QTest::newRow("five") << QStringList{"dfu", "usb-serial", "-pkg", "a.zip", "-p"};
    QTest::newRow("seven") << QStringList{"dfu", "usb-serial", "-pkg", "a.zip", "-p", "b", "c"};
    QTest::newRow("another command") << QStringList{"pkg", "usb-serial", "-pkg", "a", "-p", "b"};
    QTest::newRow("another transport") << QStringList{"dfu", "ble", "-pkg", "a.zip", "-p", "b"};
    QTest::newRow("another order") << QStringList{"dfu", "usb-serial", "-p", "b", "-pkg", "a.zip"};
}

void tst_StandInTool::refusesOtherArguments()
{
    QFETCH(QStringList, words);
    PacketProcess process(tool(), words);
    QCOMPARE(process.finish(), 2);
    QCOMPARE(process.out(), Chunks());
    QVERIFY(joined(process.err()).startsWith("Usage: "));
}

void tst_StandInTool::writesWhatTheScriptSays_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<Chunks>("out");
    QTest::addColumn<Chunks>("err");

    QTest::newRow("nothing") << QByteArray() << Chunks() << Chunks();
    QTest::newRow("a comment and an empty line")
        << QByteArray("# out \"a\"\n\n   \n") << Chunks() << Chunks();
    QTest::newRow("chunks on one channel")
        << QByteArray("out \"a\"\nout \"b c\"\n") << Chunks{"a", "b c"} << Chunks();
    QTest::newRow("chunks on both channels")
        << QByteArray("out \"a\"\nerr \"b\"\nout \"c\"") << Chunks{"a", "c"} << Chunks{"b"};
    QTest::newRow("escapes") << QByteArray(R"(out "1\n2\t3\"4\\5\0006")")
                             << Chunks{QByteArray("1\n2\t3\"4\\5\0", 10) + "006"} << Chunks();
    QTest::newRow("other alphabets") << QByteArray("out \"Gerät\"") << Chunks{"Gerät"} << Chunks();
    QTest::newRow("any bytes") << QByteArray("out-base64 AP/A\nerr-base64 gA==")
                               << Chunks{QByteArray("\0\xFF\xC0", 3)} << Chunks{"\x80"};
    QTest::newRow("spaces around") << QByteArray("  out    \" a \"  ") << Chunks{" a "} << Chunks();
}

void tst_StandInTool::writesWhatTheScriptSays()
{
    QFETCH(QByteArray, script);
    QFETCH(Chunks, out);
    QFETCH(Chunks, err);
    writeScript(script);
    PacketProcess process(tool(), {});
    QCOMPARE(process.finish(), 0);
    QCOMPARE(process.out(), out);
    QCOMPARE(process.err(), err);
}

void tst_StandInTool::endsAsTheScriptSays_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<int>("outcome");

    QTest::newRow("without a command") << QByteArray("out \"a\"") << 0;
    QTest::newRow("exit 0") << QByteArray("exit 0\nexit 4") << 0;
    QTest::newRow("exit 3") << QByteArray("exit 3\nexit 4") << 3;
    QTest::newRow("exit 255") << QByteArray("exit 255") << 255;
    QTest::newRow("killed") << QByteArray("signal 9\nexit 4") << -SIGKILL;
    QTest::newRow("crashed") << QByteArray("signal 11\nexit 4") << -SIGSEGV;
    QTest::newRow("terminated") << QByteArray("signal TERM\nexit 4") << -SIGTERM;
    QTest::newRow("a broken pipe") << QByteArray("signal 13\nexit 4") << -SIGPIPE;
}

void tst_StandInTool::endsAsTheScriptSays()
{
    QFETCH(QByteArray, script);
    QFETCH(int, outcome);
    writeScript(script);
    PacketProcess process(tool(), {});
    QCOMPARE(process.finish(), outcome);
}

void tst_StandInTool::floodsAChannel_data()
{
    QTest::addColumn<QByteArray>("channel");
    QTest::addColumn<int>("size");

    QTest::newRow("standard output") << QByteArray("out") << 1000000;
    QTest::newRow("standard error") << QByteArray("err") << 1000000;
    QTest::newRow("one byte") << QByteArray("out") << 1;
    QTest::newRow("nothing") << QByteArray("err") << 0;
}

void tst_StandInTool::floodsAChannel()
{
    QFETCH(QByteArray, channel);
    QFETCH(int, size);
    writeScript("flood " + channel + ' ' + QByteArray::number(size));
    PacketProcess process(tool(), {});
    QCOMPARE(process.finish(), 0);
    QCOMPARE(joined(channel == "out" ? process.out() : process.err()).size(), size);
    QCOMPARE(joined(channel == "out" ? process.err() : process.out()).size(), 0);
}

void tst_StandInTool::sleeps()
{
    writeScript("out \"before\"\nsleep 200\nout \"after\"");
    PacketProcess process(tool(), {});
    QVERIFY(process.waitForOut(1));
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(process.finish(), 0);
    QVERIFY(timer.elapsed() > 150);
    QCOMPARE(process.out(), Chunks({"before", "after"}));
}

void tst_StandInTool::ignoresASignal_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<int>("outcome");

    QTest::newRow("ignored") << QByteArray("ignore TERM\n") << 7;
    QTest::newRow("ignored by number") << QByteArray("ignore 15\n") << 7;
    QTest::newRow("another signal ignored") << QByteArray("ignore INT\nignore HUP\n") << -SIGTERM;
    QTest::newRow("not ignored") << QByteArray() << -SIGTERM;
}

void tst_StandInTool::ignoresASignal()
{
    QFETCH(QByteArray, script);
    QFETCH(int, outcome);
    writeScript(script + "out \"ready\"\nsleep 200\nexit 7");
    PacketProcess process(tool(), {});
    QVERIFY(process.waitForOut(1));
    QCOMPARE(kill(process.pid(), SIGTERM), 0);
    QCOMPARE(process.finish(), outcome);
}

void tst_StandInTool::leavesAChildBehind()
{
    writeScript("fork 1\nout \"parent\"\nexit 5");
    QElapsedTimer timer;
    timer.start();
    PacketProcess process(tool(), {});
    QVERIFY(process.waitForOut(1));
    QCOMPARE(process.waitForEnd(), 5);
    const qint64 parentsEnd = timer.elapsed();
    while (process.waitForOut(2)) { }
    QVERIFY(timer.elapsed() >= 1000);
    QVERIFY(timer.elapsed() > parentsEnd);
    QCOMPARE(process.out(), Chunks{"parent"});
}

void tst_StandInTool::recordsHowItWasCalled()
{
    qputenv("TST_STAND_IN_TOOL", "Gerät = 1");
    writeScript("record call.json\nexit 0");
    PacketProcess process(tool(), {"one", "two words", ""});
    const pid_t pid = process.pid();
    QCOMPARE(process.finish(), 0);
    QFile file(path("call.json"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QJsonObject call = QJsonDocument::fromJson(file.readAll()).object();
    QCOMPARE(call["argv"].toArray(), (QJsonArray{tool(), "one", "two words", ""}));
    QCOMPARE(call["cwd"].toString(), QDir::currentPath());
    QCOMPARE(call["pid"].toInt(), int(pid));
    QJsonObject environment;
    const auto variables = QProcessEnvironment::systemEnvironment();
    for (const QString &name : variables.keys()) {
        environment[name] = variables.value(name);
    }
    QCOMPARE(call["env"].toObject(), environment);
}

void tst_StandInTool::flashesWithinAScript()
{
    Bootloader bootloader;
    PtyDevice device([&](const QByteArray &bytes) { return bootloader.receive(bytes); });
    writeScript("out \"before\"\nflash\nout \"after\"\nexit 4");
    PacketProcess process(tool(), arguments(device.path()));
    QCOMPARE(process.finish(), 4);
    QCOMPARE(process.out(), Chunks({"before", "\n", "Device programmed.\n", "after"}));
    device.unplug();
    QCOMPARE(bootloader.image(), m_package.firmware);
}

void tst_StandInTool::endsTheScriptWhenFlashingFails()
{
    writeScript("flash\nout \"after\"\nexit 4");
    PacketProcess process(tool(), arguments(path("no-port")));
    QCOMPARE(process.finish(), 1);
    QCOMPARE(process.out(), Chunks{"\n"});
    QVERIFY(joined(process.err()).startsWith("Traceback"));
}

void tst_StandInTool::refusesABadScript_data()
{
    QTest::addColumn<QByteArray>("line");

    QTest::newRow("an unknown command") << QByteArray("print \"a\"");
    QTest::newRow("no quotes") << QByteArray("out a");
    QTest::newRow("one quote") << QByteArray("out \"");
    QTest::newRow("no closing quote") << QByteArray("out \"a");
    QTest::newRow("an escaped closing quote") << QByteArray(R"(out "a\")");
    QTest::newRow("a quote inside") << QByteArray(R"(out "a"b")");
    QTest::newRow("an unknown escape") << QByteArray(R"(out "\q")");
    QTest::newRow("no text") << QByteArray("err");
    QTest::newRow("bad base64") << QByteArray("out-base64 A");
    QTest::newRow("no number") << QByteArray("sleep");
    QTest::newRow("a negative number") << QByteArray("sleep -1");
    QTest::newRow("not a number") << QByteArray("fork long");
    QTest::newRow("an exit code too large") << QByteArray("exit 256");
    QTest::newRow("a signal too large") << QByteArray("signal 65");
    QTest::newRow("an unknown signal") << QByteArray("ignore KNOCK");
    QTest::newRow("a flood on an unknown channel") << QByteArray("flood in 5");
    QTest::newRow("a flood without a size") << QByteArray("flood out");
    QTest::newRow("no file") << QByteArray("record");
    QTest::newRow("an additional word") << QByteArray("flash now");
}

void tst_StandInTool::refusesABadScript()
{
    QFETCH(QByteArray, line);
    writeScript("out \"not to be seen\"\n" + line + "\nexit 4");
    PacketProcess process(tool(), {});
    QCOMPARE(process.finish(), 3);
    QCOMPARE(process.out(), Chunks());
    QCOMPARE(process.err(), Chunks{"nrfutil-mac.script: line 2: " + line + '\n'});
}

QTEST_GUILESS_MAIN(tst_StandInTool)
#include "tst_StandInTool.moc"

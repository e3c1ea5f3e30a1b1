// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

// soak: upgrades without end in one process, and tools that never stop talking. Run by
// tests/quality/run, since it takes minutes.

#include "tests/reliability/RepeatedUpgrades.h"

#include <QElapsedTimer>
#include <QtTest>

#include <malloc.h>

namespace {

constexpr int kSuccessful = 1000;
constexpr int kFailed = 300;
constexpr int kWarmUp = 50;
constexpr qint64 kKilobyte = 1024;

/// A line of /proc/self/status, in kilobytes.
qint64 statusLine(const char *name)
{
    QFile file("/proc/self/status");
    file.open(QIODevice::ReadOnly);
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith(name)) {
            return line.mid(line.indexOf(':') + 1).replace("kB", "").trimmed().toLongLong();
        }
    }
    return -1;
}

/// Kilobytes of this process in memory, without what was freed and is only kept for later.
qint64 resident()
{
    ::malloc_trim(0);
    return statusLine("VmRSS");
}

/// Bytes that the program has allocated and not given back, large blocks included.
qint64 allocated()
{
    const auto info = ::mallinfo2();
    return static_cast<qint64>(info.uordblks + info.hblkhd);
}

/// Turns the event loop until \a isDone, or for a quarter of an hour; the longest of its passes, in
/// milliseconds.
template <class Condition> qint64 longestPassUntil(Condition isDone)
{
    QElapsedTimer whole;
    whole.start();
    qint64 longest = 0;
    while (!isDone() && whole.elapsed() < 900000) {
        QElapsedTimer pass;
        pass.start();
        QCoreApplication::processEvents();
        longest = std::max(longest, pass.elapsed());
        QThread::usleep(200); // not part of a pass
    }
    return longest;
}

} // namespace

class soak : public QObject
{
    Q_OBJECT

private slots:
    void successes();
    void failures();
    void flood_data();
    void flood();
};

void soak::successes()
{
    const QByteArray script = "echo 'Device programmed.'\n";
    const QString status = "Upgrade Successfully";

    RepeatedUpgrades upgrades;
    upgrades.run(kWarmUp, script, status);
    const int descriptors = RepeatedUpgrades::descriptors();
    const qint64 allocatedBefore = allocated();
    const qint64 residentBefore = resident();
    upgrades.run(kSuccessful, script, status);
    const int descriptorsAfter = RepeatedUpgrades::descriptors();
    const qint64 growth = allocated() - allocatedBefore;
    const qint64 residentGrowth = resident() - residentBefore;
    qWarning("%d successful upgrades: %lld bytes more allocated, %lld kB more resident",
             kSuccessful, growth, residentGrowth);
    QVERIFY(growth <= 1024 * kKilobyte);
    QVERIFY(residentGrowth <= 1024);
    QVERIFY(descriptors > 0); // and no dead child
    QCOMPARE(descriptorsAfter, descriptors);
}

/// Each leaves its timer behind, which goes on ticking.
void soak::failures()
{
    const QByteArray script = "echo 'No such port' >&2; exit 1\n";
    const QString status = "No such port\n";

    RepeatedUpgrades upgrades;
    upgrades.run(10, script, status);
    const int descriptors = RepeatedUpgrades::descriptors();
    const qint64 before = allocated();
    upgrades.run(kFailed, script, status);
    const int descriptorsAfter = RepeatedUpgrades::descriptors();
    const qint64 growth = allocated() - before;
    qWarning("%d failed upgrades: %lld bytes more", kFailed, growth);
    QVERIFY(growth <= 2 * kKilobyte * kFailed);
    QVERIFY(descriptors > 0); // and no dead child
    QCOMPARE(descriptorsAfter, descriptors);
}

void soak::flood_data()
{
    QTest::addColumn<QByteArray>("channel");
    QTest::newRow("standard output") << QByteArray();
    QTest::newRow("standard error") << QByteArray(" >&2");
}

void soak::flood()
{
    QFETCH(QByteArray, channel);

    RepeatedUpgrades upgrades;
    UpgradeStage &stage = upgrades.stage;
    stage.tool->setScript("yes 'Sending firmware, one line of many' | head -c 1000000000" + channel
                          + "\necho flooded > \"$0.flooded\"\n"
                          + "cat \"$0.error\" 2>/dev/null\necho 'Device programmed.'\n");
    // What the first paint and the first process take once is part of idling.
    stage.window->grab();
    QCoreApplication::processEvents();
    const qint64 idle = resident();
    QFile peak("/proc/self/clear_refs");
    QVERIFY(peak.open(QIODevice::WriteOnly));
    peak.write("5"); // VmHWM begins anew
    peak.close();

    const QString flooded = DirectedTool::path() + ".flooded";
    QElapsedTimer timer;
    timer.start();
    stage.click();
    qint64 longest = longestPassUntil([&] { return QFile::exists(flooded); });
    QVERIFY(QFile::remove(flooded));
    const qint64 seconds = timer.restart() / 1000;
    // What is still in the pipe comes before the phrase, to which the tool goes on without its
    // file.
    longest = std::max(longest, longestPassUntil([&] { return timer.elapsed() > 200; }));
    stage.tool.reset();
    const QString success = "Upgrade Successfully";
    longest = std::max(longest, longestPassUntil([&] {
                           return stage.status() == success || timer.elapsed() > 10000;
                       }));
    const qint64 highest = statusLine("VmHWM");
    qWarning("flood: %lld s, longest pass %lld ms, %lld kB above idle", seconds, longest,
             highest - idle);
    QCOMPARE(stage.status(), success);
    QVERIFY(longest <= 500);
    QVERIFY(highest - idle <= 8 * kKilobyte);
}

QTEST_MAIN(soak)
#include "soak.moc"

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

// soak: many upgrades in one process, and tools that write a gigabyte. It takes minutes, so that
// only tests/quality/run runs it.

#include "tests/reliability/RepeatedUpgrades.h"

#include <QElapsedTimer>
#include <QtTest>

#include <malloc.h>

namespace {

constexpr qint64 kKilobyte = 1024;

/// The value of a line of /proc/self/status, in kilobytes.
qint64 statusLine(const char *name)
{
    QFile file("/proc/self/status");
    if (!file.open(QIODevice::ReadOnly)) {
        return -1;
    }
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith(name)) {
            return line.mid(line.indexOf(':') + 1).replace("kB", "").trimmed().toLongLong();
        }
    }
    return -1;
}

/// The resident size of this process in kilobytes, once freed memory has been given back.
qint64 resident()
{
    ::malloc_trim(0);
    return statusLine("VmRSS");
}

/// The number of bytes that are allocated, including large blocks.
qint64 allocated()
{
    const auto info = ::mallinfo2();
    return static_cast<qint64>(info.uordblks) + static_cast<qint64>(info.hblkhd);
}

/// Processes events until \a isDone, for at most a quarter of an hour. Returns how long the longest
/// pass of the event loop took, in milliseconds.
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
    void upgrades_data();
    void upgrades();
    void flood_data();
    void flood();
};

void soak::upgrades_data()
{
    QTest::addColumn<int>("times");
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("status");
    QTest::addColumn<qint64>("growth"); // in bytes

    QTest::newRow("successful") << 1000 << QByteArray("echo 'Device programmed.'\n")
                                << StatusText::kSuccess << 1024 * kKilobyte;
    // Each one leaves its timer ticking.
    QTest::newRow("failed") << 300 << QByteArray("echo 'No such port' >&2; exit 1\n")
                            << "No such port\n"
                            << 300LL * 2 * kKilobyte;
}

void soak::upgrades()
{
    QFETCH(int, times);
    QFETCH(QByteArray, script);
    QFETCH(QString, status);
    QFETCH(qint64, growth);

    RepeatedUpgrades repeated;
    repeated.run(50, script, status);
    const int descriptors = RepeatedUpgrades::descriptors();
    const qint64 allocatedBefore = allocated();
    const qint64 residentBefore = resident();
    repeated.run(times, script, status);
    const int descriptorsAfter = RepeatedUpgrades::descriptors();
    const qint64 allocatedMore = allocated() - allocatedBefore;
    const qint64 residentMore = resident() - residentBefore;
    qWarning("%d upgrades: %lld bytes more allocated, %lld kB more resident", times, allocatedMore,
             residentMore);
    QVERIFY(allocatedMore <= growth);
    QVERIFY(residentMore <= 1024);
    QVERIFY(descriptors > 0); // -1 if a child process is left
    QCOMPARE(descriptorsAfter, descriptors);
}

void soak::flood_data()
{
    QTest::addColumn<QByteArray>("channel");
    QTest::newRow("standard output") << QByteArray();
    QTest::newRow("standard error") << QByteArray(" >&2");
}

/// The tool writes a gigabyte, waits until its file is removed, and reports success.
void soak::flood()
{
    QFETCH(QByteArray, channel);

    RepeatedUpgrades upgrades;
    const MainWindow &window = *upgrades.stage.window;
    UpgradeStage::setTool(
        "yes 'Sending firmware, one line of many' | head -c 1000000000" + channel
        + "\ntouch \"$0.flooded\"\nwhile test -e \"$0.flooded\"; do sleep 0.1; done"
        + "\necho 'Device programmed.'\n");
    // Memory that is only needed once, for painting, counts as idle.
    upgrades.stage.window->grab();
    QCoreApplication::processEvents();
    const qint64 idle = resident();
    QFile peak("/proc/self/clear_refs");
    QVERIFY(peak.open(QIODevice::WriteOnly));
    peak.write("5"); // resets VmHWM
    peak.close();

    const QString flooded = UpgradeStage::toolPath() + ".flooded";
    QElapsedTimer timer;
    timer.start();
    upgrades.stage.click();
    qint64 longest = longestPassUntil([&] { return QFile::exists(flooded); });
    const qint64 seconds = timer.restart() / 1000;
    // The pipe still holds the end of the flood.
    longest = std::max(longest, longestPassUntil([&] { return timer.elapsed() > 200; }));
    QVERIFY(QFile::remove(flooded));
    const auto succeeded = [&window] {
        return WindowParts::statusLabel(window)->text() == StatusText::kSuccess;
    };
    longest = std::max(longest,
                       longestPassUntil([&] { return succeeded() || timer.elapsed() > 10000; }));
    const qint64 highest = statusLine("VmHWM");
    qWarning("flood: %lld s, longest pass %lld ms, %lld kB above idle", seconds, longest,
             highest - idle);
    QVERIFY(succeeded());
    QVERIFY(longest <= 500);
    QVERIFY(highest - idle <= 8 * kKilobyte);
}

QTEST_MAIN(soak)
#include "soak.moc"

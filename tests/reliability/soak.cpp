// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

// soak: upgrades without end in one process, and tools that never stop talking. Run by
// tests/quality/run, since it takes minutes.

#include "tests/app/UpgradeStage.h"
#include "tests/reliability/ChildProcesses.h"

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

/// Bytes that the program has allocated and not given back.
qint64 allocated()
{
    return static_cast<qint64>(::mallinfo2().uordblks);
}

int descriptors()
{
    return QDir("/proc/self/fd").entryList(QDir::AllEntries | QDir::System).size();
}

void dropLog(QtMsgType type, const QMessageLogContext & /*context*/, const QString &text)
{
    if (type != QtDebugMsg) {
        fprintf(stderr, "%s\n", qPrintable(text));
    }
}

} // namespace

class soak : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void successes();
    void failures();
    void flood_data();
    void flood();

private:
    void upgrade();

    std::unique_ptr<UpgradeStage> m_stage;
    QtMessageHandler m_otherHandler = nullptr;
};

void soak::init()
{
    m_stage = std::make_unique<UpgradeStage>();
    m_stage->journal.reset(); // it keeps every line
    m_stage->watch.reset(); // it keeps every timer
    m_stage->addPort();
    m_otherHandler = qInstallMessageHandler(dropLog);
}

void soak::cleanup()
{
    qInstallMessageHandler(m_otherHandler);
    m_stage->watch = std::make_unique<EventWatch>(); // the stage clears away with it
    m_stage->window->close(); // for timers that nobody has watched it need not wait
    m_stage.reset();
}

void soak::upgrade()
{
    QTRY_VERIFY_WITH_TIMEOUT(m_stage->canClick(), 10000);
    m_stage->click();
    QVERIFY(!m_stage->canClick());
    QTRY_VERIFY_WITH_TIMEOUT(m_stage->canClick(), 10000);
}

void soak::successes()
{
    m_stage->tool->setScript("echo 'Device programmed.'\n");
    for (int i = 0; i < kWarmUp; ++i) {
        upgrade();
    }
    const qint64 before = allocated();
    const int descriptorsBefore = descriptors();
    for (int i = 0; i < kSuccessful; ++i) {
        upgrade();
        QCOMPARE(m_stage->status(), QString("Upgrade Successfully"));
    }
    const qint64 growth = allocated() - before;
    qWarning("%d successful upgrades: %lld bytes more", kSuccessful, growth);
    QVERIFY(growth <= 1024 * kKilobyte);
    QCOMPARE(descriptors(), descriptorsBefore);
    QTRY_COMPARE(childProcesses().size(), 0);
}

/// Each leaves its timer behind, which goes on ticking.
void soak::failures()
{
    m_stage->tool->setScript("echo 'No such port' >&2; exit 1\n");
    for (int i = 0; i < 10; ++i) {
        upgrade();
    }
    const qint64 before = allocated();
    const int descriptorsBefore = descriptors();
    for (int i = 0; i < kFailed; ++i) {
        upgrade();
        QCOMPARE(m_stage->status(), QString("No such port\n"));
    }
    const qint64 growth = allocated() - before;
    qWarning("%d failed upgrades: %lld bytes more", kFailed, growth);
    QVERIFY(growth <= 2 * kKilobyte * kFailed);
    QCOMPARE(descriptors(), descriptorsBefore);
    QTRY_COMPARE(childProcesses().size(), 0);
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

    m_stage->tool->setScript("yes 'Sending firmware, one line of many' | head -c 1000000000"
                             + channel + "\necho flooded > \"$0.flooded\"\n"
                             + "cat \"$0.error\" 2>/dev/null\necho 'Device programmed.'\n");
    // What the first paint and the first process take once is part of idling.
    m_stage->window->grab();
    QCoreApplication::processEvents();
    const qint64 idle = statusLine("VmRSS");
    QFile peak("/proc/self/clear_refs");
    QVERIFY(peak.open(QIODevice::WriteOnly));
    peak.write("5"); // VmHWM begins anew
    peak.close();

    const QString flooded = DirectedTool::path() + ".flooded";
    QElapsedTimer whole;
    whole.start();
    m_stage->click();
    qint64 longest = 0;
    while (!QFile::exists(flooded) && whole.elapsed() < 900000) {
        QElapsedTimer pass;
        pass.start();
        QCoreApplication::processEvents();
        longest = std::max(longest, pass.elapsed());
        QThread::usleep(200); // not part of a pass
    }
    QVERIFY(QFile::remove(flooded));
    const qint64 highest = statusLine("VmHWM");
    qWarning("flood: %lld s, longest pass %lld ms, %lld kB above idle", whole.elapsed() / 1000,
             longest, highest - idle);
    QVERIFY(longest <= 500);
    QVERIFY(highest - idle <= 8 * kKilobyte);
    QTest::qWait(200); // what is still in the pipe comes before the phrase
    m_stage->tool.reset(); // lets it go on to the phrase
    QTRY_COMPARE_WITH_TIMEOUT(m_stage->status(), QString("Upgrade Successfully"), 10000);
}

QTEST_MAIN(soak)
#include "soak.moc"

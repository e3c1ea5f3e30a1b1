// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/app/UpgradeStage.h"
#include "tests/reliability/Outcome.h"

#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

namespace {

const char *const kRunning = "Upgrading, please do not plug or unplug the device!";
const char *const kSuccess = "Upgrade Successfully";
const QByteArray kPhrase = "Device programmed";

/// What the tool does, piece by piece; the window has taken one before the next comes.
enum Channel { Says, Complains, TimesOut };
struct Piece
{
    Channel channel;
    QByteArray chunk;
};
using Pieces = QVector<Piece>;

const Outcome kRuns = {kRunning, false, 0, 1};
const Outcome kSucceeded = {kSuccess, true, 10000, 1};

Outcome shows(const QString &text)
{
    return {text, true, 0, 1};
}

} // namespace

Q_DECLARE_METATYPE(Pieces)

/// What the tool says, in the wrong place, cut in two, or too much of it.
class tst_OutputFaults : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void pieces_data();
    void pieces();
    void imageTag();
    void longErrorText_data();
    void longErrorText();
    void ticksAfterTheirUpgrade_data();
    void ticksAfterTheirUpgrade();

private:
    void give(const Piece &piece);

    std::unique_ptr<UpgradeStage> m_stage;
};

void tst_OutputFaults::init()
{
    m_stage = std::make_unique<UpgradeStage>();
    m_stage->addPort();
}

void tst_OutputFaults::cleanup()
{
    m_stage.reset();
    QFile::remove(DirectedTool::path() + ".written");
}

void tst_OutputFaults::give(const Piece &piece)
{
    m_stage->journal->clear();
    switch (piece.channel) {
    case Says:
        m_stage->tool->say(piece.chunk);
        break;
    case Complains:
        m_stage->tool->complain(piece.chunk);
        break;
    case TimesOut:
        m_stage->tick(UpgradeStage::kTicksToTimeOut);
        break;
    }
    QTRY_VERIFY(!m_stage->journal->logLines().isEmpty());
}

void tst_OutputFaults::pieces_data()
{
    QTest::addColumn<Pieces>("pieces");
    QTest::addColumn<Outcome>("outcome");

    const auto said = [](const char *name, const QByteArray &chunk, const Outcome &outcome) {
        QTest::newRow(name) << Pieces{{Says, chunk}} << outcome;
    };
    said("the phrase alone", kPhrase, kSucceeded);
    said("in the middle", "100%\n" + kPhrase + ".\nbye\n", kSucceeded);
    said("in lower case", kPhrase.toLower(), kRuns);
    said("after a zero byte", QByteArray(1, '\0') + kPhrase, kRuns);
    said("among invalid UTF-8", "\xff\xfe " + kPhrase + " \xc3", kSucceeded);
    said("twice", kPhrase + kPhrase, kSucceeded);
    for (int i = 1; i < kPhrase.size(); ++i) {
        QTest::addRow("split in two, %d and %d", i, kPhrase.size() - i)
            << Pieces{{Says, kPhrase.left(i)}, {Says, kPhrase.mid(i)}} << kRuns;
    }

    const auto complained = [](const char *name, const QByteArray &chunk, const QString &text) {
        QTest::newRow(name) << Pieces{{Complains, chunk}} << shows(text);
    };
    complained("the phrase on standard error", kPhrase, kPhrase);
    complained("error text of one line", "no such port\n", "no such port\n");
    complained("error text of three lines", "a\nb\nc\n", "a\nb\nc\n");
    complained("error text with markup", "<b>x", "<b>x");
    complained("error text with a zero byte", QByteArray("seen\0unseen", 11), "seen");
    complained("error text of invalid UTF-8", "a\xff", QString("a") + QChar(0xFFFD));

    QTest::newRow("error text, then the phrase")
        << Pieces{{Complains, "trouble"}, {Says, kPhrase}} << kSucceeded;
    QTest::newRow("the phrase, then error text")
        << Pieces{{Says, kPhrase}, {Complains, "trouble"}} << Outcome{"trouble", true, 10000, 1};
    QTest::newRow("the phrase after the time-out")
        << Pieces{{TimesOut, {}}, {Says, kPhrase}} << kSucceeded;
}

void tst_OutputFaults::pieces()
{
    QFETCH(Pieces, pieces);
    QFETCH(Outcome, outcome);

    m_stage->startUpgrade();
    for (const Piece &piece : pieces) {
        give(piece);
    }
    QTRY_COMPARE(Outcome::of(*m_stage), outcome);
}

void tst_OutputFaults::imageTag()
{
    // Opening a FIFO that nobody writes to would hang the window.
    const QTemporaryDir folder;
    const QByteArray fifo = folder.filePath("picture.png").toLocal8Bit();
    QCOMPARE(::mkfifo(fifo.constData(), 0600), 0);
    const QByteArray text = "<img src=\"" + fifo + "\">";
    m_stage->startUpgrade();
    give({Complains, text});
    m_stage->window->grab();
    QCOMPARE(Outcome::of(*m_stage), shows(text));
}

void tst_OutputFaults::longErrorText_data()
{
    QTest::addColumn<int>("size");
    QTest::newRow("64 KiB") << 0x10000;
    QTest::newRow("a megabyte") << 1000000;
}

/// Comes in pieces of what a pipe holds; the last one stays.
void tst_OutputFaults::longErrorText()
{
    QFETCH(int, size);

    const QByteArray count = QByteArray::number(size);
    m_stage->tool->setScript("head -c " + count + " /dev/zero | tr '\\0' x >&2\n"
                             + "echo written > \"$0.written\"\nexec cat \"$0.error\" >&2\n");
    m_stage->startUpgrade();
    QTRY_VERIFY(QFile::exists(DirectedTool::path() + ".written"));
    int taken = 0;
    const auto drained = [&] {
        taken = 0;
        for (const QString &line : m_stage->journal->logLines()) {
            taken += line.count('x');
        }
        return taken >= size;
    };
    QTRY_VERIFY(drained());
    QCOMPARE(taken, size);
    m_stage->window->grab();
    const QString last = m_stage->journal->logLines().filter("Standard Error:").last();
    QVERIFY(last.contains('x'));
    QCOMPARE(Outcome::of(*m_stage), shows(QString(last.count('x'), 'x')));
    give({Complains, "the end"});
    QCOMPARE(Outcome::of(*m_stage), shows("the end"));
}

void tst_OutputFaults::ticksAfterTheirUpgrade_data()
{
    QTest::addColumn<bool>("portStays");
    QTest::addColumn<Outcome>("outcome");

    QTest::newRow("when the next one has succeeded") << true << Outcome{kSuccess, true, 9105, 1};
    QTest::newRow("when the next one has found no port")
        << false << Outcome{"Find Upgrade Device Error!", true, 9105, 0};
}

/// The timer that an upgrade with error text leaves behind ticks on until the time-out, when
/// nothing of the next upgrade is left for it.
void tst_OutputFaults::ticksAfterTheirUpgrade()
{
    QFETCH(bool, portStays);
    QFETCH(Outcome, outcome);

    m_stage->startUpgrade();
    give({Complains, "trouble"});
    if (portStays) {
        m_stage->startUpgrade();
        give({Says, kPhrase});
    } else {
        m_stage->testbed->removeUsbDevice(m_stage->usbPath);
        m_stage->click();
    }
    for (int i = 0; i < UpgradeStage::kTicksToTimeOut; ++i) {
        QTimerEvent event(m_stage->timer(0)->timerId());
        m_stage->watch->holdsTicks = false;
        QCoreApplication::sendEvent(m_stage->timer(0), &event);
        m_stage->watch->holdsTicks = true;
    }
    QCOMPARE(Outcome::of(*m_stage), outcome);
}

QTEST_MAIN(tst_OutputFaults)
#include "tst_OutputFaults.moc"

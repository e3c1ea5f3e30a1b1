// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/app/UpgradeStage.h"

#include <QTemporaryDir>
#include <QtTest>

#include <memory>

#include <sys/stat.h>

using namespace WindowParts;

namespace {

const char *const kRunning = "Upgrading, please do not plug or unplug the device!";
const char *const kSuccess = "Upgrade Successfully";

/// A line of Qt's debug stream.
QString logged(const char *prefix, const QByteArray &chunk)
{
    QString line;
    QDebug(&line) << prefix << chunk;
    return line.trimmed();
}

} // namespace

/// What the window makes of the running tool's words: every test begins with an upgrade that has
/// just been started on a device in its bootloader.
class tst_ToolOutput : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_stage = std::make_unique<UpgradeStage>();
        m_stage->addPort();
        m_stage->startUpgrade();
        m_stage->journal->clear();
    }
    void cleanup() { m_stage.reset(); }

    void findsThePhrase_data();
    void findsThePhrase();
    void tickFindsThePhrase_data();
    void tickFindsThePhrase();
    void phraseAcrossTwoChunksIsMissed();
    void readySlotMatchesBeforeItLogs();
    void tickLogsBeforeItMatches();
    void successEndsTheUpgrade();
    void outputAfterSuccess();
    void showsErrorTextAsItIs_data();
    void showsErrorTextAsItIs();
    void imageTagInErrorTextOpensNothing();
    void errorTextLeavesTheUpgradeRunning();
    void phraseOnStandardErrorIsNoSuccess();
    void exitIsNotNoticed();

private:
    void sayToTick(const QByteArray &chunk);

    std::unique_ptr<UpgradeStage> m_stage;
};

/// Brings \a chunk into the process's buffer without the slot that would take it at once.
void tst_ToolOutput::sayToTick(const QByteArray &chunk)
{
    QProcess *process = m_stage->watch->processes.last();
    QVERIFY(QObject::disconnect(process, SIGNAL(readyReadStandardOutput()), m_stage->window.get(),
                                SLOT(onReadyReadStandardOutput())));
    m_stage->tool->say(chunk);
    QTRY_COMPARE(process->bytesAvailable(), qint64(chunk.size()));
}

void tst_ToolOutput::findsThePhrase_data()
{
    QTest::addColumn<QByteArray>("chunk");
    QTest::addColumn<bool>("success");

    QTest::newRow("alone") << QByteArray("Device programmed") << true;
    QTest::newRow("with line end") << QByteArray("Device programmed.\n") << true;
    QTest::newRow("in the middle") << QByteArray("100%\nDevice programmed.\nbye\n") << true;
    QTest::newRow("twice") << QByteArray("Device programmed Device programmed") << true;
    QTest::newRow("lower case") << QByteArray("device programmed") << false;
    QTest::newRow("upper case") << QByteArray("DEVICE PROGRAMMED") << false;
    QTest::newRow("two blanks") << QByteArray("Device  programmed") << false;
    QTest::newRow("cut short") << QByteArray("Device programme") << false;
    QTest::newRow("after a zero byte") << QByteArray("\0Device programmed", 18) << false;
    QTest::newRow("before a zero byte") << QByteArray("Device programmed\0x", 19) << true;
    QTest::newRow("among invalid text") << QByteArray("\xff\xfe Device programmed \xc3") << true;
    QTest::newRow("something else") << QByteArray("Sending firmware\n") << false;
}

void tst_ToolOutput::findsThePhrase()
{
    QFETCH(QByteArray, chunk);
    QFETCH(bool, success);

    m_stage->tool->say(chunk);
    QTRY_VERIFY(m_stage->journal->logLines().contains(logged("Standard Output:", chunk)));
    QCOMPARE(m_stage->status(), QString(success ? kSuccess : kRunning));
    QCOMPARE(m_stage->canClick(), success);
    QCOMPARE(m_stage->timer().isNull(), success);
}

void tst_ToolOutput::tickFindsThePhrase_data()
{
    findsThePhrase_data();
}

void tst_ToolOutput::tickFindsThePhrase()
{
    QFETCH(QByteArray, chunk);
    QFETCH(bool, success);

    sayToTick(chunk);
    m_stage->tick();
    QCOMPARE(m_stage->journal->logLines().last(), logged("Standard Output:", chunk));
    QCOMPARE(m_stage->status(), QString(success ? kSuccess : kRunning));
    QCOMPARE(m_stage->canClick(), success);
    QCOMPARE(m_stage->timer().isNull(), success);
}

void tst_ToolOutput::phraseAcrossTwoChunksIsMissed()
{
    m_stage->tool->say("Device pro");
    QTRY_VERIFY(m_stage->journal->logLines().contains("Standard Output: \"Device pro\""));
    m_stage->tool->say("grammed.\n");
    QTRY_VERIFY(m_stage->journal->logLines().contains("Standard Output: \"grammed.\\n\""));
    QCOMPARE(m_stage->status(), QString(kRunning));
    QVERIFY(!m_stage->canClick());
}

void tst_ToolOutput::readySlotMatchesBeforeItLogs()
{
    m_stage->tool->say("Device programmed");
    QTRY_COMPARE(m_stage->status(), QString(kSuccess));
    const QString line = "log: Standard Output: \"Device programmed\"";
    QTRY_VERIFY(m_stage->journal->lines().contains(line));
    QCOMPARE(m_stage->journal->lines().indexOf(line),
             m_stage->journal->lines().indexOf("status: Upgrade Successfully") + 1);
}

void tst_ToolOutput::tickLogsBeforeItMatches()
{
    sayToTick("Device programmed");
    m_stage->tick();
    QCOMPARE(m_stage->status(), QString(kSuccess));
    QCOMPARE(m_stage->journal->lines().indexOf("log: Standard Output: \"Device programmed\""),
             m_stage->journal->lines().indexOf("status: Upgrade Successfully") - 1);
}

void tst_ToolOutput::successEndsTheUpgrade()
{
    m_stage->tool->say("Device programmed.\n");
    QTRY_COMPARE(m_stage->status(), QString(kSuccess));
    QCOMPARE(m_stage->filledPixels(), 430);
    QVERIFY(m_stage->canClick());
    QVERIFY(m_stage->timer().isNull());
    QVERIFY(m_stage->tool->isRunning()); // the tool is left as it is
}

void tst_ToolOutput::outputAfterSuccess()
{
    m_stage->tool->say("Device programmed.\n");
    QTRY_COMPARE(m_stage->status(), QString(kSuccess));
    m_stage->tool->complain("late trouble");
    QTRY_COMPARE(m_stage->status(), QString("late trouble"));
    m_stage->tool->say("Device programmed.\n");
    QTRY_COMPARE(m_stage->status(), QString(kSuccess));
}

void tst_ToolOutput::showsErrorTextAsItIs_data()
{
    QTest::addColumn<QByteArray>("chunk");
    QTest::addColumn<QString>("text");

    QTest::newRow("one line") << QByteArray("no such port") << "no such port";
    QTest::newRow("line end kept") << QByteArray("no such port\n") << "no such port\n";
    QTest::newRow("three lines") << QByteArray("a\nb\nc\n") << "a\nb\nc\n";
    QTest::newRow("markup") << QByteArray("<b>x") << "<b>x";
    QTest::newRow("up to a zero byte") << QByteArray("seen\0unseen", 11) << "seen";
    QTest::newRow("UTF-8") << QByteArray("Ger\xc3\xa4t") << QString::fromUtf8("Ger\xc3\xa4t");
    QTest::newRow("invalid UTF-8") << QByteArray("a\xff") << QString("a") + QChar(0xFFFD);
    QTest::newRow("an ampersand") << QByteArray("a && b") << "a && b";
}

void tst_ToolOutput::showsErrorTextAsItIs()
{
    QFETCH(QByteArray, chunk);
    QFETCH(QString, text);

    m_stage->tool->complain(chunk);
    QTRY_COMPARE(m_stage->status(), text);
    QVERIFY(m_stage->canClick());
    QVERIFY(m_stage->journal->logLines().contains(logged("Standard Error:", chunk)));

    QLabel plain;
    plain.setTextFormat(Qt::PlainText);
    plain.setText(text);
    plain.setFont(statusLabel(*m_stage->window)->font());
    plain.setAlignment(Qt::AlignCenter);
    plain.setStyleSheet("color:#ffffff;");
    plain.resize(430, 30);
    QImage expected(430, 30, QImage::Format_RGB32);
    expected.fill(Qt::black);
    QImage shown = expected;
    plain.render(&expected, QPoint(), QRegion(), QWidget::DrawChildren);
    statusLabel(*m_stage->window)->render(&shown, QPoint(), QRegion(), QWidget::DrawChildren);
    QCOMPARE(shown, expected);
}

void tst_ToolOutput::imageTagInErrorTextOpensNothing()
{
    // Opening a FIFO that nobody writes to would hang the window.
    const QTemporaryDir folder;
    const QByteArray fifo = folder.filePath("picture.png").toLocal8Bit();
    QCOMPARE(::mkfifo(fifo.constData(), 0600), 0);
    const QByteArray chunk = "<img src=\"" + fifo + "\">";
    m_stage->tool->complain(chunk);
    QTRY_COMPARE(m_stage->status(), QString(chunk));
    m_stage->window->grab();
}

void tst_ToolOutput::errorTextLeavesTheUpgradeRunning()
{
    m_stage->tool->complain("first");
    QTRY_COMPARE(m_stage->status(), QString("first"));
    QVERIFY(m_stage->timer()->isActive());
    QVERIFY(m_stage->tool->isRunning());
    m_stage->tick(UpgradeStage::kTicksToTimeOut);
    QCOMPARE(m_stage->filledPixels(), 391);
    QVERIFY(!m_stage->timer()->isActive());
    QCOMPARE(m_stage->status(), QString("first"));
    m_stage->tool->complain("second");
    QTRY_COMPARE(m_stage->status(), QString("second"));
    m_stage->tool->say("Device programmed.\n");
    QTRY_COMPARE(m_stage->status(), QString(kSuccess));
}

void tst_ToolOutput::phraseOnStandardErrorIsNoSuccess()
{
    m_stage->tool->complain("Device programmed");
    QTRY_COMPARE(m_stage->status(), QString("Device programmed"));
    QVERIFY(m_stage->timer()->isActive());
    QVERIFY(m_stage->filledPixels() < 430);
}

void tst_ToolOutput::exitIsNotNoticed()
{
    m_stage->tool.reset(); // ends it
    QTRY_COMPARE(m_stage->watch->processes.at(0)->state(), QProcess::NotRunning);
    QVERIFY(!m_stage->canClick());
    QVERIFY(m_stage->timer()->isActive());
    QCOMPARE(m_stage->journal->statusTexts(), QStringList());
}

QTEST_MAIN(tst_ToolOutput)
#include "tst_ToolOutput.moc"

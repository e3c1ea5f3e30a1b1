// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/app/fixtures/UpgradeSteps.h"
#include "tests/support/WidgetPicture.h"

#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

using namespace UpgradeSteps;
using namespace WindowParts;

namespace {

constexpr auto Running = Outcome::Running;
constexpr auto Stopped = Outcome::Stopped;
constexpr auto Deleted = Outcome::Deleted;

const Outcome kSucceeded = {StatusText::kSuccess, true, 10000, {Deleted}, 1};

Outcome shows(const QString &errorText)
{
    return {errorText, true, 0, {Running}, 1};
}

} // namespace

/// How the window handles the tool's output and the ticks of its timer. Every row starts with an
/// upgrade that has just been started.
class tst_UpgradeOutput : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_stage.reset(); }

    void phrase_data();
    void phrase();
    void logQuotesBytes();
    void errorText_data();
    void errorText();
    void longErrorText_data();
    void longErrorText();
    void outcome_data();
    void outcome();
    void order_data();
    void order();
    void timerTicksByItself();

private:
    void start();

    QTemporaryDir m_folder;
    std::unique_ptr<UpgradeStage> m_stage;
};

void tst_UpgradeOutput::init()
{
    m_stage = std::make_unique<UpgradeStage>();
    start();
}

void tst_UpgradeOutput::start()
{
    m_stage->addPort();
    m_stage->click();
    m_stage->takeJournal();
}

void tst_UpgradeOutput::phrase_data()
{
    QTest::addColumn<QByteArray>("chunk");
    QTest::addColumn<bool>("noticed");
    QTest::addColumn<bool>("success");

    const auto row = [](const char *name, const QByteArray &chunk, bool success) {
        QTest::addRow("%s, to the slot", name) << chunk << true << success;
        QTest::addRow("%s, to the tick", name) << chunk << false << success;
    };
    row("alone", kPhrase, true);
    row("with line end", kPhrase + ".\n", true);
    row("in the middle", "100%\n" + kPhrase + ".\nbye\n", true);
    row("twice", kPhrase + kPhrase, true);
    row("lower case", kPhrase.toLower(), false);
    row("upper case", kPhrase.toUpper(), false);
    row("two blanks", "Device  programmed", false);
    row("cut short", kPhrase.chopped(1), false);
    row("after a zero byte", QByteArray(1, '\0') + kPhrase, false);
    row("before a zero byte", kPhrase + QByteArray("\0x", 2), true);
    row("among invalid UTF-8", "\xff\xfe " + kPhrase + " \xc3", true);
    row("something else", "Sending firmware\n", false);
}

void tst_UpgradeOutput::phrase()
{
    QFETCH(QByteArray, chunk);
    QFETCH(bool, noticed);
    QFETCH(bool, success);

    play(*m_stage, noticed ? Steps{says(chunk)} : Steps{saysUnnoticed(chunk), ticks(1)});
    Outcome expected = success ? kSucceeded : Outcome::upgrading();
    expected.progress += noticed || success ? 0 : 5;
    QCOMPARE(m_stage->outcome(), expected);
    QCOMPARE(m_stage->takeJournal().filter("log:"),
             QStringList(UpgradeStage::logged("Standard Output:", chunk)));
}

void tst_UpgradeOutput::logQuotesBytes()
{
    const QByteArray bytes("a\"\\\n\x01\x7f\xc3\xa4\0z", 10);
    QCOMPARE(UpgradeStage::logged("Standard Output:", bytes),
             QString("log: Standard Output: \"a\\\"\\\\\\n\\x01\\x7F\\xC3\\xA4\\x00z\""));
}

void tst_UpgradeOutput::errorText_data()
{
    QTest::addColumn<QByteArray>("chunk");
    QTest::addColumn<QString>("text");

    // Opening a FIFO that nobody writes to would hang the window.
    const QByteArray fifo = m_folder.filePath("picture.png").toLocal8Bit();
    ::mkfifo(fifo.constData(), 0600);
    const QByteArray image = "<img src=\"" + fifo + "\">";

    QTest::newRow("one line") << QByteArray("no such port") << "no such port";
    QTest::newRow("line end kept") << QByteArray("no such port\n") << "no such port\n";
    QTest::newRow("three lines") << QByteArray("a\nb\nc\n") << "a\nb\nc\n";
    QTest::newRow("markup") << QByteArray("<b>x") << "<b>x";
    QTest::newRow("an image") << image << QString(image);
    QTest::newRow("up to a zero byte") << QByteArray("seen\0unseen", 11) << "seen";
    QTest::newRow("UTF-8") << QByteArray("Ger\xc3\xa4t") << QString::fromUtf8("Ger\xc3\xa4t");
    QTest::newRow("invalid UTF-8") << QByteArray("a\xff") << QString("a") + QChar(0xFFFD);
    QTest::newRow("an ampersand") << QByteArray("a && b") << "a && b";
    QTest::newRow("the phrase of success") << kPhrase << QString(kPhrase);
}

void tst_UpgradeOutput::errorText()
{
    QFETCH(QByteArray, chunk);
    QFETCH(QString, text);

    m_stage->complain(chunk);
    QCOMPARE(m_stage->outcome(), shows(text));
    QCOMPARE(m_stage->takeJournal().filter("log:"),
             QStringList(UpgradeStage::logged("Standard Error:", chunk)));

    QLabel *label = statusLabel(*m_stage->window);
    QLabel plain;
    plain.setTextFormat(Qt::PlainText);
    plain.setText(text);
    plain.setFont(label->font());
    plain.setAlignment(Qt::AlignCenter);
    plain.setStyleSheet("color:#ffffff;");
    plain.resize(label->size());
    QCOMPARE(WidgetPicture::of(*label), WidgetPicture::of(plain));
}

void tst_UpgradeOutput::longErrorText_data()
{
    QTest::addColumn<int>("size");
    QTest::newRow("64 KiB") << 0x10000;
    QTest::newRow("a megabyte") << 1000000;
}

/// The text arrives in pieces of the pipe's size. The last one remains in the status line.
void tst_UpgradeOutput::longErrorText()
{
    QFETCH(int, size);

    m_stage->complain("trouble");
    QVERIFY(m_stage->waitForSleep());
    UpgradeStage::setTool("head -c " + QByteArray::number(size)
                          + " /dev/zero | tr '\\0' x >&2\nexec sleep 1000\n");
    start();
    QStringList pieces;
    QVERIFY(UpgradeStage::waitFor([&] {
        pieces += m_stage->takeJournal().filter("log: Standard Error:");
        return pieces.join(QString()).count('x') >= size;
    }));
    QCOMPARE(pieces.join(QString()).count('x'), size);
    m_stage->window->grab();
    QCOMPARE(m_stage->outcome().status, QString(pieces.last().count('x'), 'x'));
    m_stage->complain("the end");
    QCOMPARE(m_stage->outcome().status, QString("the end"));
}

void tst_UpgradeOutput::outcome_data()
{
    QTest::addColumn<Steps>("steps");
    QTest::addColumn<Outcome>("outcome");

    const auto row = [](const char *name, const Steps &steps, const Outcome &outcome) {
        QTest::newRow(name) << steps << outcome;
    };
    for (int i = 1; i < kPhrase.size(); ++i) {
        QTest::addRow("phrase split after %d letters", i)
            << Steps{says(kPhrase.left(i)), says(kPhrase.mid(i))} << Outcome::upgrading();
    }
    const Step trouble = complains("trouble");
    const Outcome troubleAtTimeOut = {"trouble", true, 9105, {Stopped}, 1};
    row("second error text", {trouble, complains("more")}, shows("more"));
    row("error text, phrase", {trouble, kSucceeds}, kSucceeded);
    row("phrase, error text", {kSucceeds, trouble}, {"trouble", true, 10000, {Deleted}, 1});
    row("phrase, error text, phrase", {kSucceeds, trouble, kSucceeds}, kSucceeded);
    row("time-out, phrase", {kTimesOut, kSucceeds}, kSucceeded);
    row("time-out, error text", {kTimesOut, trouble}, troubleAtTimeOut);
    row("error text, time-out", {trouble, kTimesOut}, troubleAtTimeOut);
    row("four ticks", {ticks(4)}, {StatusText::kUpgrading, false, 20, {Running}, 1});
    row("the tick before the time-out", {ticks(1820)},
        {StatusText::kUpgrading, false, 9100, {Running}, 1});
    row("time-out", {kTimesOut}, {StatusText::kUpgrading, true, 9105, {Stopped}, 1});

    // The timer of a failed upgrade goes on ticking during the next upgrade.
    row("two timers", {ticks(1000), trouble, kClick, ticks(3, 0), ticks(2, 1)},
        {StatusText::kUpgrading, false, 25, {Running, Running}, 1});
    row("older timer up to a full bar", {trouble, kClick, ticks(2000, 0)},
        {StatusText::kUpgrading, true, 10000, {Running, Stopped}, 1});
    row("older timer beyond a full bar", {trouble, kClick, ticks(2002, 0)},
        {StatusText::kUpgrading, true, 5, {Running, Stopped}, 1});
    row("older timer once the next upgrade has succeeded",
        {trouble, kClick, kSucceeds, ticks(1821, 0)},
        {StatusText::kSuccess, true, 9105, {Running, Deleted}, 1});
    row("older timer once the next upgrade has found no port",
        {trouble, kUnplug, kClick, kTimesOut}, {StatusText::kNotFound, true, 9105, {Stopped}, 0});
}

void tst_UpgradeOutput::outcome()
{
    QFETCH(Steps, steps);
    QFETCH(Outcome, outcome);

    play(*m_stage, steps);
    QCOMPARE(m_stage->outcome(), outcome);
}

void tst_UpgradeOutput::order_data()
{
    QTest::addColumn<Steps>("steps");
    QTest::addColumn<QStringList>("journal"); // of the last step

    const QString success = QString("status: ") + StatusText::kSuccess;
    const QString nothing = UpgradeStage::logged("Standard Output:", "");
    const QString phrase = UpgradeStage::logged("Standard Output:", kPhrase);
    const auto row = [](const char *name, const Steps &steps, const QStringList &journal) {
        QTest::newRow(name) << steps << journal;
    };
    row("two ticks", {ticks(2)}, {"bar: 5", nothing, "bar: 10", nothing});
    row("time-out", {ticks(1820), ticks(1)},
        {"bar: 9105", "timers: stopped", "button on", nothing});
    row("phrase to the slot", {kSucceeds},
        {"timers: deleted", success, "bar: 10000", "button on", phrase});
    row("phrase to the tick", {saysUnnoticed(kPhrase), ticks(1)},
        {"bar: 5", phrase, "timers: deleted", success, "bar: 10000", "button on"});
    row("error text", {complains("trouble")},
        {UpgradeStage::logged("Standard Error:", "trouble"), "button on", "status: trouble"});
}

void tst_UpgradeOutput::order()
{
    QFETCH(Steps, steps);
    QFETCH(QStringList, journal);

    play(*m_stage, steps.mid(0, steps.size() - 1));
    m_stage->takeJournal();
    play(*m_stage, {steps.last()});
    QCOMPARE(m_stage->takeJournal(), journal);
}

void tst_UpgradeOutput::timerTicksByItself()
{
    QCOMPARE(m_stage->timers.first()->interval(), 30);
    m_stage->stopWatching();
    QVERIFY(UpgradeStage::waitFor([&] { return m_stage->outcome().progress >= 15; }));
}

QTEST_MAIN(tst_UpgradeOutput)
#include "tst_UpgradeOutput.moc"

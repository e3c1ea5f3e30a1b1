// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/app/fixtures/UpgradeStage.h"

#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

using namespace WindowParts;

namespace {

const QByteArray kPhrase = "Device programmed";

constexpr auto Running = Outcome::Running;
constexpr auto Stopped = Outcome::Stopped;
constexpr auto Deleted = Outcome::Deleted;

const Outcome kSucceeded = {StatusText::kSuccess, true, 10000, {Deleted}, 1};

Outcome shows(const QString &errorText)
{
    return {errorText, true, 0, {Running}, 1};
}

/// What happens to an upgrade that has just been started.
using Step = std::function<void(UpgradeStage &)>;
using Steps = QVector<Step>;

Step says(const QByteArray &chunk)
{
    return [=](UpgradeStage &stage) {
        stage.say(chunk);
    };
}

/// What the tool has said is noticed by the next tick.
Step saysUnnoticed(const QByteArray &chunk)
{
    return [=](UpgradeStage &stage) {
        stage.sayUnnoticed(chunk);
    };
}

Step complains(const QByteArray &chunk)
{
    return [=](UpgradeStage &stage) {
        stage.complain(chunk);
    };
}

Step ticks(int times, int upgrade = -1)
{
    return [=](UpgradeStage &stage) {
        stage.tick(times, upgrade);
    };
}

const Step kTick = ticks(1);

const Step kClick = [](UpgradeStage &stage) {
    stage.click();
};

const Step kUnplug = [](UpgradeStage &stage) {
    stage.unplug();
};

} // namespace

Q_DECLARE_METATYPE(Steps)

/// What the window makes of the tool's words and of the ticks meanwhile. Every row begins with an
/// upgrade that has just been started.
class tst_UpgradeOutput : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_stage.reset(); }

    void phrase_data();
    void phrase();
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
    void play(const Steps &steps);

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

/// Stops at the first step that fails: the others would wait in vain.
void tst_UpgradeOutput::play(const Steps &steps)
{
    for (const Step &step : steps) {
        if (!QTest::currentTestFailed()) {
            step(*m_stage);
        }
    }
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

    play(noticed ? Steps{says(chunk)} : Steps{saysUnnoticed(chunk), kTick});
    Outcome expected = success ? kSucceeded : Outcome::upgrading();
    expected.progress += noticed || success ? 0 : 5;
    QCOMPARE(m_stage->outcome(), expected);
    QCOMPARE(m_stage->takeJournal().filter("log:"),
             QStringList(UpgradeStage::logged("Standard Output:", chunk)));
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

void tst_UpgradeOutput::longErrorText_data()
{
    QTest::addColumn<int>("size");
    QTest::newRow("64 KiB") << 0x10000;
    QTest::newRow("a megabyte") << 1000000;
}

/// Comes in pieces of what a pipe holds; the last one stays.
void tst_UpgradeOutput::longErrorText()
{
    QFETCH(int, size);

    m_stage->complain("trouble");
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
    const Step phrase = says(kPhrase);
    const Step timeOut = ticks(UpgradeStage::kTicksToTimeOut);
    row("second error text", {trouble, complains("more")}, shows("more"));
    row("error text, phrase", {trouble, phrase}, kSucceeded);
    row("phrase, error text", {phrase, trouble}, {"trouble", true, 10000, {Deleted}, 1});
    row("phrase, error text, phrase", {phrase, trouble, phrase}, kSucceeded);
    row("time-out, phrase", {timeOut, phrase}, kSucceeded);
    row("time-out, error text", {timeOut, trouble}, {"trouble", true, 9105, {Stopped}, 1});
    row("error text, time-out", {trouble, timeOut}, {"trouble", true, 9105, {Stopped}, 1});
    row("four ticks", {ticks(4)}, {StatusText::kUpgrading, false, 20, {Running}, 1});
    row("the tick before the time-out", {ticks(1820)},
        {StatusText::kUpgrading, false, 9100, {Running}, 1});
    row("time-out", {timeOut}, {StatusText::kUpgrading, true, 9105, {Stopped}, 1});

    // The timer of an upgrade with error text ticks on beside the next one's.
    row("two timers", {trouble, kClick, ticks(3, 0), ticks(2, 1)},
        {StatusText::kUpgrading, false, 25, {Running, Running}, 1});
    row("older timer up to a full bar", {trouble, kClick, ticks(2000, 0)},
        {StatusText::kUpgrading, true, 10000, {Running, Stopped}, 1});
    row("older timer beyond a full bar", {trouble, kClick, ticks(2002, 0)},
        {StatusText::kUpgrading, true, 5, {Running, Stopped}, 1});
    row("older timer once the next upgrade has succeeded",
        {trouble, kClick, phrase, ticks(UpgradeStage::kTicksToTimeOut, 0)},
        {StatusText::kSuccess, true, 9105, {Running, Deleted}, 1});
    row("older timer once the next upgrade has found no port", {trouble, kUnplug, kClick, timeOut},
        {StatusText::kNotFound, true, 9105, {Stopped}, 0});
}

void tst_UpgradeOutput::outcome()
{
    QFETCH(Steps, steps);
    QFETCH(Outcome, outcome);

    play(steps);
    QCOMPARE(m_stage->outcome(), outcome);
}

void tst_UpgradeOutput::order_data()
{
    QTest::addColumn<Steps>("before");
    QTest::addColumn<Steps>("steps");
    QTest::addColumn<QStringList>("journal");

    const QString output = "log: Standard Output: \"%1\"";
    const QString success = QString("status: ") + StatusText::kSuccess;
    QTest::newRow("two ticks") << Steps{} << Steps{ticks(2)}
                               << QStringList{"bar: 5", output.arg(""), "bar: 10", output.arg("")};
    QTest::newRow("time-out") << Steps{ticks(1820)} << Steps{kTick}
                              << QStringList{"bar: 9105", "timers: stopped", "button on",
                                             output.arg("")};
    QTest::newRow("phrase to the slot") << Steps{} << Steps{says(kPhrase)}
                                        << QStringList{"timers: deleted", success, "bar: 10000",
                                                       "button on", output.arg(QString(kPhrase))};
    QTest::newRow("phrase to the tick")
        << Steps{saysUnnoticed(kPhrase)} << Steps{kTick}
        << QStringList{"bar: 5",          output.arg(QString(kPhrase)),
                       "timers: deleted", success,
                       "bar: 10000",      "button on"};
    QTest::newRow("error text") << Steps{} << Steps{complains("trouble")}
                                << QStringList{"log: Standard Error: \"trouble\"", "button on",
                                               "status: trouble"};
}

void tst_UpgradeOutput::order()
{
    QFETCH(Steps, before);
    QFETCH(Steps, steps);
    QFETCH(QStringList, journal);

    play(before);
    m_stage->takeJournal();
    play(steps);
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

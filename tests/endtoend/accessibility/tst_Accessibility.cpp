// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/demo/StatusText.h"
#include "tests/endtoend/Stage.h"
#include "tests/endtoend/accessibility/BusReader.h"

#include <QtTest>

#include <algorithm>

namespace {

constexpr int kSoon = 20000;

/// What the window tells with a status text and a value of the progress bar.
QStringList window(const QString &status, int progress, bool canClick)
{
    const QString usual = "enabled, focusable, showing, Press, SetFocus";
    const QString line = status.isEmpty() ? "enabled" : "enabled, showing";
    const QString bar = "enabled, showing, read-only, Increase, Decrease";
    const QString button = canClick ? usual : "focusable, showing, Press";
    return {"frame \"FW Update\": 0,0 500x260, enabled, showing",
            "  push button \"close Winodw\": 455,12 30x30, " + usual,
            "  label \"Firmware Upgrade\": 170,20 160x30, enabled, showing, read-only",
            "  notification \"" + status + "\": 35,100 430x30, " + line,
            QString("  progress bar \"Upgrade progress\": %1 of 10000, 35,150 430x30, %2")
                .arg(QString::number(progress), bar),
            "  push button \"Start Upgrade\": 170,200 160x36, " + button};
}

/// Whether each value is at least one step of five percent above the one before.
bool areSteps(const QVector<double> &values)
{
    constexpr int kStep = 500;
    const auto isNoStep = [](double first, double second) {
        return int(second) / kStep <= int(first) / kStep;
    };
    return std::adjacent_find(values.begin(), values.end(), isNoStep) == values.end();
}

} // namespace

/// The program as somebody learns it who listens instead of looking.
class tst_Accessibility : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void atFirst();
    void upgrade();
    void failure();
    void close();
};

void tst_Accessibility::initTestCase()
{
    QVERIFY2(BusReader().isConnected(),
             "there is no accessibility bus (Debian package: at-spi2-core)");
}

void tst_Accessibility::atFirst()
{
    const BusReader reader;
    Stage stage;
    QVERIFY(stage.open());
    QTRY_COMPARE(reader.windows(), window("", 0, true));
}

void tst_Accessibility::upgrade()
{
    const BusReader reader;
    Stage stage;
    stage.device.startInBootloader();
    stage.setToolScript("sleep 7000\nflash\n");
    QVERIFY(stage.open());
    QTRY_VERIFY(!reader.windows().isEmpty());
    QVERIFY(reader.press("Start Upgrade"));
    QTRY_COMPARE_WITH_TIMEOUT(reader.spoken, QStringList(StatusText::kUpgrading), kSoon);
    QCOMPARE(reader.windows().constLast(), window("", 0, false).constLast());

    QTRY_COMPARE_WITH_TIMEOUT(reader.spoken.size(), 2, kSoon);
    QCOMPARE(reader.spoken.last(), QString(StatusText::kSuccess));
    QTRY_COMPARE(reader.windows(), window(StatusText::kSuccess, 10000, true));
    // The tool takes two steps, or one on a busy machine. The bar reports a value once it is
    // painted.
    QTRY_VERIFY(reader.values.size() > 1 && reader.values.constLast() == 10000.0);
    QVERIFY(areSteps(reader.values));
}

void tst_Accessibility::failure()
{
    const BusReader reader;
    Stage stage;
    QVERIFY(stage.open());
    QTRY_VERIFY(!reader.windows().isEmpty());
    QVERIFY(reader.press("Start Upgrade"));
    QTRY_COMPARE_WITH_TIMEOUT(reader.spoken, QStringList(StatusText::kNotFound), kSoon);
    QCOMPARE(reader.windows(), window(StatusText::kNotFound, 0, true));
    QCOMPARE(reader.values, QVector<double>());

    QVERIFY(reader.press("Start Upgrade"));
    QTRY_COMPARE_WITH_TIMEOUT(reader.spoken,
                              QStringList({StatusText::kNotFound, StatusText::kNotFound}), kSoon);
}

void tst_Accessibility::close()
{
    const BusReader reader;
    Stage stage;
    QVERIFY(stage.open());
    QTRY_VERIFY(!reader.windows().isEmpty());
    QVERIFY(reader.press("close Winodw"));
    QTRY_VERIFY_WITH_TIMEOUT(!stage.program.isRunning(), kSoon);
    QTRY_COMPARE(reader.windows(), QStringList());
}

QTEST_MAIN(tst_Accessibility)
#include "tst_Accessibility.moc"

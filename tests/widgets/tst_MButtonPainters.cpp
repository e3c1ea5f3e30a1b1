// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/MButton.h"

#include "tests/support/PointerEvents.h"
#include "tests/support/StripedPicture.h"
#include "tests/support/WidgetPicture.h"
#include "widgets/NinePatchPainter.h"
#include "widgets/NinePatchPainter_p.h"

#include <QHash>
#include <QTemporaryDir>
#include <QtTest>

#include <utility>

using namespace PointerEvents;

namespace {

/// What has become of the painters, which are numbered as they are made.
QStringList painterLog;
int made = 0;
QHash<const NinePatchPainter *, int> numbers;

QStringList takeLog()
{
    return std::exchange(painterLog, {});
}

} // namespace

// In place of the kit's own, so that the test sees each of them come and go.

NinePatchPainter::NinePatchPainter(const QPixmap & /*picture*/, int left, int top, int right,
                                   int bottom, bool horizontalStretch, bool verticalStretch)
{
    const QString flags = horizontalStretch && verticalStretch ? "both" : "not both";
    numbers[this] = made++;
    painterLog << QString("+%1 %2 %3 %4 %5 %6")
                      .arg(numbers[this])
                      .arg(left)
                      .arg(top)
                      .arg(right)
                      .arg(bottom)
                      .arg(flags);
}

NinePatchPainter::~NinePatchPainter()
{
    painterLog << QString("-%1").arg(numbers.take(this));
}

void NinePatchPainter::paint(QPainter * /*painter*/, const QRect &target, int left, int top,
                             int right, int bottom) const
{
    painterLog << QString("%1 paints %2,%3 %4x%5 with %6 %7 %8 %9")
                      .arg(numbers.value(this))
                      .arg(target.x())
                      .arg(target.y())
                      .arg(target.width())
                      .arg(target.height())
                      .arg(left)
                      .arg(top)
                      .arg(right)
                      .arg(bottom);
}

/// When a button makes its nine-patch painters, deletes them and lets them paint.
class tst_MButtonPainters : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void makesOnePerLook();
    void replacesEachInTurn();
    void keepsThemWithoutABorder_data();
    void keepsThemWithoutABorder();
    void deletesThemFromFirstToLast();
    void theLooksPainterPaints_data();
    void theLooksPainterPaints();

private:
    QTemporaryDir m_folder;
    QString m_strip;
};

void tst_MButtonPainters::init()
{
    m_strip = StripedPicture::save(m_folder, QSize(100, 30));
    made = 0;
    takeLog();
}

void tst_MButtonPainters::makesOnePerLook()
{
    MButton button(nullptr);
    button.setPixmap(m_strip, 0);
    QCOMPARE(takeLog(), QStringList());
    button.setPixmap(m_strip, 4);
    QCOMPARE(
        takeLog(),
        (QStringList{"+0 4 4 4 4 both", "+1 4 4 4 4 both", "+2 4 4 4 4 both", "+3 4 4 4 4 both"}));
}

void tst_MButtonPainters::replacesEachInTurn()
{
    MButton button(nullptr);
    button.setPixmap(m_strip, 4);
    takeLog();
    button.setPixmap(m_strip, 7);
    QCOMPARE(takeLog(),
             (QStringList{"-0", "+4 7 7 7 7 both", "-1", "+5 7 7 7 7 both", "-2", "+6 7 7 7 7 both",
                          "-3", "+7 7 7 7 7 both"}));
}

void tst_MButtonPainters::keepsThemWithoutABorder_data()
{
    QTest::addColumn<int>("border");

    QTest::newRow("no border") << 0;
    QTest::newRow("negative border") << -4;
}

void tst_MButtonPainters::keepsThemWithoutABorder()
{
    QFETCH(int, border);

    MButton button(nullptr);
    button.setPixmap(m_strip, 4);
    takeLog();
    button.setPixmap(m_strip, border);
    WidgetPicture::of(button);
    button.setEnabled(false);
    WidgetPicture::of(button);
    QCOMPARE(takeLog(), QStringList());
}

void tst_MButtonPainters::deletesThemFromFirstToLast()
{
    {
        MButton button(nullptr);
        button.setPixmap(m_strip, 4);
        takeLog();
    }
    QCOMPARE(takeLog(), (QStringList{"-0", "-1", "-2", "-3"}));
}

void tst_MButtonPainters::theLooksPainterPaints_data()
{
    QTest::addColumn<QVector<Action>>("actions");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<int>("painter");

    using Actions = QVector<Action>;
    QTest::newRow("normal") << Actions{} << true << 0;
    QTest::newRow("hover") << Actions{Enter} << true << 1;
    QTest::newRow("pressed") << Actions{Enter, LeftPress} << true << 2;
    QTest::newRow("disabled") << Actions{} << false << 3;
    QTest::newRow("disabled while pressed") << Actions{Enter, LeftPress} << false << 3;
}

void tst_MButtonPainters::theLooksPainterPaints()
{
    QFETCH(QVector<Action>, actions);
    QFETCH(bool, enabled);
    QFETCH(int, painter);

    QWidget window;
    Open<MButton> button(&window);
    button.setGeometry(15, 25, 120, 40);
    button.setPixmap(m_strip, 4);
    for (const Action action : actions) {
        call(button, action);
    }
    button.setEnabled(enabled);
    takeLog();
    WidgetPicture::of(button);
    QCOMPARE(takeLog(), QStringList{QString("%1 paints 0,0 120x40 with 4 4 4 4").arg(painter)});
}

QTEST_MAIN(tst_MButtonPainters)
#include "tst_MButtonPainters.moc"

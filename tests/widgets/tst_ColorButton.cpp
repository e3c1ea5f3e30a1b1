// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/ColorButton.h"

#include "tests/support/ButtonSignals.h"
#include "tests/support/RepaintCounter.h"
#include "tests/support/WidgetPicture.h"

#include <QButtonGroup>
#include <QtTest>

namespace {

const QColor kCyan(0, 255, 255);
const QColor kRed(200, 30, 20);
constexpr QRgb kWhite = 0xffffffff;

/// Opens the hook by which the base class changes the checked state.
class OpenSwatch : public ColorButton
{
public:
    using ColorButton::ColorButton;
    using ColorButton::nextCheckState;
};

} // namespace

/// The colour, the frame and the exclusive choice, which only this class has.
class tst_ColorButton : public QObject
{
    Q_OBJECT

private slots:
    void fillsItself_data();
    void fillsItself();
    void framesTheChecked_data();
    void framesTheChecked();
    void setColorRepaintsOnChange_data();
    void setColorRepaintsOnChange();
    void siblingsExcludeEachOther();
    void groupExcludesAcrossParents();
    void nextCheckStateRepaints();
    void setCheckedRepaints();
};

void tst_ColorButton::fillsItself_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QColor>("color");

    QTest::newRow("wide") << QSize(40, 20) << kRed;
    QTest::newRow("high") << QSize(3, 50) << kRed;
    QTest::newRow("one pixel") << QSize(1, 1) << kRed;
    QTest::newRow("black") << QSize(40, 20) << QColor(Qt::black);
}

void tst_ColorButton::fillsItself()
{
    QFETCH(QSize, size);
    QFETCH(QColor, color);

    ColorButton swatch(nullptr);
    swatch.resize(size);
    swatch.setColor(color);
    QCOMPARE(WidgetPicture::of(swatch), WidgetPicture::canvas(size, color.rgb()));
}

void tst_ColorButton::framesTheChecked_data()
{
    QTest::addColumn<QSize>("size");

    QTest::newRow("40 x 20") << QSize(40, 20);
    QTest::newRow("odd size") << QSize(31, 17);
}

/// The two-pixel pen runs along the middle of the frame. Its bevel leaves out a corner pixel or
/// two, which is the one thing here that depends on how a painter joins lines.
void tst_ColorButton::framesTheChecked()
{
    QFETCH(QSize, size);

    ColorButton swatch(nullptr);
    swatch.resize(size);
    swatch.setColor(kRed);
    swatch.setChecked(true);
    const QImage picture = WidgetPicture::of(swatch);
    const QRect all = swatch.rect();
    const QRect inside = all.adjusted(2, 2, -2, -2);

    QCOMPARE(picture.copy(inside), WidgetPicture::canvas(inside.size(), kRed.rgb()));
    for (const QRect &side :
         {QRect(1, 0, all.width() - 2, 2), QRect(1, all.height() - 2, all.width() - 2, 2),
          QRect(0, 1, 2, all.height() - 2), QRect(all.width() - 2, 1, 2, all.height() - 2)}) {
        QCOMPARE(picture.copy(side), WidgetPicture::canvas(side.size(), kWhite));
    }
    QCOMPARE(picture.pixel(0, 0), kRed.rgb()); // a mitred corner would be white
}

void tst_ColorButton::setColorRepaintsOnChange_data()
{
    QTest::addColumn<QColor>("color");
    QTest::addColumn<int>("paints");

    QTest::newRow("the first colour again") << kCyan << 0;
    QTest::newRow("another colour") << kRed << 1;
    QTest::newRow("another opacity") << QColor(0, 255, 255, 254) << 1;
    QTest::newRow("the same told by its hue") << QColor::fromHsv(180, 255, 255) << 1;
    QTest::newRow("an invalid colour") << QColor() << 1;
}

void tst_ColorButton::setColorRepaintsOnChange()
{
    QFETCH(QColor, color);
    QFETCH(int, paints);

    ColorButton swatch(nullptr);
    RepaintCounter repaints(&swatch);
    swatch.setColor(color);
    QCOMPARE(repaints.take(), paints);
    swatch.setColor(color);
    QCOMPARE(repaints.take(), 0);
}

void tst_ColorButton::siblingsExcludeEachOther()
{
    QWidget row;
    row.resize(100, 20);
    ColorButton first(&row);
    ColorButton second(&row);
    first.setGeometry(0, 0, 40, 20);
    second.setGeometry(50, 0, 40, 20);
    const QImage plain = WidgetPicture::of(first);

    QTest::mouseClick(&first, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    QVERIFY(first.isChecked());
    const QImage framed = WidgetPicture::of(first);
    QVERIFY(framed != plain);

    QTest::mouseClick(&second, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    QVERIFY(!first.isChecked());
    QVERIFY(second.isChecked());
    QCOMPARE(WidgetPicture::of(first), plain);
    QCOMPARE(WidgetPicture::of(second), framed);

    ButtonSignals again(&second);
    QTest::mouseClick(&second, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    QVERIFY(second.isChecked());
    QCOMPARE(again.take(), (QStringList{"pressed", "released", "clicked(true)"}));
}

void tst_ColorButton::groupExcludesAcrossParents()
{
    QWidget left;
    QWidget right;
    ColorButton first(&left);
    ColorButton second(&right);
    QButtonGroup group;
    group.addButton(&first);
    group.addButton(&second);

    first.setChecked(true);
    QTest::mouseClick(&second, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    QVERIFY(!first.isChecked());
    QVERIFY(second.isChecked());
}

void tst_ColorButton::nextCheckStateRepaints()
{
    OpenSwatch swatch(nullptr);
    swatch.setChecked(true);
    RepaintCounter repaints(&swatch);
    // The only checked one of its row stays so; there is nothing but its own update to paint for.
    swatch.nextCheckState();
    QVERIFY(swatch.isChecked());
    QCOMPARE(repaints.take(), 1);

    OpenSwatch unchecked(nullptr);
    unchecked.nextCheckState();
    QVERIFY(unchecked.isChecked());
}

void tst_ColorButton::setCheckedRepaints()
{
    ColorButton swatch(nullptr);
    RepaintCounter repaints(&swatch);
    swatch.setChecked(true);
    QVERIFY(repaints.take() > 0);
}

QTEST_MAIN(tst_ColorButton)
#include "tst_ColorButton.moc"

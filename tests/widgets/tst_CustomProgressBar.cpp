// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/CustomProgressBar.h"

#include "tests/support/RepaintCounter.h"
#include "tests/support/WidgetPicture.h"

#include <QPicture>
#include <QtTest>

#include <limits>

namespace {

constexpr QRgb kTrough = 0xff515151;
constexpr QRgb kFill = 0xff19f0ea;
constexpr QRgb kOutline = 0xff000000;

/// The two rectangles' one-pixel outlines: those at the right and the bottom of the trough lie just
/// outside the bar.
QImage expectedBar(const QSize &size, int fillWidth)
{
    QImage picture = WidgetPicture::canvas(size);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const bool outline = x == 0 || y == 0 || x == fillWidth;
            const QRgb inside = x < fillWidth ? kFill : kTrough;
            picture.setPixel(x, y, outline ? kOutline : inside);
        }
    }
    return picture;
}

} // namespace

class tst_CustomProgressBar : public QObject
{
    Q_OBJECT

private slots:
    void startsEmptyAndHidden();
    void derivesFromQWidget();
    void fills_data();
    void fills();
    void drawsNothingLeftOfItself_data();
    void drawsNothingLeftOfItself();
    void setValueAlwaysRepaints_data();
    void setValueAlwaysRepaints();
};

void tst_CustomProgressBar::startsEmptyAndHidden()
{
    QWidget window;
    window.show();
    CustomProgressBar bar(&window);

    QVERIFY(bar.isHidden());
    QCOMPARE(bar.parentWidget(), &window);
    QVERIFY(!bar.testAttribute(Qt::WA_SetCursor));
    bar.resize(430, 12);
    QCOMPARE(WidgetPicture::of(bar), expectedBar(bar.size(), 0));
}

void tst_CustomProgressBar::derivesFromQWidget()
{
    const CustomProgressBar bar(nullptr);
    const QMetaObject *meta = bar.metaObject();

    QCOMPARE(meta->className(), "CustomProgressBar");
    QCOMPARE(meta->superClass(), &QWidget::staticMetaObject);
    QCOMPARE(meta->methodCount(), meta->methodOffset());
    QCOMPARE(meta->propertyCount(), meta->propertyOffset());
}

void tst_CustomProgressBar::fills_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("stored");
    QTest::addColumn<int>("fillWidth");

    constexpr int kLowest = std::numeric_limits<int>::min();
    constexpr int kHighest = std::numeric_limits<int>::max();
    QTest::newRow("value 0") << 430 << 0 << 0 << 0;
    QTest::newRow("value 1 truncates to nothing") << 430 << 1 << 1 << 0;
    QTest::newRow("value 23 is just below one pixel") << 430 << 23 << 23 << 0;
    QTest::newRow("value 24 is just above one pixel") << 430 << 24 << 24 << 1;
    QTest::newRow("half") << 430 << 5000 << 5000 << 215;
    QTest::newRow("one below the maximum") << 430 << 9999 << 9999 << 429;
    QTest::newRow("maximum fills the trough exactly") << 430 << 10000 << 10000 << 430;
    QTest::newRow("odd width truncates") << 431 << 5000 << 5000 << 215;
    QTest::newRow("share is computed before the width") << 100 << 2900 << 2900 << 28;
    QTest::newRow("negative becomes 0") << 430 << -5 << 0 << 0;
    QTest::newRow("lowest int becomes 0") << 430 << kLowest << 0 << 0;
    QTest::newRow("20000 becomes the maximum") << 430 << 20000 << 10000 << 430;
    QTest::newRow("highest int becomes the maximum") << 430 << kHighest << 10000 << 430;
    QTest::newRow("one pixel wide") << 1 << 10000 << 10000 << 1;
}

void tst_CustomProgressBar::fills()
{
    QFETCH(int, width);
    QFETCH(int, value);
    QFETCH(int, stored);
    QFETCH(int, fillWidth);

    CustomProgressBar bar(nullptr);
    bar.resize(width, 10);
    bar.setValue(7777);
    bar.setValue(value);
    QCOMPARE(bar.value(), stored);
    QCOMPARE(WidgetPicture::of(bar), expectedBar(bar.size(), fillWidth));
}

/// Drawing is recorded and replayed, since the widget's own clipping hides a negative width.
void tst_CustomProgressBar::drawsNothingLeftOfItself_data()
{
    QTest::addColumn<int>("value");

    QTest::newRow("value 0") << 0;
    QTest::newRow("negative becomes 0") << -5000;
    QTest::newRow("lowest int becomes 0") << std::numeric_limits<int>::min();
}

void tst_CustomProgressBar::drawsNothingLeftOfItself()
{
    QFETCH(int, value);

    constexpr int kMargin = 300;
    CustomProgressBar bar(nullptr);
    bar.resize(430, 10);
    bar.setValue(value);
    QPicture recording;
    bar.render(&recording, QPoint(), QRegion(), QWidget::DrawChildren);
    QImage canvas = WidgetPicture::canvas(QSize(kMargin + bar.width(), bar.height()));
    QPainter painter(&canvas);
    painter.drawPicture(kMargin, 0, recording);
    painter.end();

    QCOMPARE(canvas.copy(0, 0, kMargin, bar.height()),
             WidgetPicture::canvas(QSize(kMargin, bar.height())));
    QCOMPARE(canvas.copy(kMargin, 0, bar.width(), bar.height()), expectedBar(bar.size(), 0));
}

void tst_CustomProgressBar::setValueAlwaysRepaints_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("value");

    QTest::newRow("other value") << 10 << 20;
    QTest::newRow("same value") << 10 << 10;
    QTest::newRow("0 again by a negative") << 0 << -5;
    QTest::newRow("maximum again by more") << 10000 << 20000;
}

void tst_CustomProgressBar::setValueAlwaysRepaints()
{
    QFETCH(int, before);
    QFETCH(int, value);

    CustomProgressBar bar(nullptr);
    bar.resize(200, 20);
    bar.show();
    bar.setValue(before);
    RepaintCounter repaints(&bar);
    QCOMPARE(repaints.take(), 0);

    bar.setValue(value);
    QCOMPARE(repaints.take(), 1);
}

QTEST_MAIN(tst_CustomProgressBar)
#include "tst_CustomProgressBar.moc"

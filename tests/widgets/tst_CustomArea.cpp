// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/CustomArea.h"

#include "tests/support/RepaintCounter.h"
#include "tests/support/WarningCatcher.h"
#include "tests/support/WidgetPicture.h"

#include <QtTest>

#include <functional>

using Cause = std::function<void(QWidget &)>;
Q_DECLARE_METATYPE(Cause)

namespace {

const QColor kUsual(0x2E, 0x30, 0x32);

/// Paints on a picture instead of the screen, even while it is empty: of an empty widget Qt itself
/// asks no paint.
class AreaOnPicture : public CustomArea
{
public:
    explicit AreaOnPicture(QImage *picture)
        : CustomArea(nullptr)
        , m_picture(picture)
    { }

    using CustomArea::paintEvent;

protected:
    QPaintDevice *redirected(QPoint * /*offset*/) const override { return m_picture; }

private:
    QImage *m_picture;
};

} // namespace

class tst_CustomArea : public QObject
{
    Q_OBJECT

private slots:
    void startsVisible();
    void derivesFromQWidget();
    void fillsItself_data();
    void fillsItself();
    void fillsNothingBeyondItself_data();
    void fillsNothingBeyondItself();
    void coversWhatLiesBelow();
    void keepsTheOldColourUntilAPaint_data();
    void keepsTheOldColourUntilAPaint();
};

void tst_CustomArea::startsVisible()
{
    QWidget window;
    window.show();
    const CustomArea area(&window);

    QVERIFY(area.isVisible());
    QVERIFY(CustomArea(nullptr).isVisible());
    QCOMPARE(area.parentWidget(), &window);
    QCOMPARE(area.windowFlags(), QWidget(&window).windowFlags());
    QVERIFY(!area.testAttribute(Qt::WA_SetCursor));
}

void tst_CustomArea::derivesFromQWidget()
{
    const CustomArea area(nullptr);
    const QMetaObject *meta = area.metaObject();

    QCOMPARE(meta->className(), "CustomArea");
    QCOMPARE(meta->superClass(), &QWidget::staticMetaObject);
    QCOMPARE(meta->methodCount(), meta->methodOffset());
    QCOMPARE(meta->propertyCount(), meta->propertyOffset());
}

void tst_CustomArea::fillsItself_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QColor>("set");
    QTest::addColumn<QColor>("shown");

    QTest::newRow("new area") << QSize(500, 260) << QColor() << kUsual;
    QTest::newRow("one pixel") << QSize(1, 1) << QColor() << kUsual;
    QTest::newRow("colour set") << QSize(31, 17) << QColor(1, 2, 3) << QColor(1, 2, 3);
}

void tst_CustomArea::fillsItself()
{
    QFETCH(QSize, size);
    QFETCH(QColor, set);
    QFETCH(QColor, shown);

    QWidget window;
    window.resize(600, 300);
    CustomArea area(&window);
    area.resize(size);
    if (set.isValid()) {
        area.setAreaColor(set);
    }

    QCOMPARE(WidgetPicture::of(area), WidgetPicture::canvas(size, shown.rgb()));
}

void tst_CustomArea::fillsNothingBeyondItself_data()
{
    QTest::addColumn<QSize>("size");

    QTest::newRow("part of the canvas") << QSize(10, 5);
    QTest::newRow("nothing to fill") << QSize(0, 0);
    QTest::newRow("no height") << QSize(10, 0);
    QTest::newRow("no width") << QSize(0, 10);
}

void tst_CustomArea::fillsNothingBeyondItself()
{
    QFETCH(QSize, size);

    constexpr QSize kCanvas(20, 20);
    QImage picture = WidgetPicture::canvas(kCanvas);
    AreaOnPicture area(&picture);
    area.resize(size);
    WarningCatcher warnings;
    area.paintEvent(nullptr);
    QCOMPARE(picture,
             WidgetPicture::with(kCanvas, QPoint(0, 0), WidgetPicture::canvas(size, kUsual.rgb())));
    QCOMPARE(warnings.take(), QStringList());
}

void tst_CustomArea::coversWhatLiesBelow()
{
    QWidget window;
    window.resize(40, 40);
    window.setStyleSheet("background: #ff0000");
    window.show();
    CustomArea area(&window);
    area.setGeometry(10, 10, 20, 20);

    const QImage picture = window.grab().toImage();
    QCOMPARE(picture.pixelColor(10, 10), kUsual);
    QCOMPARE(picture.pixelColor(29, 29), kUsual);
    QCOMPARE(picture.pixelColor(9, 10), QColor(255, 0, 0));
    QCOMPARE(picture.pixelColor(30, 29), QColor(255, 0, 0));
}

void tst_CustomArea::keepsTheOldColourUntilAPaint_data()
{
    QTest::addColumn<Cause>("cause");

    QTest::newRow("owner calls update") << Cause([](QWidget &area) { area.update(); });
    QTest::newRow("area is resized") << Cause([](QWidget &area) { area.resize(120, 110); });
    QTest::newRow("area is exposed") << Cause([](QWidget &area) {
        area.hide();
        area.show();
    });
}

void tst_CustomArea::keepsTheOldColourUntilAPaint()
{
    QFETCH(Cause, cause);

    QWidget window;
    window.resize(200, 200);
    window.show();
    CustomArea area(&window);
    area.resize(100, 100);
    RepaintCounter repaints(&area);

    area.setAreaColor(QColor(1, 2, 3));
    QCOMPARE(repaints.take(), 0);
    cause(area);
    QVERIFY(repaints.take() > 0);
    QCOMPARE(WidgetPicture::of(area).pixelColor(0, 0), QColor(1, 2, 3));
}

QTEST_MAIN(tst_CustomArea)
#include "tst_CustomArea.moc"

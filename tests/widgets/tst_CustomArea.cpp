// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/CustomArea.h"

#include "tests/support/RepaintCounter.h"
#include "tests/support/WarningCatcher.h"
#include "tests/support/WidgetPicture.h"

#include <QtTest>

class tst_CustomArea : public QObject
{
    Q_OBJECT

private slots:
    void startsVisible();
    void derivesFromQWidget();
    void fillsItself_data();
    void fillsItself();
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

    const QColor usual(0x2E, 0x30, 0x32);
    QTest::newRow("new area") << QSize(500, 260) << QColor() << usual;
    QTest::newRow("one pixel") << QSize(1, 1) << QColor() << usual;
    QTest::newRow("colour set") << QSize(31, 17) << QColor(1, 2, 3) << QColor(1, 2, 3);
    QTest::newRow("nothing to fill") << QSize(0, 0) << QColor() << usual;
    QTest::newRow("no height") << QSize(10, 0) << QColor() << usual;
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

    WarningCatcher warnings;
    const QImage picture = WidgetPicture::of(area);
    QImage expected = WidgetPicture::canvas(picture.size());
    if (!size.isEmpty()) {
        expected.fill(shown);
    }
    QCOMPARE(picture, expected);
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
    QCOMPARE(picture.pixelColor(10, 10), QColor(0x2E, 0x30, 0x32));
    QCOMPARE(picture.pixelColor(29, 29), QColor(0x2E, 0x30, 0x32));
    QCOMPARE(picture.pixelColor(9, 10), QColor(255, 0, 0));
    QCOMPARE(picture.pixelColor(30, 29), QColor(255, 0, 0));
}

void tst_CustomArea::keepsTheOldColourUntilAPaint_data()
{
    QTest::addColumn<bool>("resize");

    QTest::newRow("owner calls update") << false;
    QTest::newRow("area is resized") << true;
}

void tst_CustomArea::keepsTheOldColourUntilAPaint()
{
    QFETCH(bool, resize);

    QWidget window;
    window.resize(200, 200);
    window.show();
    CustomArea area(&window);
    area.resize(100, 100);
    RepaintCounter repaints(&area);

    area.setAreaColor(QColor(1, 2, 3));
    QCOMPARE(repaints.take(), 0);
    if (resize) {
        area.resize(120, 110);
    } else {
        area.update();
    }
    QVERIFY(repaints.take() > 0);
    QCOMPARE(WidgetPicture::of(area).pixelColor(0, 0), QColor(1, 2, 3));
}

QTEST_MAIN(tst_CustomArea)
#include "tst_CustomArea.moc"

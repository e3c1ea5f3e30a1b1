// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/NinePatchPainter.h"

#include "tests/support/StripedPicture.h"
#include "tests/support/WidgetPicture.h"

#include <QPainter>
#include <QtTest>

#include <type_traits>

namespace {

constexpr QSize kSource(20, 20);
constexpr int kBorder = 5;

/// Border widths in the order of the painter's arguments.
struct Borders
{
    int left;
    int top;
    int right;
    int bottom;
};

constexpr Borders kAllFive{kBorder, kBorder, kBorder, kBorder};

NinePatchPainter makePainter(const QImage &picture, Borders borders)
{
    return {QPixmap::fromImage(picture),
            borders.left,
            borders.top,
            borders.right,
            borders.bottom,
            true,
            true};
}

QImage painted(const QImage &picture, Borders source, const QRect &target, Borders borders,
               const QSize &canvasSize)
{
    QImage canvas = WidgetPicture::canvas(canvasSize);
    QPainter painter(&canvas);
    makePainter(picture, source)
        .paint(&painter, target, borders.left, borders.top, borders.right, borders.bottom);
    painter.end();
    return canvas;
}

/// A cut of the picture and the place in the target that it is stretched to.
struct Stretch
{
    QRect cut;
    QRect place;
};

/// What is expected, each piece in the order of drawing.
QImage expectedPicture(const QImage &picture, const QVector<Stretch> &stretches,
                       const QSize &canvasSize)
{
    QImage canvas = WidgetPicture::canvas(canvasSize);
    QPainter painter(&canvas);
    for (const Stretch &stretch : stretches) {
        const QPixmap piece = QPixmap::fromImage(picture.copy(stretch.cut));
        painter.drawPixmap(
            stretch.place.topLeft(),
            piece.scaled(stretch.place.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    }
    painter.end();
    return canvas;
}

/// The cuts of the 20 x 20 picture with borders of 5, as drawn into a target with wider borders.
QVector<Stretch> stretchesOfTheSource(const QSize &target, int border)
{
    const int right = target.width() - border;
    const int bottom = target.height() - border;
    const int across = target.width() - 2 * border;
    const int down = target.height() - 2 * border;
    return {{{0, 0, 5, 5}, {0, 0, border, border}},
            {{0, 15, 5, 5}, {0, bottom, border, border}},
            {{15, 0, 5, 5}, {right, 0, border, border}},
            {{15, 15, 5, 5}, {right, bottom, border, border}},
            {{0, 5, 5, 10}, {0, border, border, down}},
            {{5, 0, 10, 5}, {border, 0, across, border}},
            {{15, 5, 5, 10}, {right, border, border, down}},
            {{5, 15, 10, 5}, {border, bottom, across, border}}};
}

} // namespace

class tst_NinePatchPainter : public QObject
{
    Q_OBJECT

private slots:
    void isNotCopyable();
    void paints_data();
    void paints();
    void paintsAtTheOriginWhateverTheTargetsPosition();
    void paintsWherePainterIsTranslated();
    void leavesTheCentreUntouched();
    void bordersMayDifferPerSide();
    void smallTargetOverlapsItsCorners_data();
    void smallTargetOverlapsItsCorners();
    void smallSourceStretchesItsWholePicture();
    void flagsChangeNothing();
    void leavesThePainterAsItWas();
};

void tst_NinePatchPainter::isNotCopyable()
{
    static_assert(!std::is_copy_constructible_v<NinePatchPainter>);
    static_assert(!std::is_copy_assignable_v<NinePatchPainter>);
    static_assert(!std::is_base_of_v<QObject, NinePatchPainter>);
}

void tst_NinePatchPainter::paints_data()
{
    QTest::addColumn<QSize>("target");
    QTest::addColumn<int>("border");

    QTest::newRow("100 x 40, borders 5") << QSize(100, 40) << 5;
    QTest::newRow("as large as the source") << kSource << 5;
    QTest::newRow("target borders 10, source borders 5") << QSize(100, 40) << 10;
    QTest::newRow("target borders 3, source borders 5") << QSize(100, 40) << 3;
    QTest::newRow("narrow and high") << QSize(12, 90) << 5;
    QTest::newRow("large with wide borders") << QSize(2000, 1200) << 300;
}

void tst_NinePatchPainter::paints()
{
    QFETCH(QSize, target);
    QFETCH(int, border);

    const QImage picture = StripedPicture::paint(kSource);
    const QSize canvas = target + QSize(10, 10);
    QCOMPARE(painted(picture, kAllFive, QRect(QPoint(0, 0), target),
                     {border, border, border, border}, canvas),
             expectedPicture(picture, stretchesOfTheSource(target, border), canvas));
}

void tst_NinePatchPainter::paintsAtTheOriginWhateverTheTargetsPosition()
{
    const QImage picture = StripedPicture::paint(kSource);
    const QSize canvas(120, 60);
    QCOMPARE(painted(picture, kAllFive, QRect(10, 10, 100, 40), kAllFive, canvas),
             painted(picture, kAllFive, QRect(0, 0, 100, 40), kAllFive, canvas));
    QCOMPARE(painted(picture, kAllFive, QRect(10, 10, 100, 40), kAllFive, canvas),
             expectedPicture(picture, stretchesOfTheSource(QSize(100, 40), 5), canvas));
}

void tst_NinePatchPainter::paintsWherePainterIsTranslated()
{
    const QImage picture = StripedPicture::paint(kSource);
    const QSize canvas(120, 60);
    QImage moved = WidgetPicture::canvas(canvas);
    QPainter painter(&moved);
    painter.translate(10, 12);
    makePainter(picture, kAllFive).paint(&painter, QRect(0, 0, 100, 40), 5, 5, 5, 5);
    painter.end();

    QCOMPARE(moved.copy(10, 12, 100, 40),
             expectedPicture(picture, stretchesOfTheSource(QSize(100, 40), 5), QSize(100, 40)));
}

void tst_NinePatchPainter::leavesTheCentreUntouched()
{
    const QImage picture = painted(StripedPicture::paint(kSource), kAllFive, QRect(0, 0, 100, 40),
                                   kAllFive, {100, 40});

    int untouched = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const bool inCentre = QRect(5, 5, 90, 30).contains(x, y);
            QCOMPARE(picture.pixel(x, y) == WidgetPicture::kGround, inCentre);
            untouched += inCentre ? 1 : 0;
        }
    }
    QCOMPARE(untouched, 90 * 30);
}

void tst_NinePatchPainter::bordersMayDifferPerSide()
{
    const QImage picture = StripedPicture::paint(kSource);
    const QSize target(60, 50);
    const QVector<Stretch> expected{
        {{0, 0, 1, 2}, {0, 0, 8, 7}},     {{0, 16, 1, 4}, {0, 45, 8, 5}},
        {{17, 0, 3, 2}, {54, 0, 6, 7}},   {{17, 16, 3, 4}, {54, 45, 6, 5}},
        {{0, 2, 1, 14}, {0, 7, 8, 38}},   {{1, 0, 16, 2}, {8, 0, 46, 7}},
        {{17, 2, 3, 14}, {54, 7, 6, 38}}, {{1, 16, 16, 4}, {8, 45, 46, 5}}};

    QCOMPARE(painted(picture, {1, 2, 3, 4}, QRect(QPoint(0, 0), target), {8, 7, 6, 5}, target),
             expectedPicture(picture, expected, target));
}

/// Every corner shows in the others only while the picture is translucent.
void tst_NinePatchPainter::smallTargetOverlapsItsCorners_data()
{
    QTest::addColumn<uint>("alpha");

    QTest::newRow("opaque, the last corner covers the others") << 255U;
    QTest::newRow("translucent, the order of all corners shows") << 100U;
}

void tst_NinePatchPainter::smallTargetOverlapsItsCorners()
{
    QFETCH(uint, alpha);

    QImage picture = StripedPicture::paint(kSource);
    QImage mask(kSource, QImage::Format_Alpha8);
    mask.fill(alpha);
    picture.setAlphaChannel(mask);
    const QSize canvas(12, 12);
    const QVector<Stretch> corners{{{0, 0, 5, 5}, {0, 0, 5, 5}},
                                   {{0, 15, 5, 5}, {0, 3, 5, 5}},
                                   {{15, 0, 5, 5}, {3, 0, 5, 5}},
                                   {{15, 15, 5, 5}, {3, 3, 5, 5}}};

    QCOMPARE(painted(picture, kAllFive, QRect(0, 0, 8, 8), kAllFive, canvas),
             expectedPicture(picture, corners, canvas));
}

void tst_NinePatchPainter::smallSourceStretchesItsWholePicture()
{
    const QImage picture = StripedPicture::paint(QSize(6, 6));
    const QRect whole = picture.rect();
    const QSize target(40, 30);
    const QVector<Stretch> expected{{{0, 0, 5, 5}, {0, 0, 5, 5}},  {{0, 1, 5, 5}, {0, 25, 5, 5}},
                                    {{1, 0, 5, 5}, {35, 0, 5, 5}}, {{1, 1, 5, 5}, {35, 25, 5, 5}},
                                    {whole, {0, 5, 5, 20}},        {whole, {5, 0, 30, 5}},
                                    {whole, {35, 5, 5, 20}},       {whole, {5, 25, 30, 5}}};

    QCOMPARE(painted(picture, kAllFive, QRect(QPoint(0, 0), target), kAllFive, target),
             expectedPicture(picture, expected, target));
}

void tst_NinePatchPainter::flagsChangeNothing()
{
    const QPixmap picture = QPixmap::fromImage(StripedPicture::paint(kSource));
    const QSize size(70, 40);
    const QImage expected
        = expectedPicture(picture.toImage(), stretchesOfTheSource(size, kBorder), size);
    for (const bool horizontal : {false, true}) {
        for (const bool vertical : {false, true}) {
            QImage canvas = WidgetPicture::canvas(size);
            QPainter painter(&canvas);
            const NinePatchPainter patches(picture, 5, 5, 5, 5, horizontal, vertical);
            patches.paint(&painter, QRect(QPoint(0, 0), size), 5, 5, 5, 5);
            painter.end();
            QCOMPARE(canvas, expected);
        }
    }
}

void tst_NinePatchPainter::leavesThePainterAsItWas()
{
    QImage canvas = WidgetPicture::canvas(QSize(100, 100));
    QPainter painter(&canvas);
    const QPen pen(Qt::red, 3, Qt::DotLine);
    const QBrush brush(Qt::green, Qt::Dense4Pattern);
    const QTransform transform = QTransform().translate(3, 4).rotate(10);
    painter.setPen(pen);
    painter.setBrush(brush);
    painter.setTransform(transform);
    const QPainter::RenderHints hints = painter.renderHints();

    makePainter(StripedPicture::paint(kSource), kAllFive)
        .paint(&painter, QRect(0, 0, 50, 40), 5, 5, 5, 5);
    QCOMPARE(painter.pen(), pen);
    QCOMPARE(painter.brush(), brush);
    QCOMPARE(painter.transform(), transform);
    QCOMPARE(painter.renderHints(), hints);
    QCOMPARE(painter.opacity(), 1.0);
}

QTEST_MAIN(tst_NinePatchPainter)
#include "tst_NinePatchPainter.moc"

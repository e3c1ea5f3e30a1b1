// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/NinePatchPainter.h"

#include "tests/support/StripedPicture.h"
#include "tests/support/WidgetPicture.h"

#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QtTest>

#include <type_traits>

static_assert(!std::is_copy_constructible_v<NinePatchPainter>);
static_assert(!std::is_copy_assignable_v<NinePatchPainter>);
static_assert(!std::is_base_of_v<QObject, NinePatchPainter>);

namespace {

/// Border widths in the order of the painter's arguments.
struct Borders
{
    int left;
    int top;
    int right;
    int bottom;
};

constexpr Borders kAllFive{5, 5, 5, 5};

QImage painted(const QImage &picture, const Borders &source, const QRect &target,
               const Borders &borders, const QSize &canvasSize, const QPoint &origin = QPoint(0, 0))
{
    QImage canvas = WidgetPicture::canvas(canvasSize);
    QPainter painter(&canvas);
    painter.translate(origin);
    const NinePatchPainter patches(QPixmap::fromImage(picture), source.left, source.top,
                                   source.right, source.bottom, true, true);
    patches.paint(&painter, target, borders.left, borders.top, borders.right, borders.bottom);
    painter.end();
    return canvas;
}

/// The places of the corners and the edges in \a size pixels, in the order of drawing.
QVector<QRect> places(const QSize &size, const Borders &borders)
{
    const auto [left, top, right, bottom] = borders;
    const int rightX = size.width() - right;
    const int bottomY = size.height() - bottom;
    return {{0, 0, left, top},
            {0, bottomY, left, bottom},
            {rightX, 0, right, top},
            {rightX, bottomY, right, bottom},
            {0, top, left, bottomY - top},
            {left, 0, rightX - left, top},
            {rightX, top, right, bottomY - top},
            {left, bottomY, rightX - left, bottom}};
}

/// Each piece of \a picture, or all of it where the piece is empty, stretched to its place.
QImage expected(const QImage &picture, const Borders &source, const QSize &target,
                const Borders &borders, const QSize &canvasSize)
{
    QImage canvas = WidgetPicture::canvas(canvasSize);
    QPainter painter(&canvas);
    const QVector<QRect> cuts = places(picture.size(), source);
    const QVector<QRect> to = places(target, borders);
    for (int i = 0; i < cuts.size(); ++i) {
        const QPixmap whole = QPixmap::fromImage(picture);
        const QPixmap piece = cuts.at(i).isEmpty() ? whole : whole.copy(cuts.at(i));
        painter.drawPixmap(
            to.at(i).topLeft(),
            piece.scaled(to.at(i).size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    }
    painter.end();
    return canvas;
}

QString words(const QRectF &rect)
{
    return QString("%1,%2 %3x%4").arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height());
}

/// Logs what a painter draws: pixmaps, tiled pixmaps, and everything else.
class RecordingEngine : public QPaintEngine
{
public:
    RecordingEngine()
        : QPaintEngine(AllFeatures)
    { }

    bool begin(QPaintDevice * /*device*/) override { return true; }
    bool end() override { return true; }
    Type type() const override { return User; }
    void updateState(const QPaintEngineState & /*state*/) override { }

    void drawPixmap(const QRectF &place, const QPixmap &pixmap, const QRectF &source) override
    {
        const bool whole = source == QRectF(pixmap.rect());
        log << QString("%1, %2").arg(words(place), whole ? "whole" : "a part");
    }
    void drawTiledPixmap(const QRectF &place, const QPixmap &pixmap, const QPointF &offset) override
    {
        const bool once = offset.isNull() && place.size() == QSizeF(pixmap.size());
        log << QString("%1, %2").arg(words(place), once ? "one tile" : "tiles");
    }
    void drawPath(const QPainterPath &path) override { log << words(path.boundingRect()); }
    void drawPolygon(const QPointF * /*points*/, int /*count*/, PolygonDrawMode /*mode*/) override
    {
        log << "polygon";
    }

    QStringList log;
};

class RecordingDevice : public QPaintDevice
{
public:
    QPaintEngine *paintEngine() const override { return &engine; }

    mutable RecordingEngine engine;

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
        case PdmHeight:
            return 200;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return int(devicePixelRatioFScale());
        default:
            return 72;
        }
    }
};

} // namespace

Q_DECLARE_METATYPE(Borders)

class tst_NinePatchPainter : public QObject
{
    Q_OBJECT

private slots:
    void paints_data();
    void paints();
    void paintsWherePainterIsTranslated();
    void cornersThenEdgesAndNoCentre_data();
    void cornersThenEdgesAndNoCentre();
    void flagsChangeNothing();
    void leavesThePainterAsItWas();
};

void tst_NinePatchPainter::paints_data()
{
    QTest::addColumn<QSize>("picture");
    QTest::addColumn<int>("alpha");
    QTest::addColumn<Borders>("source");
    QTest::addColumn<QRect>("target");
    QTest::addColumn<Borders>("borders");

    const auto row = [](const char *name, const QRect &target, const Borders &borders,
                        const Borders &source = kAllFive, const QSize &picture = QSize(20, 20),
                        int alpha = 255) {
        QTest::newRow(name) << picture << alpha << source << target << borders;
    };
    const QRect wide(0, 0, 100, 40);
    row("100 x 40", wide, kAllFive);
    row("as large as the source", {0, 0, 20, 20}, kAllFive);
    row("wider borders than in the source", wide, {10, 10, 10, 10});
    row("narrower borders than in the source", wide, {3, 3, 3, 3});
    row("narrow and high", {0, 0, 12, 90}, kAllFive);
    row("large with wide borders", {0, 0, 2000, 1200}, {300, 300, 300, 300});
    row("each border its own", {0, 0, 60, 50}, {8, 7, 6, 5}, {1, 2, 3, 4});
    row("the position of the target does not matter", {10, 10, 100, 40}, kAllFive);
    row("small target, the last corner covers the others", {0, 0, 8, 8}, kAllFive);
    row("small target, translucent: the order of all corners shows", {0, 0, 8, 8}, kAllFive,
        kAllFive, {20, 20}, 100);
    row("small source, each edge is the whole picture", {0, 0, 40, 30}, kAllFive, kAllFive, {6, 6});
}

void tst_NinePatchPainter::paints()
{
    QFETCH(QSize, picture);
    QFETCH(int, alpha);
    QFETCH(Borders, source);
    QFETCH(QRect, target);
    QFETCH(Borders, borders);

    QImage image = StripedPicture::paint(picture);
    QImage mask(picture, QImage::Format_Alpha8);
    mask.fill(static_cast<uint>(alpha));
    image.setAlphaChannel(mask);
    const QSize canvas = target.size() + QSize(20, 20);
    QCOMPARE(painted(image, source, target, borders, canvas),
             expected(image, source, target.size(), borders, canvas));
}

void tst_NinePatchPainter::paintsWherePainterIsTranslated()
{
    const QImage picture = StripedPicture::paint(QSize(20, 20));
    const QRect target(0, 0, 100, 40);
    const QImage moved = painted(picture, kAllFive, target, kAllFive, {120, 60}, {10, 12});
    QCOMPARE(moved.copy(target.translated(10, 12)),
             expected(picture, kAllFive, target.size(), kAllFive, target.size()));
}

void tst_NinePatchPainter::cornersThenEdgesAndNoCentre_data()
{
    QTest::addColumn<Borders>("borders");
    QTest::addColumn<QStringList>("drawn");

    QTest::newRow("each border its own")
        << Borders{1, 2, 3, 4}
        << QStringList{"0,0 1x2, whole",      "0,36 1x4, whole",    "97,0 3x2, whole",
                       "97,36 3x4, whole",    "0,2 1x34, one tile", "1,0 96x2, one tile",
                       "97,2 3x34, one tile", "1,36 96x4, one tile"};
    QTest::newRow("no room for the edges")
        << Borders{60, 30, 60, 30}
        << QStringList{"0,0 60x30, whole", "0,10 60x30, whole", "40,0 60x30, whole",
                       "40,10 60x30, whole"};
}

void tst_NinePatchPainter::cornersThenEdgesAndNoCentre()
{
    QFETCH(Borders, borders);
    QFETCH(QStringList, drawn);

    QPixmap picture(20, 20);
    picture.fill(Qt::red);
    const NinePatchPainter patches(picture, 5, 5, 5, 5, true, true);
    RecordingDevice device;
    QPainter painter(&device);
    patches.paint(&painter, QRect(0, 0, 100, 40), borders.left, borders.top, borders.right,
                  borders.bottom);
    painter.end();
    QCOMPARE(device.engine.log, drawn);
}

void tst_NinePatchPainter::flagsChangeNothing()
{
    const QImage picture = StripedPicture::paint(QSize(20, 20));
    const QSize size(70, 40);
    for (const bool horizontal : {false, true}) {
        for (const bool vertical : {false, true}) {
            QImage canvas = WidgetPicture::canvas(size);
            QPainter painter(&canvas);
            const NinePatchPainter patches(QPixmap::fromImage(picture), 5, 5, 5, 5, horizontal,
                                           vertical);
            patches.paint(&painter, QRect(QPoint(0, 0), size), 5, 5, 5, 5);
            painter.end();
            QCOMPARE(canvas, expected(picture, kAllFive, size, kAllFive, size));
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

    const NinePatchPainter patches(QPixmap::fromImage(StripedPicture::paint(QSize(20, 20))), 5, 5,
                                   5, 5, true, true);
    patches.paint(&painter, QRect(0, 0, 50, 40), 5, 5, 5, 5);
    QCOMPARE(painter.pen(), pen);
    QCOMPARE(painter.brush(), brush);
    QCOMPARE(painter.transform(), transform);
    QCOMPARE(painter.renderHints(), hints);
    QCOMPARE(painter.opacity(), 1.0);
}

QTEST_MAIN(tst_NinePatchPainter)
#include "tst_NinePatchPainter.moc"

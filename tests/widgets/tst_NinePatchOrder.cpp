// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/NinePatchPainter.h"

#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QtTest>

namespace {

QString words(const QRectF &rect)
{
    return QString("%1,%2 %3x%4").arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height());
}

/// Writes down what a painter is asked to draw. Whatever is none of these counts as well.
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

/// In which order the nine-patch painter draws its pieces, and how.
class tst_NinePatchOrder : public QObject
{
    Q_OBJECT

private slots:
    void cornersThenEdgesAndNoCentre_data();
    void cornersThenEdgesAndNoCentre();
};

void tst_NinePatchOrder::cornersThenEdgesAndNoCentre_data()
{
    QTest::addColumn<QVector<int>>("borders");
    QTest::addColumn<QStringList>("drawn");

    QTest::newRow("each border its own")
        << QVector<int>{1, 2, 3, 4}
        << QStringList{"0,0 1x2, whole",      "0,36 1x4, whole",    "97,0 3x2, whole",
                       "97,36 3x4, whole",    "0,2 1x34, one tile", "1,0 96x2, one tile",
                       "97,2 3x34, one tile", "1,36 96x4, one tile"};
    QTest::newRow("no room for the edges")
        << QVector<int>{60, 30, 60, 30}
        << QStringList{"0,0 60x30, whole", "0,10 60x30, whole", "40,0 60x30, whole",
                       "40,10 60x30, whole"};
}

void tst_NinePatchOrder::cornersThenEdgesAndNoCentre()
{
    QFETCH(QVector<int>, borders);
    QFETCH(QStringList, drawn);

    QPixmap picture(20, 20);
    picture.fill(Qt::red);
    const NinePatchPainter patches(picture, 5, 5, 5, 5, true, true);
    RecordingDevice device;
    QPainter painter(&device);
    patches.paint(&painter, QRect(0, 0, 100, 40), borders.at(0), borders.at(1), borders.at(2),
                  borders.at(3));
    painter.end();
    QCOMPARE(device.engine.log, drawn);
}

QTEST_MAIN(tst_NinePatchOrder)
#include "tst_NinePatchOrder.moc"

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/NinePatchPainter.h"

#include "tests/support/WarningCatcher.h"
#include "tests/support/WidgetPicture.h"
#include "widgets/NinePatchPainter_p.h"

#include <QPainter>
#include <QtTest>

#include <limits>

namespace {

constexpr QSize kCanvas(40, 40);

QPixmap redPicture()
{
    QPixmap picture(20, 20);
    picture.fill(Qt::red);
    return picture;
}

/// What comes onto a canvas when \a patches paint over all of it.
QImage painted(const NinePatchPainter &patches, int left, int top, int right, int bottom)
{
    QImage canvas = WidgetPicture::canvas(kCanvas);
    QPainter painter(&canvas);
    patches.paint(&painter, canvas.rect(), left, top, right, bottom);
    painter.end();
    return canvas;
}

} // namespace

/// The nine-patch painter with no picture and with borders that nobody means.
class tst_NinePatchLimits : public QObject
{
    Q_OBJECT

private slots:
    void nullPicturePaintsNothing();
    void bordersWithoutEndPaintNothing_data();
    void bordersWithoutEndPaintNothing();
    void pieceWithoutEndPaintsNothing();
    void twoNegativeSidesCutTheWholePicture_data();
    void twoNegativeSidesCutTheWholePicture();
    void scalesUpToHalfAGigabyte_data();
    void scalesUpToHalfAGigabyte();
};

void tst_NinePatchLimits::nullPicturePaintsNothing()
{
    WarningCatcher warnings;
    const NinePatchPainter patches(QPixmap(), 5, 5, 5, 5, true, true);
    QCOMPARE(painted(patches, 5, 5, 5, 5), WidgetPicture::canvas(kCanvas));
    QCOMPARE(warnings.take(), QStringList());
}

void tst_NinePatchLimits::bordersWithoutEndPaintNothing_data()
{
    QTest::addColumn<int>("border");

    QTest::newRow("the largest number") << std::numeric_limits<int>::max();
    QTest::newRow("the smallest number") << std::numeric_limits<int>::min();
}

void tst_NinePatchLimits::bordersWithoutEndPaintNothing()
{
    QFETCH(int, border);

    const NinePatchPainter patches(redPicture(), border, border, border, border, true, true);
    QCOMPARE(painted(patches, border, border, border, border), WidgetPicture::canvas(kCanvas));
}

void tst_NinePatchLimits::pieceWithoutEndPaintsNothing()
{
    // One pixel high and half a billion wide.
    const NinePatchPainter patches(redPicture(), 5, 5, 5, 5, true, true);
    QCOMPARE(painted(patches, 1 << 29, 1, 0, 0), WidgetPicture::canvas(kCanvas));
}

void tst_NinePatchLimits::twoNegativeSidesCutTheWholePicture_data()
{
    QTest::addColumn<int>("border");
    QTest::addColumn<int>("piece");

    QTest::newRow("negative borders, a corner")
        << -(1 << 15) << int(NinePatchPainterPrivate::TopLeft);
    QTest::newRow("wide borders, the centre") << (1 << 15) << int(NinePatchPainterPrivate::Centre);
}

/// Such a piece is empty like any other of negative size, though its sides multiply to a large one.
void tst_NinePatchLimits::twoNegativeSidesCutTheWholePicture()
{
    QFETCH(int, border);
    QFETCH(int, piece);

    const NinePatchPainterPrivate pieces(redPicture(), border, border, border, border, true, true);
    QCOMPARE(pieces.m_pieces.at(static_cast<std::size_t>(piece)).size(), redPicture().size());
}

void tst_NinePatchLimits::scalesUpToHalfAGigabyte_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("scales");

    // Nearer to the limit the test itself would take gigabytes.
    QTest::newRow("an eighth of it") << QSize(4096, 4096) << true;
    QTest::newRow("a row more") << QSize(1 << 14, (1 << 13) + 1) << false;
    QTest::newRow("twice that") << QSize(1 << 14, 1 << 14) << false;
}

void tst_NinePatchLimits::scalesUpToHalfAGigabyte()
{
    QFETCH(QSize, size);
    QFETCH(bool, scales);

    const NinePatchPainterPrivate pieces(redPicture(), 5, 5, 5, 5, true, true);
    QCOMPARE(!pieces.scalePixmap(redPicture(), size).isNull(), scales);
}

QTEST_MAIN(tst_NinePatchLimits)
#include "tst_NinePatchLimits.moc"

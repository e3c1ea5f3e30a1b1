// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include <QImage>
#include <QTransform>
#include <QtTest>

namespace {

const QString kClose = ":/images/img_close.png";
const QString kButton = ":/images/img_button.png";
constexpr QRect kCloseNormal(0, 0, 30, 30);
constexpr QRect kCloseHover(30, 0, 30, 30);
constexpr QRect kButtonNormal(0, 0, 160, 40);
constexpr QRect kButtonHover(160, 0, 160, 40);
constexpr QRect kCross(8, 8, 14, 14); ///< the largest extent of the cross in its frame
constexpr QRgb kTransparent = 0;
constexpr QRgb kDisc = 0xff5d6d80;
constexpr QRgb kNormal = 0xff17212b;
constexpr QRgb kHover = 0xff3d4753;

} // namespace

/// The pixels of the two pictures.
class tst_SkinPictures : public QObject
{
    Q_OBJECT

private slots:
    void hasPixel_data();
    void hasPixel();
    void usesOnlyItsColours_data();
    void usesOnlyItsColours();
    void strokesMeetInTheCentre();
    void crossHasItsExtent_data();
    void crossHasItsExtent();
    void cornersAreRound_data();
    void cornersAreRound();
};

void tst_SkinPictures::hasPixel_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QPoint>("pixel");
    QTest::addColumn<QRgb>("colour");

    constexpr QRgb kWhite = 0xffffffff;
    const QVector<QPoint> closeCorners{{0, 0}, {29, 0}, {0, 29}, {29, 29}};
    for (const QPoint &corner : closeCorners) {
        const QPoint inRight = corner + QPoint(30, 0);
        QTest::addRow("close, normal corner %d %d", corner.x(), corner.y())
            << kClose << corner << kTransparent;
        QTest::addRow("close, hover corner %d %d", inRight.x(), inRight.y())
            << kClose << inRight << kTransparent;
    }
    QTest::newRow("close, hover cross") << kClose << QPoint(45, 15) << kWhite;
    QTest::newRow("close, beside the normal cross") << kClose << QPoint(15, 9) << kTransparent;
    QTest::newRow("close, beside the hover cross") << kClose << QPoint(45, 9) << kDisc;
    QTest::newRow("close, disc at its left") << kClose << QPoint(31, 15) << kDisc;
    QTest::newRow("close, disc at its top") << kClose << QPoint(45, 1) << kDisc;
    QTest::newRow("close, disc at its right") << kClose << QPoint(58, 15) << kDisc;
    QTest::newRow("close, disc at its bottom") << kClose << QPoint(45, 28) << kDisc;
    for (const int x : {0, 1}) {
        for (const int y : {0, 1}) {
            QTest::addRow("close, diagonal %d %d outside the disc", x, y)
                << kClose << QPoint(x == 0 ? 33 : 56, y == 0 ? 3 : 26) << kTransparent;
            QTest::addRow("close, diagonal %d %d inside the disc", x, y)
                << kClose << QPoint(x == 0 ? 35 : 54, y == 0 ? 5 : 24) << kDisc;
        }
    }

    const QVector<QPoint> buttonCorners{{0, 0}, {159, 0}, {0, 39}, {159, 39}};
    for (const QPoint &corner : buttonCorners) {
        const QPoint inRight = corner + QPoint(160, 0);
        QTest::addRow("button, normal corner %d %d", corner.x(), corner.y())
            << kButton << corner << kTransparent;
        QTest::addRow("button, hover corner %d %d", inRight.x(), inRight.y())
            << kButton << inRight << kTransparent;
    }
    QTest::newRow("button, normal middle") << kButton << QPoint(80, 20) << kNormal;
    QTest::newRow("button, normal left edge") << kButton << QPoint(0, 20) << kNormal;
    QTest::newRow("button, normal right edge") << kButton << QPoint(159, 20) << kNormal;
    QTest::newRow("button, normal top edge") << kButton << QPoint(80, 0) << kNormal;
    QTest::newRow("button, normal bottom edge") << kButton << QPoint(80, 39) << kNormal;
    QTest::newRow("button, hover middle") << kButton << QPoint(240, 20) << kHover;
    QTest::newRow("button, hover left edge") << kButton << QPoint(160, 20) << kHover;
    QTest::newRow("button, hover right edge") << kButton << QPoint(319, 20) << kHover;
    QTest::newRow("button, hover top edge") << kButton << QPoint(240, 0) << kHover;
    QTest::newRow("button, hover bottom edge") << kButton << QPoint(240, 39) << kHover;
}

void tst_SkinPictures::hasPixel()
{
    QFETCH(QString, path);
    QFETCH(QPoint, pixel);
    QFETCH(QRgb, colour);

    const QRgb seen = QImage(path).pixel(pixel);
    if (qAlpha(colour) == 0) {
        QCOMPARE(qAlpha(seen), 0);
    } else {
        QCOMPARE(QColor::fromRgba(seen), QColor::fromRgba(colour));
    }
}

void tst_SkinPictures::usesOnlyItsColours_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QRect>("frame");
    QTest::addColumn<QRgb>("colour");
    QTest::addColumn<QRect>("except");

    QTest::newRow("close, normal") << kClose << kCloseNormal << QRgb(0xffffffff) << QRect();
    QTest::newRow("close, hover without the cross") << kClose << kCloseHover << kDisc << kCross;
    QTest::newRow("button, normal") << kButton << kButtonNormal << kNormal << QRect();
    QTest::newRow("button, hover") << kButton << kButtonHover << kHover << QRect();
}

/// Anti-aliasing only changes the alpha channel, so edges have no other colours.
void tst_SkinPictures::usesOnlyItsColours()
{
    QFETCH(QString, path);
    QFETCH(QRect, frame);
    QFETCH(QRgb, colour);
    QFETCH(QRect, except);

    const QImage picture = QImage(path).copy(frame);
    int visible = 0;
    int smoothed = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            if (qAlpha(pixel) == 0 || except.contains(x, y)) {
                continue;
            }
            QCOMPARE(pixel | 0xff000000, colour);
            ++visible;
            smoothed += qAlpha(pixel) < 255 ? 1 : 0;
        }
    }
    QVERIFY(visible > 0);
    QVERIFY(smoothed > 0);
}

void tst_SkinPictures::strokesMeetInTheCentre()
{
    constexpr int kNearlyOpaque = 224;
    const QImage picture(kClose);
    // The centre of a frame is between four pixels.
    for (const QPoint &middle : {QPoint(14, 14), QPoint(15, 14), QPoint(14, 15), QPoint(15, 15)}) {
        QCOMPARE(picture.pixel(middle) | 0xff000000, 0xffffffff);
        QVERIFY(qAlpha(picture.pixel(middle)) >= kNearlyOpaque);
        QCOMPARE(picture.pixel(middle + QPoint(30, 0)), 0xffffffff);
    }
}

void tst_SkinPictures::crossHasItsExtent_data()
{
    QTest::addColumn<int>("frameLeft");
    QTest::addColumn<QRgb>("ground");

    QTest::newRow("normal, on transparent pixels") << 0 << kTransparent;
    QTest::newRow("hover, on the disc") << 30 << kDisc;
}

void tst_SkinPictures::crossHasItsExtent()
{
    QFETCH(int, frameLeft);
    QFETCH(QRgb, ground);

    const QImage frame = QImage(kClose).copy(frameLeft, 0, 30, 30);
    QRect extent;
    for (int y = 5; y < 25; ++y) {
        for (int x = 5; x < 25; ++x) {
            const QRgb pixel = frame.pixel(x, y);
            const bool isGround = qAlpha(ground) == 0 ? qAlpha(pixel) == 0 : pixel == ground;
            extent |= isGround ? QRect() : QRect(x, y, 1, 1);
        }
    }
    QVERIFY(kCross.contains(extent));
    QVERIFY(extent.contains(QRect(10, 10, 10, 10)));
}

void tst_SkinPictures::cornersAreRound_data()
{
    QTest::addColumn<QRect>("frame");
    QTest::addColumn<int>("turn");

    for (const int turn : {0, 90, 180, 270}) {
        QTest::addRow("normal, rotated by %d", turn) << kButtonNormal << turn;
        QTest::addRow("hover, rotated by %d", turn) << kButtonHover << turn;
    }
}

/// Rotates the picture to check each edge as the top edge.
void tst_SkinPictures::cornersAreRound()
{
    QFETCH(QRect, frame);
    QFETCH(int, turn);

    constexpr int kNearlyOpaque = 250;
    const QImage picture = QImage(kButton).copy(frame).transformed(QTransform().rotate(turn));
    QVector<int> solid;
    for (int x = 0; x < picture.width(); ++x) {
        if (qAlpha(picture.pixel(x, 0)) >= kNearlyOpaque) {
            solid << x;
        }
    }
    QVERIFY(!solid.isEmpty());
    const int left = solid.first();
    const int right = picture.width() - 1 - solid.last();
    QVERIFY2(left >= 8 && left <= 12, qPrintable(QString::number(left)));
    QVERIFY2(right >= 8 && right <= 12, qPrintable(QString::number(right)));
    QCOMPARE(solid.size(), picture.width() - left - right);
}

QTEST_GUILESS_MAIN(tst_SkinPictures)
#include "tst_SkinPictures.moc"

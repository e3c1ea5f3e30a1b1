// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/NinePatchPainter_p.h"

#include "tests/support/StripedPicture.h"
#include "tests/support/WarningCatcher.h"
#include "tests/support/WidgetPicture.h"
#include "widgets/NinePatchPainter.h"

#include <QPainter>
#include <QtTest>

#include <limits>

namespace {

constexpr QSize kSource(20, 20);
constexpr int kAnyMore = std::numeric_limits<int>::max();
constexpr int kAnyLess = std::numeric_limits<int>::min();
using Rects = QList<QRect>;

QPixmap redPicture()
{
    QPixmap picture(kSource);
    picture.fill(Qt::red);
    return picture;
}

} // namespace

/// The arithmetic and the cuts of the nine-patch painter, and its limits.
class tst_NinePatchPieces : public QObject
{
    Q_OBJECT

private slots:
    void calculatesRects_data();
    void calculatesRects();
    void cutsPieces();
    void cutsTheWholePictureWhereAnEdgeIsEmpty();
    void keepsWhatItWasGiven();
    void scalesWhateverTheShape_data();
    void scalesWhateverTheShape();
    void scalesUpToHalfAGigabyte_data();
    void scalesUpToHalfAGigabyte();
    void emptyPieceIsTheWholePicture_data();
    void emptyPieceIsTheWholePicture();
    void paintsNothing_data();
    void paintsNothing();
};

void tst_NinePatchPieces::calculatesRects_data()
{
    QTest::addColumn<QRect>("rect");
    QTest::addColumn<QVector<int>>("borders");
    QTest::addColumn<Rects>("expected");

    const QVector<int> five{5, 5, 5, 5};
    const Rects ofTwenty{{0, 15, 5, 5},  {0, 5, 5, 10},  {0, 0, 5, 5},
                         {5, 0, 10, 5},  {15, 0, 5, 5},  {15, 5, 5, 10},
                         {15, 15, 5, 5}, {5, 15, 10, 5}, {5, 5, 10, 10}};
    QTest::newRow("20 x 20, all borders 5") << QRect(0, 0, 20, 20) << five << ofTwenty;
    QTest::newRow("position ignored") << QRect(30, 40, 20, 20) << five << ofTwenty;
    QTest::newRow("100 x 40, all borders 5")
        << QRect(0, 0, 100, 40) << five
        << Rects{{0, 35, 5, 5},  {0, 5, 5, 30},  {0, 0, 5, 5},   {5, 0, 90, 5}, {95, 0, 5, 5},
                 {95, 5, 5, 30}, {95, 35, 5, 5}, {5, 35, 90, 5}, {5, 5, 90, 30}};
    QTest::newRow("each border its own")
        << QRect(0, 0, 100, 50) << QVector<int>{1, 2, 3, 4}
        << Rects{{0, 46, 1, 4},  {0, 2, 1, 44},  {0, 0, 1, 2},   {1, 0, 96, 2}, {97, 0, 3, 2},
                 {97, 2, 3, 44}, {97, 46, 3, 4}, {1, 46, 96, 4}, {1, 2, 96, 44}};
    QTest::newRow("8 x 8 is not clamped")
        << QRect(0, 0, 8, 8) << five
        << Rects{{0, 3, 5, 5},  {0, 5, 5, -2}, {0, 0, 5, 5},  {5, 0, -2, 5}, {3, 0, 5, 5},
                 {3, 5, 5, -2}, {3, 3, 5, 5},  {5, 3, -2, 5}, {5, 5, -2, -2}};
    constexpr int kMost = 1 << 29;
    constexpr int kAcross = 20 - 2 * kMost;
    constexpr int kDown = 20 + 2 * kMost;
    QTest::newRow("borders beyond half a billion count as that")
        << QRect(0, 0, 20, 20) << QVector<int>{kAnyMore, kAnyLess, kAnyMore, kAnyLess}
        << Rects{{0, 20 + kMost, kMost, -kMost},
                 {0, -kMost, kMost, kDown},
                 {0, 0, kMost, -kMost},
                 {kMost, 0, kAcross, -kMost},
                 {20 - kMost, 0, kMost, -kMost},
                 {20 - kMost, -kMost, kMost, kDown},
                 {20 - kMost, 20 + kMost, kMost, -kMost},
                 {kMost, 20 + kMost, kAcross, -kMost},
                 {kMost, -kMost, kAcross, kDown}};
    QTest::newRow("no borders") << QRect(0, 0, 20, 10) << QVector<int>{0, 0, 0, 0}
                                << Rects{{0, 10, 0, 0},  {0, 0, 0, 10},  {0, 0, 0, 0},
                                         {0, 0, 20, 0},  {20, 0, 0, 0},  {20, 0, 0, 10},
                                         {20, 10, 0, 0}, {0, 10, 20, 0}, {0, 0, 20, 10}};
}

void tst_NinePatchPieces::calculatesRects()
{
    QFETCH(QRect, rect);
    QFETCH(QVector<int>, borders);
    QFETCH(Rects, expected);

    const NinePatchPainterPrivate pieces(QPixmap(), 9, 9, 9, 9, true, true);
    QCOMPARE(pieces.calculateNinePatchRects(rect, borders.at(0), borders.at(1), borders.at(2),
                                            borders.at(3)),
             expected);
}

void tst_NinePatchPieces::cutsPieces()
{
    const QImage picture = StripedPicture::paint(kSource);
    const NinePatchPainterPrivate cut(QPixmap::fromImage(picture), 5, 5, 5, 5, true, true);
    const Rects places{{0, 15, 5, 5},  {0, 5, 5, 10},  {0, 0, 5, 5},   {5, 0, 10, 5}, {15, 0, 5, 5},
                       {15, 5, 5, 10}, {15, 15, 5, 5}, {5, 15, 10, 5}, {5, 5, 10, 10}};

    for (int i = 0; i < NinePatchPainterPrivate::kPieceCount; ++i) {
        const QImage piece = cut.m_pieces.at(static_cast<std::size_t>(i)).toImage();
        QCOMPARE(piece.convertToFormat(picture.format()), picture.copy(places.at(i)));
    }
}

void tst_NinePatchPieces::cutsTheWholePictureWhereAnEdgeIsEmpty()
{
    using Piece = NinePatchPainterPrivate::Piece;
    const QImage picture = StripedPicture::paint(QSize(6, 6));
    const NinePatchPainterPrivate cut(QPixmap::fromImage(picture), 5, 5, 5, 5, true, true);

    for (const Piece edge : {Piece::Left, Piece::Top, Piece::Right, Piece::Bottom, Piece::Centre}) {
        QCOMPARE(cut.m_pieces.at(edge).toImage().convertToFormat(picture.format()), picture);
    }
    QCOMPARE(cut.m_pieces.at(Piece::TopRight).toImage().convertToFormat(picture.format()),
             picture.copy(1, 0, 5, 5));
}

void tst_NinePatchPieces::keepsWhatItWasGiven()
{
    const NinePatchPainterPrivate given(QPixmap(4, 4), 1, 2, 3, 4, true, false);
    QCOMPARE(given.m_left, 1);
    QCOMPARE(given.m_top, 2);
    QCOMPARE(given.m_right, 3);
    QCOMPARE(given.m_bottom, 4);
    QCOMPARE(given.m_horizontalStretch, true);
    QCOMPARE(given.m_verticalStretch, false);
}

void tst_NinePatchPieces::scalesWhateverTheShape_data()
{
    QTest::addColumn<QSize>("size");

    QTest::newRow("larger") << QSize(90, 31);
    QTest::newRow("smaller") << QSize(3, 7);
    QTest::newRow("same") << kSource;
    QTest::newRow("negative width is empty") << QSize(-2, 5);
    QTest::newRow("no height is empty") << QSize(5, 0);
}

void tst_NinePatchPieces::scalesWhateverTheShape()
{
    QFETCH(QSize, size);

    const QPixmap picture = QPixmap::fromImage(StripedPicture::paint(kSource));
    const NinePatchPainterPrivate pieces(picture, 5, 5, 5, 5, true, true);
    const QPixmap scaled = pieces.scalePixmap(picture, size);

    QCOMPARE(scaled.isNull(), size.isEmpty());
    if (!size.isEmpty()) {
        QCOMPARE(scaled.size(), size);
        QCOMPARE(scaled.toImage(),
                 picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).toImage());
    }
}

void tst_NinePatchPieces::scalesUpToHalfAGigabyte_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("scales");

    // A size closer to the limit would take gigabytes in this test.
    QTest::newRow("an eighth of it") << QSize(4096, 4096) << true;
    QTest::newRow("one row more") << QSize(1 << 14, (1 << 13) + 1) << false;
    QTest::newRow("twice that") << QSize(1 << 14, 1 << 14) << false;
}

void tst_NinePatchPieces::scalesUpToHalfAGigabyte()
{
    QFETCH(QSize, size);
    QFETCH(bool, scales);

    const NinePatchPainterPrivate pieces(redPicture(), 5, 5, 5, 5, true, true);
    QCOMPARE(!pieces.scalePixmap(redPicture(), size).isNull(), scales);
}

void tst_NinePatchPieces::emptyPieceIsTheWholePicture_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("piece");

    QTest::newRow("negative borders, a corner")
        << -(1 << 15) << -(1 << 15) << int(NinePatchPainterPrivate::TopLeft);
    QTest::newRow("wide borders, the centre")
        << (1 << 15) << (1 << 15) << int(NinePatchPainterPrivate::Centre);
    QTest::newRow("a wide and a negative border, a corner")
        << (1 << 27) << -1 << int(NinePatchPainterPrivate::TopLeft);
    QTest::newRow("a negative and a wide border, a corner")
        << -1 << (1 << 27) << int(NinePatchPainterPrivate::TopLeft);
}

/// Such a piece is as empty as any other of negative size, however large its sides are.
void tst_NinePatchPieces::emptyPieceIsTheWholePicture()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, piece);

    const NinePatchPainterPrivate pieces(redPicture(), width, height, width, height, true, true);
    QCOMPARE(pieces.m_pieces.at(static_cast<std::size_t>(piece)).size(), kSource);
}

void tst_NinePatchPieces::paintsNothing_data()
{
    QTest::addColumn<QPixmap>("picture");
    QTest::addColumn<int>("source");
    QTest::addColumn<QVector<int>>("borders");

    QTest::newRow("null picture") << QPixmap() << 5 << QVector<int>{5, 5, 5, 5};
    QTest::newRow("largest borders") << redPicture() << kAnyMore << QVector<int>(4, kAnyMore);
    QTest::newRow("smallest borders") << redPicture() << kAnyLess << QVector<int>(4, kAnyLess);
    QTest::newRow("a corner of one row, half a billion wide")
        << redPicture() << 5 << QVector<int>{1 << 29, 1, 0, 0};
}

void tst_NinePatchPieces::paintsNothing()
{
    QFETCH(QPixmap, picture);
    QFETCH(int, source);
    QFETCH(QVector<int>, borders);

    WarningCatcher warnings;
    const NinePatchPainter patches(picture, source, source, source, source, true, true);
    const QImage empty = WidgetPicture::canvas(QSize(40, 40));
    QImage canvas = empty;
    QPainter painter(&canvas);
    patches.paint(&painter, canvas.rect(), borders.at(0), borders.at(1), borders.at(2),
                  borders.at(3));
    painter.end();
    QCOMPARE(canvas, empty);
    QCOMPARE(warnings.take(), QStringList());
}

QTEST_MAIN(tst_NinePatchPieces)
#include "tst_NinePatchPieces.moc"

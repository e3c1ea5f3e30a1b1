// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/support/PointerEvents.h"
#include "tests/support/WidgetPicture.h"
#include "widgets/MButton.h"

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QResource>
#include <QtEndian>
#include <QtTest>

using namespace PointerEvents;

// The two functions of the collection; no header declares them.
int qInitResources_skins();
int qCleanupResources_skins();

namespace {

const QString kClose = ":/images/img_close.png";
const QString kButton = ":/images/img_button.png";
const QDir kSourceImages(SKINS_SOURCE_DIR "/images");
constexpr QRgb kTransparent = 0;
constexpr QRgb kDisc = 0xff5d6d80;
constexpr QRgb kNormal = 0xff17212b;
constexpr QRgb kHover = 0xff3d4753;

/// What the first line of main sees of the bundle, before there is any application object.
bool readableInFirstLineOfMain = false;

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A PNG's chunks in the file's order, by their four-letter kind.
QStringList chunksOf(const QByteArray &png)
{
    constexpr int kSignature = 8;
    constexpr int kAroundData = 12;
    QStringList kinds;
    for (int at = kSignature; at + kAroundData <= png.size();) {
        kinds << png.mid(at + 4, 4);
        at += static_cast<int>(qFromBigEndian<quint32>(png.constData() + at)) + kAroundData;
    }
    return kinds;
}

} // namespace

class tst_skins : public QObject
{
    Q_OBJECT

private slots:
    void isReadableBeforeAnyApplication();
    void listsBothPictures();
    void canBeUnregisteredAndRegistered();
    void storesFile_data();
    void storesFile();
    void isAPng_data();
    void isAPng();
    void loads_data();
    void loads();
    void hasPixel_data();
    void hasPixel();
    void usesOnlyItsColours_data();
    void usesOnlyItsColours();
    void crossesMeetInTheMiddle();
    void crossLiesWithinItsExtent_data();
    void crossLiesWithinItsExtent();
    void buttonShowsLook_data();
    void buttonShowsLook();
    void wideButtonKeepsItsCorners();
};

void tst_skins::isReadableBeforeAnyApplication()
{
    QVERIFY(readableInFirstLineOfMain);
}

void tst_skins::listsBothPictures()
{
    QCOMPARE(QDir(":/images").entryList(QDir::NoFilter, QDir::Unsorted),
             QStringList({"img_close.png", "img_button.png"}));
    QVERIFY(QDir(":/").entryList().contains("images"));
}

void tst_skins::canBeUnregisteredAndRegistered()
{
    QCOMPARE(qCleanupResources_skins(), 1);
    QVERIFY(!QFile::exists(kClose));
    QVERIFY(QPixmap(kButton).isNull());
    QCOMPARE(qInitResources_skins(), 1);
    QVERIFY(QFile::exists(kClose));
    QVERIFY(!QPixmap(kButton).isNull());
}

void tst_skins::storesFile_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("close picture") << "img_close.png";
    QTest::newRow("button picture") << "img_button.png";
}

void tst_skins::storesFile()
{
    QFETCH(QString, name);

    const QString path = ":/images/" + name;
    const QResource resource(path);
    const QByteArray source = contentOf(kSourceImages.filePath(name));
    QVERIFY(!source.isEmpty());
    QVERIFY(resource.isValid());
    // A compressed entry would report the size of its compressed data.
    QCOMPARE(resource.size(), qint64(source.size()));
    QCOMPARE(contentOf(path), source);
    // Only the resource format that carries the files' times has one.
    QVERIFY(resource.lastModified().isValid());
}

void tst_skins::isAPng_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QStringList>("described");

    QTest::newRow("close picture")
        << kClose << QSize(60, 30) << QStringList{"gAMA", "pHYs", "sRGB"};
    QTest::newRow("button picture") << kButton << QSize(320, 40) << QStringList{"sRGB"};
}

void tst_skins::isAPng()
{
    QFETCH(QString, path);
    QFETCH(QSize, size);
    QFETCH(QStringList, described);

    const QByteArray png = contentOf(path);
    QStringList chunks = chunksOf(png);
    QVERIFY(chunks.size() > 2);
    QCOMPARE(chunks.takeFirst(), "IHDR");
    QCOMPARE(chunks.takeLast(), "IEND");
    chunks.removeAll("IDAT");
    chunks.sort();
    QCOMPARE(chunks, described);

    constexpr int kHeader = 16;
    QCOMPARE(qFromBigEndian<qint32>(png.constData() + kHeader), size.width());
    QCOMPARE(qFromBigEndian<qint32>(png.constData() + kHeader + 4), size.height());
    QCOMPARE(int(png.at(kHeader + 8)), 8); // bits per channel
    QCOMPARE(int(png.at(kHeader + 9)), 6); // red, green, blue and alpha
    QCOMPARE(int(png.at(kHeader + 12)), 0); // not interlaced
}

void tst_skins::loads_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QSize>("size");

    QTest::newRow("close picture") << kClose << QSize(60, 30);
    QTest::newRow("button picture") << kButton << QSize(320, 40);
    QTest::newRow("picture that is not there") << ":/images/img_other.png" << QSize(0, 0);
}

void tst_skins::loads()
{
    QFETCH(QString, path);
    QFETCH(QSize, size);

    const QPixmap picture(path);
    QCOMPARE(picture.size(), size);
    QCOMPARE(picture.hasAlphaChannel(), !size.isEmpty());
}

void tst_skins::hasPixel_data()
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

void tst_skins::hasPixel()
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

void tst_skins::usesOnlyItsColours_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QRect>("frame");
    QTest::addColumn<QRgb>("colour");

    QTest::newRow("close, normal") << kClose << QRect(0, 0, 30, 30) << QRgb(0xffffffff);
    QTest::newRow("button, normal") << kButton << QRect(0, 0, 160, 40) << kNormal;
    QTest::newRow("button, hover") << kButton << QRect(160, 0, 160, 40) << kHover;
}

/// Only the transparency carries the smoothing, so nothing shines through at an edge.
void tst_skins::usesOnlyItsColours()
{
    QFETCH(QString, path);
    QFETCH(QRect, frame);
    QFETCH(QRgb, colour);

    const QImage picture = QImage(path).copy(frame);
    int visible = 0;
    int smoothed = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            if (qAlpha(pixel) == 0) {
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

void tst_skins::crossesMeetInTheMiddle()
{
    constexpr int kNearlyOpaque = 224;
    const QImage picture(kClose);
    // The middle of a frame lies between four pixels.
    for (const QPoint &middle : {QPoint(14, 14), QPoint(15, 14), QPoint(14, 15), QPoint(15, 15)}) {
        QCOMPARE(picture.pixel(middle) | 0xff000000, 0xffffffff);
        QVERIFY(qAlpha(picture.pixel(middle)) >= kNearlyOpaque);
        QCOMPARE(picture.pixel(middle + QPoint(30, 0)), 0xffffffff);
    }
}

void tst_skins::crossLiesWithinItsExtent_data()
{
    QTest::addColumn<int>("frameLeft");
    QTest::addColumn<QRgb>("ground");

    QTest::newRow("normal, on nothing") << 0 << kTransparent;
    QTest::newRow("hover, on the disc") << 30 << kDisc;
}

void tst_skins::crossLiesWithinItsExtent()
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
    QVERIFY(QRect(8, 8, 14, 14).contains(extent));
    QVERIFY(extent.contains(QRect(10, 10, 10, 10)));
}

void tst_skins::buttonShowsLook_data()
{
    QTest::addColumn<QVector<Action>>("actions");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("rightFrame");

    using Actions = QVector<Action>;
    QTest::newRow("normal") << Actions{} << true << false;
    QTest::newRow("hover") << Actions{Enter} << true << true;
    QTest::newRow("pressed") << Actions{Enter, LeftPress} << true << false;
    QTest::newRow("released") << Actions{LeftPress, LeftRelease} << true << true;
    QTest::newRow("disabled") << Actions{} << false << true;
}

void tst_skins::buttonShowsLook()
{
    QFETCH(QVector<Action>, actions);
    QFETCH(bool, enabled);
    QFETCH(bool, rightFrame);

    Open<MButton> button(nullptr);
    button.resize(30, 30);
    button.setPixmap(kClose, 0);
    for (const Action action : actions) {
        call(button, action);
    }
    button.setEnabled(enabled);
    QCOMPARE(WidgetPicture::of(button),
             WidgetPicture::with(button.size(), QPoint(0, 0),
                                 QImage(kClose).copy(rightFrame ? 30 : 0, 0, 30, 30)));
}

void tst_skins::wideButtonKeepsItsCorners()
{
    constexpr int kBorder = 18;
    MButton button(nullptr);
    button.resize(300, 40);
    button.setPixmap(kButton, kBorder);
    const QImage seen = WidgetPicture::of(button);
    const QImage unscaled
        = WidgetPicture::with(QSize(160, 40), QPoint(0, 0), QImage(kButton).copy(0, 0, 160, 40));

    const QSize corner(kBorder, kBorder);
    QCOMPARE(seen.copy({{0, 0}, corner}), unscaled.copy({{0, 0}, corner}));
    QCOMPARE(seen.copy({{282, 0}, corner}), unscaled.copy({{142, 0}, corner}));
    QCOMPARE(seen.copy({{0, 22}, corner}), unscaled.copy({{0, 22}, corner}));
    QCOMPARE(seen.copy({{282, 22}, corner}), unscaled.copy({{142, 22}, corner}));
    QCOMPARE(seen.pixel(150, 0), kNormal);
    QCOMPARE(seen.pixel(150, 39), kNormal);
}

int main(int argc, char *argv[])
{
    readableInFirstLineOfMain = QFile::exists(kClose) && QFile::exists(kButton);
    const QApplication application(argc, argv);
    tst_skins test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_skins.moc"

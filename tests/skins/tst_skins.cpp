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

// The functions of the resource collection, which no header declares.
int qInitResources_skins();
int qCleanupResources_skins();

namespace {

const QString kClose = ":/images/img_close.png";
const QString kButton = ":/images/img_button.png";
const QDir kSourceImages(SKINS_SOURCE_DIR "/images");
constexpr QRgb kNormal = 0xff17212b;

/// Whether the bundle is readable at the start of main, before an application object exists.
bool readableInFirstLineOfMain = false;

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The types of a PNG's chunks, in the order of the file.
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
    // Only the resource format with file times has a valid one.
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
    QTest::newRow("missing picture") << ":/images/img_other.png" << QSize(0, 0);
}

void tst_skins::loads()
{
    QFETCH(QString, path);
    QFETCH(QSize, size);

    const QPixmap picture(path);
    QCOMPARE(picture.size(), size);
    QCOMPARE(picture.hasAlphaChannel(), !size.isEmpty());
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

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/support/StripedPicture.h"
#include "tests/support/WarningCatcher.h"
#include "tests/support/WidgetPicture.h"
#include "widgets/PixmapStrip.h"
#include "widgets/PointerState.h"
#include "widgets/TitledFace.h"

#include <QPainter>
#include <QTemporaryDir>
#include <QtTest>

#include <limits>

/// What the buttons are made of: PixmapStrip, PointerState and what no button shows of TitledFace.
class tst_ButtonParts : public QObject
{
    Q_OBJECT

private slots:
    void cutsFrames_data();
    void cutsFrames();
    void equalsSeparatelyDividedStarts();
    void doesNotOverflow();
    void narrowStripGivesTheWholeImage_data();
    void narrowStripGivesTheWholeImage();
    void fixedNumberOfFrames();
    void loadsNothing_data();
    void loadsNothing();
    void draws_data();
    void draws();
    void drawsCentred_data();
    void drawsCentred();
    void nullPixmapDrawsNothing();
    void pointerState_data();
    void pointerState();
    void titledFace();

private:
    QTemporaryDir m_folder;
};

void tst_ButtonParts::cutsFrames_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("frameWidth");
    QTest::addColumn<QVector<int>>("starts");

    using Starts = QVector<int>;
    QTest::newRow("two frames of 100") << 100 << 50 << Starts{0, 50};
    QTest::newRow("two frames of 101") << 101 << 50 << Starts{0, 50};
    QTest::newRow("three frames of 300") << 300 << 100 << Starts{0, 100, 200};
    QTest::newRow("three frames of 301") << 301 << 100 << Starts{0, 100, 200};
    QTest::newRow("three frames of 100") << 100 << 33 << Starts{0, 33, 66};
    QTest::newRow("four frames of 160") << 160 << 40 << Starts{0, 40, 80, 120};
    QTest::newRow("four frames of 102") << 102 << 25 << Starts{0, 25, 51, 76};
    QTest::newRow("four frames of 10") << 10 << 2 << Starts{0, 2, 5, 7};
    QTest::newRow("four frames of 163") << 163 << 40 << Starts{0, 40, 81, 122};
    QTest::newRow("four frames of 4") << 4 << 1 << Starts{0, 1, 2, 3};
    QTest::newRow("one frame") << 24 << 24 << Starts{0};
}

void tst_ButtonParts::cutsFrames()
{
    QFETCH(int, width);
    QFETCH(int, frameWidth);
    QFETCH(QVector<int>, starts);

    const QSize size(width, 12);
    const QList<QPixmap> frames
        = PixmapStrip::load(StripedPicture::save(m_folder, size), int(starts.size()));
    QCOMPARE(frames.size(), starts.size());
    for (int i = 0; i < frames.size(); ++i) {
        const QImage expected = StripedPicture::columns(size, starts.at(i), frameWidth);
        QCOMPARE(frames.at(i).toImage().convertToFormat(expected.format()), expected);
        QCOMPARE(PixmapStrip::frameRect(size, i, int(frames.size())),
                 QRect(starts.at(i), 0, frameWidth, size.height()));
    }
}

/// The four-frame buttons halve and quarter the width instead of multiplying a frame's width.
void tst_ButtonParts::equalsSeparatelyDividedStarts()
{
    for (int width = 0; width <= 1024; ++width) {
        const QSize size(width, 8);
        QCOMPARE(PixmapStrip::frameRect(size, 1, 2).x(), width / 2);
        QCOMPARE(PixmapStrip::frameRect(size, 1, 4).x(), width / 4);
        QCOMPARE(PixmapStrip::frameRect(size, 2, 4).x(), width / 2);
        QCOMPARE(PixmapStrip::frameRect(size, 3, 4).x(), 3 * width / 4);
        QCOMPARE(PixmapStrip::frameRect(size, 3, 4).width(), width / 4);
    }
}

void tst_ButtonParts::doesNotOverflow()
{
    constexpr int kWidest = std::numeric_limits<int>::max();
    QCOMPARE(PixmapStrip::frameRect(QSize(kWidest, 1), 3, 4).x(), 1610612735);
}

void tst_ButtonParts::narrowStripGivesTheWholeImage_data()
{
    QTest::addColumn<int>("width");

    QTest::newRow("3 wide") << 3;
    QTest::newRow("1 wide") << 1;
}

/// The rectangle of each frame is empty, and Qt copies the whole image then.
void tst_ButtonParts::narrowStripGivesTheWholeImage()
{
    QFETCH(int, width);

    const QSize size(width, 12);
    const QList<QPixmap> frames = PixmapStrip::load(StripedPicture::save(m_folder, size), 4);
    QCOMPARE(frames.size(), 4);
    for (const QPixmap &frame : frames) {
        const QImage expected = StripedPicture::paint(size);
        QCOMPARE(frame.toImage().convertToFormat(expected.format()), expected);
    }
}

void tst_ButtonParts::fixedNumberOfFrames()
{
    const QString path = StripedPicture::save(m_folder, QSize(102, 12));
    const QList<QPixmap> expected = PixmapStrip::load(path, 4);
    const std::array<QPixmap, 4> frames = PixmapStrip::load<4>(path);
    for (int i = 0; i < 4; ++i) {
        QCOMPARE(frames.at(static_cast<std::size_t>(i)).toImage(), expected.at(i).toImage());
    }
}

void tst_ButtonParts::loadsNothing_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("frames");

    const QString strip = StripedPicture::save(m_folder, QSize(100, 10));
    QTest::newRow("no frames asked for") << strip << 0 << 0;
    QTest::newRow("negative count") << strip << -3 << 0;
    QTest::newRow("missing file") << m_folder.filePath("missing.png") << 3 << 3;
    QTest::newRow("folder") << m_folder.path() << 2 << 2;
    QTest::newRow("missing resource") << ":/no/such.png" << 4 << 4;
    QTest::newRow("empty path") << "" << 1 << 1;
}

void tst_ButtonParts::loadsNothing()
{
    QFETCH(QString, path);
    QFETCH(int, count);
    QFETCH(int, frames);

    WarningCatcher warnings;
    const QList<QPixmap> loaded = PixmapStrip::load(path, count);
    QCOMPARE(loaded.size(), frames);
    for (const QPixmap &frame : loaded) {
        QVERIFY(frame.isNull());
    }
    QCOMPARE(warnings.take(), QStringList());
}

void tst_ButtonParts::draws_data()
{
    QTest::addColumn<QPoint>("topLeft");

    QTest::newRow("at the origin") << QPoint(0, 0);
    QTest::newRow("inside") << QPoint(7, 3);
    QTest::newRow("cut off at the left and top") << QPoint(-4, -5);
    QTest::newRow("cut off at the right and bottom") << QPoint(30, 18);
}

void tst_ButtonParts::draws()
{
    QFETCH(QPoint, topLeft);

    const QSize size(40, 25);
    const QImage picture = StripedPicture::paint(QSize(20, 15));
    QImage canvas = WidgetPicture::canvas(size);
    QPainter painter(&canvas);
    PixmapStrip::draw(painter, topLeft, QPixmap::fromImage(picture));
    painter.end();

    QCOMPARE(canvas, WidgetPicture::with(size, topLeft, picture));
}

void tst_ButtonParts::drawsCentred_data()
{
    QTest::addColumn<QSize>("frame");
    QTest::addColumn<QSize>("area");
    QTest::addColumn<QPoint>("topLeft");

    QTest::newRow("30 x 30 in 120 x 40") << QSize(30, 30) << QSize(120, 40) << QPoint(45, 5);
    QTest::newRow("odd rest at the right") << QSize(20, 10) << QSize(31, 13) << QPoint(5, 1);
    QTest::newRow("100 x 30 in 120 x 40") << QSize(100, 30) << QSize(120, 40) << QPoint(10, 5);
    QTest::newRow("larger, even") << QSize(100, 30) << QSize(90, 26) << QPoint(-5, -2);
    QTest::newRow("larger, odd rest rounds towards zero")
        << QSize(100, 30) << QSize(89, 25) << QPoint(-5, -2);
    QTest::newRow("same size") << QSize(50, 20) << QSize(50, 20) << QPoint(0, 0);
}

void tst_ButtonParts::drawsCentred()
{
    QFETCH(QSize, frame);
    QFETCH(QSize, area);
    QFETCH(QPoint, topLeft);

    const QImage picture = StripedPicture::paint(frame);
    QImage canvas = WidgetPicture::canvas(area);
    QPainter painter(&canvas);
    PixmapStrip::drawCentred(painter, area, QPixmap::fromImage(picture));
    painter.end();

    QCOMPARE(canvas, WidgetPicture::with(area, topLeft, picture));
}

void tst_ButtonParts::nullPixmapDrawsNothing()
{
    WarningCatcher warnings;
    const QSize size(40, 25);
    QImage canvas = WidgetPicture::canvas(size);
    QPainter painter(&canvas);
    PixmapStrip::draw(painter, QPoint(3, 4), QPixmap());
    PixmapStrip::drawCentred(painter, size, QPixmap());
    painter.end();

    QCOMPARE(canvas, WidgetPicture::canvas(size));
    QCOMPARE(warnings.take(), QStringList());
}

void tst_ButtonParts::pointerState_data()
{
    QTest::addColumn<QString>("events");
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("hovered");

    QTest::newRow("none") << "" << 0 << false;
    QTest::newRow("enter") << "e" << 1 << true;
    QTest::newRow("leave") << "el" << 0 << false;
    QTest::newRow("press") << "ep" << 2 << true;
    QTest::newRow("release is hover") << "epr" << 1 << true;
    QTest::newRow("leave while pressed") << "epl" << 0 << false;
    QTest::newRow("release after the leave is still hover") << "eplr" << 1 << false;
    QTest::newRow("press without an enter") << "p" << 2 << false;
}

void tst_ButtonParts::pointerState()
{
    QFETCH(QString, events);
    QFETCH(int, state);
    QFETCH(bool, hovered);

    const QHash<QChar, void (PointerState::*)()> calls{{'e', &PointerState::enter},
                                                       {'l', &PointerState::leave},
                                                       {'p', &PointerState::press},
                                                       {'r', &PointerState::release}};
    PointerState pointer;
    for (const QChar event : events) {
        (pointer.*calls.value(event))();
    }
    QCOMPARE(pointer.state, state);
    QCOMPARE(pointer.hovered, hovered);
}

void tst_ButtonParts::titledFace()
{
    TitledFace face;
    face.addBackgrounds(QString(), -3);
    face.addIcons(QString(), 2, QRect(1, 2, 3, 4));
    QCOMPARE(face.backgroundCount, -3);
    QCOMPARE(face.iconCount, 2);
    QCOMPARE(face.spareRect, QRect());
    QCOMPARE(face.textColors,
             (QList<QColor>{QColor(55, 55, 55), QColor(255, 255, 255), QColor(255, 255, 255),
                            QColor(50, 50, 50)}));
}

QTEST_MAIN(tst_ButtonParts)
#include "tst_ButtonParts.moc"

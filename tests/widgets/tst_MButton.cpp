// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/MButton.h"

#include "tests/support/PointerEvents.h"
#include "tests/support/RepaintCounter.h"
#include "tests/support/StripedPicture.h"
#include "tests/support/WarningCatcher.h"
#include "tests/support/WidgetPicture.h"
#include "widgets/NinePatchPainter.h"

#include <QPainter>
#include <QTemporaryDir>
#include <QtTest>

using namespace PointerEvents;

namespace {

constexpr QSize kStrip(100, 30);
constexpr QSize kFrame(50, 30);
const QColor kWhite(255, 255, 255);
const QColor kRed(220, 30, 20);
const QColor kGreen(30, 220, 20);
const QColor kBlue(20, 30, 220);
constexpr QRgb kBlack = 0xff000000;

/// The left frame is the normal and the pressed look, the right one the hover and disabled look.
constexpr int kLeftFrame = 0;
constexpr int kRightFrame = 50;

QImage frame(int x)
{
    return StripedPicture::columns(kStrip, x, kFrame.width());
}

/// What a button of \a size shows if it draws \a picture with a border of \a border pixels.
QImage stretched(const QSize &size, const QImage &picture, int border)
{
    QImage canvas = WidgetPicture::canvas(size);
    QPainter painter(&canvas);
    const NinePatchPainter patches(QPixmap::fromImage(picture), border, border, border, border,
                                   true, true);
    patches.paint(&painter, QRect(QPoint(0, 0), size), border, border, border, border);
    painter.end();
    return canvas;
}

} // namespace

class tst_MButton : public QObject
{
    Q_OBJECT

private slots:
    void drawsFrame_data();
    void drawsFrame();
    void ignoresTheLastColumnOfAnOddStrip();
    void drawsUnscaledWithoutABorder_data();
    void drawsUnscaledWithoutABorder();
    void stretchesWithABorder_data();
    void stretchesWithABorder();
    void borderCanBeChanged_data();
    void borderCanBeChanged();
    void paintsOnlyTheTextOfAnUnreadablePicture();
    void settersDoNotRepaint();
    void setPixmapKeepsTheSize();
    void followsTheCrossingPointer();

private:
    QTemporaryDir m_folder;
};

void tst_MButton::drawsFrame_data()
{
    QTest::addColumn<QVector<Action>>("actions");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<int>("shown");

    using Actions = QVector<Action>;
    QTest::newRow("normal") << Actions{} << true << kLeftFrame;
    QTest::newRow("hover") << Actions{Enter} << true << kRightFrame;
    QTest::newRow("pressed looks like normal") << Actions{Enter, LeftPress} << true << kLeftFrame;
    QTest::newRow("released is hover") << Actions{LeftPress, LeftRelease} << true << kRightFrame;
    QTest::newRow("left is normal") << Actions{Enter, Leave} << true << kLeftFrame;
    QTest::newRow("disabled looks like hover") << Actions{} << false << kRightFrame;
    QTest::newRow("disabled while hovered") << Actions{Enter} << false << kRightFrame;
    QTest::newRow("disabled while pressed") << Actions{LeftPress} << false << kRightFrame;
}

void tst_MButton::drawsFrame()
{
    QFETCH(QVector<Action>, actions);
    QFETCH(bool, enabled);
    QFETCH(int, shown);

    for (const int border : {0, 4}) {
        Open<MButton> button(nullptr);
        button.resize(kFrame);
        button.setPixmap(StripedPicture::save(m_folder, kStrip), border);
        for (const Action action : actions) {
            call(button, action);
        }
        button.setEnabled(enabled);

        const QImage expected = border > 0
            ? stretched(kFrame, frame(shown), border)
            : WidgetPicture::with(kFrame, QPoint(0, 0), frame(shown));
        QCOMPARE(WidgetPicture::of(button), expected);
    }
}

void tst_MButton::ignoresTheLastColumnOfAnOddStrip()
{
    constexpr QSize kOdd(101, 30);
    Open<MButton> button(nullptr);
    button.resize(60, 30);
    button.setPixmap(StripedPicture::save(m_folder, kOdd), 0);

    QCOMPARE(
        WidgetPicture::of(button),
        WidgetPicture::with(button.size(), QPoint(0, 0), StripedPicture::columns(kOdd, 0, 50)));
    call(button, Enter);
    QCOMPARE(
        WidgetPicture::of(button),
        WidgetPicture::with(button.size(), QPoint(0, 0), StripedPicture::columns(kOdd, 50, 50)));
}

void tst_MButton::drawsUnscaledWithoutABorder_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("border");

    QTest::newRow("button as large as the frame") << kFrame << 0;
    QTest::newRow("larger button leaves the rest unpainted") << QSize(200, 40) << 0;
    QTest::newRow("smaller button clips the frame") << QSize(20, 12) << 0;
    QTest::newRow("negative border") << QSize(200, 40) << -4;
}

void tst_MButton::drawsUnscaledWithoutABorder()
{
    QFETCH(QSize, size);
    QFETCH(int, border);

    MButton button(nullptr);
    button.resize(size);
    button.setPixmap(StripedPicture::save(m_folder, kStrip), border);

    QCOMPARE(WidgetPicture::of(button), WidgetPicture::with(size, QPoint(0, 0), frame(kLeftFrame)));
    button.setEnabled(false);
    QCOMPARE(WidgetPicture::of(button),
             WidgetPicture::with(size, QPoint(0, 0), frame(kRightFrame)));
}

void tst_MButton::stretchesWithABorder_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("border");

    QTest::newRow("border 4 on 200 x 40") << QSize(200, 40) << 4;
    QTest::newRow("border 1") << QSize(200, 40) << 1;
    QTest::newRow("smaller than the frame") << QSize(30, 20) << 4;
    QTest::newRow("smaller than the borders") << QSize(6, 6) << 4;
}

void tst_MButton::stretchesWithABorder()
{
    QFETCH(QSize, size);
    QFETCH(int, border);

    MButton button(nullptr);
    button.resize(size);
    button.setPixmap(StripedPicture::save(m_folder, kStrip), border);
    const QImage picture = WidgetPicture::of(button);

    QCOMPARE(picture, stretched(size, frame(kLeftFrame), border));
    const QRect centre = button.rect().adjusted(border, border, -border, -border);
    if (centre.isValid()) {
        QCOMPARE(picture.copy(centre), WidgetPicture::canvas(centre.size()));
    }
}

void tst_MButton::borderCanBeChanged_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("second");

    QTest::newRow("other border and picture") << 4 << 7;
    QTest::newRow("same border, other picture") << 4 << 4;
    QTest::newRow("no border after one") << 4 << 0;
    QTest::newRow("negative border after one") << 4 << -1;
    QTest::newRow("border after none") << 0 << 4;
}

void tst_MButton::borderCanBeChanged()
{
    QFETCH(int, first);
    QFETCH(int, second);

    constexpr QSize kSize(120, 40);
    Open<MButton> button(nullptr);
    button.resize(kSize);
    button.setPixmap(StripedPicture::save(m_folder, kStrip), first);
    button.setPixmap(StripedPicture::saveOther(m_folder, kStrip), second);
    const auto expected = [=](const QImage &picture) {
        return second > 0 ? stretched(kSize, picture, second)
                          : WidgetPicture::with(kSize, QPoint(0, 0), picture);
    };
    const QImage other = StripedPicture::paintOther(kStrip);
    const QRect left(QPoint(kLeftFrame, 0), kFrame);
    const QRect right(QPoint(kRightFrame, 0), kFrame);

    QCOMPARE(WidgetPicture::of(button), expected(other.copy(left)));
    call(button, Enter);
    QCOMPARE(WidgetPicture::of(button), expected(other.copy(right)));
    call(button, LeftPress);
    QCOMPARE(WidgetPicture::of(button), expected(other.copy(left)));
    button.setEnabled(false);
    QCOMPARE(WidgetPicture::of(button), expected(other.copy(right)));
}

void tst_MButton::paintsOnlyTheTextOfAnUnreadablePicture()
{
    for (const int border : {0, 4}) {
        WarningCatcher warnings;
        MButton button(nullptr);
        button.resize(100, 40);
        button.setPixmap(StripedPicture::save(m_folder, kStrip), border);
        button.setPixmap(m_folder.filePath("missing.png"), border);
        const QImage empty = WidgetPicture::canvas(button.size(), kBlack);

        QCOMPARE(WidgetPicture::of(button, kBlack), empty);
        button.setText("OK");
        QVERIFY(WidgetPicture::isWrittenIn(kWhite, empty, WidgetPicture::of(button, kBlack)));
        QCOMPARE(warnings.take(), QStringList());
    }
}

void tst_MButton::settersDoNotRepaint()
{
    MButton button(nullptr);
    button.resize(kFrame);
    RepaintCounter repaints(&button);

    button.setPixmap(StripedPicture::save(m_folder, kStrip), 4);
    QCOMPARE(repaints.take(), 0);
    button.setColor(kRed, kGreen, kBlue);
    QCOMPARE(repaints.take(), 0);
    button.update();
    QCOMPARE(repaints.take(), 1);
}

void tst_MButton::setPixmapKeepsTheSize()
{
    MButton button(nullptr);
    button.resize(77, 33);
    button.setPixmap(StripedPicture::save(m_folder, kStrip), 0);
    QCOMPARE(button.size(), QSize(77, 33));
}

void tst_MButton::followsTheCrossingPointer()
{
    MButton button(nullptr);
    button.resize(kFrame);
    button.setPixmap(StripedPicture::save(m_folder, kStrip), 0);

    cross(button, Enter);
    QCOMPARE(WidgetPicture::of(button),
             WidgetPicture::with(kFrame, QPoint(0, 0), frame(kRightFrame)));
    cross(button, Leave);
    QCOMPARE(WidgetPicture::of(button),
             WidgetPicture::with(kFrame, QPoint(0, 0), frame(kLeftFrame)));
}

QTEST_MAIN(tst_MButton)
#include "tst_MButton.moc"

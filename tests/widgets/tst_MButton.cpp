// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/MButton.h"

#include "tests/support/ButtonSignals.h"
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

Q_DECLARE_METATYPE(Qt::MouseButton)

namespace {

constexpr QSize kStrip(100, 30);
constexpr QSize kFrame(50, 30);
const QColor kWhite(255, 255, 255);
const QColor kGrey(128, 128, 128);
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
    void startsAsAPlainVisibleButton();
    void derivesFromQPushButton();
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

    void handler_data();
    void handler();
    void repaintsByItself();
    void showsThePressedLookBeforeItReportsThePress();
    void clicksOnce_data();
    void clicksOnce();
    void followsTheCrossingPointer();
    void keepsItsStateWhileDisabled();

    void text_data();
    void text();
    void textIsCentred();
    void textStaysOverThePicture();
    void emptyTextDrawsNothing();

private:
    QTemporaryDir m_folder;
};

void tst_MButton::startsAsAPlainVisibleButton()
{
    QWidget window;
    window.show();
    const MButton button(&window);

    QCOMPARE(button.cursor().shape(), Qt::PointingHandCursor);
    QCOMPARE(button.styleSheet(), "QPushButton {border:0px solid #000000; border-radius:0px;}");
    QVERIFY(button.isVisible());
    QVERIFY(MButton(nullptr).isVisible());
    QCOMPARE(button.parentWidget(), &window);
    QVERIFY(button.isEnabled());
    QVERIFY(button.text().isEmpty());
}

void tst_MButton::derivesFromQPushButton()
{
    const MButton button(nullptr);
    const QMetaObject *meta = button.metaObject();

    QCOMPARE(meta->className(), "MButton");
    QCOMPARE(meta->superClass(), &QPushButton::staticMetaObject);
    QCOMPARE(meta->methodCount(), meta->methodOffset());
    QCOMPARE(meta->propertyCount(), meta->propertyOffset());
}

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

void tst_MButton::handler_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("repaints");
    QTest::addColumn<QStringList>("emitted");

    const QStringList nothing;
    const QStringList press{"pressed"};
    const QStringList release{"released", "clicked(false)"};
    QTest::newRow("enter, enabled") << Enter << true << true << nothing;
    QTest::newRow("leave, enabled") << Leave << true << true << nothing;
    QTest::newRow("left press, enabled") << LeftPress << true << true << press;
    QTest::newRow("left release, enabled") << LeftRelease << true << true << release;
    QTest::newRow("right press, enabled") << RightPress << true << false << nothing;
    QTest::newRow("right release, enabled") << RightRelease << true << false << nothing;
    QTest::newRow("enter, disabled") << Enter << false << false << nothing;
    QTest::newRow("leave, disabled") << Leave << false << false << nothing;
    QTest::newRow("left press, disabled") << LeftPress << false << false << nothing;
    QTest::newRow("left release, disabled") << LeftRelease << false << false << nothing;
    QTest::newRow("right press, disabled") << RightPress << false << false << nothing;
    QTest::newRow("right release, disabled") << RightRelease << false << false << nothing;
}

void tst_MButton::handler()
{
    QFETCH(Action, action);
    QFETCH(bool, enabled);
    QFETCH(bool, repaints);
    QFETCH(QStringList, emitted);

    Open<MButton> button(nullptr);
    button.resize(kFrame);
    // A release clicks only a button that is down.
    if (action == LeftRelease || action == RightRelease) {
        call(button, LeftPress);
    }
    button.setEnabled(enabled);
    ButtonSignals buttonSignals(&button);
    RepaintCounter counter(&button);
    if (!enabled && (action == LeftRelease || action == RightRelease)) {
        button.setDown(true);
        counter.take();
    }

    call(button, action);
    QCOMPARE(buttonSignals.take(), emitted);
    QCOMPARE(counter.take() > 0, repaints);
}

void tst_MButton::repaintsByItself()
{
    Open<MButton> button(nullptr);
    RepaintCounter counter(&button);
    // Off the button's area the base class ignores a press, so this paint is the button's own.
    call(button, LeftPress, QPoint(-5, -5));
    QCOMPARE(counter.take(), 1);
}

void tst_MButton::showsThePressedLookBeforeItReportsThePress()
{
    Open<MButton> button(nullptr);
    button.resize(kFrame);
    button.setPixmap(StripedPicture::save(m_folder, kStrip), 0);
    QVector<QImage> seen;
    const auto look = [&] {
        seen << WidgetPicture::of(button);
    };
    connect(&button, &MButton::pressed, look);
    connect(&button, &MButton::released, look);

    call(button, Enter);
    call(button, LeftPress);
    call(button, LeftRelease);
    QCOMPARE(seen.size(), 2);
    QCOMPARE(seen.at(0), WidgetPicture::with(kFrame, QPoint(0, 0), frame(kLeftFrame)));
    QCOMPARE(seen.at(1), WidgetPicture::with(kFrame, QPoint(0, 0), frame(kRightFrame)));
}

void tst_MButton::clicksOnce_data()
{
    QTest::addColumn<Qt::MouseButton>("mouseButton");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<QStringList>("emitted");

    QTest::newRow("left") << Qt::LeftButton << true
                          << QStringList{"pressed", "released", "clicked(false)"};
    QTest::newRow("right") << Qt::RightButton << true << QStringList{};
    QTest::newRow("middle") << Qt::MiddleButton << true << QStringList{};
    QTest::newRow("left, disabled") << Qt::LeftButton << false << QStringList{};
}

void tst_MButton::clicksOnce()
{
    QFETCH(Qt::MouseButton, mouseButton);
    QFETCH(bool, enabled);
    QFETCH(QStringList, emitted);

    MButton button(nullptr);
    button.setEnabled(enabled);
    ButtonSignals buttonSignals(&button);
    QTest::mouseClick(&button, mouseButton);
    QCOMPARE(buttonSignals.take(), emitted);
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

void tst_MButton::keepsItsStateWhileDisabled()
{
    Open<MButton> button(nullptr);
    button.resize(kFrame);
    button.setPixmap(StripedPicture::save(m_folder, kStrip), 0);
    const QImage normal = WidgetPicture::with(kFrame, QPoint(0, 0), frame(kLeftFrame));
    const QImage hover = WidgetPicture::with(kFrame, QPoint(0, 0), frame(kRightFrame));

    call(button, Enter);
    button.setEnabled(false);
    for (const Action action : {Leave, LeftPress}) {
        call(button, action);
    }
    button.setEnabled(true);
    QCOMPARE(WidgetPicture::of(button), hover);

    call(button, Leave);
    button.setEnabled(false);
    for (const Action action : {LeftRelease, Enter}) {
        call(button, action);
    }
    button.setEnabled(true);
    QCOMPARE(WidgetPicture::of(button), normal);
}

void tst_MButton::text_data()
{
    QTest::addColumn<QVector<Action>>("actions");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("ownColours");
    QTest::addColumn<QColor>("ink");

    using Actions = QVector<Action>;
    const Actions hover{Enter};
    const Actions press{Enter, LeftPress};
    QTest::newRow("normal") << Actions{} << true << false << kWhite;
    QTest::newRow("hover") << hover << true << false << kWhite;
    QTest::newRow("pressed") << press << true << false << kWhite;
    QTest::newRow("disabled") << Actions{} << false << false << kGrey;
    QTest::newRow("normal, colours set") << Actions{} << true << true << kRed;
    QTest::newRow("hover, colours set") << hover << true << true << kGreen;
    QTest::newRow("pressed, colours set") << press << true << true << kBlue;
    QTest::newRow("disabled, colours set") << Actions{} << false << true << kGrey;
    QTest::newRow("disabled while hovered, colours set") << hover << false << true << kGrey;
    QTest::newRow("disabled while pressed, colours set") << press << false << true << kGrey;
}

void tst_MButton::text()
{
    QFETCH(QVector<Action>, actions);
    QFETCH(bool, enabled);
    QFETCH(bool, ownColours);
    QFETCH(QColor, ink);

    Open<MButton> button(nullptr);
    button.resize(120, 40);
    button.setText("HEH");
    if (ownColours) {
        button.setColor(kRed, kGreen, kBlue);
    }
    for (const Action action : actions) {
        call(button, action);
    }
    button.setEnabled(enabled);

    QVERIFY(WidgetPicture::isWrittenIn(ink, WidgetPicture::canvas(button.size(), kBlack),
                                       WidgetPicture::of(button, kBlack)));
}

void tst_MButton::textIsCentred()
{
    MButton button(nullptr);
    button.resize(160, 60);
    button.setText("HHHH");
    QFont large = button.font();
    large.setPixelSize(30);
    button.setFont(large);
    const QImage empty = WidgetPicture::canvas(button.size(), kBlack);
    const QRect region = WidgetPicture::changedRegion(empty, WidgetPicture::of(button, kBlack));

    const QFontMetrics metrics(large);
    const int left = (button.width() - metrics.horizontalAdvance(button.text())) / 2;
    const int baseline = (button.height() - metrics.height()) / 2 + metrics.ascent();
    const QRect expected = metrics.tightBoundingRect(button.text()).translated(left, baseline);
    // One pixel for smoothed edges.
    QVERIFY(expected.adjusted(-1, -1, 1, 1).contains(region));
    QVERIFY(region.contains(expected.adjusted(1, 1, -1, -1)));
}

void tst_MButton::textStaysOverThePicture()
{
    MButton button(nullptr);
    button.resize(kFrame);
    button.setPixmap(StripedPicture::save(m_folder, kStrip), 0);
    const QImage bare = WidgetPicture::of(button);

    button.setText("HEH");
    QVERIFY(WidgetPicture::isWrittenIn(kWhite, bare, WidgetPicture::of(button)));
}

void tst_MButton::emptyTextDrawsNothing()
{
    MButton button(nullptr);
    button.resize(100, 40);
    QCOMPARE(WidgetPicture::of(button), WidgetPicture::canvas(button.size()));
    button.setText("HEH");
    QVERIFY(WidgetPicture::of(button) != WidgetPicture::canvas(button.size()));
    button.setText("");
    QCOMPARE(WidgetPicture::of(button), WidgetPicture::canvas(button.size()));
}

QTEST_MAIN(tst_MButton)
#include "tst_MButton.moc"

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/tabButton.h"

#include "tests/support/ButtonSignals.h"
#include "tests/support/PointerEvents.h"
#include "tests/support/RepaintCounter.h"
#include "tests/support/StripedPicture.h"
#include "tests/support/WidgetPicture.h"
#include "tests/widgets/FourFrameStrips.h"

#include <QPainter>
#include <QTemporaryDir>
#include <QtTest>

using namespace PointerEvents;

namespace {

constexpr QSize kStrip(120, 30);
constexpr QSize kFrame(30, 30);
constexpr QRgb kWhite = 0xffffffff;
const QColor kDarkGrey(51, 51, 51);

QImage frame(int index)
{
    return StripedPicture::columns(kStrip, index * kFrame.width(), kFrame.width());
}

QImage shows(int index)
{
    return WidgetPicture::with(kFrame, QPoint(0, 0), frame(index));
}

} // namespace

class tst_tabButton : public QObject
{
    Q_OBJECT

private slots:
    void cutsTheStrip_data();
    void cutsTheStrip();
    void drawsTheFrameInTheMiddle_data();
    void drawsTheFrameInTheMiddle();
    void hasNoDisabledLook();
    void selectedShowsThePressedFrame_data();
    void selectedShowsThePressedFrame();
    void clickingDoesNotSelect();
    void settersRepaint();
    void settersThatDoNotRepaint();
    void unreadablePictureLeavesTheCaption();

    void startsWithoutCaption();
    void captionIsDarkGrey_data();
    void captionIsDarkGrey();
    void captionStandsInItsPlace_data();
    void captionStandsInItsPlace();
    void textAndIconAreIgnored();

private:
    QTemporaryDir m_folder;
};

void tst_tabButton::cutsTheStrip_data()
{
    FourFrameStrips::addRows();
}

void tst_tabButton::cutsTheStrip()
{
    QFETCH(QSize, strip);
    QFETCH(QVector<int>, starts);
    QFETCH(int, width);

    Open<tabButton> button(nullptr);
    button.resize(width, strip.height());
    button.setPixmap(StripedPicture::save(m_folder, strip));
    const auto expected = [&](int index) {
        return WidgetPicture::with(button.size(), QPoint(0, 0),
                                   StripedPicture::columns(strip, starts.at(index), width));
    };

    QCOMPARE(WidgetPicture::of(button), expected(0));
    call(button, Enter);
    QCOMPARE(WidgetPicture::of(button), expected(1));
    call(button, LeftPress);
    QCOMPARE(WidgetPicture::of(button), expected(2));
}

void tst_tabButton::drawsTheFrameInTheMiddle_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QSize>("frame");
    QTest::addColumn<QPoint>("topLeft");

    QTest::newRow("120 x 40 with 30 x 30") << QSize(120, 40) << QSize(30, 30) << QPoint(45, 5);
    QTest::newRow("31 wide with 20 wide") << QSize(31, 20) << QSize(20, 20) << QPoint(5, 0);
    QTest::newRow("frame larger is clipped evenly")
        << QSize(20, 10) << QSize(30, 30) << QPoint(-5, -10);
    QTest::newRow("odd excess rounds toward zero")
        << QSize(15, 15) << QSize(20, 20) << QPoint(-2, -2);
}

void tst_tabButton::drawsTheFrameInTheMiddle()
{
    QFETCH(QSize, size);
    QFETCH(QSize, frame);
    QFETCH(QPoint, topLeft);

    const QSize strip(frame.width() * 4, frame.height());
    tabButton button(nullptr);
    button.resize(size);
    button.setPixmap(StripedPicture::save(m_folder, strip));
    QCOMPARE(WidgetPicture::of(button),
             WidgetPicture::with(size, topLeft, StripedPicture::columns(strip, 0, frame.width())));
}

void tst_tabButton::hasNoDisabledLook()
{
    tabButton button(nullptr);
    button.resize(kFrame);
    button.setPixmap(StripedPicture::save(m_folder, kStrip));
    button.setEnabled(false);
    QCOMPARE(WidgetPicture::of(button), shows(0));
    button.setTabCheck(true);
    QCOMPARE(WidgetPicture::of(button), shows(2));
}

void tst_tabButton::selectedShowsThePressedFrame_data()
{
    QTest::addColumn<QVector<Action>>("actions");
    QTest::addColumn<int>("unselected");

    using Actions = QVector<Action>;
    QTest::newRow("normal") << Actions{} << 0;
    QTest::newRow("hover") << Actions{Enter} << 1;
    QTest::newRow("pressed") << Actions{Enter, LeftPress} << 2;
    QTest::newRow("released") << Actions{Enter, LeftPress, LeftRelease} << 1;
    QTest::newRow("left") << Actions{Enter, LeftPress, LeftRelease, Leave} << 0;
}

void tst_tabButton::selectedShowsThePressedFrame()
{
    QFETCH(QVector<Action>, actions);
    QFETCH(int, unselected);

    Open<tabButton> button(nullptr);
    button.resize(kFrame);
    button.setPixmap(StripedPicture::save(m_folder, kStrip));
    button.setTabCheck(true);
    QCOMPARE(WidgetPicture::of(button), shows(2));
    for (const Action action : actions) {
        call(button, action);
        QCOMPARE(WidgetPicture::of(button), shows(2));
    }
    button.setTabCheck(false);
    QCOMPARE(WidgetPicture::of(button), shows(unselected));
}

void tst_tabButton::clickingDoesNotSelect()
{
    tabButton button(nullptr);
    QVERIFY(!button.isCheck());
    ButtonSignals buttonSignals(&button);
    QTest::mouseClick(&button, Qt::LeftButton);
    QCOMPARE(buttonSignals.take(), (QStringList{"pressed", "released", "clicked(false)"}));
    QVERIFY(!button.isCheck());

    button.setTabCheck(true);
    QVERIFY(button.isCheck());
    QVERIFY(!button.isChecked());
    QTest::mouseClick(&button, Qt::LeftButton);
    QVERIFY(button.isCheck());
}

void tst_tabButton::settersRepaint()
{
    tabButton button(nullptr);
    RepaintCounter repaints(&button);
    for (const bool check : {true, true, false, false}) {
        button.setTabCheck(check);
        QCOMPARE(repaints.take(), 1);
    }
    button.setTabText("HEH");
    QCOMPARE(repaints.take(), 1);
    QCOMPARE(button.tabText, "HEH");
}

void tst_tabButton::settersThatDoNotRepaint()
{
    tabButton button(nullptr);
    RepaintCounter repaints(&button);
    button.setPixmap(StripedPicture::save(m_folder, kStrip));
    QCOMPARE(repaints.take(), 0);
    button.tabText = "HEH";
    QCOMPARE(repaints.take(), 0);
}

void tst_tabButton::unreadablePictureLeavesTheCaption()
{
    tabButton button(nullptr);
    button.resize(90, 40);
    button.setPixmap(StripedPicture::save(m_folder, kStrip));
    button.setPixmap(m_folder.filePath("missing.png"));
    const QImage empty = WidgetPicture::canvas(button.size(), kWhite);
    QCOMPARE(WidgetPicture::of(button, kWhite), empty);
    button.tabText = "HEH";
    QVERIFY(WidgetPicture::isWrittenIn(kDarkGrey, empty, WidgetPicture::of(button, kWhite)));
}

void tst_tabButton::startsWithoutCaption()
{
    tabButton button(nullptr);
    button.resize(90, 40);
    QVERIFY(button.tabText.isEmpty());
    QCOMPARE(WidgetPicture::of(button), WidgetPicture::canvas(button.size()));
    button.tabText = "HEH";
    QVERIFY(WidgetPicture::of(button) != WidgetPicture::canvas(button.size()));
    button.setTabText(QString());
    QCOMPARE(WidgetPicture::of(button), WidgetPicture::canvas(button.size()));
}

void tst_tabButton::captionIsDarkGrey_data()
{
    QTest::addColumn<QVector<Action>>("actions");
    QTest::addColumn<bool>("selected");
    QTest::addColumn<bool>("enabled");

    using Actions = QVector<Action>;
    QTest::newRow("normal") << Actions{} << false << true;
    QTest::newRow("hover") << Actions{Enter} << false << true;
    QTest::newRow("pressed") << Actions{LeftPress} << false << true;
    QTest::newRow("selected") << Actions{} << true << true;
    QTest::newRow("disabled") << Actions{} << false << false;
}

void tst_tabButton::captionIsDarkGrey()
{
    QFETCH(QVector<Action>, actions);
    QFETCH(bool, selected);
    QFETCH(bool, enabled);

    Open<tabButton> button(nullptr);
    button.resize(90, 40);
    button.setPixmap(StripedPicture::save(m_folder, kStrip));
    button.setTabCheck(selected);
    for (const Action action : actions) {
        call(button, action);
    }
    button.setEnabled(enabled);
    const QImage bare = WidgetPicture::of(button, kWhite);
    button.setTabText("HEHEHEHEH");
    QVERIFY(WidgetPicture::isWrittenIn(kDarkGrey, bare, WidgetPicture::of(button, kWhite)));
}

void tst_tabButton::captionStandsInItsPlace_data()
{
    QTest::addColumn<int>("room");
    QTest::addColumn<int>("left");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("pixelSize");

    QTest::newRow("even room") << 20 << 10 << 34 << 11;
    QTest::newRow("odd room") << 21 << 10 << 34 << 11;
    QTest::newRow("wider than the button") << -20 << -10 << 34 << 11;
    QTest::newRow("wider by an odd number") << -21 << -10 << 34 << 11;
    QTest::newRow("high button") << 20 << 10 << 90 << 11;
    QTest::newRow("cut off in a low button") << 20 << 10 << 28 << 11;
    QTest::newRow("large font, centred by the application's") << 81 << 40 << 60 << 24;
    QTest::newRow("large font in a low button") << 81 << 40 << 20 << 30;
}

/// What the button's width leaves beside the caption lies on both sides of it.
void tst_tabButton::captionStandsInItsPlace()
{
    QFETCH(int, room);
    QFETCH(int, left);
    QFETCH(int, height);
    QFETCH(int, pixelSize);

    const QString caption("HEHEHE");
    tabButton button(nullptr);
    button.resize(QFontMetrics(QFont()).horizontalAdvance(caption) + room, height);
    button.setTabText(caption);
    QFont font = button.font();
    font.setPixelSize(pixelSize); // the same on the screen and on a picture
    button.setFont(font);
    const QImage empty = WidgetPicture::canvas(button.size(), kWhite);
    QImage expected = empty;
    QPainter painter(&expected);
    painter.setFont(font);
    painter.setPen(kDarkGrey);
    painter.drawText(QPointF(left, 32), caption);
    painter.end();

    QVERIFY(expected != empty);
    QCOMPARE(WidgetPicture::of(button, kWhite), expected);
}

void tst_tabButton::textAndIconAreIgnored()
{
    tabButton button(nullptr);
    button.resize(kFrame);
    button.setText("HEH");
    button.setIcon(QPixmap::fromImage(StripedPicture::paint(QSize(16, 16))));
    QCOMPARE(WidgetPicture::of(button), WidgetPicture::canvas(kFrame));
}

QTEST_MAIN(tst_tabButton)
#include "tst_tabButton.moc"

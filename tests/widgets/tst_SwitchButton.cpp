// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/SwitchButton.h"

#include "tests/support/ButtonSignals.h"
#include "tests/support/PointerEvents.h"
#include "tests/support/RepaintCounter.h"
#include "tests/support/StripedPicture.h"
#include "tests/support/WidgetPicture.h"
#include "tests/widgets/FourFrameStrips.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace PointerEvents;

namespace {

constexpr QSize kStrip(200, 30);
constexpr QSize kFrame(50, 30);

QImage picture(bool on, const QSize &size)
{
    return on ? StripedPicture::paint(size) : StripedPicture::paintOther(size);
}

QImage shows(bool on, int index)
{
    const QRect frame(QPoint(index * kFrame.width(), 0), kFrame);
    return WidgetPicture::with(kFrame, QPoint(0, 0), picture(on, kStrip).copy(frame));
}

} // namespace

class tst_SwitchButton : public QObject
{
    Q_OBJECT

private slots:
    void cutsTheStrips_data();
    void cutsTheStrips();
    void drawsUnscaledAtTheTopLeft_data();
    void drawsUnscaledAtTheTopLeft();
    void startsOff();
    void flipsOnThePress();
    void setCheckShowsTheOtherStripInTheSameState();
    void setCheckRepaints();
    void setPixmapDoesNotRepaint();
    void setPixmapReplaces();
    void rightPressDoesNotFlip();
    void flipsWithoutAClickWhenReleasedOutside();
    void keyboardDoesNotFlip();
    void leavesCheckableMachineryAlone();
    void unreadablePictureDrawsNothingForItsPosition();
    void textAndIconAreIgnored();
    void hasNoDisabledLook();

private:
    void dress(SwitchButton &button, const QSize &size = kStrip)
    {
        button.setPixmap(StripedPicture::save(m_folder, size),
                         StripedPicture::saveOther(m_folder, size));
    }

    QTemporaryDir m_folder;
};

void tst_SwitchButton::cutsTheStrips_data()
{
    FourFrameStrips::addRows();
}

void tst_SwitchButton::cutsTheStrips()
{
    QFETCH(QSize, strip);
    QFETCH(QVector<int>, starts);
    QFETCH(int, width);

    for (const bool on : {false, true}) {
        Open<SwitchButton> button(nullptr);
        button.resize(60, 40);
        dress(button, strip);
        const auto expected = [&](int index) {
            const QRect frame(starts.at(index), 0, width, strip.height());
            return WidgetPicture::with(button.size(), QPoint(0, 0), picture(on, strip).copy(frame));
        };

        button.setCheck(on);
        QCOMPARE(WidgetPicture::of(button), expected(0));
        call(button, Enter);
        QCOMPARE(WidgetPicture::of(button), expected(1));
        call(button, LeftPress);
        button.setCheck(on); // the press has flipped it
        QCOMPARE(WidgetPicture::of(button), expected(2));
    }
}

void tst_SwitchButton::drawsUnscaledAtTheTopLeft_data()
{
    QTest::addColumn<QSize>("size");

    QTest::newRow("as large as the frame") << kFrame;
    QTest::newRow("larger leaves the rest unpainted") << QSize(90, 50);
    QTest::newRow("smaller clips the frame") << QSize(20, 10);
}

void tst_SwitchButton::drawsUnscaledAtTheTopLeft()
{
    QFETCH(QSize, size);

    SwitchButton button(nullptr);
    button.resize(size);
    dress(button);
    const QRect frame(QPoint(0, 0), kFrame);
    QCOMPARE(WidgetPicture::of(button),
             WidgetPicture::with(size, QPoint(0, 0), picture(false, kStrip).copy(frame)));
}

void tst_SwitchButton::startsOff()
{
    SwitchButton button(nullptr);
    button.resize(kFrame);
    dress(button);
    QVERIFY(!button.isCheck());
    QCOMPARE(WidgetPicture::of(button), shows(false, 0));
}

void tst_SwitchButton::flipsOnThePress()
{
    SwitchButton button(nullptr);
    button.resize(kFrame);
    dress(button);

    QTest::mousePress(&button, Qt::LeftButton);
    QVERIFY(button.isCheck());
    QCOMPARE(WidgetPicture::of(button), shows(true, 2));
    QTest::mouseRelease(&button, Qt::LeftButton);
    QVERIFY(button.isCheck());
    QCOMPARE(WidgetPicture::of(button), shows(true, 1));
    cross(button, Leave);
    QCOMPARE(WidgetPicture::of(button), shows(true, 0));

    QTest::mousePress(&button, Qt::LeftButton);
    QVERIFY(!button.isCheck());
    QCOMPARE(WidgetPicture::of(button), shows(false, 2));
}

void tst_SwitchButton::setCheckShowsTheOtherStripInTheSameState()
{
    SwitchButton button(nullptr);
    button.resize(kFrame);
    dress(button);
    cross(button, Enter);
    button.setCheck(true);
    QVERIFY(button.isCheck());
    QCOMPARE(WidgetPicture::of(button), shows(true, 1));
    button.setCheck(false);
    QVERIFY(!button.isCheck());
    QCOMPARE(WidgetPicture::of(button), shows(false, 1));
}

void tst_SwitchButton::setCheckRepaints()
{
    SwitchButton button(nullptr);
    RepaintCounter repaints(&button);
    for (const bool check : {true, true, false, false}) {
        button.setCheck(check);
        button.setCheck(check);
        QCOMPARE(repaints.take(), 1); // asked for and not done on the spot: two calls, one paint
    }
}

void tst_SwitchButton::setPixmapDoesNotRepaint()
{
    SwitchButton button(nullptr);
    button.resize(77, 33);
    RepaintCounter repaints(&button);
    dress(button);
    QCOMPARE(repaints.take(), 0);
    QCOMPARE(button.size(), QSize(77, 33));
}

void tst_SwitchButton::setPixmapReplaces()
{
    SwitchButton button(nullptr);
    button.resize(kFrame);
    dress(button);
    button.setPixmap(StripedPicture::saveOther(m_folder, kStrip),
                     StripedPicture::save(m_folder, kStrip));
    QCOMPARE(WidgetPicture::of(button), shows(true, 0));
}

void tst_SwitchButton::rightPressDoesNotFlip()
{
    SwitchButton button(nullptr);
    button.resize(kFrame);
    dress(button);
    ButtonSignals buttonSignals(&button);
    QTest::mouseClick(&button, Qt::RightButton);
    QVERIFY(!button.isCheck());
    QCOMPARE(buttonSignals.take(), QStringList{});
    QCOMPARE(WidgetPicture::of(button), shows(false, 0));
}

void tst_SwitchButton::flipsWithoutAClickWhenReleasedOutside()
{
    SwitchButton button(nullptr);
    button.resize(kFrame);
    ButtonSignals buttonSignals(&button);
    QTest::mousePress(&button, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    QTest::mouseRelease(&button, Qt::LeftButton, Qt::NoModifier, QPoint(90, 5));
    QCOMPARE(buttonSignals.take(), (QStringList{"pressed"}));
    QVERIFY(button.isCheck());
}

/// A key and click() click through the base class, which knows nothing of the position.
void tst_SwitchButton::keyboardDoesNotFlip()
{
    SwitchButton button(nullptr);
    button.resize(kFrame);
    dress(button);
    ButtonSignals buttonSignals(&button);
    for (const bool on : {false, true}) {
        button.setCheck(on);
        QTest::keyClick(&button, Qt::Key_Space);
        QCOMPARE(buttonSignals.take(), (QStringList{"pressed", "released", "clicked(false)"}));
        QCOMPARE(button.isCheck(), on);
        button.click();
        QCOMPARE(buttonSignals.take(), (QStringList{"pressed", "released", "clicked(false)"}));
        QCOMPARE(button.isCheck(), on);
        QCOMPARE(WidgetPicture::of(button), shows(on, 0));
    }
}

void tst_SwitchButton::leavesCheckableMachineryAlone()
{
    SwitchButton button(nullptr);
    QTest::mouseClick(&button, Qt::LeftButton);
    QVERIFY(button.isCheck());
    QVERIFY(!button.isCheckable());
    QVERIFY(!button.isChecked());
}

void tst_SwitchButton::unreadablePictureDrawsNothingForItsPosition()
{
    const QString strip = StripedPicture::save(m_folder, kStrip);
    const QString missing = m_folder.filePath("missing.png");
    SwitchButton button(nullptr);
    button.resize(kFrame);

    button.setPixmap(strip, missing);
    QCOMPARE(WidgetPicture::of(button), WidgetPicture::canvas(kFrame));
    button.setCheck(true);
    QCOMPARE(WidgetPicture::of(button), shows(true, 0));
    button.setPixmap(missing, strip);
    QCOMPARE(WidgetPicture::of(button), WidgetPicture::canvas(kFrame));
}

void tst_SwitchButton::textAndIconAreIgnored()
{
    SwitchButton button(nullptr);
    button.resize(kFrame);
    button.setText("HEH");
    button.setIcon(QPixmap::fromImage(StripedPicture::paint(QSize(16, 16))));
    QCOMPARE(WidgetPicture::of(button), WidgetPicture::canvas(kFrame));
}

void tst_SwitchButton::hasNoDisabledLook()
{
    SwitchButton button(nullptr);
    button.resize(kFrame);
    dress(button);
    button.setEnabled(false);
    QCOMPARE(WidgetPicture::of(button), shows(false, 0));
}

QTEST_MAIN(tst_SwitchButton)
#include "tst_SwitchButton.moc"

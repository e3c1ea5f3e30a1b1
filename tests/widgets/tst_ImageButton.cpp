// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/ImageButton.h"

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

constexpr QSize kStrip(160, 40);
constexpr QSize kFrame(40, 40);

QImage shows(const QSize &size, const QSize &strip, const QRect &frame)
{
    return WidgetPicture::with(size, QPoint(0, 0), StripedPicture::paint(strip).copy(frame));
}

QImage frame(int index)
{
    return shows(kFrame, kStrip, QRect(QPoint(index * kFrame.width(), 0), kFrame));
}

} // namespace

class tst_ImageButton : public QObject
{
    Q_OBJECT

private slots:
    void cutsTheStrip_data();
    void cutsTheStrip();
    void drawsUnscaledAtTheTopLeft_data();
    void drawsUnscaledAtTheTopLeft();
    void drawsTheFourthFrameWhileDisabled_data();
    void drawsTheFourthFrameWhileDisabled();
    void drawsNothingElse();
    void unreadablePictureDrawsNothing();
    void setPixmapNeitherRepaintsNorResizes();
    void clicksWhereverTheReleaseIs();
    void disabledIgnoresTheMouse();
    void mouseNeitherPressesDownNorToggles();
    void spaceKeyClicksWithoutAPressedLook();

private:
    QTemporaryDir m_folder;
};

void tst_ImageButton::cutsTheStrip_data()
{
    FourFrameStrips::addRows();
}

void tst_ImageButton::cutsTheStrip()
{
    QFETCH(QSize, strip);
    QFETCH(QVector<int>, starts);
    QFETCH(int, width);

    Open<ImageButton> button(nullptr);
    button.resize(50, 50);
    button.setPixmap(StripedPicture::save(m_folder, strip));
    const auto expected = [&](int index) {
        return shows(button.size(), strip, QRect(starts.at(index), 0, width, strip.height()));
    };

    QCOMPARE(WidgetPicture::of(button), expected(0));
    call(button, Enter);
    QCOMPARE(WidgetPicture::of(button), expected(1));
    call(button, LeftPress);
    QCOMPARE(WidgetPicture::of(button), expected(2));
    button.setEnabled(false);
    QCOMPARE(WidgetPicture::of(button), expected(3));
}

void tst_ImageButton::drawsUnscaledAtTheTopLeft_data()
{
    QTest::addColumn<QSize>("size");

    QTest::newRow("as large as the frame") << kFrame;
    QTest::newRow("larger leaves the rest unpainted") << QSize(100, 60);
    QTest::newRow("smaller clips the frame") << QSize(17, 9);
}

void tst_ImageButton::drawsUnscaledAtTheTopLeft()
{
    QFETCH(QSize, size);

    ImageButton button(nullptr);
    button.resize(size);
    button.setPixmap(StripedPicture::save(m_folder, kStrip));
    QCOMPARE(WidgetPicture::of(button), shows(size, kStrip, QRect(QPoint(0, 0), kFrame)));
}

void tst_ImageButton::drawsTheFourthFrameWhileDisabled_data()
{
    QTest::addColumn<QVector<Action>>("actions");

    QTest::newRow("normal") << QVector<Action>{};
    QTest::newRow("hover") << QVector<Action>{Enter};
    QTest::newRow("pressed") << QVector<Action>{Enter, LeftPress};
}

void tst_ImageButton::drawsTheFourthFrameWhileDisabled()
{
    QFETCH(QVector<Action>, actions);

    Open<ImageButton> button(nullptr);
    button.resize(kFrame);
    button.setPixmap(StripedPicture::save(m_folder, kStrip));
    for (const Action action : actions) {
        call(button, action);
    }
    button.setEnabled(false);
    QCOMPARE(WidgetPicture::of(button), frame(3));
    for (const Action action : kAllActions) {
        call(button, action);
        QCOMPARE(WidgetPicture::of(button), frame(3));
    }
}

void tst_ImageButton::drawsNothingElse()
{
    ImageButton button(nullptr);
    button.resize(kFrame);
    button.setText("HEH");
    button.setIcon(QPixmap::fromImage(StripedPicture::paint(QSize(16, 16))));
    QCOMPARE(WidgetPicture::of(button), WidgetPicture::canvas(kFrame));
    button.setPixmap(StripedPicture::save(m_folder, kStrip));
    QCOMPARE(WidgetPicture::of(button), frame(0));
}

void tst_ImageButton::unreadablePictureDrawsNothing()
{
    ImageButton button(nullptr);
    button.resize(kFrame);
    button.setPixmap(StripedPicture::save(m_folder, kStrip));
    button.setPixmap(m_folder.filePath("missing.png"));
    QCOMPARE(WidgetPicture::of(button), WidgetPicture::canvas(kFrame));
}

void tst_ImageButton::setPixmapNeitherRepaintsNorResizes()
{
    ImageButton button(nullptr);
    button.resize(77, 33);
    RepaintCounter repaints(&button);
    button.setPixmap(StripedPicture::save(m_folder, kStrip));
    QCOMPARE(repaints.take(), 0);
    QCOMPARE(button.size(), QSize(77, 33));
}

void tst_ImageButton::clicksWhereverTheReleaseIs()
{
    ImageButton button(nullptr);
    button.resize(kFrame);
    button.setPixmap(StripedPicture::save(m_folder, kStrip));
    ButtonSignals buttonSignals(&button);

    QTest::mousePress(&button, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    QCOMPARE(buttonSignals.take(), QStringList{});
    QTest::mouseRelease(&button, Qt::LeftButton, Qt::NoModifier, QPoint(90, 5));
    QCOMPARE(buttonSignals.take(), QStringList{"clicked(false)"});
    QCOMPARE(WidgetPicture::of(button), frame(1));
    cross(button, Leave);
    QCOMPARE(WidgetPicture::of(button), frame(0));
}

void tst_ImageButton::disabledIgnoresTheMouse()
{
    ImageButton button(nullptr);
    button.setEnabled(false);
    ButtonSignals buttonSignals(&button);
    QTest::mouseClick(&button, Qt::LeftButton);
    QCOMPARE(buttonSignals.take(), QStringList{});
    button.setEnabled(true);
    QTest::mouseClick(&button, Qt::LeftButton);
    QCOMPARE(buttonSignals.take(), QStringList{"clicked(false)"});
}

void tst_ImageButton::mouseNeitherPressesDownNorToggles()
{
    for (const bool checked : {false, true}) {
        ImageButton button(nullptr);
        button.setCheckable(true);
        button.setChecked(checked);
        ButtonSignals buttonSignals(&button);
        QTest::mousePress(&button, Qt::LeftButton);
        QVERIFY(!button.isDown());
        QTest::mouseRelease(&button, Qt::LeftButton);
        QCOMPARE(button.isChecked(), checked);
        QCOMPARE(buttonSignals.take(), QStringList{"clicked(false)"});
    }
}

void tst_ImageButton::spaceKeyClicksWithoutAPressedLook()
{
    ImageButton button(nullptr);
    button.resize(kFrame);
    button.setPixmap(StripedPicture::save(m_folder, kStrip));
    ButtonSignals buttonSignals(&button);

    QTest::keyPress(&button, Qt::Key_Space);
    QCOMPARE(WidgetPicture::of(button), frame(0));
    QTest::keyRelease(&button, Qt::Key_Space);
    QCOMPARE(buttonSignals.take(), (QStringList{"pressed", "released", "clicked(false)"}));
    QCOMPARE(WidgetPicture::of(button), frame(0));
}

QTEST_MAIN(tst_ImageButton)
#include "tst_ImageButton.moc"

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/FuncButton.h"

#include "tests/support/ButtonSignals.h"
#include "tests/support/PointerEvents.h"
#include "tests/support/RepaintCounter.h"
#include "tests/support/StripedPicture.h"
#include "tests/support/WidgetPicture.h"
#include "tests/widgets/Lettering.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace PointerEvents;

namespace {

constexpr QSize kButton(80, 80);
constexpr QSize kPicture(48, 48);
constexpr QPoint kCentred(16, 16);

QImage shows(bool active, const QSize &picture = kPicture, const QPoint &topLeft = kCentred)
{
    return WidgetPicture::with(kButton, topLeft,
                               active ? StripedPicture::paintOther(picture)
                                      : StripedPicture::paint(picture));
}

/// The same with the caption "HEH".
QImage captioned(const QImage &button, bool active)
{
    const QRect band(0, button.height() - 36, button.width(), 25);
    return Lettering{band, 132, active ? QColor(30, 30, 30) : QColor(100, 100, 100)}.on(button,
                                                                                        "HEH");
}

} // namespace

class tst_FuncButton : public QObject
{
    Q_OBJECT

private slots:
    void drawsThePictureInTheMiddle_data();
    void drawsThePictureInTheMiddle();
    void looks_data();
    void looks();
    void checkOutlastsTheLeave();
    void setCheckKeepsTheState();
    void clickLeavesTheMarkAlone();
    void rightPressDoesNothing();
    void setCheckRepaints();
    void setPixmapNeitherRepaintsNorResizes();
    void unreadablePictureLeavesTheCaption();

private:
    void dress(FuncButton &button, const QSize &picture = kPicture)
    {
        button.setPixmap(StripedPicture::save(m_folder, picture),
                         StripedPicture::saveOther(m_folder, picture));
    }

    QTemporaryDir m_folder;
};

void tst_FuncButton::drawsThePictureInTheMiddle_data()
{
    QTest::addColumn<QSize>("picture");
    QTest::addColumn<QPoint>("topLeft");

    QTest::newRow("48 x 48 on 80 x 80") << QSize(48, 48) << QPoint(16, 16);
    QTest::newRow("odd rest rounds down") << QSize(47, 45) << QPoint(16, 17);
    QTest::newRow("larger picture is clipped evenly") << QSize(100, 90) << QPoint(-10, -5);
    QTest::newRow("odd excess rounds toward zero") << QSize(85, 83) << QPoint(-2, -1);
}

void tst_FuncButton::drawsThePictureInTheMiddle()
{
    QFETCH(QSize, picture);
    QFETCH(QPoint, topLeft);

    FuncButton button(nullptr, QString());
    button.resize(kButton);
    dress(button, picture);
    QCOMPARE(WidgetPicture::of(button), shows(false, picture, topLeft));
    button.setCheck(true);
    QCOMPARE(WidgetPicture::of(button), shows(true, picture, topLeft));
}

void tst_FuncButton::looks_data()
{
    QTest::addColumn<QVector<Action>>("actions");
    QTest::addColumn<bool>("checked");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("active");

    using Actions = QVector<Action>;
    QTest::newRow("new") << Actions{} << false << true << false;
    QTest::newRow("hover") << Actions{Enter} << false << true << true;
    QTest::newRow("pressed") << Actions{Enter, LeftPress} << false << true << true;
    QTest::newRow("released") << Actions{LeftPress, LeftRelease} << false << true << true;
    QTest::newRow("left") << Actions{Enter, Leave} << false << true << false;
    QTest::newRow("checked") << Actions{} << true << true << true;
    QTest::newRow("checked and hovered") << Actions{Enter} << true << true << true;
    QTest::newRow("disabled") << Actions{} << false << false << false;
    QTest::newRow("disabled and hovered") << Actions{Enter} << false << false << true;
    QTest::newRow("disabled and checked") << Actions{} << true << false << true;
}

void tst_FuncButton::looks()
{
    QFETCH(QVector<Action>, actions);
    QFETCH(bool, checked);
    QFETCH(bool, enabled);
    QFETCH(bool, active);

    Open<FuncButton> bare(nullptr, QString());
    Open<FuncButton> titled(nullptr, "HEH");
    for (Open<FuncButton> *button : {&bare, &titled}) {
        button->resize(kButton);
        dress(*button);
        button->setCheck(checked);
        button->setEnabled(enabled);
        for (const Action action : actions) {
            call(*button, action);
        }
    }
    QCOMPARE(WidgetPicture::of(bare), shows(active));
    QCOMPARE(WidgetPicture::of(titled), captioned(shows(active), active));
}

void tst_FuncButton::checkOutlastsTheLeave()
{
    FuncButton button(nullptr, "HEH");
    button.resize(kButton);
    dress(button);
    button.setCheck(true);
    cross(button, Enter);
    cross(button, Leave);
    QCOMPARE(WidgetPicture::of(button), captioned(shows(true), true));
    button.setCheck(false);
    QCOMPARE(WidgetPicture::of(button), captioned(shows(false), false));
}

void tst_FuncButton::setCheckKeepsTheState()
{
    FuncButton button(nullptr, QString());
    button.resize(kButton);
    dress(button);
    cross(button, Enter);
    button.setCheck(true);
    button.setCheck(false);
    QCOMPARE(WidgetPicture::of(button), shows(true));
}

void tst_FuncButton::clickLeavesTheMarkAlone()
{
    FuncButton button(nullptr, QString());
    button.resize(kButton);
    dress(button);
    ButtonSignals buttonSignals(&button);
    for (const bool check : {false, true}) {
        button.setCheck(check);
        QTest::mouseClick(&button, Qt::LeftButton);
        QCOMPARE(buttonSignals.take(), (QStringList{"pressed", "released", "clicked(false)"}));
        cross(button, Leave);
        QCOMPARE(WidgetPicture::of(button), shows(check));
        QVERIFY(!button.isChecked());
    }
}

void tst_FuncButton::rightPressDoesNothing()
{
    FuncButton button(nullptr, QString());
    button.resize(kButton);
    dress(button);
    ButtonSignals buttonSignals(&button);
    QTest::mousePress(&button, Qt::RightButton);
    QCOMPARE(buttonSignals.take(), QStringList{});
    QCOMPARE(WidgetPicture::of(button), shows(false));
    QTest::mouseRelease(&button, Qt::RightButton);
    QCOMPARE(buttonSignals.take(), QStringList{});
    QCOMPARE(WidgetPicture::of(button), shows(false));
}

void tst_FuncButton::setCheckRepaints()
{
    FuncButton button(nullptr, QString());
    RepaintCounter repaints(&button);
    for (const bool check : {true, true, false, false}) {
        button.setCheck(check);
        button.setCheck(check);
        QCOMPARE(repaints.take(), 1); // asked for and not done on the spot: two calls, one paint
    }
}

void tst_FuncButton::setPixmapNeitherRepaintsNorResizes()
{
    FuncButton button(nullptr, QString());
    button.resize(77, 33);
    RepaintCounter repaints(&button);
    dress(button);
    QCOMPARE(repaints.take(), 0);
    QCOMPARE(button.size(), QSize(77, 33));
}

void tst_FuncButton::unreadablePictureLeavesTheCaption()
{
    const QString missing = m_folder.filePath("missing.png");
    const QString picture = StripedPicture::save(m_folder, kPicture);
    const QImage empty = WidgetPicture::canvas(kButton);
    FuncButton button(nullptr, "HEH");
    button.resize(kButton);

    button.setPixmap(picture, picture);
    button.setPixmap(missing, picture);
    QCOMPARE(WidgetPicture::of(button), captioned(empty, false));
    button.setPixmap(picture, missing);
    button.setCheck(true);
    QCOMPARE(WidgetPicture::of(button), captioned(empty, true));
}

QTEST_MAIN(tst_FuncButton)
#include "tst_FuncButton.moc"

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/tabButton.h"

#include "tests/support/PointerEvents.h"
#include "tests/support/RepaintCounter.h"
#include "tests/support/StripedPicture.h"
#include "tests/support/WidgetPicture.h"

#include <QPainter>
#include <QTemporaryDir>
#include <QtTest>

using namespace PointerEvents;

namespace {

constexpr QRgb kWhite = 0xffffffff;
const QColor kDarkGrey(51, 51, 51);

} // namespace

/// The caption, which only this class has.
class tst_tabButton : public QObject
{
    Q_OBJECT

private slots:
    void startsWithoutCaption();
    void setTabTextRepaints();
    void captionIsDarkGrey_data();
    void captionIsDarkGrey();
    void captionStandsInItsPlace_data();
    void captionStandsInItsPlace();

private:
    QTemporaryDir m_folder;
};

void tst_tabButton::startsWithoutCaption()
{
    tabButton button(nullptr);
    button.resize(90, 40);
    QVERIFY(button.tabText.isEmpty());
    button.tabText = "HEH";
    QVERIFY(WidgetPicture::of(button) != WidgetPicture::canvas(button.size()));
    button.setTabText(QString());
    QCOMPARE(WidgetPicture::of(button), WidgetPicture::canvas(button.size()));
}

void tst_tabButton::setTabTextRepaints()
{
    tabButton button(nullptr);
    RepaintCounter repaints(&button);
    button.tabText = "HEH";
    QCOMPARE(repaints.take(), 0); // the member is the owner's
    button.setTabText("EHE");
    QCOMPARE(repaints.take(), 1);
    QCOMPARE(button.tabText, "EHE");
}

void tst_tabButton::captionIsDarkGrey_data()
{
    QTest::addColumn<QVector<Action>>("actions");
    QTest::addColumn<bool>("selected");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("readable");

    using Actions = QVector<Action>;
    QTest::newRow("normal") << Actions{} << false << true << true;
    QTest::newRow("hovered") << Actions{Enter} << false << true << true;
    QTest::newRow("pressed") << Actions{LeftPress} << false << true << true;
    QTest::newRow("selected") << Actions{} << true << true << true;
    QTest::newRow("disabled") << Actions{} << false << false << true;
    QTest::newRow("picture is unreadable") << Actions{} << false << true << false;
}

void tst_tabButton::captionIsDarkGrey()
{
    QFETCH(QVector<Action>, actions);
    QFETCH(bool, selected);
    QFETCH(bool, enabled);
    QFETCH(bool, readable);

    Open<tabButton> button(nullptr);
    button.resize(90, 40);
    button.setPixmap(readable ? StripedPicture::save(m_folder, QSize(120, 30)) : "missing.png");
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

/// What the button's width leaves beside the caption is split between both sides.
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

QTEST_MAIN(tst_tabButton)
#include "tst_tabButton.moc"

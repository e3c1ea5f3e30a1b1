// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/IconButton.h"

#include "tests/widgets/TitledButtonChecks.h"

#include <QtTest>

class tst_IconButton : public QObject
{
    Q_OBJECT

private slots:
    void cutsTheBackground_data() { Checks::cutsTheBackground_data(); }
    void cutsTheBackground() { m_checks.cutsTheBackground(); }
    void drawsTheBackgroundInTheMiddle_data() { Checks::drawsTheBackgroundInTheMiddle_data(); }
    void drawsTheBackgroundInTheMiddle() { m_checks.drawsTheBackgroundInTheMiddle(); }
    void drawsTheIcon_data() { Checks::drawsTheIcon_data(); }
    void drawsTheIcon() { m_checks.drawsTheIcon(); }
    void callsOfTheSetters_data() { Checks::callsOfTheSetters_data(); }
    void callsOfTheSetters() { m_checks.callsOfTheSetters(); }
    void unreadablePicturesDrawNothing() { m_checks.unreadablePicturesDrawNothing(); }
    void titleColour_data() { Checks::titleColour_data(); }
    void titleColour() { m_checks.titleColour(); }
    void titleLiesOverTheIcon() { m_checks.titleLiesOverTheIcon(); }
    void titleIgnoresTheWidgetsFontSize() { m_checks.titleIgnoresTheWidgetsFontSize(); }
    void textIsNotUsed() { m_checks.textIsNotUsed(); }
    void pixmapSettersDoNotRepaint() { m_checks.pixmapSettersDoNotRepaint(); }
    void onlyTheLeftButtonClicks() { m_checks.onlyTheLeftButtonClicks(); }

    void titleBeginsRightOfTheIcon_data();
    void titleBeginsRightOfTheIcon();
    void lastRectangleCounts();
    void longTitleIsCutOffAtTheRightEdge();
    void emptyTitleDrawsNothing();

private:
    using Checks = TitledButtonChecks<IconButton>;

    Checks m_checks;
};

void tst_IconButton::titleBeginsRightOfTheIcon_data()
{
    QTest::addColumn<QRect>("rect");
    QTest::addColumn<int>("left");

    QTest::newRow("icon at (8, 6), 24 wide") << QRect(8, 6, 24, 24) << 41;
    QTest::newRow("wide rectangle") << QRect(8, 6, 40, 24) << 57;
    QTest::newRow("icon rectangle never set") << QRect() << 9;
    QTest::newRow("left of the button") << QRect(-50, 0, 45, 10) << 4;
}

void tst_IconButton::titleBeginsRightOfTheIcon()
{
    QFETCH(QRect, rect);
    QFETCH(int, left);

    for (const QSize &size : {QSize(120, 40), QSize(161, 61)}) {
        IconButton button(nullptr, "HEH");
        button.resize(size);
        if (rect.isValid()) {
            button.setIconPixmap(QString(), 0, rect);
        }
        QVERIFY(Checks::isAbout(Checks::writtenRegion(button),
                                Checks::titleRegion(button, "HEH", left)));
    }
}

void tst_IconButton::lastRectangleCounts()
{
    IconButton button(nullptr, "HEH");
    button.resize(120, 40);
    button.setIconPixmap(QString(), 0, QRect(8, 6, 24, 24));
    button.setIconPixmap(QString(), 0, QRect(8, 6, 44, 24));
    QVERIFY(Checks::isAbout(Checks::writtenRegion(button), Checks::titleRegion(button, "HEH", 61)));
}

void tst_IconButton::longTitleIsCutOffAtTheRightEdge()
{
    IconButton button(nullptr, "HHHHHHHHHHHHHHHHHHHH");
    button.resize(60, 40);
    const QRect region = Checks::writtenRegion(button);
    QVERIFY(qAbs(region.left() - 10) <= 1);
    QCOMPARE(region.right(), 59);
}

void tst_IconButton::emptyTitleDrawsNothing()
{
    IconButton button(nullptr, QString());
    button.resize(100, 40);
    QCOMPARE(WidgetPicture::of(button), WidgetPicture::canvas(button.size()));
}

QTEST_MAIN(tst_IconButton)
#include "tst_IconButton.moc"

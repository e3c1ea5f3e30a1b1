// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/IconButton.h"

#include "tests/widgets/TitleChecks.h"
#include "tests/widgets/TitledButtonChecks.h"

#include <QtTest>

class tst_IconButton : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Lettering::makeArialStandOut(); }

    void cutsTheBackground_data() { Checks::cutsTheBackground_data(); }
    void cutsTheBackground() { m_checks.cutsTheBackground(); }
    void drawsTheBackgroundInTheMiddle_data() { Checks::drawsTheBackgroundInTheMiddle_data(); }
    void drawsTheBackgroundInTheMiddle() { m_checks.drawsTheBackgroundInTheMiddle(); }
    void drawsTheIcon_data() { Checks::drawsTheIcon_data(); }
    void drawsTheIcon() { m_checks.drawsTheIcon(); }
    void callsOfTheSetters_data() { Checks::callsOfTheSetters_data(); }
    void callsOfTheSetters() { m_checks.callsOfTheSetters(); }
    void unreadablePicturesDrawNothing() { m_checks.unreadablePicturesDrawNothing(); }
    void titleLiesOverTheIcon() { m_checks.titleLiesOverTheIcon(); }
    void textIsNotUsed() { m_checks.textIsNotUsed(); }
    void pixmapSettersDoNotRepaint() { m_checks.pixmapSettersDoNotRepaint(); }
    void onlyTheLeftButtonClicks() { m_checks.onlyTheLeftButtonClicks(); }

    void writesTheTitleAsItIs_data() { Titles::writesTheTitleAsItIs_data(); }
    void writesTheTitleAsItIs() { m_titles.writesTheTitleAsItIs(); }
    void titleColour_data() { Titles::titleColour_data(); }
    void titleColour() { m_titles.titleColour(); }
    void titleIgnoresTheWidgetsFont_data() { Titles::titleIgnoresTheWidgetsFont_data(); }
    void titleIgnoresTheWidgetsFont() { m_titles.titleIgnoresTheWidgetsFont(); }
    void titleMayBeLeftOut() { Titles::titleMayBeLeftOut(); }

    void titleBeginsRightOfTheIcon_data();
    void titleBeginsRightOfTheIcon();
    void lastRectangleCounts();
    void emptyTitleDrawsNothing();

private:
    using Checks = TitledButtonChecks<IconButton>;
    using Titles = TitleChecks<IconButton>;

    Checks m_checks;
    Titles m_titles{9, 129}; // left and in the middle of the height
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
        QCOMPARE(WidgetPicture::of(button), m_titles.written(size, "HEH", left));
    }
}

void tst_IconButton::lastRectangleCounts()
{
    IconButton button(nullptr, "HEH");
    button.resize(120, 40);
    button.setIconPixmap(QString(), 0, QRect(8, 6, 24, 24));
    button.setIconPixmap(QString(), 0, QRect(8, 6, 44, 24));
    QCOMPARE(WidgetPicture::of(button), m_titles.written(button.size(), "HEH", 61));
}

void tst_IconButton::emptyTitleDrawsNothing()
{
    IconButton button(nullptr, QString());
    button.resize(100, 40);
    QCOMPARE(WidgetPicture::of(button), WidgetPicture::canvas(button.size()));
}

QTEST_MAIN(tst_IconButton)
#include "tst_IconButton.moc"

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/ProfileButton.h"

#include "tests/widgets/TitleChecks.h"
#include "tests/widgets/TitledButtonChecks.h"

#include <QtTest>

class tst_ProfileButton : public QObject
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

    void titleIsCentred_data();
    void titleIsCentred();
    void setTitleRepaints_data();
    void setTitleRepaints();
    void setTitleKeepsTheState();
    void emptyTitleDrawsNothing();

private:
    using Checks = TitledButtonChecks<ProfileButton>;
    using Titles = TitleChecks<ProfileButton>;

    Checks m_checks;
    Titles m_titles{0, 132}; // in the middle
};

void tst_ProfileButton::titleIsCentred_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRect>("rect");

    QTest::newRow("icon rectangle never set") << QSize(120, 40) << QRect();
    QTest::newRow("icon at the left") << QSize(120, 40) << QRect(8, 6, 24, 24);
    QTest::newRow("icon at the right") << QSize(120, 40) << QRect(90, 6, 24, 24);
    QTest::newRow("odd size") << QSize(161, 61) << QRect(8, 6, 24, 24);
}

void tst_ProfileButton::titleIsCentred()
{
    QFETCH(QSize, size);
    QFETCH(QRect, rect);

    ProfileButton button(nullptr, "HEH");
    button.resize(size);
    if (rect.isValid()) {
        button.setIconPixmap(QString(), 0, rect);
    }
    QCOMPARE(WidgetPicture::of(button), m_titles.written(size, "HEH", 0));
}

void tst_ProfileButton::setTitleRepaints_data()
{
    QTest::addColumn<QString>("title");

    QTest::newRow("new text") << "EHE";
    QTest::newRow("the same text") << "HEH";
    QTest::newRow("empty text") << "";
}

void tst_ProfileButton::setTitleRepaints()
{
    QFETCH(QString, title);

    ProfileButton button(nullptr, "HEH");
    button.resize(120, 40);
    RepaintCounter repaints(&button);
    button.SetTitle(title);
    button.SetTitle(title);
    QCOMPARE(repaints.take(), 1); // asked for and not done on the spot: two calls, one paint

    ProfileButton fresh(nullptr, title);
    fresh.resize(120, 40);
    QCOMPARE(WidgetPicture::of(button), WidgetPicture::of(fresh));
    QVERIFY(button.text().isEmpty());
}

void tst_ProfileButton::setTitleKeepsTheState()
{
    ProfileButton button(nullptr, QString());
    button.resize(120, 40);
    PointerEvents::cross(button, PointerEvents::Enter);
    button.SetTitle("HEH");
    QCOMPARE(WidgetPicture::of(button), m_titles.written(button.size(), "HEH", 0, Qt::white));
}

void tst_ProfileButton::emptyTitleDrawsNothing()
{
    ProfileButton button(nullptr, "HEH");
    button.resize(100, 40);
    QVERIFY(WidgetPicture::of(button) != WidgetPicture::canvas(button.size()));
    button.SetTitle(QString());
    QCOMPARE(WidgetPicture::of(button), WidgetPicture::canvas(button.size()));
}

QTEST_MAIN(tst_ProfileButton)
#include "tst_ProfileButton.moc"

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/support/StripedPicture.h"
#include "tests/support/WidgetPicture.h"
#include "tests/widgets/Lettering.h"
#include "widgets/FuncButton.h"

#include <QtTest>

namespace {

constexpr QSize kButton(80, 80);

/// An otherwise empty button: its caption stands in the middle of a band 25 pixels high, 11 rows
/// above the bottom edge.
QImage captioned(const QSize &size, const QString &title, const QColor &ink)
{
    const QRect band(0, size.height() - 36, size.width(), 25);
    return Lettering{band, 132, ink}.on(WidgetPicture::canvas(size), title);
}

} // namespace

class tst_FuncButtonCaption : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Lettering::makeArialStandOut(); }

    void writesTheTitleAsItIs_data();
    void writesTheTitleAsItIs();
    void isClippedToItsBand();
    void ignoresTheWidgetsFont_data() { Lettering::addWidgetFonts(); }
    void ignoresTheWidgetsFont();
    void mayBeEmpty();
    void titleMayBeLeftOut();
    void isNotTheText();
};

void tst_FuncButtonCaption::writesTheTitleAsItIs_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QString>("title");

    QTest::newRow("80 x 80: rows 44 to 68") << QSize(80, 80) << "HEH";
    QTest::newRow("odd width") << QSize(81, 80) << "HEH";
    QTest::newRow("high button") << QSize(80, 200) << "HEH";
    QTest::newRow("30 high: the band begins above the button") << QSize(80, 30) << "HEH";
    QTest::newRow("24 high: the caption is clipped at the top") << QSize(80, 24) << "HEH";
    QTest::newRow("an ampersand marks no key") << QSize(80, 80) << "H&E";
    QTest::newRow("two lines") << QSize(80, 80) << "H\nE";
    QTest::newRow("words wider than the button stay in one line")
        << QSize(60, 80) << "HEHEHE HEHEHE";
    QTest::newRow("wider than the button is cut off") << QSize(60, 80) << "____________________";
}

void tst_FuncButtonCaption::writesTheTitleAsItIs()
{
    QFETCH(QSize, size);
    QFETCH(QString, title);

    FuncButton button(nullptr, title);
    button.resize(size);
    QCOMPARE(WidgetPicture::of(button), captioned(size, title, QColor(100, 100, 100)));
    button.setCheck(true);
    QCOMPARE(WidgetPicture::of(button), captioned(size, title, QColor(30, 30, 30)));
}

void tst_FuncButtonCaption::isClippedToItsBand()
{
    FuncButton button(nullptr, "|\n|\n|"); // three lines are higher than the band
    button.resize(kButton);
    const QRect written
        = WidgetPicture::changedRegion(WidgetPicture::canvas(kButton), WidgetPicture::of(button));
    QCOMPARE(written.top(), 44);
    QCOMPARE(written.bottom(), 68);
}

void tst_FuncButtonCaption::ignoresTheWidgetsFont()
{
    QFETCH(QFont, font);

    FuncButton button(nullptr, "HE H");
    button.resize(kButton);
    button.setFont(font);
    QCOMPARE(WidgetPicture::of(button), captioned(kButton, "HE H", QColor(100, 100, 100)));
}

void tst_FuncButtonCaption::mayBeEmpty()
{
    FuncButton button(nullptr, QString());
    button.resize(kButton);
    QCOMPARE(WidgetPicture::of(button), WidgetPicture::canvas(kButton));
}

/// So that a form can make the button.
void tst_FuncButtonCaption::titleMayBeLeftOut()
{
    QWidget parent;
    const FuncButton button(&parent);
    QCOMPARE(button.parentWidget(), &parent);
    QCOMPARE(button.title(), QString());
}

void tst_FuncButtonCaption::isNotTheText()
{
    FuncButton titled(nullptr, "HEH");
    QVERIFY(titled.text().isEmpty());

    FuncButton button(nullptr, QString());
    button.resize(kButton);
    button.setText("HEH");
    button.setIcon(QPixmap::fromImage(StripedPicture::paint(QSize(16, 16))));
    QCOMPARE(WidgetPicture::of(button), WidgetPicture::canvas(kButton));
}

QTEST_MAIN(tst_FuncButtonCaption)
#include "tst_FuncButtonCaption.moc"

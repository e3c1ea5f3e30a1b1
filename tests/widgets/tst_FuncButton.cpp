// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/FuncButton.h"

#include "tests/support/ButtonSignals.h"
#include "tests/support/PointerEvents.h"
#include "tests/support/RepaintCounter.h"
#include "tests/support/StripedPicture.h"
#include "tests/support/WidgetPicture.h"

#include <QPainter>
#include <QTemporaryDir>
#include <QtTest>

using namespace PointerEvents;

namespace {

constexpr QSize kButton(80, 80);
constexpr QSize kPicture(48, 48);
constexpr QPoint kCentred(16, 16);
constexpr QRgb kWhite = 0xffffffff;
const QColor kResting(100, 100, 100);
const QColor kActive(30, 30, 30);

QImage shows(bool active, const QSize &picture = kPicture, const QPoint &topLeft = kCentred)
{
    return WidgetPicture::with(kButton, topLeft,
                               active ? StripedPicture::paintOther(picture)
                                      : StripedPicture::paint(picture));
}

/// Where \a title appears: in the middle of a band 25 pixels high, 11 rows above the bottom edge.
QRect captionRegion(FuncButton &button, const QString &title)
{
    const QFontMetrics metrics(QFont("Arial", 12), &button);
    const QRect band(0, button.height() - 36, button.width(), 25);
    const int left = (band.width() - metrics.horizontalAdvance(title)) / 2;
    const int baseline = band.top() + (band.height() - metrics.height()) / 2 + metrics.ascent();
    return metrics.tightBoundingRect(title).translated(left, baseline) & button.rect();
}

QRect writtenRegion(FuncButton &button)
{
    return WidgetPicture::changedRegion(WidgetPicture::canvas(button.size(), kWhite),
                                        WidgetPicture::of(button, kWhite));
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
    void clickLeavesTheMarkAlone();
    void rightPressDoesNothing();
    void setCheckRepaints();
    void setPixmapNeitherRepaintsNorResizes();
    void unreadablePictureLeavesTheCaption();

    void captionBand_data();
    void captionBand();
    void captionIgnoresTheWidgetsFontSize();
    void captionWiderThanTheButtonIsCutOff();
    void emptyTitleDrawsNoCaption();
    void textIsNotUsed();

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
    QVERIFY(WidgetPicture::isWrittenIn(active ? kActive : kResting, WidgetPicture::of(bare),
                                       WidgetPicture::of(titled)));
}

void tst_FuncButton::checkOutlastsTheLeave()
{
    FuncButton button(nullptr, QString());
    button.resize(kButton);
    dress(button);
    QVERIFY(!button.isCheck());
    button.setCheck(true);
    QVERIFY(button.isCheck());
    cross(button, Enter);
    cross(button, Leave);
    QCOMPARE(WidgetPicture::of(button), shows(true));
    button.setCheck(false);
    QVERIFY(!button.isCheck());
    QCOMPARE(WidgetPicture::of(button), shows(false));
}

void tst_FuncButton::clickLeavesTheMarkAlone()
{
    FuncButton button(nullptr, QString());
    ButtonSignals buttonSignals(&button);
    for (const bool check : {false, true}) {
        button.setCheck(check);
        QTest::mouseClick(&button, Qt::LeftButton);
        QCOMPARE(buttonSignals.take(), (QStringList{"pressed", "released", "clicked(false)"}));
        QCOMPARE(button.isCheck(), check);
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
        QCOMPARE(repaints.take(), 1);
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
    const QImage empty = WidgetPicture::canvas(kButton, kWhite);
    FuncButton button(nullptr, "HEH");
    button.resize(kButton);

    button.setPixmap(picture, picture);
    button.setPixmap(missing, picture);
    QVERIFY(WidgetPicture::isWrittenIn(kResting, empty, WidgetPicture::of(button, kWhite)));
    button.setPixmap(picture, missing);
    button.setCheck(true);
    QVERIFY(WidgetPicture::isWrittenIn(kActive, empty, WidgetPicture::of(button, kWhite)));
}

void tst_FuncButton::captionBand_data()
{
    QTest::addColumn<QSize>("size");

    QTest::newRow("80 x 80: rows 44 to 68") << QSize(80, 80);
    QTest::newRow("odd width") << QSize(81, 80);
    QTest::newRow("high button") << QSize(80, 200);
    QTest::newRow("30 high: the band begins above the button") << QSize(80, 30);
    QTest::newRow("24 high: the caption is clipped at the top") << QSize(80, 24);
}

void tst_FuncButton::captionBand()
{
    QFETCH(QSize, size);

    FuncButton button(nullptr, "HEH");
    button.resize(size);
    const QRect region = writtenRegion(button);
    const QRect expected = captionRegion(button, "HEH");

    // One pixel for smoothed edges.
    QVERIFY(expected.adjusted(-1, -1, 1, 1).contains(region));
    QVERIFY(region.contains(expected.adjusted(1, 1, -1, -1)));

    // The same letters drawn into the band itself are smoothed alike.
    QImage drawn = WidgetPicture::canvas(size, kWhite);
    drawn.setDotsPerMeterX(qRound(button.logicalDpiX() / 0.0254));
    drawn.setDotsPerMeterY(qRound(button.logicalDpiY() / 0.0254));
    QPainter painter(&drawn);
    painter.setFont(QFont("Arial", 12));
    painter.drawText(QRect(0, size.height() - 36, size.width(), 25), Qt::AlignCenter, "HEH");
    painter.end();
    QCOMPARE(region, WidgetPicture::changedRegion(WidgetPicture::canvas(size, kWhite), drawn));
}

void tst_FuncButton::captionIgnoresTheWidgetsFontSize()
{
    FuncButton button(nullptr, "HEH");
    button.resize(kButton);
    const QImage before = WidgetPicture::of(button, kWhite);
    QFont large = button.font();
    large.setPointSize(40);
    button.setFont(large);
    QCOMPARE(WidgetPicture::of(button, kWhite), before);
}

void tst_FuncButton::captionWiderThanTheButtonIsCutOff()
{
    FuncButton button(nullptr, "HHHHHHHHHHHHHHHHHHHH");
    button.resize(60, 80);
    const QRect region = writtenRegion(button);
    QCOMPARE(region.left(), 0);
    QCOMPARE(region.right(), 59);
}

void tst_FuncButton::emptyTitleDrawsNoCaption()
{
    FuncButton button(nullptr, QString());
    button.resize(kButton);
    QCOMPARE(WidgetPicture::of(button), WidgetPicture::canvas(kButton));
}

void tst_FuncButton::textIsNotUsed()
{
    FuncButton titled(nullptr, "HEH");
    QVERIFY(titled.text().isEmpty());

    FuncButton button(nullptr, QString());
    button.resize(kButton);
    button.setText("HEH");
    button.setIcon(QPixmap::fromImage(StripedPicture::paint(QSize(16, 16))));
    QCOMPARE(WidgetPicture::of(button), WidgetPicture::canvas(kButton));
}

QTEST_MAIN(tst_FuncButton)
#include "tst_FuncButton.moc"

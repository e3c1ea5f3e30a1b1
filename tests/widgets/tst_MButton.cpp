// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/MButton.h"

#include "tests/support/PointerEvents.h"
#include "tests/support/RepaintCounter.h"
#include "tests/support/StripedPicture.h"
#include "tests/support/WarningCatcher.h"
#include "tests/support/WidgetPicture.h"
#include "widgets/NinePatchPainter.h"

#include <QPainter>
#include <QTemporaryDir>
#include <QtTest>

using namespace PointerEvents;

namespace {

constexpr QSize kStrip(100, 30);
constexpr QSize kFrame(50, 30);
const QColor kWhite(255, 255, 255);
const QColor kGrey(128, 128, 128);
const QColor kRed(220, 30, 20);
const QColor kGreen(30, 220, 20);
const QColor kBlue(20, 30, 220);
constexpr QRgb kBlack = 0xff000000;

/// What a button of \a size shows if it draws \a picture with a border of \a border pixels.
QImage stretched(const QSize &size, const QImage &picture, int border)
{
    if (border <= 0) {
        return WidgetPicture::with(size, QPoint(0, 0), picture);
    }
    QImage canvas = WidgetPicture::canvas(size);
    QPainter painter(&canvas);
    const NinePatchPainter patches(QPixmap::fromImage(picture), border, border, border, border,
                                   true, true);
    patches.paint(&painter, QRect(QPoint(0, 0), size), border, border, border, border);
    painter.end();
    return canvas;
}

/// A font that looks the same on the screen and on a picture, whose densities differ.
QFont fontOf(const QWidget &widget, int pixelSize)
{
    QFont font = widget.font();
    font.setPixelSize(pixelSize);
    return font;
}

/// \a bare with the text of \a button where the button must draw it.
QImage written(const QImage &bare, const MButton &button, const QColor &ink)
{
    QImage picture = bare;
    QPainter painter(&picture);
    painter.setFont(button.font());
    painter.setPen(ink);
    painter.drawText(button.rect(), Qt::AlignCenter, button.text());
    painter.end();
    return picture;
}

} // namespace

/// The border and the text, which only this class has.
class tst_MButton : public QObject
{
    Q_OBJECT

private slots:
    void border_data();
    void border();
    void unreadablePictureLeavesTheText();
    void settersDoNotRepaint();
    void textColour_data();
    void textColour();
    void textPlace_data();
    void textPlace();

private:
    QTemporaryDir m_folder;
};

void tst_MButton::border_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("second");

    constexpr QSize kLarge(200, 40);
    QTest::newRow("border 1") << kLarge << 0 << 1;
    QTest::newRow("border 4 after none") << kLarge << 0 << 4;
    QTest::newRow("smaller than the frame") << QSize(30, 20) << 0 << 4;
    QTest::newRow("smaller than the borders") << QSize(6, 6) << 0 << 4;
    QTest::newRow("other border and picture") << kLarge << 4 << 7;
    QTest::newRow("same border, other picture") << kLarge << 4 << 4;
    QTest::newRow("no border after one") << kLarge << 4 << 0;
    QTest::newRow("negative border after one") << kLarge << 4 << -1;
}

/// The second call counts, in every look.
void tst_MButton::border()
{
    QFETCH(QSize, size);
    QFETCH(int, first);
    QFETCH(int, second);

    Open<MButton> button(nullptr);
    button.resize(size);
    button.setPixmap(StripedPicture::save(m_folder, kStrip), first);
    button.setPixmap(StripedPicture::saveOther(m_folder, kStrip), second);
    const QImage other = StripedPicture::paintOther(kStrip);
    const QImage left = stretched(size, other.copy(QRect(QPoint(0, 0), kFrame)), second);
    const QImage right = stretched(size, other.copy(QRect(QPoint(50, 0), kFrame)), second);

    QCOMPARE(WidgetPicture::of(button), left);
    call(button, Enter);
    QCOMPARE(WidgetPicture::of(button), right);
    call(button, LeftPress);
    QCOMPARE(WidgetPicture::of(button), left);
    button.setEnabled(false);
    QCOMPARE(WidgetPicture::of(button), right);
}

void tst_MButton::unreadablePictureLeavesTheText()
{
    for (const int border : {0, 4}) {
        WarningCatcher warnings;
        MButton button(nullptr);
        button.resize(100, 40);
        button.setPixmap(StripedPicture::save(m_folder, kStrip), border);
        button.setPixmap(m_folder.filePath("missing.png"), border);
        const QImage empty = WidgetPicture::canvas(button.size(), kBlack);

        QCOMPARE(WidgetPicture::of(button, kBlack), empty);
        button.setText("OK");
        QVERIFY(WidgetPicture::isWrittenIn(kWhite, empty, WidgetPicture::of(button, kBlack)));
        QCOMPARE(warnings.take(), QStringList());
    }
}

void tst_MButton::settersDoNotRepaint()
{
    MButton button(nullptr);
    RepaintCounter repaints(&button);
    button.setPixmap(StripedPicture::save(m_folder, kStrip), 4);
    button.setColor(kRed, kGreen, kBlue);
    QCOMPARE(repaints.take(), 0);
}

void tst_MButton::textColour_data()
{
    QTest::addColumn<QVector<Action>>("actions");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("ownColours");
    QTest::addColumn<QColor>("ink");

    using Actions = QVector<Action>;
    const Actions hover{Enter};
    const Actions press{Enter, LeftPress};
    QTest::newRow("normal") << Actions{} << true << false << kWhite;
    QTest::newRow("hovered") << hover << true << false << kWhite;
    QTest::newRow("pressed") << press << true << false << kWhite;
    QTest::newRow("disabled") << Actions{} << false << false << kGrey;
    QTest::newRow("normal, colours set") << Actions{} << true << true << kRed;
    QTest::newRow("hovered, colours set") << hover << true << true << kGreen;
    QTest::newRow("pressed, colours set") << press << true << true << kBlue;
    QTest::newRow("disabled, colours set") << Actions{} << false << true << kGrey;
    QTest::newRow("disabled while hovered, colours set") << hover << false << true << kGrey;
    QTest::newRow("disabled while pressed, colours set") << press << false << true << kGrey;
}

/// The text is over a picture of many colours, so that a translucent ink shows as well.
void tst_MButton::textColour()
{
    QFETCH(QVector<Action>, actions);
    QFETCH(bool, enabled);
    QFETCH(bool, ownColours);
    QFETCH(QColor, ink);

    constexpr QSize kWide(240, 40);
    Open<MButton> button(nullptr);
    button.resize(kWide.width() / 2, kWide.height());
    button.setFont(fontOf(button, 16));
    button.setPixmap(StripedPicture::save(m_folder, kWide), 0);
    if (ownColours) {
        button.setColor(kRed, kGreen, kBlue);
    }
    for (const Action action : actions) {
        call(button, action);
    }
    button.setEnabled(enabled);
    const QImage bare = WidgetPicture::of(button);
    button.setText("HEH");

    const QImage picture = WidgetPicture::of(button);
    QCOMPARE(picture, written(bare, button, ink));
    QVERIFY(WidgetPicture::isWrittenIn(ink, bare, picture));
}

void tst_MButton::textPlace_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("pixelSize");
    QTest::addColumn<QString>("text");

    QTest::newRow("nothing") << QSize(120, 40) << 12 << "";
    QTest::newRow("in the middle") << QSize(120, 40) << 12 << "HEH";
    QTest::newRow("large font") << QSize(160, 60) << 30 << "HHHH";
    QTest::newRow("an ampersand is shown") << QSize(120, 40) << 12 << "&HHH";
    QTest::newRow("lines stay lines") << QSize(120, 60) << 12 << "H\nHHH";
    QTest::newRow("words are not wrapped") << QSize(40, 60) << 12 << "HEHEHE HEHEHE";
}

void tst_MButton::textPlace()
{
    QFETCH(QSize, size);
    QFETCH(int, pixelSize);
    QFETCH(QString, text);

    MButton button(nullptr);
    button.resize(size);
    button.setFont(fontOf(button, pixelSize));
    button.setText(text);
    QCOMPARE(WidgetPicture::of(button), written(WidgetPicture::canvas(size), button, kWhite));
}

QTEST_MAIN(tst_MButton)
#include "tst_MButton.moc"

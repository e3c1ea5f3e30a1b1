// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/MButton.h"

#include "tests/support/PointerEvents.h"
#include "tests/support/StripedPicture.h"
#include "tests/support/WidgetPicture.h"

#include <QPainter>
#include <QTemporaryDir>
#include <QtTest>

using namespace PointerEvents;

namespace {

constexpr QSize kStrip(240, 40);
constexpr QSize kFrame(120, 40);
const QColor kWhite(255, 255, 255);
const QColor kGrey(128, 128, 128);
const QColor kRed(220, 30, 20);
const QColor kGreen(30, 220, 20);
const QColor kBlue(20, 30, 220);

/// A font that looks the same on the screen and on a picture, whose densities differ.
QFont fontOf(const QWidget &widget, int pixelSize)
{
    QFont font = widget.font();
    font.setPixelSize(pixelSize);
    return font;
}

/// \a bare with the text of \a button as it should stand there.
QImage written(const QImage &bare, const MButton &button, const QColor &ink)
{
    constexpr int kCentredBothWays = 132;
    QImage picture = bare;
    QPainter painter(&picture);
    painter.setFont(button.font());
    painter.setPen(ink);
    painter.drawText(button.rect(), kCentredBothWays, button.text());
    painter.end();
    return picture;
}

} // namespace

class tst_MButtonText : public QObject
{
    Q_OBJECT

private slots:
    void colour_data();
    void colour();
    void place_data();
    void place();
    void emptyTextDrawsNothing();

private:
    QTemporaryDir m_folder;
};

void tst_MButtonText::colour_data()
{
    QTest::addColumn<QVector<Action>>("actions");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("ownColours");
    QTest::addColumn<QColor>("ink");

    using Actions = QVector<Action>;
    const Actions hover{Enter};
    const Actions press{Enter, LeftPress};
    QTest::newRow("normal") << Actions{} << true << false << kWhite;
    QTest::newRow("hover") << hover << true << false << kWhite;
    QTest::newRow("pressed") << press << true << false << kWhite;
    QTest::newRow("disabled") << Actions{} << false << false << kGrey;
    QTest::newRow("normal, colours set") << Actions{} << true << true << kRed;
    QTest::newRow("hover, colours set") << hover << true << true << kGreen;
    QTest::newRow("pressed, colours set") << press << true << true << kBlue;
    QTest::newRow("disabled, colours set") << Actions{} << false << true << kGrey;
    QTest::newRow("disabled while hovered, colours set") << hover << false << true << kGrey;
    QTest::newRow("disabled while pressed, colours set") << press << false << true << kGrey;
}

/// Over a picture of many colours, so that a translucent ink shows as well.
void tst_MButtonText::colour()
{
    QFETCH(QVector<Action>, actions);
    QFETCH(bool, enabled);
    QFETCH(bool, ownColours);
    QFETCH(QColor, ink);

    Open<MButton> button(nullptr);
    button.resize(kFrame);
    button.setFont(fontOf(button, 16));
    button.setPixmap(StripedPicture::save(m_folder, kStrip), 0);
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

void tst_MButtonText::place_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("pixelSize");
    QTest::addColumn<QString>("text");

    QTest::newRow("in the middle") << QSize(120, 40) << 12 << "HEH";
    QTest::newRow("large font") << QSize(160, 60) << 30 << "HHHH";
    QTest::newRow("an ampersand is shown") << QSize(120, 40) << 12 << "&HHH";
    QTest::newRow("lines stay lines") << QSize(120, 60) << 12 << "H\nHHH";
    QTest::newRow("words are not wrapped") << QSize(40, 60) << 12 << "HEHEHE HEHEHE";
}

void tst_MButtonText::place()
{
    QFETCH(QSize, size);
    QFETCH(int, pixelSize);
    QFETCH(QString, text);

    MButton button(nullptr);
    button.resize(size);
    button.setFont(fontOf(button, pixelSize));
    button.setText(text);
    const QImage empty = WidgetPicture::canvas(size);
    QCOMPARE(WidgetPicture::of(button), written(empty, button, kWhite));
}

void tst_MButtonText::emptyTextDrawsNothing()
{
    MButton button(nullptr);
    button.resize(100, 40);
    QCOMPARE(WidgetPicture::of(button), WidgetPicture::canvas(button.size()));
    button.setText("HEH");
    QVERIFY(WidgetPicture::of(button) != WidgetPicture::canvas(button.size()));
    button.setText("");
    QCOMPARE(WidgetPicture::of(button), WidgetPicture::canvas(button.size()));
}

QTEST_MAIN(tst_MButtonText)
#include "tst_MButtonText.moc"

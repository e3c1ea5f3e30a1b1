// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/support/PointerEvents.h"
#include "tests/support/StripedPicture.h"
#include "tests/support/WidgetPicture.h"
#include "widgets/FuncButton.h"
#include "widgets/IconButton.h"
#include "widgets/ProfileButton.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QTemporaryDir>
#include <QtTest>

using namespace PointerEvents;

namespace {

constexpr QSize kSize(100, 40);

/// How a class writes the caption that its constructor gets.
struct Caption
{
    const char *className = nullptr;
    std::unique_ptr<QPushButton> (*make)(const QString &text) = nullptr;
    void (*dress)(QPushButton &button, const QString &picture) = nullptr;
    QRect (*place)(const QSize &button) = nullptr; ///< while no icon rectangle is set
    int flags = 0; ///< of QPainter::drawText
    QColor normal;
    QColor active; ///< hovered or pressed
};

template <class Button> std::unique_ptr<QPushButton> make(const QString &text)
{
    return std::make_unique<Button>(nullptr, text);
}

void dressFunc(QPushButton &button, const QString &picture)
{
    static_cast<FuncButton &>(button).setPixmap(picture, picture);
}

/// The icon is larger than its rectangle and reaches under the title.
template <class Titled> void dressTitled(QPushButton &button, const QString &picture)
{
    static_cast<Titled &>(button).setBkgPixmap(picture, 3);
    static_cast<Titled &>(button).setIconPixmap(picture, 1, QRect(0, 0, 1, 1));
}

const QVector<Caption> kCaptions{
    {"FuncButton", make<FuncButton>, dressFunc,
     // 25 rows high, with 11 rows below it
     [](const QSize &button) { return QRect(0, button.height() - 36, button.width(), 25); },
     Qt::AlignCenter, QColor(100, 100, 100), QColor(30, 30, 30)},
    {"IconButton", make<IconButton>, dressTitled<IconButton>,
     [](const QSize &button) { return QRect(QPoint(0, 0), button).adjusted(9, 0, 0, 0); },
     Qt::AlignLeft | Qt::AlignVCenter, QColor(55, 55, 55), QColor(255, 255, 255)},
    {"ProfileButton", make<ProfileButton>, dressTitled<ProfileButton>,
     [](const QSize &button) { return QRect(QPoint(0, 0), button); }, Qt::AlignCenter,
     QColor(55, 55, 55), QColor(255, 255, 255)}};

/// \a text on an otherwise empty button of \a size, drawn without a widget.
QImage written(const Caption &caption, const QSize &size, const QString &text, const QColor &ink)
{
    // A picture has its own resolution, which determines the size of the letters.
    constexpr double kMetresPerInch = 0.0254;
    const QScreen *screen = QGuiApplication::primaryScreen();
    QImage picture = WidgetPicture::canvas(size);
    picture.setDotsPerMeterX(qRound(screen->logicalDotsPerInchX() / kMetresPerInch));
    picture.setDotsPerMeterY(qRound(screen->logicalDotsPerInchY() / kMetresPerInch));
    QPainter painter(&picture);
    painter.setFont(QFont("Arial", 12));
    painter.setPen(ink);
    painter.drawText(caption.place(size), caption.flags, text);
    painter.end();
    return picture;
}

using Preparation = void (*)(QPushButton &button);

} // namespace

Q_DECLARE_METATYPE(Caption)
Q_DECLARE_METATYPE(Preparation)

/// The captions of the three classes that keep their own instead of using text().
class tst_ButtonCaptions : public QObject
{
    Q_OBJECT

private slots:
    /// Makes sure that Arial differs from the default font even where neither is installed.
    void initTestCase() { QFont::insertSubstitution("Arial", "DejaVu Sans Mono"); }

    void isWrittenAsItIs_data();
    void isWrittenAsItIs();
    void colour_data();
    void colour();
    void ignoresTheWidgetsFont_data();
    void ignoresTheWidgetsFont();
    void liesOverThePictures_data() { eachClass(); }
    void liesOverThePictures();
    void isNotTheText_data() { eachClass(); }
    void isNotTheText();
    void mayBeLeftOut();

private:
    static void eachClass();

    QTemporaryDir m_folder;
};

void tst_ButtonCaptions::eachClass()
{
    QTest::addColumn<Caption>("caption");

    for (const Caption &caption : kCaptions) {
        QTest::newRow(caption.className) << caption;
    }
}

void tst_ButtonCaptions::isWrittenAsItIs_data()
{
    QTest::addColumn<Caption>("caption");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QString>("text");

    const QString wide(20, '_');
    for (const Caption &caption : kCaptions) {
        const auto row = [&](const char *name, const QSize &size, const QString &text) {
            QTest::addRow("%s, %s", caption.className, name) << caption << size << text;
        };
        row("nothing", kSize, "");
        row("capital letters", kSize, "HEH");
        row("odd size", QSize(101, 41), "HEH");
        row("high button", QSize(80, 200), "HEH");
        row("low button", QSize(80, 24), "HEH");
        row("an ampersand marks no key", kSize, "H&E");
        row("two lines", QSize(80, 80), "H\nE");
        row("more lines than fit are clipped", kSize, "H\nE\nH\nE\nH");
        row("words wider than the button are not wrapped", QSize(60, 80), "HEHEHE HEHEHE");
        row("wider than the button is clipped", QSize(60, 40), wide);
    }
}

void tst_ButtonCaptions::isWrittenAsItIs()
{
    QFETCH(Caption, caption);
    QFETCH(QSize, size);
    QFETCH(QString, text);

    const auto button = caption.make(text);
    button->resize(size);
    QCOMPARE(WidgetPicture::of(*button), written(caption, size, text, caption.normal));
}

void tst_ButtonCaptions::colour_data()
{
    QTest::addColumn<Caption>("caption");
    QTest::addColumn<Preparation>("prepare");
    QTest::addColumn<bool>("active");

    for (const Caption &caption : kCaptions) {
        const auto row = [&caption](const char *name, Preparation prepare, bool active) {
            QTest::addRow("%s, %s", caption.className, name) << caption << prepare << active;
        };
        row(
            "normal", [](QPushButton &) {}, false);
        row(
            "hovered", [](QPushButton &button) { cross(button, Enter); }, true);
        row(
            "pressed", [](QPushButton &button) { QTest::mousePress(&button, Qt::LeftButton); },
            true);
        row(
            "disabled", [](QPushButton &button) { button.setEnabled(false); }, false);
        row(
            "hovered and disabled",
            [](QPushButton &button) {
                cross(button, Enter);
                button.setEnabled(false);
            },
            true);
    }
    const Preparation mark = [](QPushButton &button) {
        static_cast<FuncButton &>(button).setCheck(true);
    };
    QTest::newRow("FuncButton, marked") << kCaptions.first() << mark << true;
}

void tst_ButtonCaptions::colour()
{
    QFETCH(Caption, caption);
    QFETCH(Preparation, prepare);
    QFETCH(bool, active);

    const auto button = caption.make("HEH");
    button->resize(kSize);
    prepare(*button);
    QCOMPARE(WidgetPicture::of(*button),
             written(caption, kSize, "HEH", active ? caption.active : caption.normal));
}

void tst_ButtonCaptions::ignoresTheWidgetsFont_data()
{
    QTest::addColumn<Caption>("caption");
    QTest::addColumn<QFont>("font");

    for (const Caption &caption : kCaptions) {
        const auto row = [&caption](const char *name, const auto &change) {
            QFont font;
            change(font);
            QTest::addRow("%s, %s", caption.className, name) << caption << font;
        };
        row("large", [](QFont &font) { font.setPointSize(40); });
        row("another family", [](QFont &font) { font.setFamily("DejaVu Serif"); });
        row("bold", [](QFont &font) { font.setBold(true); });
        row("italic", [](QFont &font) { font.setItalic(true); });
        row("underlined", [](QFont &font) { font.setUnderline(true); });
        row("overlined", [](QFont &font) { font.setOverline(true); });
        row("struck out", [](QFont &font) { font.setStrikeOut(true); });
        row("stretched", [](QFont &font) { font.setStretch(QFont::UltraExpanded); });
        row("lower case", [](QFont &font) { font.setCapitalization(QFont::AllLowercase); });
        row("spaced letters",
            [](QFont &font) { font.setLetterSpacing(QFont::AbsoluteSpacing, 3); });
        row("spaced words", [](QFont &font) { font.setWordSpacing(9); });
        row("not smoothed", [](QFont &font) { font.setStyleStrategy(QFont::NoAntialias); });
    }
}

void tst_ButtonCaptions::ignoresTheWidgetsFont()
{
    QFETCH(Caption, caption);
    QFETCH(QFont, font);

    const auto button = caption.make("HE H");
    button->resize(kSize);
    button->setFont(font);
    QCOMPARE(WidgetPicture::of(*button), written(caption, kSize, "HE H", caption.normal));
}

void tst_ButtonCaptions::liesOverThePictures()
{
    QFETCH(Caption, caption);

    const QString picture = StripedPicture::save(m_folder, QSize(300, 40));
    const auto bare = caption.make(QString());
    const auto captioned = caption.make("HEHEHE");
    for (QPushButton *button : {bare.get(), captioned.get()}) {
        button->resize(kSize);
        caption.dress(*button, picture);
    }
    QVERIFY(WidgetPicture::isWrittenIn(caption.normal, WidgetPicture::of(*bare),
                                       WidgetPicture::of(*captioned)));
}

void tst_ButtonCaptions::isNotTheText()
{
    QFETCH(Caption, caption);

    QVERIFY(caption.make("HEH")->text().isEmpty());
}

/// A form creates its widgets with a parent only.
void tst_ButtonCaptions::mayBeLeftOut()
{
    QWidget parent;
    const FuncButton function(&parent);
    const IconButton icon(&parent);
    const ProfileButton profile(&parent);
    QCOMPARE(function.title() + icon.title() + profile.title(), QString());
    QCOMPARE(parent.children().size(), 3);
}

QTEST_MAIN(tst_ButtonCaptions)
#include "tst_ButtonCaptions.moc"

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/support/PointerEvents.h"
#include "tests/support/RepaintCounter.h"
#include "tests/support/StripedPicture.h"
#include "tests/support/WidgetPicture.h"
#include "widgets/IconButton.h"
#include "widgets/ProfileButton.h"

#include <QPainter>
#include <QTemporaryDir>
#include <QtTest>

using namespace PointerEvents;

namespace {

constexpr QSize kSize(100, 40); // of buttons and backgrounds
constexpr QSize kIcon(24, 24);

/// An IconButton or a ProfileButton, whose pictures follow the same rules.
struct Subject
{
    std::unique_ptr<QPushButton> button;
    std::function<void(const QString &path, int count)> setBackground;
    std::function<void(const QString &path, int count, const QRect &rect)> setIcon;
    std::function<void(int state)> bring; ///< to 0 normal, 1 hovered, 2 pressed
};

template <class Titled> Subject make()
{
    auto owner = std::make_unique<Open<Titled>>(nullptr);
    Open<Titled> &button = *owner;
    button.resize(kSize);
    return {std::move(owner),
            [&button](const QString &path, int count) { button.setBkgPixmap(path, count); },
            [&button](const QString &path, int count, const QRect &rect) {
                button.setIconPixmap(path, count, rect);
            },
            [&button](int state) {
                call(button, state == 0 ? Leave : state == 1 ? Enter : LeftPress);
            }};
}

using Maker = Subject (*)();
const QVector<QPair<const char *, Maker>> kClasses{{"IconButton", make<IconButton>},
                                                   {"ProfileButton", make<ProfileButton>}};

/// A frame in a colour of its own, made from \a number and \a green; null for a negative number.
QImage plain(int number, const QSize &size, int green)
{
    if (number < 0) {
        return {};
    }
    QImage picture(size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(QColor(number * 30, green, 50));
    return picture;
}

/// Saves \a count plain frames side by side, the first with the number \a first; returns the path.
QString savePlain(const QTemporaryDir &folder, int first, int count, const QSize &size, int green)
{
    const int frames = qMax(count, 1); // a button that accepts a count below 1 shows something
    QImage strip(size.width() * frames, size.height(), QImage::Format_ARGB32);
    QPainter painter(&strip);
    for (int i = 0; i < frames; ++i) {
        painter.drawImage(i * size.width(), 0, plain(first + i, size, green));
    }
    painter.end();
    QString path
        = folder.filePath(QString("%1-%2-%3.png").arg(first).arg(strip.width()).arg(green));
    if (!strip.save(path)) {
        qFatal("cannot save a test picture");
    }
    return path;
}

/// A button with \a icon on \a background.
QImage dressed(const QImage &background, const QImage &icon, const QPoint &iconTopLeft)
{
    QImage picture = WidgetPicture::canvas(kSize);
    QPainter painter(&picture);
    painter.drawImage(0, 0, background);
    painter.drawImage(iconTopLeft, icon);
    return picture;
}

} // namespace

Q_DECLARE_METATYPE(Maker)

/// The pictures of the two buttons that also have a title, and what moves or changes the title.
class tst_TitledButtons : public QObject
{
    Q_OBJECT

private slots:
    void icon_data();
    void icon();
    void callsOfTheSetters_data();
    void callsOfTheSetters();
    void settingIconsDoesNotRepaint();
    void iconRectangle_data();
    void iconRectangle();
    void setTitle_data();
    void setTitle();

private:
    QTemporaryDir m_folder;
};

void tst_TitledButtons::icon_data()
{
    QTest::addColumn<Maker>("make");
    QTest::addColumn<int>("count");
    QTest::addColumn<QRect>("rect");

    for (const auto &each : kClasses) {
        QTest::addRow("%s, one icon serves every state", each.first)
            << each.second << 1 << QRect(8, 6, 24, 24);
        QTest::addRow("%s, three icons", each.first) << each.second << 3 << QRect(8, 6, 24, 24);
        QTest::addRow("%s, the size of the rectangle does not matter", each.first)
            << each.second << 3 << QRect(30, 2, 5, 90);
        QTest::addRow("%s, partly outside", each.first)
            << each.second << 3 << QRect(-9, -3, 24, 24);
    }
}

void tst_TitledButtons::icon()
{
    QFETCH(Maker, make);
    QFETCH(int, count);
    QFETCH(QRect, rect);

    const QSize strip(kIcon.width() * count, kIcon.height());
    const Subject subject = make();
    subject.setBackground(savePlain(m_folder, 0, 3, kSize, 100), 3);
    subject.setIcon(StripedPicture::save(m_folder, strip), count, rect);
    for (int state = 0; state < 3; ++state) {
        subject.bring(state);
        const int x = count == 1 ? 0 : state * kIcon.width();
        QCOMPARE(WidgetPicture::of(*subject.button),
                 dressed(plain(state, kSize, 100), StripedPicture::columns(strip, x, kIcon.width()),
                         rect.topLeft()));
    }
}

void tst_TitledButtons::callsOfTheSetters_data()
{
    QTest::addColumn<Maker>("make");
    QTest::addColumn<QVector<int>>("backgrounds");
    QTest::addColumn<QVector<int>>("icons");
    QTest::addColumn<QVector<int>>("backgroundsShown");
    QTest::addColumn<QVector<int>>("iconsShown");

    using Counts = QVector<int>;
    using Shown = QVector<int>; // numbers in the order of appending; -1 for none
    for (const auto &each : kClasses) {
        const auto row = [&each](const char *name, const Counts &backgrounds, const Counts &icons,
                                 const Shown &backgroundsShown, const Shown &iconsShown) {
            QTest::addRow("%s, %s", each.first, name)
                << each.second << backgrounds << icons << backgroundsShown << iconsShown;
        };
        row("nothing set", {}, {}, {-1, -1, -1}, {-1, -1, -1});
        row("the first of two strips is shown", {3, 3}, {3, 3}, {0, 1, 2}, {0, 1, 2});
        row("count 0 appends nothing", {0}, {0}, {-1, -1, -1}, {-1, -1, -1});
        row("a negative count appends nothing", {-3}, {-3}, {-1, -1, -1}, {-1, -1, -1});
        row("count 0 before a strip", {0, 3}, {0, 3}, {0, 1, 2}, {0, 1, 2});
        row("too few frames leave the picture out", {2}, {2}, {0, 1, -1}, {0, 1, -1});
        row("one background does not serve every state", {1}, {1}, {0, -1, -1}, {0, 0, 0});
        row("frames of two strips follow each other", {1, 2}, {1, 2}, {0, 1, 2}, {0, 1, 2});
        row("icon count 1 after 3 shows the very first icon", {3}, {3, 1}, {0, 1, 2}, {0, 0, 0});
        row("icon count 0 after 1 counts by state again", {3}, {1, 0}, {0, 1, 2}, {0, -1, -1});
    }
}

/// Each call brings frames of its own colours, which are counted from 0.
void tst_TitledButtons::callsOfTheSetters()
{
    QFETCH(Maker, make);
    QFETCH(QVector<int>, backgrounds);
    QFETCH(QVector<int>, icons);
    QFETCH(QVector<int>, backgroundsShown);
    QFETCH(QVector<int>, iconsShown);

    const Subject subject = make();
    int first = 0;
    for (const int count : backgrounds) {
        subject.setBackground(savePlain(m_folder, first, count, kSize, 100), count);
        first += qMax(count, 0);
    }
    first = 0;
    for (const int count : icons) {
        subject.setIcon(savePlain(m_folder, first, count, kIcon, 200), count,
                        QRect(QPoint(8, 6), kIcon));
        first += qMax(count, 0);
    }
    for (int state = 0; state < 3; ++state) {
        subject.bring(state);
        QCOMPARE(WidgetPicture::of(*subject.button),
                 dressed(plain(backgroundsShown.at(state), kSize, 100),
                         plain(iconsShown.at(state), kIcon, 200), QPoint(8, 6)));
    }
}

void tst_TitledButtons::settingIconsDoesNotRepaint()
{
    for (const auto &each : kClasses) {
        const Subject subject = each.second();
        RepaintCounter repaints(subject.button.get());
        subject.setIcon(StripedPicture::save(m_folder, kIcon), 1, QRect(8, 6, 24, 24));
        QCOMPARE(repaints.take(), 0);
        QCOMPARE(subject.button->size(), kSize);
    }
}

void tst_TitledButtons::iconRectangle_data()
{
    QTest::addColumn<QRect>("rect");
    QTest::addColumn<int>("left");

    QTest::newRow("24 wide at (8, 6)") << QRect(8, 6, 24, 24) << 41;
    QTest::newRow("40 wide at (8, 6)") << QRect(8, 6, 40, 24) << 57;
    QTest::newRow("left of the button") << QRect(-50, 0, 45, 10) << 4;
}

/// An IconButton's title begins to the right of the last rectangle, or at 9 if none is set. A
/// ProfileButton's title stays in the middle.
void tst_TitledButtons::iconRectangle()
{
    QFETCH(QRect, rect);
    QFETCH(int, left);

    constexpr QSize kWide(160, 40);
    IconButton icon(nullptr, "HEH");
    ProfileButton profile(nullptr, "HEH");
    icon.resize(kWide);
    profile.resize(kWide);
    const QImage iconBefore = WidgetPicture::of(icon);
    const QImage profileBefore = WidgetPicture::of(profile);
    for (const QRect &each : {QRect(1, 2, 3, 4), rect}) {
        icon.setIconPixmap(QString(), 0, each);
        profile.setIconPixmap(QString(), 0, each);
    }
    QCOMPARE(WidgetPicture::of(icon), WidgetPicture::with(kWide, QPoint(left - 9, 0), iconBefore));
    QCOMPARE(WidgetPicture::of(profile), profileBefore);
}

void tst_TitledButtons::setTitle_data()
{
    QTest::addColumn<QString>("title");

    QTest::newRow("new text") << "EHE";
    QTest::newRow("the same text") << "HEH";
    QTest::newRow("no text") << "";
}

/// It schedules a paint, even if the title does not change, and keeps the state.
void tst_TitledButtons::setTitle()
{
    QFETCH(QString, title);

    ProfileButton button(nullptr, "HEH");
    ProfileButton fresh(nullptr, title);
    for (ProfileButton *each : {&button, &fresh}) {
        each->resize(kSize);
        cross(*each, Enter);
    }
    RepaintCounter repaints(&button);
    button.SetTitle(title);
    button.SetTitle(title);
    QCOMPARE(repaints.take(), 1);
    QCOMPARE(WidgetPicture::of(button), WidgetPicture::of(fresh));
    QVERIFY(button.text().isEmpty());
}

QTEST_MAIN(tst_TitledButtons)
#include "tst_TitledButtons.moc"

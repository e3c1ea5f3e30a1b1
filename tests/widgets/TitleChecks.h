// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/support/PointerEvents.h"
#include "tests/support/WidgetPicture.h"
#include "tests/widgets/Lettering.h"
#include "tests/widgets/TitledPictures.h"

#include <QtTest>

/// What the titles of the two buttons with background, icon and title have in common, checked for
/// either of them. Each function is the body of a test function of the same name.
template <class Button> class TitleChecks
{
public:
    /// While no icon rectangle is set, the title's rectangle begins at \a left; \a flags align it.
    TitleChecks(int left, int flags)
        : m_left(left)
        , m_flags(flags)
    { }

    /// An otherwise empty button of \a size with \a title, its rectangle beginning at \a left and
    /// ending with the button.
    QImage written(const QSize &size, const QString &title, int left,
                   const QColor &ink = QColor(55, 55, 55)) const
    {
        const QRect rect(QPoint(left, 0), QPoint(size.width() - 1, size.height() - 1));
        return Lettering{rect, m_flags, ink}.on(WidgetPicture::canvas(size), title);
    }

    static void writesTheTitleAsItIs_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QString>("title");

        QTest::newRow("capital letters") << QSize(100, 40) << "HEH";
        QTest::newRow("odd size") << QSize(101, 41) << "HEH";
        QTest::newRow("an ampersand marks no key") << QSize(100, 40) << "H&E";
        QTest::newRow("two lines") << QSize(100, 40) << "H\nE";
        QTest::newRow("more lines than fit are cut off") << QSize(100, 40) << "H\nE\nH\nE\nH";
        QTest::newRow("words wider than the button stay in one line")
            << QSize(60, 40) << "HEHEHE HEHEHE";
        QTest::newRow("wider than the button is cut off") << QSize(60, 40) << "________________";
    }

    void writesTheTitleAsItIs() const
    {
        QFETCH(QSize, size);
        QFETCH(QString, title);

        Button button(nullptr, title);
        button.resize(size);
        QCOMPARE(WidgetPicture::of(button), written(size, title, m_left));
    }

    static void titleColour_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<QColor>("ink");

        const QColor dark(55, 55, 55);
        const QColor white(255, 255, 255);
        QTest::newRow("normal") << 0 << true << dark;
        QTest::newRow("hover") << 1 << true << white;
        QTest::newRow("pressed") << 2 << true << white;
        QTest::newRow("disabled looks enabled") << 0 << false << dark;
        QTest::newRow("hover while disabled") << 1 << false << white;
        QTest::newRow("pressed while disabled") << 2 << false << white;
    }

    void titleColour() const
    {
        QFETCH(int, state);
        QFETCH(bool, enabled);
        QFETCH(QColor, ink);

        PointerEvents::Open<Button> button(nullptr, "HEH");
        button.resize(TitledPictures::kSize);
        button.setEnabled(enabled);
        TitledPictures::bring(button, state);
        QCOMPARE(WidgetPicture::of(button), written(button.size(), "HEH", m_left, ink));
    }

    static void titleIgnoresTheWidgetsFont_data() { Lettering::addWidgetFonts(); }

    void titleIgnoresTheWidgetsFont() const
    {
        QFETCH(QFont, font);

        Button button(nullptr, "HE H");
        button.resize(TitledPictures::kSize);
        button.setFont(font);
        QCOMPARE(WidgetPicture::of(button), written(button.size(), "HE H", m_left));
    }

    /// So that a form can make the button.
    static void titleMayBeLeftOut()
    {
        QWidget parent;
        const Button button(&parent);
        QCOMPARE(button.parentWidget(), &parent);
        QCOMPARE(button.title(), QString());
    }

private:
    int m_left;
    int m_flags;
};

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/support/ButtonSignals.h"
#include "tests/support/PointerEvents.h"
#include "tests/support/RepaintCounter.h"
#include "tests/support/StripedPicture.h"
#include "tests/support/WidgetPicture.h"
#include "tests/widgets/TitledPictures.h"

#include <QTemporaryDir>
#include <QtTest>

/// What the two buttons with background, icon and title have in common, checked for either of them.
/// Each function is the body of a test function of the same name.
template <class Button> class TitledButtonChecks
{
public:
    static void cutsTheBackground_data()
    {
        QTest::addColumn<QSize>("strip");
        QTest::addColumn<int>("count");
        QTest::addColumn<QVector<int>>("starts");
        QTest::addColumn<int>("width");

        using Starts = QVector<int>;
        QTest::newRow("300 x 40 by 3") << QSize(300, 40) << 3 << Starts{0, 100, 200} << 100;
        QTest::newRow("301 wide by 3: column 300 never shows")
            << QSize(301, 40) << 3 << Starts{0, 100, 200} << 100;
        QTest::newRow("100 wide by 3: column 99 never shows")
            << QSize(100, 40) << 3 << Starts{0, 33, 66} << 33;
        QTest::newRow("10 wide by 4: columns 4 and 9 never show")
            << QSize(10, 40) << 4 << Starts{0, 2, 5} << 2;
        QTest::newRow("2 wide by 3: every frame is the whole picture")
            << QSize(2, 40) << 3 << Starts{0, 0, 0} << 2;
    }

    void cutsTheBackground()
    {
        QFETCH(QSize, strip);
        QFETCH(int, count);
        QFETCH(QVector<int>, starts);
        QFETCH(int, width);

        Subject button(nullptr, QString());
        button.resize(width, strip.height());
        button.setBkgPixmap(StripedPicture::save(m_folder, strip), count);
        for (int state = 0; state < 3; ++state) {
            TitledPictures::bring(button, state);
            QCOMPARE(WidgetPicture::of(button),
                     WidgetPicture::with(button.size(), QPoint(0, 0),
                                         StripedPicture::columns(strip, starts.at(state), width)));
        }
    }

    static void drawsTheBackgroundInTheMiddle_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QPoint>("topLeft");

        QTest::newRow("120 x 40") << QSize(120, 40) << QPoint(10, 5);
        QTest::newRow("90 x 25, clipped") << QSize(90, 25) << QPoint(-5, -2);
        QTest::newRow("odd rest rounds down") << QSize(121, 41) << QPoint(10, 5);
    }

    void drawsTheBackgroundInTheMiddle()
    {
        QFETCH(QSize, size);
        QFETCH(QPoint, topLeft);

        Subject button(nullptr, QString());
        button.resize(size);
        button.setBkgPixmap(StripedPicture::save(m_folder, TitledPictures::kStrip), 3);
        QCOMPARE(WidgetPicture::of(button),
                 WidgetPicture::with(size, topLeft, TitledPictures::background(0)));
    }

    static void drawsTheIcon_data()
    {
        QTest::addColumn<QSize>("strip");
        QTest::addColumn<int>("count");
        QTest::addColumn<QRect>("rect");
        QTest::addColumn<QVector<int>>("starts");

        using Starts = QVector<int>;
        QTest::newRow("one icon serves every state")
            << QSize(24, 24) << 1 << QRect(8, 6, 24, 24) << Starts{0, 0, 0};
        QTest::newRow("three icons")
            << QSize(72, 24) << 3 << QRect(8, 6, 24, 24) << Starts{0, 24, 48};
        QTest::newRow("the rectangle's size plays no part")
            << QSize(72, 24) << 3 << QRect(30, 2, 5, 90) << Starts{0, 24, 48};
        QTest::newRow("partly outside")
            << QSize(72, 24) << 3 << QRect(-9, -3, 24, 24) << Starts{0, 24, 48};
    }

    void drawsTheIcon()
    {
        QFETCH(QSize, strip);
        QFETCH(int, count);
        QFETCH(QRect, rect);
        QFETCH(QVector<int>, starts);

        Subject button(nullptr, QString());
        button.resize(TitledPictures::kSize);
        button.setBkgPixmap(StripedPicture::save(m_folder, TitledPictures::kStrip), 3);
        button.setIconPixmap(StripedPicture::saveOther(m_folder, strip), count, rect);
        const QImage icons = StripedPicture::paintOther(strip);
        for (int state = 0; state < 3; ++state) {
            TitledPictures::bring(button, state);
            QCOMPARE(WidgetPicture::of(button),
                     TitledPictures::dressed(TitledPictures::background(state),
                                             icons.copy(starts.at(state), 0, 24, 24),
                                             rect.topLeft()));
        }
    }

    static void callsOfTheSetters_data()
    {
        QTest::addColumn<QVector<int>>("backgrounds");
        QTest::addColumn<QVector<int>>("icons");
        QTest::addColumn<QVector<int>>("backgroundsShown");
        QTest::addColumn<QVector<int>>("iconsShown");

        using Counts = QVector<int>;
        using Shown = QVector<int>; // the number in the order of appending; -1 for none
        QTest::newRow("nothing set")
            << Counts{} << Counts{} << Shown{-1, -1, -1} << Shown{-1, -1, -1};
        QTest::newRow("background twice shows the first strip")
            << Counts{3, 3} << Counts{} << Shown{0, 1, 2} << Shown{-1, -1, -1};
        QTest::newRow("count 0 appends nothing")
            << Counts{0} << Counts{0} << Shown{-1, -1, -1} << Shown{-1, -1, -1};
        QTest::newRow("negative count appends nothing")
            << Counts{-3} << Counts{-3} << Shown{-1, -1, -1} << Shown{-1, -1, -1};
        QTest::newRow("count 0 before a strip")
            << Counts{0, 3} << Counts{0, 3} << Shown{0, 1, 2} << Shown{0, 1, 2};
        QTest::newRow("too few frames leave the picture out")
            << Counts{2} << Counts{2} << Shown{0, 1, -1} << Shown{0, 1, -1};
        QTest::newRow("one background does not serve every state")
            << Counts{1} << Counts{1} << Shown{0, -1, -1} << Shown{0, 0, 0};
        QTest::newRow("frames of two strips follow each other")
            << Counts{1, 2} << Counts{1, 2} << Shown{0, 1, 2} << Shown{0, 1, 2};
        QTest::newRow("icon count 1 after 3 shows the very first icon")
            << Counts{3} << Counts{3, 1} << Shown{0, 1, 2} << Shown{0, 0, 0};
        QTest::newRow("icon count 0 after 1 indexes by state again")
            << Counts{3} << Counts{1, 0} << Shown{0, 1, 2} << Shown{0, -1, -1};
    }

    /// Each call gives frames of its own colours, counted through from 0.
    void callsOfTheSetters()
    {
        QFETCH(QVector<int>, backgrounds);
        QFETCH(QVector<int>, icons);
        QFETCH(QVector<int>, backgroundsShown);
        QFETCH(QVector<int>, iconsShown);

        Subject button(nullptr, QString());
        button.resize(TitledPictures::kSize);
        int first = 0;
        for (const int count : backgrounds) {
            button.setBkgPixmap(
                TitledPictures::savePlain(m_folder, first, count, TitledPictures::kSize, 100),
                count);
            first += qMax(count, 0);
        }
        first = 0;
        for (const int count : icons) {
            button.setIconPixmap(
                TitledPictures::savePlain(m_folder, first, count, TitledPictures::kIcon, 200),
                count, QRect(QPoint(8, 6), TitledPictures::kIcon));
            first += qMax(count, 0);
        }
        for (int state = 0; state < 3; ++state) {
            TitledPictures::bring(button, state);
            QCOMPARE(
                WidgetPicture::of(button),
                TitledPictures::dressed(
                    TitledPictures::plain(backgroundsShown.at(state), TitledPictures::kSize, 100),
                    TitledPictures::plain(iconsShown.at(state), TitledPictures::kIcon, 200),
                    QPoint(8, 6)));
        }
    }

    /// An unreadable strip counts: its null frames stand in front of those of a later one.
    void unreadablePicturesDrawNothing()
    {
        const QString missing = m_folder.filePath("missing.png");
        Subject button(nullptr, "HEH");
        button.resize(TitledPictures::kSize);
        button.setBkgPixmap(missing, 3);
        button.setIconPixmap(missing, 1, QRect(8, 6, 24, 24));
        button.setBkgPixmap(StripedPicture::save(m_folder, TitledPictures::kStrip), 3);
        QVERIFY(WidgetPicture::isWrittenIn(QColor(55, 55, 55),
                                           WidgetPicture::canvas(TitledPictures::kSize, kGrey),
                                           WidgetPicture::of(button, kGrey)));
    }

    void titleLiesOverTheIcon()
    {
        Subject bare(nullptr, QString());
        Subject titled(nullptr, "HEHEHEHEHE");
        for (Subject *button : {&bare, &titled}) {
            button->resize(TitledPictures::kSize);
            button->setBkgPixmap(
                TitledPictures::savePlain(m_folder, 0, 3, TitledPictures::kSize, 100), 3);
            // An icon that is larger than its rectangle reaches under the title of either class.
            button->setIconPixmap(
                TitledPictures::savePlain(m_folder, 0, 1, TitledPictures::kSize, 200), 1,
                QRect(0, 0, 1, 1));
        }
        QVERIFY(WidgetPicture::isWrittenIn(QColor(55, 55, 55), WidgetPicture::of(bare),
                                           WidgetPicture::of(titled)));
    }

    void textIsNotUsed()
    {
        Subject titled(nullptr, "HEH");
        QVERIFY(titled.text().isEmpty());

        Subject button(nullptr, QString());
        button.resize(TitledPictures::kSize);
        button.setText("HEH");
        button.setIcon(QPixmap::fromImage(StripedPicture::paint(QSize(16, 16))));
        QCOMPARE(WidgetPicture::of(button), WidgetPicture::canvas(TitledPictures::kSize));
    }

    void pixmapSettersDoNotRepaint()
    {
        Subject button(nullptr, QString());
        button.resize(TitledPictures::kSize);
        RepaintCounter repaints(&button);
        button.setBkgPixmap(StripedPicture::save(m_folder, TitledPictures::kStrip), 3);
        button.setIconPixmap(StripedPicture::save(m_folder, TitledPictures::kStrip), 3,
                             QRect(8, 6, 24, 24));
        QCOMPARE(repaints.take(), 0);
        QCOMPARE(button.size(), TitledPictures::kSize);
    }

    void onlyTheLeftButtonClicks()
    {
        Subject button(nullptr, QString());
        button.resize(TitledPictures::kSize);
        button.setBkgPixmap(StripedPicture::save(m_folder, TitledPictures::kStrip), 3);
        ButtonSignals buttonSignals(&button);
        QTest::mouseClick(&button, Qt::RightButton);
        QCOMPARE(buttonSignals.take(), QStringList{});
        QCOMPARE(WidgetPicture::of(button),
                 WidgetPicture::with(TitledPictures::kSize, QPoint(0, 5),
                                     TitledPictures::background(0)));
        QTest::mouseClick(&button, Qt::LeftButton);
        QCOMPARE(buttonSignals.take(), (QStringList{"pressed", "released", "clicked(false)"}));
    }

private:
    using Subject = PointerEvents::Open<Button>;

    static constexpr QRgb kGrey = 0xff909090;

    QTemporaryDir m_folder;
};

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/models/ModelledButton.h"
#include "tests/support/RepaintCounter.h"
#include "tests/support/StripedPicture.h"
#include "tests/support/WarningCatcher.h"
#include "tests/support/WidgetPicture.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace PointerEvents;

/// What all buttons do with their pictures, their marks and Qt's text and icon.
class tst_ButtonPictures : public QObject
{
    Q_OBJECT

private slots:
    void look_data();
    void look();
    void unevenStrip_data();
    void unevenStrip();
    void place_data();
    void place();
    void settingPicturesNeitherRepaintsNorResizes_data() { eachWithPictures(); }
    void settingPicturesNeitherRepaintsNorResizes();
    void unreadablePicturesPaintNothing_data();
    void unreadablePicturesPaintNothing();
    void textAndIconAreIgnored_data() { ButtonRules::addRows(); }
    void textAndIconAreIgnored();
    void marking_data();
    void marking();

private:
    static void eachWithPictures()
    {
        ButtonRules::addRows([](const ButtonRules &rules) { return rules.hasPictures(); });
    }

    QTemporaryDir m_folder;
};

void tst_ButtonPictures::look_data()
{
    QTest::addColumn<ButtonRules>("rules");
    QTest::addColumn<QVector<Action>>("actions");
    QTest::addColumn<bool>("marked");

    const QVector<QPair<const char *, QVector<Action>>> states{
        {"normal", {}},
        {"hovered", {Enter}},
        {"pressed", {Enter, LeftPress}},
        {"released", {Enter, LeftPress, LeftRelease}},
        {"left", {Enter, LeftPress, LeftRelease, Leave}}};
    for (const ButtonRules &rules : ButtonRules::all()) {
        for (const auto &state : states) {
            QTest::addRow("%s, %s", qPrintable(rules.name), state.first)
                << rules << state.second << false;
            if (rules.hasMark()) {
                QTest::addRow("%s, %s, marked", qPrintable(rules.name), state.first)
                    << rules << state.second << true;
            }
        }
    }
}

void tst_ButtonPictures::look()
{
    QFETCH(ButtonRules, rules);
    QFETCH(QVector<Action>, actions);
    QFETCH(bool, marked);

    ModelledButton button(rules, m_folder);
    button.mark(marked);
    for (const Action action : actions) {
        button.act(action);
        QCOMPARE(button.difference(), QString());
    }
    for (const bool enabled : {false, true}) {
        button.setEnabled(enabled);
        QCOMPARE(button.difference(), QString());
    }
    button.mark(!marked);
    QCOMPARE(button.difference(), QString());
}

void tst_ButtonPictures::unevenStrip_data()
{
    ButtonRules::addRows([](const ButtonRules &rules) { return rules.frames > 1; });
}

/// One column less than the next frame width, so that each frame's start is rounded.
void tst_ButtonPictures::unevenStrip()
{
    QFETCH(ButtonRules, rules);

    ModelledButton button(rules, m_folder, rules.frames - 1);
    for (const bool marked : {false, true}) {
        for (const Action action : {Leave, Enter, LeftPress}) {
            button.act(action);
            button.mark(marked); // a switch flips when pressed
            QCOMPARE(button.difference(), QString());
        }
    }
    button.setEnabled(false);
    QCOMPARE(button.difference(), QString());
}

void tst_ButtonPictures::place_data()
{
    QTest::addColumn<ButtonRules>("rules");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QPoint>("topLeft");

    // Pictures are 30 x 20.
    const QVector<QPair<QSize, QPoint>> centred{
        {{30, 20}, {0, 0}}, {{61, 31}, {15, 5}}, {{10, 6}, {-10, -7}}, {{19, 9}, {-5, -5}}};
    for (const ButtonRules &rules : ButtonRules::all()) {
        for (const auto &middle : centred) {
            if (rules.hasPictures()) {
                QTest::addRow("%s, %d x %d", qPrintable(rules.name), middle.first.width(),
                              middle.first.height())
                    << rules << middle.first << (rules.centresPicture ? middle.second : QPoint());
            }
        }
    }
}

/// Nothing is scaled: the rest of a larger button stays unpainted, a smaller one clips the picture.
/// An odd rest is rounded toward zero.
void tst_ButtonPictures::place()
{
    QFETCH(ButtonRules, rules);
    QFETCH(QSize, size);
    QFETCH(QPoint, topLeft);

    const ButtonSubject subject = ButtonSubject::create(rules, m_folder);
    subject.button->resize(size);
    QCOMPARE(WidgetPicture::of(*subject.button),
             WidgetPicture::with(size, topLeft, subject.looks.at(0)));
}

void tst_ButtonPictures::settingPicturesNeitherRepaintsNorResizes()
{
    QFETCH(ButtonRules, rules);

    const ButtonSubject subject = ButtonSubject::create(rules, m_folder);
    subject.button->resize(77, 33);
    RepaintCounter counter(subject.button.get());
    subject.setPictures(subject.pictures.at(0), subject.pictures.at(1));
    QCOMPARE(counter.take(), 0);
    QCOMPARE(subject.button->size(), QSize(77, 33));
}

void tst_ButtonPictures::unreadablePicturesPaintNothing_data()
{
    QTest::addColumn<ButtonRules>("rules");
    QTest::addColumn<bool>("first");
    QTest::addColumn<bool>("second");

    for (const ButtonRules &rules : ButtonRules::all()) {
        if (rules.hasPictures()) {
            QTest::addRow("%s", qPrintable(rules.name)) << rules << false << false;
        }
        if (!rules.shownOfSecond.isEmpty()) {
            QTest::addRow("%s, first only", qPrintable(rules.name)) << rules << false << true;
            QTest::addRow("%s, second only", qPrintable(rules.name)) << rules << true << false;
        }
    }
}

/// Nothing is reported either. Where pictures accumulate, an unreadable one counts as well: its
/// frames stay in front of those of a later one.
void tst_ButtonPictures::unreadablePicturesPaintNothing()
{
    QFETCH(ButtonRules, rules);
    QFETCH(bool, first);
    QFETCH(bool, second);

    WarningCatcher warnings;
    const QString missing = m_folder.filePath("missing.png");
    const ButtonSubject dressed = ButtonSubject::create(rules, m_folder);
    const ButtonSubject bare = ButtonSubject::createBare(rules.name);
    const ButtonSubject &subject = rules.keepsPictures ? bare : dressed;
    subject.setPictures(first ? dressed.pictures.at(0) : missing,
                        second ? dressed.pictures.at(1) : missing);
    if (rules.keepsPictures) {
        subject.setPictures(dressed.pictures.at(0), dressed.pictures.at(1));
    }
    const QImage nothing = WidgetPicture::canvas(subject.button->size());
    QCOMPARE(WidgetPicture::of(*subject.button), first ? dressed.looks.at(0) : nothing);
    subject.mark(true);
    const int look = rules.flips ? ButtonRules::kLooksOfPosition : 1;
    QCOMPARE(WidgetPicture::of(*subject.button), second ? dressed.looks.at(look) : nothing);
    QCOMPARE(warnings.take(), QStringList());
}

/// Only an MButton draws its text.
void tst_ButtonPictures::textAndIconAreIgnored()
{
    QFETCH(ButtonRules, rules);

    const ButtonSubject subject = ButtonSubject::createBare(rules.name);
    const QImage before = WidgetPicture::of(*subject.button);
    subject.button->setIcon(QPixmap::fromImage(StripedPicture::paint(QSize(16, 16))));
    QCOMPARE(WidgetPicture::of(*subject.button), before);
    subject.button->setText("HEH");
    QCOMPARE(WidgetPicture::of(*subject.button) != before, rules.drawsText);
}

void tst_ButtonPictures::marking_data()
{
    ButtonRules::addRows([](const ButtonRules &rules) { return rules.hasMark(); });
}

/// The mark is not Qt's checked state. Setting it schedules a paint, even if it does not change.
void tst_ButtonPictures::marking()
{
    QFETCH(ButtonRules, rules);

    const ButtonSubject subject = ButtonSubject::create(rules, m_folder);
    RepaintCounter counter(subject.button.get());
    for (const bool marked : {true, true, false, false}) {
        subject.mark(marked);
        subject.mark(marked);
        QCOMPARE(counter.take(), 1);
    }
    subject.mark(true);
    QTest::mouseClick(subject.button.get(), Qt::LeftButton);
    QVERIFY(!subject.button->isCheckable());
    QVERIFY(!subject.button->isChecked());
}

QTEST_MAIN(tst_ButtonPictures)
#include "tst_ButtonPictures.moc"

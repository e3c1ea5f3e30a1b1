// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/models/ModelledButton.h"
#include "tests/support/RepaintCounter.h"
#include "tests/support/WidgetPicture.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace PointerEvents;

Q_DECLARE_METATYPE(Qt::MouseButton)

namespace {

constexpr QPoint kInside(1, 1);
constexpr QPoint kOutside(-5, -5);

/// Counts the mouse events that its child ignores.
class Ground : public QWidget
{
public:
    int presses = 0;
    int releases = 0;

protected:
    void mousePressEvent(QMouseEvent * /*event*/) override { ++presses; }
    void mouseReleaseEvent(QMouseEvent * /*event*/) override { ++releases; }
};

} // namespace

/// How the eight classes differ in the events to which they react, when they call the base class,
/// and which of them clicks by itself.
class tst_ButtonEvents : public QObject
{
    Q_OBJECT

private slots:
    void handler_data();
    void handler();
    void repaints_data();
    void repaints();
    void looksReadyWhenItReports_data() { ButtonRules::addRows(); }
    void looksReadyWhenItReports();
    void slotHasTheLastWord_data() { ButtonRules::addRows(); }
    void slotHasTheLastWord();
    void repaintsAroundAClick_data() { ButtonRules::addRows(); }
    void repaintsAroundAClick();
    void otherMouseButtons_data();
    void otherMouseButtons();
    void releasedOutside_data() { ButtonRules::addRows(); }
    void releasedOutside();
    void spaceKey_data() { ButtonRules::addRows(); }
    void spaceKey();
    void imageButtonStaysUpAndUnchecked();

private:
    static void addRowsOfActions();

    QTemporaryDir m_folder;
};

void tst_ButtonEvents::addRowsOfActions()
{
    QTest::addColumn<ButtonRules>("rules");
    QTest::addColumn<Action>("action");
    QTest::addColumn<bool>("enabled");

    for (const ButtonRules &rules : ButtonRules::all()) {
        for (const Action action : kAllActions) {
            for (const bool enabled : {true, false}) {
                QTest::addRow("%s, %s, %s", qPrintable(rules.name),
                              QMetaEnum::fromType<Action>().valueToKey(action),
                              enabled ? "enabled" : "disabled")
                    << rules << action << enabled;
            }
        }
    }
}

void tst_ButtonEvents::handler_data()
{
    addRowsOfActions();
}

/// Each handler is called in a state from which it must lead to another one if it reacts.
void tst_ButtonEvents::handler()
{
    QFETCH(ButtonRules, rules);
    QFETCH(Action, action);
    QFETCH(bool, enabled);

    ModelledButton button(rules, m_folder);
    const bool release = action == LeftRelease || action == RightRelease;
    if (action != Enter) {
        button.act(Enter);
    }
    if (release) {
        button.act(LeftPress);
    }
    button.setEnabled(enabled);
    if (release && !enabled) {
        button.setDown(true); // disabling it has released it
    }
    button.act(action);
    QCOMPARE(button.difference(), QString());
    button.setEnabled(true); // a disabled look would hide the state
    QCOMPARE(button.difference(), QString());
}

void tst_ButtonEvents::repaints_data()
{
    addRowsOfActions();
}

/// Outside its area the base class ignores a press, so the button itself must ask for the paint.
/// Two events cause one paint because it is scheduled.
void tst_ButtonEvents::repaints()
{
    QFETCH(ButtonRules, rules);
    QFETCH(Action, action);
    QFETCH(bool, enabled);

    ButtonModel model(rules);
    model.setEnabled(enabled);
    const ButtonSubject subject = ButtonSubject::create(rules, m_folder);
    subject.button->setEnabled(enabled);
    RepaintCounter counter(subject.button.get());
    subject.act(action, kOutside);
    subject.act(action, kOutside);
    QCOMPARE(counter.take(), model.heeds(action) ? 1 : 0);
}

/// A slot of any of the signals already sees the new look.
void tst_ButtonEvents::looksReadyWhenItReports()
{
    QFETCH(ButtonRules, rules);

    const ButtonSubject subject = ButtonSubject::create(rules, m_folder);
    QVector<QImage> seen;
    const auto look = [&] {
        seen << WidgetPicture::of(*subject.button);
    };
    connect(subject.button.get(), &QAbstractButton::pressed, look);
    connect(subject.button.get(), &QAbstractButton::released, look);
    connect(subject.button.get(), &QAbstractButton::clicked, look);
    QTest::mouseClick(subject.button.get(), Qt::LeftButton);

    ButtonModel model(rules);
    QVector<QImage> expected;
    if (!model.act(LeftPress).isEmpty()) {
        expected << subject.looks.at(model.look());
    }
    for (const QString &name : model.act(LeftRelease)) {
        if (!name.startsWith("toggled")) {
            expected << subject.looks.at(model.look());
        }
    }
    QCOMPARE(seen, expected);
}

/// A slot that takes the pointer away, as one that opens a window does, comes after the release and
/// determines the look.
void tst_ButtonEvents::slotHasTheLastWord()
{
    QFETCH(ButtonRules, rules);

    const ButtonSubject subject = ButtonSubject::create(rules, m_folder);
    connect(subject.button.get(), &QAbstractButton::clicked, [&] { subject.act(Leave, kInside); });
    QTest::mouseClick(subject.button.get(), Qt::LeftButton);
    ButtonModel model(rules);
    for (const Action action : {LeftPress, LeftRelease, Leave}) {
        model.act(action);
    }
    QCOMPARE(WidgetPicture::of(*subject.button), subject.looks.at(model.look()));
}

/// The base class paints at once when the button is pressed, and before it clicks. That includes
/// an update that was requested before it was called; one that is requested later is a second
/// paint. Only the swatch calls the base class first.
void tst_ButtonEvents::repaintsAroundAClick()
{
    QFETCH(ButtonRules, rules);

    const int second = rules.isRadio ? 1 : 0;
    const ButtonSubject subject = ButtonSubject::create(rules, m_folder);
    RepaintCounter counter(subject.button.get());
    subject.act(Enter, kInside);
    QCOMPARE(counter.take(), 1);
    subject.act(LeftPress, kInside);
    QCOMPARE(counter.take(), 1 + second);

    int untilClick = 0;
    connect(subject.button.get(), &QAbstractButton::clicked, this,
            [&] { untilClick = counter.take(); });
    subject.act(LeftRelease, kInside);
    QCOMPARE(untilClick, 1);
    QCOMPARE(counter.take(), second);
}

void tst_ButtonEvents::otherMouseButtons_data()
{
    QTest::addColumn<ButtonRules>("rules");
    QTest::addColumn<Qt::MouseButton>("mouseButton");

    const QVector<QPair<const char *, Qt::MouseButton>> others{
        {"right", Qt::RightButton}, {"middle", Qt::MiddleButton}, {"back", Qt::BackButton}};
    for (const ButtonRules &rules : ButtonRules::all()) {
        for (const auto &other : others) {
            QTest::addRow("%s, %s", qPrintable(rules.name), other.first) << rules << other.second;
        }
    }
}

/// Only the swatch passes them to the base class, which leaves them to the parent.
void tst_ButtonEvents::otherMouseButtons()
{
    QFETCH(ButtonRules, rules);
    QFETCH(Qt::MouseButton, mouseButton);

    Ground ground;
    const ButtonSubject subject = ButtonSubject::create(rules, m_folder, &ground);
    ground.show();
    subject.act(Enter, kInside);
    const QImage hovered = WidgetPicture::of(*subject.button);
    ButtonSignals buttonSignals(subject.button.get());
    RepaintCounter counter(subject.button.get());
    const int once = rules.isRadio ? 1 : 0;

    QTest::mousePress(subject.button.get(), mouseButton);
    QCOMPARE(counter.take(), once);
    QCOMPARE(WidgetPicture::of(*subject.button), hovered);
    counter.take(); // taking the picture was a paint as well
    QTest::mouseRelease(subject.button.get(), mouseButton);
    QCOMPARE(counter.take(), once);
    QCOMPARE(WidgetPicture::of(*subject.button), hovered);
    QCOMPARE(ground.presses, once);
    QCOMPARE(ground.releases, once);
    QCOMPARE(buttonSignals.take(), QStringList());
}

void tst_ButtonEvents::releasedOutside()
{
    QFETCH(ButtonRules, rules);

    const ButtonSubject subject = ButtonSubject::create(rules, m_folder);
    ButtonSignals buttonSignals(subject.button.get());
    QTest::mousePress(subject.button.get(), Qt::LeftButton, Qt::NoModifier, kInside);
    QTest::mouseRelease(subject.button.get(), Qt::LeftButton, Qt::NoModifier, QPoint(90, 5));
    ButtonModel model(rules);
    QStringList expected = model.act(LeftPress);
    expected += model.act(LeftRelease, false);
    QCOMPARE(buttonSignals.take(), expected);
    QCOMPARE(WidgetPicture::of(*subject.button), subject.looks.at(model.look()));
}

/// A key clicks through the base class, without a pressed look and without flipping a switch.
void tst_ButtonEvents::spaceKey()
{
    QFETCH(ButtonRules, rules);

    const ButtonSubject subject = ButtonSubject::create(rules, m_folder);
    ButtonSignals buttonSignals(subject.button.get());
    QTest::keyPress(subject.button.get(), Qt::Key_Space);
    QCOMPARE(WidgetPicture::of(*subject.button), subject.looks.at(0));
    QTest::keyRelease(subject.button.get(), Qt::Key_Space);
    QCOMPARE(WidgetPicture::of(*subject.button), subject.looks.at(rules.isRadio ? 1 : 0));
    QCOMPARE(buttonSignals.take(),
             rules.isRadio ? (QStringList{"pressed", "toggled(true)", "released", "clicked(true)"})
                           : (QStringList{"pressed", "released", "clicked(false)"}));
}

void tst_ButtonEvents::imageButtonStaysUpAndUnchecked()
{
    for (const bool checked : {false, true}) {
        const ButtonSubject subject = ButtonSubject::createBare("ImageButton");
        subject.button->setCheckable(true);
        subject.button->setChecked(checked);
        ButtonSignals buttonSignals(subject.button.get());
        QTest::mousePress(subject.button.get(), Qt::LeftButton);
        QVERIFY(!subject.button->isDown());
        QTest::mouseRelease(subject.button.get(), Qt::LeftButton);
        QCOMPARE(subject.button->isChecked(), checked);
        QCOMPARE(buttonSignals.take(), QStringList{"clicked(false)"});
    }
}

QTEST_MAIN(tst_ButtonEvents)
#include "tst_ButtonEvents.moc"

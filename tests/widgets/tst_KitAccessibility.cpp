// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/KitAccessibility.h"

#include "tests/models/ButtonSubject.h"
#include "tests/support/ButtonSignals.h"
#include "tests/widgets/AskWhenHidden.h"
#include "widgets/FuncButton.h"
#include "widgets/IconButton.h"
#include "widgets/MButton.h"
#include "widgets/ProfileButton.h"
#include "widgets/SwitchButton.h"
#include "widgets/tabButton.h"

#include <QAccessible>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QAccessibleInterface *interfaceOf(QObject *object)
{
    return QAccessible::queryAccessibleInterface(object);
}

QString nameOf(QObject *object)
{
    return interfaceOf(object)->text(QAccessible::Name);
}

QString descriptionOf(QObject *object)
{
    return interfaceOf(object)->text(QAccessible::Description);
}

} // namespace

/// What screen readers learn about buttons, and what they can do with them.
class tst_KitAccessibility : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { KitAccessibility::install(); }
    void role_data();
    void role();
    void captionIsTheName();
    void nameFallsBack_data();
    void nameFallsBack();
    void toolTipIsReadOnce();
    void marks_data() { ButtonRules::addRows(); }
    void marks();
    void pressedAndDisabled();
    void pressClicks_data() { ButtonRules::addRows(); }
    void pressClicks();
    void toggleFlipsTheSwitch();
    void disabledButtonsDoNothing();
    void deletedButtonTellsNothing_data() { ButtonRules::addRows(); }
    void deletedButtonTellsNothing();
    void otherWidgetsStayAsTheyAre();

private:
    QTemporaryDir m_folder;
};

void tst_KitAccessibility::role_data()
{
    QTest::addColumn<int>("role");

    QTest::newRow("ColorButton") << int(QAccessible::RadioButton);
    QTest::newRow("FuncButton") << int(QAccessible::PushButton);
    QTest::newRow("IconButton") << int(QAccessible::PushButton);
    QTest::newRow("ImageButton") << int(QAccessible::PushButton);
    QTest::newRow("MButton") << int(QAccessible::PushButton);
    QTest::newRow("ProfileButton") << int(QAccessible::PushButton);
    QTest::newRow("SwitchButton") << int(QAccessible::CheckBox);
    QTest::newRow("tabButton") << int(QAccessible::PageTab);
}

void tst_KitAccessibility::role()
{
    QFETCH(int, role);

    const ButtonSubject subject = ButtonSubject::createBare(QTest::currentDataTag());
    QCOMPARE(int(interfaceOf(subject.button.get())->role()), role);
    // Without a caption, the tool tip and the accessible name are the only names.
    subject.button->setToolTip("what it does");
    QCOMPARE(nameOf(subject.button.get()), "what it does");
    subject.button->setAccessibleName("how it is called");
    QCOMPARE(nameOf(subject.button.get()), "how it is called");
}

void tst_KitAccessibility::captionIsTheName()
{
    MButton button(nullptr);
    button.setText("Start");
    tabButton tab(nullptr);
    tab.tabText = "Levels";
    FuncButton function(nullptr, "Tools");
    IconButton icon(nullptr, "Load");
    ProfileButton profile(nullptr, "Guest");
    profile.SetTitle("Ada");
    QStringList names;
    for (QWidget *widget : QVector<QWidget *>{&button, &tab, &function, &icon, &profile}) {
        widget->setToolTip("a hint");
        names << nameOf(widget);
        QCOMPARE(descriptionOf(widget), "a hint");
    }
    QCOMPARE(names, (QStringList{"Start", "Levels", "Tools", "Load", "Ada"}));
}

void tst_KitAccessibility::nameFallsBack_data()
{
    QTest::addColumn<QString>("accessibleName");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("toolTip");
    QTest::addColumn<QString>("name");

    const QString none;
    const QString name("name");
    const QString caption("caption");
    const QString tip("tip");
    QTest::newRow("all given") << name << caption << tip << name;
    QTest::newRow("no accessible name") << none << caption << tip << caption;
    QTest::newRow("tool tip only") << none << none << tip << tip;
    QTest::newRow("nothing") << none << none << none << none;
}

void tst_KitAccessibility::nameFallsBack()
{
    QFETCH(QString, accessibleName);
    QFETCH(QString, caption);
    QFETCH(QString, toolTip);
    QFETCH(QString, name);

    QWidget window;
    MButton button(&window);
    button.setAccessibleName(accessibleName);
    button.setText(caption);
    button.setToolTip(toolTip);
    QCOMPARE(nameOf(&button), name);
}

void tst_KitAccessibility::toolTipIsReadOnce()
{
    MButton button(nullptr);
    button.setToolTip("Close");
    QCOMPARE(descriptionOf(&button), QString());
    button.setAccessibleDescription("Ends the program");
    QCOMPARE(descriptionOf(&button), "Ends the program");
}

/// A switch and a swatch can be checked, other buttons with a mark can be selected.
void tst_KitAccessibility::marks()
{
    QFETCH(ButtonRules, rules);

    const ButtonSubject subject = ButtonSubject::createBare(rules.name);
    const bool checkable = rules.flips || rules.isRadio;
    const bool selectable = rules.hasMark() && !rules.flips;
    for (const bool marked : {false, true}) {
        subject.mark(marked);
        if (rules.isRadio) {
            subject.button->setChecked(marked);
        }
        const QAccessible::State state = interfaceOf(subject.button.get())->state();
        QCOMPARE(bool(state.checkable), checkable);
        QCOMPARE(bool(state.checked), checkable && marked);
        QCOMPARE(bool(state.selectable), selectable);
        QCOMPARE(bool(state.selected), selectable && marked);
    }
}

void tst_KitAccessibility::pressedAndDisabled()
{
    MButton button(nullptr);
    for (const bool pressed : {false, true, false}) {
        button.setDown(pressed);
        QCOMPARE(bool(interfaceOf(&button)->state().pressed), pressed);
    }
    for (const bool enabled : {true, false, true}) {
        button.setEnabled(enabled);
        QCOMPARE(bool(interfaceOf(&button)->state().disabled), !enabled);
    }
}

void tst_KitAccessibility::pressClicks()
{
    QFETCH(ButtonRules, rules);

    const ButtonSubject subject = ButtonSubject::createBare(rules.name);
    ButtonSignals buttonSignals(subject.button.get());
    QAccessibleActionInterface *actions = interfaceOf(subject.button.get())->actionInterface();
    QVERIFY(actions != nullptr);
    actions->doAction(actions->actionNames().constFirst());
    QCOMPARE(buttonSignals.take(),
             rules.isRadio ? (QStringList{"pressed", "toggled(true)", "released", "clicked(true)"})
                           : (QStringList{"pressed", "released", "clicked(false)"}));
}

void tst_KitAccessibility::toggleFlipsTheSwitch()
{
    SwitchButton flip(nullptr);
    QVector<bool> seen;
    connect(&flip, &SwitchButton::pressed, [&] { seen << flip.isCheck(); });
    QAccessibleActionInterface *actions = interfaceOf(&flip)->actionInterface();
    QCOMPARE(actions->actionNames().constFirst(), QAccessibleActionInterface::toggleAction());

    actions->doAction(QAccessibleActionInterface::toggleAction());
    QVERIFY(flip.isCheck());
    actions->doAction(QAccessibleActionInterface::toggleAction());
    QVERIFY(!flip.isCheck());
    // The switch flips before it emits pressed(), as it does with the mouse.
    QCOMPARE(seen, (QVector<bool>{true, false}));
}

void tst_KitAccessibility::disabledButtonsDoNothing()
{
    SwitchButton flip(nullptr);
    flip.setEnabled(false);
    ButtonSignals buttonSignals(&flip);
    interfaceOf(&flip)->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    QVERIFY(!flip.isCheck());
    QCOMPARE(buttonSignals.take(), QStringList{});
}

void tst_KitAccessibility::deletedButtonTellsNothing()
{
    QFETCH(ButtonRules, rules);

    ButtonSubject subject = ButtonSubject::createBare(rules.name);
    QAbstractButton *const button = subject.button.get();
    button->setAccessibleName("name");
    button->setToolTip("hint");
    button->setDown(true);
    QAccessibleInterface *const interface = interfaceOf(button);
    QVERIFY(interface->state().pressed);
    const AskWhenHidden reader(button, [interface] {
        QCOMPARE(interface->text(QAccessible::Name), QString());
        QCOMPARE(interface->text(QAccessible::Description), QString());
        QVERIFY(!interface->state().pressed);
        QCOMPARE(interface->actionInterface()->actionNames(), QStringList());
        interface->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    });
    subject.button.reset();
    QVERIFY(reader.asked);
}

void tst_KitAccessibility::otherWidgetsStayAsTheyAre()
{
    QPushButton button("Plain");
    button.setToolTip("a hint");
    QCOMPARE(nameOf(&button), "Plain");
    QCOMPARE(interfaceOf(&button)->role(), QAccessible::PushButton);
}

QTEST_MAIN(tst_KitAccessibility)
#include "tst_KitAccessibility.moc"

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "widgets/KitAccessibility.h"

#include "tests/support/ButtonSignals.h"
#include "tests/widgets/ButtonRules.h"
#include "tests/widgets/ButtonSubject.h"
#include "widgets/ColorButton.h"
#include "widgets/CustomProgressBar.h"
#include "widgets/FuncButton.h"
#include "widgets/IconButton.h"
#include "widgets/MButton.h"
#include "widgets/ProfileButton.h"
#include "widgets/SwitchButton.h"
#include "widgets/tabButton.h"

#include <QAccessible>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>
#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

namespace {

QVector<QVariant> reportedValues;

void noteValue(QAccessibleEvent *event)
{
    if (event->type() == QAccessible::ValueChanged) {
        reportedValues << static_cast<QAccessibleValueChangeEvent *>(event)->value();
    }
}

/// A screen reader that notes the values it is told of, while it lives.
class ValueReader
{
public:
    ValueReader()
        : m_previous(QAccessible::installUpdateHandler(noteValue))
    {
        setPresent(true);
        reportedValues.clear();
    }

    ~ValueReader()
    {
        setPresent(false);
        QAccessible::installUpdateHandler(m_previous);
    }

    Q_DISABLE_COPY(ValueReader)

private:
    static void setPresent(bool present)
    {
        QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(present);
    }

    QAccessible::UpdateHandler m_previous;
};

/// A reader that asks questions as soon as a widget hides. A window that is deleted does so when
/// its own part is gone already and only a plain QWidget is left.
class AskWhenHidden : public QObject
{
public:
    AskWhenHidden(QWidget *widget, std::function<void()> ask)
        : m_ask(std::move(ask))
    {
        widget->installEventFilter(this);
    }

    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        if (event->type() == QEvent::Hide) {
            asked = true;
            m_ask();
        }
        return false;
    }

    bool asked = false;

private:
    std::function<void()> m_ask;
};

QAccessibleInterface *interfaceOf(QObject *object)
{
    return QAccessible::queryAccessibleInterface(object);
}

QString nameOf(QObject *object)
{
    return interfaceOf(object)->text(QAccessible::Name);
}

} // namespace

class tst_KitAccessibility : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void role_data();
    void role();
    void captionIsTheName_data();
    void captionIsTheName();
    void nameFallsBack_data();
    void nameFallsBack();
    void toolTipIsReadOnce();
    void marksAreTold();
    void pressIsTold();
    void disabledIsTold();
    void pressClicks_data();
    void pressClicks();
    void toggleFlipsTheSwitch();
    void disabledButtonsDoNothing();
    void progressBarHasAValue_data();
    void progressBarHasAValue();
    void progressBarIsReadOnly();
    void progressBarReportsChanges();
    void interfaceMadeAnewReportsOnce();
    void deletedButtonTellsNothing_data();
    void deletedButtonTellsNothing();
    void deletedProgressBarTellsNothing();
    void otherWidgetsStayAsTheyAre();

private:
    QTemporaryDir m_folder;
};

void tst_KitAccessibility::initTestCase()
{
    KitAccessibility::install();
}

void tst_KitAccessibility::role_data()
{
    QTest::addColumn<int>("role");

    QTest::newRow("MButton") << int(QAccessible::PushButton);
    QTest::newRow("ImageButton") << int(QAccessible::PushButton);
    QTest::newRow("tabButton") << int(QAccessible::PageTab);
    QTest::newRow("ColorButton") << int(QAccessible::RadioButton);
    QTest::newRow("FuncButton") << int(QAccessible::PushButton);
    QTest::newRow("IconButton") << int(QAccessible::PushButton);
    QTest::newRow("SwitchButton") << int(QAccessible::CheckBox);
    QTest::newRow("ProfileButton") << int(QAccessible::PushButton);
}

void tst_KitAccessibility::role()
{
    QFETCH(int, role);

    const ButtonSubject subject = ButtonSubject::create(QTest::currentDataTag(), m_folder);
    QCOMPARE(int(interfaceOf(subject.button.get())->role()), role);
    // Without a caption, so that nothing but these two can name it.
    subject.button->setToolTip("what it does");
    QCOMPARE(nameOf(subject.button.get()), "what it does");
    subject.button->setAccessibleName("how it is called");
    QCOMPARE(nameOf(subject.button.get()), "how it is called");
}

void tst_KitAccessibility::captionIsTheName_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("MButton") << "Start";
    QTest::newRow("tabButton") << "Levels";
    QTest::newRow("FuncButton") << "Tools";
    QTest::newRow("IconButton") << "Load";
    QTest::newRow("ProfileButton") << "Ada";
}

void tst_KitAccessibility::captionIsTheName()
{
    QFETCH(QString, name);

    MButton button(nullptr);
    button.setText("Start");
    tabButton tab(nullptr);
    tab.tabText = "Levels";
    FuncButton function(nullptr, "Tools");
    IconButton icon(nullptr, "Load");
    ProfileButton profile(nullptr, "Guest");
    profile.SetTitle("Ada");
    const QVector<QWidget *> widgets = {&button, &tab, &function, &icon, &profile};
    for (QWidget *widget : widgets) {
        if (QString(widget->metaObject()->className()) == QTest::currentDataTag()) {
            widget->setToolTip("a hint");
            QCOMPARE(nameOf(widget), name);
            QCOMPARE(interfaceOf(widget)->text(QAccessible::Description), "a hint");
        }
    }
}

void tst_KitAccessibility::nameFallsBack_data()
{
    QTest::addColumn<QString>("accessibleName");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("toolTip");
    QTest::addColumn<QString>("name");

    QTest::newRow("all given") << "name"
                               << "caption"
                               << "tip"
                               << "name";
    QTest::newRow("no accessible name") << ""
                                        << "caption"
                                        << "tip"
                                        << "caption";
    QTest::newRow("tool tip only") << ""
                                   << ""
                                   << "tip"
                                   << "tip";
    QTest::newRow("nothing") << ""
                             << ""
                             << ""
                             << "";
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
    QCOMPARE(interfaceOf(&button)->text(QAccessible::Description), QString());
    button.setAccessibleDescription("Ends the program");
    QCOMPARE(interfaceOf(&button)->text(QAccessible::Description), "Ends the program");
}

void tst_KitAccessibility::marksAreTold()
{
    tabButton tab(nullptr);
    FuncButton function(nullptr, "Tools");
    SwitchButton flip(nullptr);
    ColorButton swatch(nullptr);
    MButton plain(nullptr);
    for (const bool marked : {false, true}) {
        tab.setTabCheck(marked);
        function.setCheck(marked);
        flip.setCheck(marked);
        swatch.setChecked(marked);

        QVERIFY(interfaceOf(&tab)->state().selectable);
        QCOMPARE(bool(interfaceOf(&tab)->state().selected), marked);
        QVERIFY(interfaceOf(&function)->state().selectable);
        QCOMPARE(bool(interfaceOf(&function)->state().selected), marked);
        QVERIFY(interfaceOf(&flip)->state().checkable);
        QCOMPARE(bool(interfaceOf(&flip)->state().checked), marked);
        QVERIFY(interfaceOf(&swatch)->state().checkable);
        QCOMPARE(bool(interfaceOf(&swatch)->state().checked), marked);
    }
    QVERIFY(!interfaceOf(&plain)->state().checkable);
    QVERIFY(!interfaceOf(&plain)->state().selectable);
}

void tst_KitAccessibility::pressIsTold()
{
    MButton button(nullptr);
    QVERIFY(!interfaceOf(&button)->state().pressed);
    QTest::mousePress(&button, Qt::LeftButton);
    QVERIFY(interfaceOf(&button)->state().pressed);
    QTest::mouseRelease(&button, Qt::LeftButton);
    QVERIFY(!interfaceOf(&button)->state().pressed);
}

void tst_KitAccessibility::disabledIsTold()
{
    MButton button(nullptr);
    QVERIFY(!interfaceOf(&button)->state().disabled);
    button.setEnabled(false);
    QVERIFY(interfaceOf(&button)->state().disabled);
}

void tst_KitAccessibility::pressClicks_data()
{
    QTest::addColumn<QStringList>("emitted");

    const QStringList click{"pressed", "released", "clicked(false)"};
    QTest::newRow("MButton") << click;
    QTest::newRow("ImageButton") << click;
    QTest::newRow("tabButton") << click;
    QTest::newRow("ColorButton") << QStringList{"pressed", "toggled(true)", "released",
                                                "clicked(true)"};
    QTest::newRow("FuncButton") << click;
    QTest::newRow("IconButton") << click;
    QTest::newRow("SwitchButton") << click;
    QTest::newRow("ProfileButton") << click;
}

void tst_KitAccessibility::pressClicks()
{
    QFETCH(QStringList, emitted);

    const ButtonSubject subject = ButtonSubject::create(QTest::currentDataTag(), m_folder);
    ButtonSignals buttonSignals(subject.button.get());
    QAccessibleActionInterface *actions = interfaceOf(subject.button.get())->actionInterface();
    QVERIFY(actions != nullptr);
    actions->doAction(actions->actionNames().constFirst());
    QCOMPARE(buttonSignals.take(), emitted);
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
    // Flipped before it says that it was pressed, as with the mouse.
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

void tst_KitAccessibility::progressBarHasAValue_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("words");

    QTest::newRow("empty") << 0 << "0 %";
    QTest::newRow("a third") << 3333 << "33 %";
    QTest::newRow("almost full") << 9999 << "99 %";
    QTest::newRow("full") << 10000 << "100 %";
}

void tst_KitAccessibility::progressBarHasAValue()
{
    QFETCH(int, value);
    QFETCH(QString, words);

    CustomProgressBar bar(nullptr);
    QAccessibleInterface *interface = interfaceOf(&bar);
    QCOMPARE(interface->role(), QAccessible::ProgressBar);
    QAccessibleValueInterface *values = interface->valueInterface();
    QVERIFY(values != nullptr);
    bar.setValue(value);
    QCOMPARE(values->currentValue().toInt(), value);
    QCOMPARE(values->minimumValue().toInt(), 0);
    QCOMPARE(values->maximumValue().toInt(), 10000);
    QCOMPARE(interface->text(QAccessible::Value), words);
}

void tst_KitAccessibility::progressBarIsReadOnly()
{
    CustomProgressBar bar(nullptr);
    QVERIFY(interfaceOf(&bar)->state().readOnly);
    bar.setValue(50);
    interfaceOf(&bar)->valueInterface()->setCurrentValue(70);
    QCOMPARE(bar.value(), 50);
}

void tst_KitAccessibility::progressBarReportsChanges()
{
    const ValueReader reader;
    CustomProgressBar bar(nullptr);
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar));
    QVERIFY(interfaceOf(&bar) != nullptr);
    bar.setValue(50);
    QTRY_COMPARE(reportedValues, QVector<QVariant>{50});
    bar.setValue(50);
    bar.setValue(60);
    QTRY_COMPARE(reportedValues, (QVector<QVariant>{50, 60}));
}

void tst_KitAccessibility::interfaceMadeAnewReportsOnce()
{
    const ValueReader reader;
    CustomProgressBar bar(nullptr);
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar));
    QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(interfaceOf(&bar)));
    QVERIFY(interfaceOf(&bar) != nullptr);
    bar.setValue(50);
    bar.repaint();
    QCOMPARE(reportedValues, QVector<QVariant>{50});
}

void tst_KitAccessibility::deletedButtonTellsNothing_data()
{
    QTest::addColumn<QString>("name");

    for (const auto &rules : ButtonRules::kRules) {
        QTest::newRow(qPrintable(rules.first)) << rules.first;
    }
}

void tst_KitAccessibility::deletedButtonTellsNothing()
{
    QFETCH(QString, name);

    ButtonSubject subject = ButtonSubject::create(name, m_folder);
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

void tst_KitAccessibility::deletedProgressBarTellsNothing()
{
    auto bar = std::make_unique<CustomProgressBar>(nullptr);
    bar->setValue(50);
    bar->show();
    QAccessibleInterface *const interface = interfaceOf(bar.get());
    QCOMPARE(interface->valueInterface()->currentValue().toInt(), 50);
    const AskWhenHidden reader(bar.get(), [interface] {
        QCOMPARE(interface->text(QAccessible::Value), QString());
        QVERIFY(!interface->state().readOnly);
        QCOMPARE(interface->valueInterface()->currentValue(), QVariant());
        QCOMPARE(interface->valueInterface()->maximumValue(), QVariant());
    });
    bar.reset();
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

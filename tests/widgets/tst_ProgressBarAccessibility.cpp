// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/support/ScreenReader.h"
#include "tests/widgets/AskWhenHidden.h"
#include "widgets/CustomProgressBar.h"
#include "widgets/KitAccessibility.h"

#include <QtTest>

namespace {

/// A screen reader that notes reported values.
struct ValueReader
{
    QVector<QVariant> values = {};
    ScreenReader reader = ScreenReader([this](QAccessibleEvent *event) {
        if (event->type() == QAccessible::ValueChanged) {
            values.append(static_cast<QAccessibleValueChangeEvent *>(event)->value());
        }
    });
};

QAccessibleInterface *interfaceOf(CustomProgressBar &bar)
{
    return QAccessible::queryAccessibleInterface(&bar);
}

} // namespace

class tst_ProgressBarAccessibility : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { KitAccessibility::install(); }
    void value_data();
    void value();
    void isReadOnly();
    void reportsSteps();
    void reportsNothingUnpainted();
    void reportsOnceAfterANewInterface();
    void deletedBarTellsNothing();
};

void tst_ProgressBarAccessibility::value_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("words");

    QTest::newRow("empty") << 0 << "0 %";
    QTest::newRow("a third") << 3333 << "33 %";
    QTest::newRow("almost full") << 9999 << "99 %";
    QTest::newRow("full") << 10000 << "100 %";
}

void tst_ProgressBarAccessibility::value()
{
    QFETCH(int, value);
    QFETCH(QString, words);

    CustomProgressBar bar(nullptr);
    QAccessibleInterface *interface = interfaceOf(bar);
    QCOMPARE(interface->role(), QAccessible::ProgressBar);
    QAccessibleValueInterface *values = interface->valueInterface();
    QVERIFY(values != nullptr);
    bar.setValue(value);
    QCOMPARE(values->currentValue().toInt(), value);
    QCOMPARE(values->minimumValue().toInt(), 0);
    QCOMPARE(values->maximumValue().toInt(), 10000);
    QCOMPARE(interface->text(QAccessible::Value), words);
}

void tst_ProgressBarAccessibility::isReadOnly()
{
    CustomProgressBar bar(nullptr);
    QVERIFY(interfaceOf(bar)->state().readOnly);
    bar.setValue(50);
    interfaceOf(bar)->valueInterface()->setCurrentValue(70);
    QCOMPARE(bar.value(), 50);
}

void tst_ProgressBarAccessibility::reportsSteps()
{
    const ValueReader reader;
    CustomProgressBar bar(nullptr);
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar));
    QVERIFY(interfaceOf(bar) != nullptr);
    for (const int value : {0, 499, 500, 500, 999, 2003, 10000, 9999, 0}) {
        bar.setValue(value);
        bar.repaint();
    }
    QCOMPARE(reader.values, (QVector<QVariant>{500, 2003, 10000, 9999, 0}));
}

void tst_ProgressBarAccessibility::reportsNothingUnpainted()
{
    const ValueReader reader;
    CustomProgressBar bar(nullptr);
    QVERIFY(interfaceOf(bar) != nullptr);
    bar.setValue(5000);
    bar.setEnabled(false); // another event than Paint
    QCOMPARE(reader.values, QVector<QVariant>());
}

void tst_ProgressBarAccessibility::reportsOnceAfterANewInterface()
{
    const ValueReader reader;
    CustomProgressBar bar(nullptr);
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar));
    QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(interfaceOf(bar)));
    QVERIFY(interfaceOf(bar) != nullptr);
    bar.setValue(5000);
    bar.repaint();
    QCOMPARE(reader.values, QVector<QVariant>{5000});
}

void tst_ProgressBarAccessibility::deletedBarTellsNothing()
{
    auto bar = std::make_unique<CustomProgressBar>(nullptr);
    bar->setValue(50);
    bar->show();
    QAccessibleInterface *const interface = interfaceOf(*bar);
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

QTEST_MAIN(tst_ProgressBarAccessibility)
#include "tst_ProgressBarAccessibility.moc"

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/widgets/AskWhenHidden.h"
#include "widgets/CustomProgressBar.h"
#include "widgets/KitAccessibility.h"

#include <QAccessible>
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

/// A screen reader that notes reported values while it lives.
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
    void reportsChanges();
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

void tst_ProgressBarAccessibility::reportsChanges()
{
    const ValueReader reader;
    CustomProgressBar bar(nullptr);
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar));
    QVERIFY(interfaceOf(bar) != nullptr);
    bar.setValue(50);
    QTRY_COMPARE(reportedValues, QVector<QVariant>{50});
    bar.setValue(50);
    bar.setValue(60);
    QTRY_COMPARE(reportedValues, (QVector<QVariant>{50, 60}));
}

void tst_ProgressBarAccessibility::reportsOnceAfterANewInterface()
{
    const ValueReader reader;
    CustomProgressBar bar(nullptr);
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar));
    QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(interfaceOf(bar)));
    QVERIFY(interfaceOf(bar) != nullptr);
    bar.setValue(50);
    bar.repaint();
    QCOMPARE(reportedValues, QVector<QVariant>{50});
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

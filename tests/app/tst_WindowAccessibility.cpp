// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/MainWindow.h"
#include "widgets/CustomProgressBar.h"
#include "widgets/KitAccessibility.h"

#include <QAccessible>
#include <QtTest>

namespace {

/// What a screen reader finds in \a window under \a role; null if it finds nothing of that name.
QAccessibleInterface *find(QWidget &window, QAccessible::Role role, const QString &name)
{
    const QAccessibleInterface *root = QAccessible::queryAccessibleInterface(&window);
    for (int i = 0; i < root->childCount(); ++i) {
        QAccessibleInterface *child = root->child(i);
        if (child->role() == role && child->text(QAccessible::Name) == name) {
            return child;
        }
    }
    return nullptr;
}

} // namespace

class tst_WindowAccessibility : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void readsItsParts_data();
    void readsItsParts();
    void closeButtonCanBePressed();
    void progressIsRead();
};

void tst_WindowAccessibility::initTestCase()
{
    KitAccessibility::install();
}

void tst_WindowAccessibility::readsItsParts_data()
{
    QTest::addColumn<int>("role");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QRect>("place");

    QTest::newRow("close button, by its tool tip")
        << int(QAccessible::PushButton) << "close Winodw" << QRect(455, 12, 30, 30);
    QTest::newRow("heading") << int(QAccessible::StaticText) << "Firmware Upgrade"
                             << QRect(170, 20, 160, 30);
    QTest::newRow("status, empty at first")
        << int(QAccessible::StaticText) << "" << QRect(35, 100, 430, 30);
    QTest::newRow("progress bar") << int(QAccessible::ProgressBar) << "" << QRect(35, 150, 430, 30);
    QTest::newRow("upgrade button, by its text")
        << int(QAccessible::PushButton) << "Start Upgrade" << QRect(170, 200, 160, 36);
}

void tst_WindowAccessibility::readsItsParts()
{
    QFETCH(int, role);
    QFETCH(QString, name);
    QFETCH(QRect, place);

    MainWindow window;
    window.show();
    const QAccessibleInterface *part = find(window, QAccessible::Role(role), name);
    QVERIFY(part != nullptr);
    QCOMPARE(part->rect().translated(-window.mapToGlobal(QPoint(0, 0))), place);
}

void tst_WindowAccessibility::closeButtonCanBePressed()
{
    MainWindow window;
    window.show();
    QAccessibleInterface *button = find(window, QAccessible::PushButton, "close Winodw");
    button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QVERIFY(!window.isVisible());
}

void tst_WindowAccessibility::progressIsRead()
{
    MainWindow window;
    QAccessibleInterface *bar = find(window, QAccessible::ProgressBar, "");
    QCOMPARE(bar->valueInterface()->maximumValue().toInt(), 10000);
    QCOMPARE(bar->text(QAccessible::Value), "0 %");
    window.findChild<CustomProgressBar *>()->setValue(2500);
    QCOMPARE(bar->text(QAccessible::Value), "25 %");
}

QTEST_MAIN(tst_WindowAccessibility)
#include "tst_WindowAccessibility.moc"

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/WindowAccessibility.h"
#include "tests/support/WindowParts.h"
#include "widgets/KitAccessibility.h"

#include <QAccessible>
#include <QtTest>

using namespace WindowParts;

namespace {

QAccessibleInterface *interfaceOf(QObject *object)
{
    return QAccessible::queryAccessibleInterface(object);
}

} // namespace

/// What screen readers find in the window.
class tst_WindowAccessibility : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void window();
    void children();
    void childAt_data();
    void childAt();
    void otherLabelsStayAsTheyAre();
};

void tst_WindowAccessibility::initTestCase()
{
    KitAccessibility::install();
    WindowAccessibility::install();
}

void tst_WindowAccessibility::window()
{
    MainWindow window;
    window.show(); // Qt 6.11 names only windows that have been shown
    QCOMPARE(interfaceOf(&window)->role(), QAccessible::Window);
    QCOMPARE(interfaceOf(&window)->text(QAccessible::Name), QString("FW Update"));
}

void tst_WindowAccessibility::children()
{
    MainWindow window;
    const QAccessibleInterface *const interface = interfaceOf(&window);
    const QVector<QWidget *> parts = {closeButton(window), titleLabel(window), statusLabel(window),
                                      progressBar(window), upgradeButton(window)};
    QCOMPARE(interface->childCount(), parts.size());
    for (int i = 0; i < parts.size(); ++i) {
        QCOMPARE(interface->child(i), interfaceOf(parts.at(i)));
        QCOMPARE(interface->indexOfChild(interface->child(i)), i);
        QCOMPARE(interface->child(i)->parent(), interface);
    }
    QVERIFY(interface->child(int(parts.size())) == nullptr);
    QCOMPARE(interface->indexOfChild(interfaceOf(window.centralWidget())), -1);
}

void tst_WindowAccessibility::childAt_data()
{
    QTest::addColumn<QPoint>("place");
    QTest::addColumn<int>("child");
    QTest::newRow("close button") << QPoint(470, 27) << 0;
    QTest::newRow("progress bar") << QPoint(250, 165) << 3;
    QTest::newRow("background") << QPoint(20, 20) << -1;
    QTest::newRow("outside") << QPoint(501, 165) << -1;
}

void tst_WindowAccessibility::childAt()
{
    QFETCH(QPoint, place);
    QFETCH(int, child);
    MainWindow window;
    window.move(100, 50);
    window.show();
    const QPoint onScreen = window.mapToGlobal(place);
    const QAccessibleInterface *const interface = interfaceOf(&window);
    QCOMPARE(interface->childAt(onScreen.x(), onScreen.y()), interface->child(child));
}

void tst_WindowAccessibility::otherLabelsStayAsTheyAre()
{
    MainWindow window;
    QCOMPARE(interfaceOf(titleLabel(window))->role(), QAccessible::StaticText);
    QLabel label("Text");
    QCOMPARE(interfaceOf(&label)->role(), QAccessible::StaticText);
}

QTEST_MAIN(tst_WindowAccessibility)
#include "tst_WindowAccessibility.moc"

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/MainWindow.h"
#include "tests/app/WindowPointer.h"

#include <QtTest>

Q_DECLARE_METATYPE(Qt::MouseButton)
Q_DECLARE_METATYPE(Qt::MouseButtons)

namespace {

const QPoint kPlace(100, 100);
const QPoint kInBand(200, 150);
const QPoint kBelowBand(200, 300);
const QPoint kStep(30, 10);

} // namespace

/// What else may be held and who else hears of it while the window is dragged.
class tst_WindowDrag : public QObject
{
    Q_OBJECT

private slots:
    void buttonOfThePressCounts_data();
    void buttonOfThePressCounts();
    void buttonsHeldDoNotCount_data();
    void buttonsHeldDoNotCount();
    void eventsEndAtTheWindow_data();
    void eventsEndAtTheWindow();
};

void tst_WindowDrag::buttonOfThePressCounts_data()
{
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::addColumn<Qt::MouseButtons>("held");
    QTest::addColumn<bool>("drags");
    QTest::newRow("left") << Qt::LeftButton << Qt::MouseButtons(Qt::LeftButton) << true;
    QTest::newRow("left beside right")
        << Qt::LeftButton << (Qt::LeftButton | Qt::RightButton) << true;
    QTest::newRow("right beside left")
        << Qt::RightButton << (Qt::LeftButton | Qt::RightButton) << false;
}

void tst_WindowDrag::buttonOfThePressCounts()
{
    QFETCH(Qt::MouseButton, button);
    QFETCH(Qt::MouseButtons, held);
    QFETCH(bool, drags);

    MainWindow window;
    window.show();
    window.move(kPlace);
    WindowPointer::send(window, QEvent::MouseButtonPress, kInBand, button, held);
    WindowPointer::send(window, QEvent::MouseMove, kInBand + kStep, Qt::NoButton, held);
    QCOMPARE(window.pos(), drags ? kPlace + kStep : kPlace);
}

void tst_WindowDrag::buttonsHeldDoNotCount_data()
{
    QTest::addColumn<Qt::MouseButtons>("held");
    QTest::newRow("none") << Qt::MouseButtons();
    QTest::newRow("left") << Qt::MouseButtons(Qt::LeftButton);
    QTest::newRow("right") << Qt::MouseButtons(Qt::RightButton);
}

void tst_WindowDrag::buttonsHeldDoNotCount()
{
    QFETCH(Qt::MouseButtons, held);

    MainWindow window;
    window.setMouseTracking(true); // without it Qt keeps moves with no button to itself
    window.show();
    window.move(kPlace);
    WindowPointer::send(window, QEvent::MouseButtonPress, kInBand, Qt::LeftButton);
    WindowPointer::send(window, QEvent::MouseMove, kInBand + kStep, Qt::NoButton, held);
    QCOMPARE(window.pos(), kPlace + kStep);
}

void tst_WindowDrag::eventsEndAtTheWindow_data()
{
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::addColumn<QPoint>("from");
    QTest::newRow("while it is dragged") << Qt::LeftButton << kInBand;
    QTest::newRow("below the band") << Qt::LeftButton << kBelowBand;
    QTest::newRow("with another button") << Qt::RightButton << kInBand;
}

void tst_WindowDrag::eventsEndAtTheWindow()
{
    QFETCH(Qt::MouseButton, button);
    QFETCH(QPoint, from);

    MainWindow window;
    window.show();
    window.move(kPlace);
    QVERIFY(WindowPointer::send(window, QEvent::MouseButtonPress, from, button));
    QVERIFY(WindowPointer::send(window, QEvent::MouseMove, from + kStep, Qt::NoButton, button));
    QVERIFY(WindowPointer::send(window, QEvent::MouseButtonRelease, from + kStep, button,
                                Qt::NoButton));
}

QTEST_MAIN(tst_WindowDrag)
#include "tst_WindowDrag.moc"

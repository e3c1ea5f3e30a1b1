// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/MainWindow.h"

#include <QAbstractButton>
#include <QMouseEvent>
#include <QtTest>

namespace {

/// An event of the pointer, at a place on the screen.
struct Pointer
{
    QEvent::Type type;
    QPointF place;
    Qt::MouseButton button; ///< that causes the event
    Qt::MouseButtons held;
};
using Pointers = QVector<Pointer>;

const QPoint kWindow(100, 100);
const QPoint kStep(30, -20);

/// A place in the window before it moves.
QPointF at(qreal x, qreal y)
{
    return kWindow + QPointF(x, y);
}

Pointer press(const QPointF &place, Qt::MouseButton button = Qt::LeftButton)
{
    return {QEvent::MouseButtonPress, place, button, button};
}

Pointer move(const QPointF &place, Qt::MouseButtons held = Qt::LeftButton)
{
    return {QEvent::MouseMove, place, Qt::NoButton, held};
}

Pointer release(const QPointF &place, Qt::MouseButton button)
{
    return {QEvent::MouseButtonRelease, place, button, Qt::NoButton};
}

class PressCounter : public QObject
{
public:
    int count = 0;

    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        count += event->type() == QEvent::MouseButtonPress ? 1 : 0;
        return false;
    }
};

} // namespace

Q_DECLARE_METATYPE(Pointers)

/// The user drags the window by its top band of 90 pixels.
class tst_WindowDrag : public QObject
{
    Q_OBJECT

private slots:
    void pointer_data();
    void pointer();
    void pressReachesTheWindow_data();
    void pressReachesTheWindow();

private:
    static void pressRows();
    static void moveRows();
    static void releaseRows();
};

void tst_WindowDrag::pointer_data()
{
    QTest::addColumn<Pointers>("pointers");
    QTest::addColumn<QPoint>("moved");
    pressRows();
    moveRows();
    releaseRows();
}

void tst_WindowDrag::pressRows()
{
    const auto row = [](const char *name, const Pointer &press, bool drags) {
        QTest::newRow(name) << Pointers{press, move(press.place + kStep, press.held)}
                            << (drags ? kStep : QPoint());
    };
    row("left in the middle of the band", press(at(50, 40)), true);
    row("left at the top", press(at(50, 0)), true);
    row("left at y 89", press(at(50, 89)), true);
    row("left at y 90", press(at(50, 90)), false);
    row("left at y 89.4, rounded down", press(at(50, 89.4)), true);
    row("left at y 89.5, rounded up", press(at(50, 89.5)), false);
    row("left at the bottom", press(at(50, 259)), false);
    row("right in the band", press(at(50, 40), Qt::RightButton), false);
    row("middle in the band", press(at(50, 40), Qt::MiddleButton), false);
    row("right below the band", press(at(50, 200), Qt::RightButton), false);

    const Qt::MouseButtons both = Qt::LeftButton | Qt::RightButton;
    const QEvent::Type type = QEvent::MouseButtonPress;
    row("left while right is held", {type, at(50, 40), Qt::LeftButton, both}, true);
    row("right while left is held", {type, at(50, 40), Qt::RightButton, both}, false);

    row("on the title", press(at(250, 35)), true);
    row("on the close button", press(at(470, 27)), false);
    row("on the upgrade button", press(at(250, 218)), false);
}

void tst_WindowDrag::moveRows()
{
    const auto row = [](const char *name, const Pointers &moves, const QPoint &moved) {
        QTest::newRow(name) << Pointers{press(at(100, 50))} + moves << moved;
    };
    QTest::newRow("move without a press") << Pointers{move(at(130, 30))} << QPoint();
    row("move with no button held", {move(at(130, 30), Qt::NoButton)}, {30, -20});
    row("move with the right button held", {move(at(130, 30), Qt::RightButton)}, {30, -20});
    row("to screen position 110.4", {move(at(110.4, 60.4))}, {10, 10});
    row("to screen position 110.6", {move(at(110.6, 60.6))}, {11, 11});
    row("to y 89 in the window", {move(at(110, 89))}, {10, 39});
    row("to y 89.4 in the window", {move(at(110, 89.4))}, {10, 39});
    row("to y 89.5 in the window", {move(at(110, 89.5))}, {0, 0});
    row("to y 90 in the window", {move(at(110, 90))}, {0, 0});
    row("above the window", {move(at(110, -30))}, {10, -80});
    // The window has followed by (10, 39) before the pointer leaves the band.
    const Pointer inBand = move(at(110, 89));
    const Pointer belowBand = move(at(150, 39 + 90));
    row("below the band after a move", {inBand, belowBand}, {10, 39});
    row("far below the band", {inBand, move(at(150, 300))}, {10, 39});
    row("back into the band", {inBand, belowBand, move(at(150, 60))}, {50, 10});
}

void tst_WindowDrag::releaseRows()
{
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
        const Pointers pointers
            = {press(at(100, 50)), release(at(100, 50), button), move(at(120, 60))};
        QTest::addRow("release of button %d", button) << pointers << QPoint();
    }
}

/// The window accepts every event, so that none is passed on.
void tst_WindowDrag::pointer()
{
    QFETCH(Pointers, pointers);
    QFETCH(QPoint, moved);

    MainWindow window;
    window.setMouseTracking(true); // for moves with no button held
    window.show();
    window.move(kWindow);
    for (const Pointer &pointer : pointers) {
        const QPointF place = pointer.place - window.pos();
        QWidget *child = window.childAt(place.toPoint());
        const bool isPress = pointer.type == QEvent::MouseButtonPress;
        QWidget *receiver = isPress && child != nullptr ? child : &window;
        const QPointF local = place - receiver->mapTo(&window, QPoint());
        QMouseEvent event(pointer.type, local, place, pointer.place, pointer.button, pointer.held,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(receiver, &event);
        QVERIFY(event.isAccepted());
    }
    QCOMPARE(window.pos(), kWindow + moved);
}

void tst_WindowDrag::pressReachesTheWindow_data()
{
    QTest::addColumn<QPoint>("point");
    QTest::addColumn<int>("presses");
    QTest::newRow("on the title") << QPoint(250, 35) << 1;
    QTest::newRow("on the background") << QPoint(20, 20) << 1;
    QTest::newRow("on the status text") << QPoint(250, 115) << 1;
    QTest::newRow("on the progress bar") << QPoint(250, 165) << 1;
    QTest::newRow("on the close button") << QPoint(470, 27) << 0;
    QTest::newRow("on the upgrade button") << QPoint(250, 218) << 0;
}

void tst_WindowDrag::pressReachesTheWindow()
{
    QFETCH(QPoint, point);
    QFETCH(int, presses);

    MainWindow window;
    PressCounter counter;
    window.installEventFilter(&counter);
    window.show();
    QWidget *child = window.childAt(point);
    QVERIFY(child != nullptr);
    QTest::mousePress(child, Qt::LeftButton, {}, child->mapFrom(&window, point));
    QCOMPARE(counter.count, presses);
}

QTEST_MAIN(tst_WindowDrag)
#include "tst_WindowDrag.moc"

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/support/WindowParts.h"
#include "tests/app/WindowPointer.h"
#include "tests/support/WidgetPicture.h"
#include "widgets/CustomArea.h"

#include <QApplication>
#include <QMenuBar>
#include <QMetaMethod>
#include <QStatusBar>
#include <QTimer>
#include <QtTest>

using namespace WindowParts;

Q_DECLARE_METATYPE(Qt::MouseButton)

namespace {

const QColor kBackground(0x0f, 0x17, 0x1d);

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

class tst_MainWindow : public QObject
{
    Q_OBJECT

private slots:
    void slotsKeepTheirOrder();
    void keepsTheFormUnderneath();
    void isFramelessAndFixed();
    void layout_data();
    void layout();
    void backgroundLiesBelowEverything();
    void paintsItsBackground();
    void labels();
    void buttons();
    void captionIsWhite_data();
    void captionIsWhite();
    void startsIdle();
    void pressStartsDrag_data();
    void pressStartsDrag();
    void pressReachesWindow_data();
    void pressReachesWindow();
    void windowStandsStillBelowTheBand();
    void moveIsRounded_data();
    void moveIsRounded();
    void anyReleaseEndsTheDrag_data();
    void anyReleaseEndsTheDrag();
    void moveWithoutPressDoesNothing();
    void closeButtonEndsTheProgram();
    void fontsFitTheirRectangles_data();
    void fontsFitTheirRectangles();
};

void tst_MainWindow::slotsKeepTheirOrder()
{
    const QMetaObject &meta = MainWindow::staticMetaObject;
    QList<QByteArray> names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        QCOMPARE(meta.method(i).methodType(), QMetaMethod::Slot);
        QCOMPARE(meta.method(i).access(), QMetaMethod::Private);
        names.append(meta.method(i).methodSignature());
    }
    const QList<QByteArray> expected
        = {"slot_click_sysbtn_close()", "slot_click_firmwareupgrade()",
           "onReadyReadStandardOutput()", "onReadyReadStandardError()", "onTimerProcessOutput()"};
    QCOMPARE(names, expected);
    QCOMPARE(meta.propertyCount(), meta.propertyOffset());
}

void tst_MainWindow::keepsTheFormUnderneath()
{
    const MainWindow window;
    QCOMPARE(window.objectName(), QString("MainWindow"));
    QVERIFY(window.centralWidget() != nullptr);
    QCOMPARE(window.centralWidget()->objectName(), QString("centralwidget"));
    // A menu bar would be empty, and its code alone takes 0.4 MB.
    QVERIFY(window.findChild<QMenuBar *>() == nullptr);
    QVERIFY(window.findChild<QStatusBar *>("statusbar") != nullptr);
}

void tst_MainWindow::isFramelessAndFixed()
{
    MainWindow window;
    // Qt adds its own mark of a top-level widget; no other hint may be there.
    QCOMPARE(int(window.windowFlags()), int(Qt::Window | Qt::FramelessWindowHint));
    QCOMPARE(window.windowTitle(), QString("FW Update"));
    window.show();
    window.resize(800, 600);
    QCOMPARE(window.size(), QSize(500, 260));
    QCOMPARE(window.frameGeometry().size(), QSize(500, 260));
    window.resize(100, 100);
    QCOMPARE(window.size(), QSize(500, 260));
}

void tst_MainWindow::layout_data()
{
    QTest::addColumn<QByteArray>("className");
    QTest::addColumn<int>("index");
    QTest::addColumn<QRect>("geometry");

    QTest::newRow("background area") << QByteArray("CustomArea") << 0 << QRect(0, 0, 500, 260);
    QTest::newRow("close button") << QByteArray("MButton") << 0 << QRect(455, 12, 30, 30);
    QTest::newRow("title label") << QByteArray("QLabel") << 0 << QRect(170, 20, 160, 30);
    QTest::newRow("status label") << QByteArray("QLabel") << 1 << QRect(35, 100, 430, 30);
    QTest::newRow("progress bar") << QByteArray("CustomProgressBar") << 0
                                  << QRect(35, 150, 430, 30);
    QTest::newRow("upgrade button") << QByteArray("MButton") << 1 << QRect(170, 200, 160, 36);
}

void tst_MainWindow::layout()
{
    QFETCH(QByteArray, className);
    QFETCH(int, index);
    QFETCH(QRect, geometry);

    MainWindow window;
    window.show();
    QList<QWidget *> widgets;
    for (QWidget *child : window.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (child->metaObject()->className() == className) {
            widgets.append(child);
        }
    }
    QVERIFY(widgets.size() > index);
    QCOMPARE(widgets.at(index)->geometry(), geometry);
    QVERIFY(widgets.at(index)->isVisible());
}

void tst_MainWindow::backgroundLiesBelowEverything()
{
    const MainWindow window;
    const auto *background = window.findChild<CustomArea *>();
    const QObjectList &children = window.children(); // bottom to top
    const int position = children.indexOf(const_cast<CustomArea *>(background));
    QVERIFY(position > children.indexOf(window.centralWidget()));
    QVERIFY(position < children.indexOf(closeButton(window)));
    QVERIFY(position < children.indexOf(titleLabel(window)));
    QVERIFY(position < children.indexOf(statusLabel(window)));
    QVERIFY(position < children.indexOf(window.findChild<CustomProgressBar *>()));
    QVERIFY(position < children.indexOf(upgradeButton(window)));
}

void tst_MainWindow::paintsItsBackground()
{
    MainWindow window;
    const QPalette expected(kBackground); // with all that Qt makes of one colour
    for (const QPalette::ColorRole role :
         {QPalette::Window, QPalette::WindowText, QPalette::Base, QPalette::Button,
          QPalette::ButtonText, QPalette::Light, QPalette::Dark}) {
        QCOMPARE(window.palette().color(role), expected.color(role));
    }
    QVERIFY(window.autoFillBackground());

    const QImage picture = window.grab().toImage();
    for (const QPoint &point : {QPoint(0, 0), QPoint(499, 0), QPoint(0, 259), QPoint(499, 259),
                                QPoint(250, 80), QPoint(250, 115), QPoint(250, 190)}) {
        QCOMPARE(picture.pixelColor(point), kBackground);
    }
    QCOMPARE(picture.pixelColor(250, 165), QColor(0x51, 0x51, 0x51)); // trough
    QCOMPARE(picture.pixelColor(180, 205), QColor(0x17, 0x21, 0x2b)); // button, normal look
    QCOMPARE(picture.pixelColor(185, 218), QColor(0x17, 0x21, 0x2b)); // its borders meet
    QCOMPARE(picture.pixelColor(189, 218), QColor(0x17, 0x21, 0x2b)); // left of its middle
    QCOMPARE(picture.pixelColor(170, 200), kBackground); // outside its round corners
    QCOMPARE(picture.pixelColor(170, 235), kBackground);
    QVERIFY(picture.pixelColor(470, 27).lightness() > 230); // middle of the thin cross
}

void tst_MainWindow::labels()
{
    const MainWindow window;
    const QLabel *title = titleLabel(window);
    QCOMPARE(title->text(), QString("Firmware Upgrade"));
    QCOMPARE(int(title->alignment()), 0x84);
    QCOMPARE(title->styleSheet(), QString("color:#f0f0f0;"));
    QCOMPARE(title->font().pointSize(), 16);
    QCOMPARE(title->font().family(), QApplication::font().family());

    const QLabel *status = statusLabel(window);
    QCOMPARE(status->text(), QString());
    QCOMPARE(int(status->alignment()), 0x84);
    QCOMPARE(status->styleSheet(), QString("color:#ffffff;"));
    QCOMPARE(status->font().pointSize(), 16);
    QCOMPARE(status->textFormat(), Qt::PlainText);
}

void tst_MainWindow::buttons()
{
    const MainWindow window;
    const MButton *close = closeButton(window);
    QCOMPARE(close->toolTip(), QString("close Winodw"));
    QCOMPARE(close->cursor().shape(), Qt::PointingHandCursor);
    QCOMPARE(close->text(), QString());

    const MButton *upgrade = upgradeButton(window);
    QCOMPARE(upgrade->text(), QString("Start Upgrade"));
    QCOMPARE(upgrade->cursor().shape(), Qt::PointingHandCursor);
    QCOMPARE(upgrade->font().pointSize(), 16);
}

void tst_MainWindow::captionIsWhite_data()
{
    QTest::addColumn<bool>("hovered");
    QTest::addColumn<bool>("pressed");
    QTest::newRow("normal") << false << false;
    QTest::newRow("hovered") << true << false;
    QTest::newRow("pressed") << true << true;
}

void tst_MainWindow::captionIsWhite()
{
    QFETCH(bool, hovered);
    QFETCH(bool, pressed);

    const MainWindow window;
    MButton *button = upgradeButton(window);
    if (hovered) {
        QEvent enter(QEvent::Enter);
        QCoreApplication::sendEvent(button, &enter);
    }
    if (pressed) {
        QTest::mousePress(button, Qt::LeftButton);
    }
    const QImage written = WidgetPicture::of(*button, kBackground.rgb());
    button->setText("");
    const QImage bare = WidgetPicture::of(*button, kBackground.rgb());
    QVERIFY(WidgetPicture::isWrittenIn(Qt::white, bare, written));
}

void tst_MainWindow::startsIdle()
{
    MainWindow window;
    QVERIFY(upgradeButton(window)->isEnabled());
    QVERIFY(closeButton(window)->isEnabled());
    const QImage picture = window.grab().toImage();
    QCOMPARE(picture.pixelColor(37, 165), QColor(0x51, 0x51, 0x51)); // nothing filled yet
}

void tst_MainWindow::pressStartsDrag_data()
{
    QTest::addColumn<QPointF>("press");
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::addColumn<bool>("drags");

    QTest::newRow("left in the middle of the band") << QPointF(100, 40) << Qt::LeftButton << true;
    QTest::newRow("left at the top") << QPointF(100, 0) << Qt::LeftButton << true;
    QTest::newRow("left at y 89") << QPointF(100, 89) << Qt::LeftButton << true;
    QTest::newRow("left at y 90") << QPointF(100, 90) << Qt::LeftButton << false;
    QTest::newRow("left at y 89.4, rounded down") << QPointF(100, 89.4) << Qt::LeftButton << true;
    QTest::newRow("left at y 89.5, rounded up") << QPointF(100, 89.5) << Qt::LeftButton << false;
    QTest::newRow("left at the bottom") << QPointF(100, 259) << Qt::LeftButton << false;
    QTest::newRow("right in the band") << QPointF(100, 40) << Qt::RightButton << false;
    QTest::newRow("middle in the band") << QPointF(100, 40) << Qt::MiddleButton << false;
    QTest::newRow("right below the band") << QPointF(100, 200) << Qt::RightButton << false;
}

void tst_MainWindow::pressStartsDrag()
{
    QFETCH(QPointF, press);
    QFETCH(Qt::MouseButton, button);
    QFETCH(bool, drags);

    MainWindow window;
    window.show();
    window.move(60, 70);
    const QPointF start = QPointF(60, 70) + press;
    WindowPointer::send(window, QEvent::MouseButtonPress, start, button);
    WindowPointer::send(window, QEvent::MouseMove, QPointF(60, 70) + QPointF(120, 60), button);
    // The pressed point stays under the pointer, which is now at (120, 60) of the old place.
    const QPoint followed = QPoint(180, 130) - press.toPoint();
    QCOMPARE(window.pos(), drags ? followed : QPoint(60, 70));
}

void tst_MainWindow::pressReachesWindow_data()
{
    QTest::addColumn<QPoint>("point");
    QTest::addColumn<bool>("reaches");
    QTest::addColumn<bool>("drags");

    QTest::newRow("on the title label") << QPoint(250, 35) << true << true;
    QTest::newRow("on the background") << QPoint(20, 20) << true << true;
    QTest::newRow("on the close button") << QPoint(470, 27) << false << false;
    QTest::newRow("on the status label, below the band") << QPoint(250, 115) << true << false;
    QTest::newRow("on the progress bar, below the band") << QPoint(250, 165) << true << false;
    QTest::newRow("on the upgrade button") << QPoint(250, 218) << false << false;
}

void tst_MainWindow::pressReachesWindow()
{
    QFETCH(QPoint, point);
    QFETCH(bool, reaches);
    QFETCH(bool, drags);

    MainWindow window;
    PressCounter presses;
    window.installEventFilter(&presses);
    window.show();
    window.move(60, 70);
    QWidget *child = window.childAt(point);
    QVERIFY(child != nullptr);
    WindowPointer::send(*child, QEvent::MouseButtonPress, window.mapToGlobal(point),
                        Qt::LeftButton);
    QCOMPARE(presses.count, reaches ? 1 : 0);
    WindowPointer::send(window, QEvent::MouseMove, QPoint(60, 70) + QPoint(100, 50),
                        Qt::LeftButton);
    QCOMPARE(window.pos() != QPoint(60, 70), drags);
}

void tst_MainWindow::windowStandsStillBelowTheBand()
{
    MainWindow window;
    window.show();
    window.move(100, 100);
    WindowPointer::send(window, QEvent::MouseButtonPress, QPointF(200, 150), Qt::LeftButton);

    WindowPointer::send(window, QEvent::MouseMove, QPointF(210, 189), Qt::LeftButton);
    QCOMPARE(window.pos(), QPoint(110, 139)); // y 89 in the window still moves it

    WindowPointer::send(window, QEvent::MouseMove, QPointF(250, 139 + 90), Qt::LeftButton);
    QCOMPARE(window.pos(), QPoint(110, 139));
    WindowPointer::send(window, QEvent::MouseMove, QPointF(250, 400), Qt::LeftButton);
    QCOMPARE(window.pos(), QPoint(110, 139));

    WindowPointer::send(window, QEvent::MouseMove, QPointF(250, 160), Qt::LeftButton);
    QCOMPARE(window.pos(), QPoint(150, 110)); // back in the band, it follows again
    WindowPointer::send(window, QEvent::MouseMove, QPointF(250, 105), Qt::LeftButton);
    QCOMPARE(window.pos(), QPoint(150, 55)); // above the window counts as the band
}

void tst_MainWindow::moveIsRounded_data()
{
    QTest::addColumn<QPointF>("pointer");
    QTest::addColumn<QPoint>("place");
    QTest::newRow("y 89.4 in the window is 89") << QPointF(200, 189.4) << QPoint(100, 139);
    QTest::newRow("y 89.5 in the window is 90") << QPointF(200, 189.5) << QPoint(100, 100);
    QTest::newRow("screen position down") << QPointF(210.4, 160.4) << QPoint(110, 110);
    QTest::newRow("screen position up") << QPointF(210.6, 160.6) << QPoint(111, 111);
}

void tst_MainWindow::moveIsRounded()
{
    QFETCH(QPointF, pointer);
    QFETCH(QPoint, place);

    MainWindow window;
    window.show();
    window.move(100, 100);
    WindowPointer::send(window, QEvent::MouseButtonPress, QPointF(200, 150), Qt::LeftButton);
    WindowPointer::send(window, QEvent::MouseMove, pointer, Qt::LeftButton);
    QCOMPARE(window.pos(), place);
}

void tst_MainWindow::anyReleaseEndsTheDrag_data()
{
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::newRow("left") << Qt::LeftButton;
    QTest::newRow("right") << Qt::RightButton;
    QTest::newRow("middle") << Qt::MiddleButton;
}

void tst_MainWindow::anyReleaseEndsTheDrag()
{
    QFETCH(Qt::MouseButton, button);

    MainWindow window;
    window.show();
    window.move(100, 100);
    WindowPointer::send(window, QEvent::MouseButtonPress, QPointF(200, 150), Qt::LeftButton);
    WindowPointer::send(window, QEvent::MouseButtonRelease, QPointF(200, 150), button);
    WindowPointer::send(window, QEvent::MouseMove, QPointF(220, 160), Qt::LeftButton);
    QCOMPARE(window.pos(), QPoint(100, 100));
}

void tst_MainWindow::moveWithoutPressDoesNothing()
{
    MainWindow window;
    window.show();
    window.move(100, 100);
    WindowPointer::send(window, QEvent::MouseMove, QPointF(220, 160), Qt::LeftButton);
    QCOMPARE(window.pos(), QPoint(100, 100));
}

void tst_MainWindow::closeButtonEndsTheProgram()
{
    MainWindow window;
    window.show();
    QTimer::singleShot(0, &window,
                       [&window] { QTest::mouseClick(closeButton(window), Qt::LeftButton); });
    QCOMPARE(QApplication::exec(), 0); // returns because its last window is gone
    QVERIFY(!window.isVisible());
}

void tst_MainWindow::fontsFitTheirRectangles_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QSize>("room");

    const QSize status(430, 30);
    QTest::newRow("heading") << "Firmware Upgrade" << QSize(160, 30);
    QTest::newRow("button") << "Start Upgrade" << QSize(160, 36);
    QTest::newRow("start") << "Start Upgrade" << status;
    QTest::newRow("initialised") << "Init Upgrade success!" << status;
    QTest::newRow("found") << "Find Upgrade Device!" << status;
    QTest::newRow("not found") << "Find Upgrade Device Error!" << status;
    QTest::newRow("running") << "Upgrading, please do not plug or unplug the device!" << status;
    QTest::newRow("done") << "Upgrade Successfully" << status;
}

void tst_MainWindow::fontsFitTheirRectangles()
{
    QFETCH(QString, text);
    QFETCH(QSize, room);

    const MainWindow window;
    // All three have the same font; figures hold for the one that Debian installs.
    QCOMPARE(titleLabel(window)->font(), statusLabel(window)->font());
    QCOMPARE(upgradeButton(window)->font(), statusLabel(window)->font());
    const QFont font = statusLabel(window)->font();
    QCOMPARE(QFontInfo(font).family(), QString("DejaVu Sans"));
    const QFontMetrics metrics(font);
    QVERIFY2(metrics.horizontalAdvance(text) <= room.width(),
             qPrintable(QString::number(metrics.horizontalAdvance(text))));
    QVERIFY(metrics.height() <= room.height());
}

QTEST_MAIN(tst_MainWindow)
#include "tst_MainWindow.moc"

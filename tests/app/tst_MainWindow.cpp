// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/demo/StatusText.h"
#include "tests/support/PointerEvents.h"
#include "tests/support/WidgetPicture.h"
#include "tests/support/WindowParts.h"
#include "widgets/CustomArea.h"
#include "widgets/KitAccessibility.h"

#include <QAccessible>
#include <QApplication>
#include <QMenuBar>
#include <QMetaMethod>
#include <QStatusBar>
#include <QTimer>
#include <QtTest>

using namespace WindowParts;

namespace {

const QColor kBackground(0x0f, 0x17, 0x1d);

} // namespace

Q_DECLARE_METATYPE(QAccessible::Role)
Q_DECLARE_METATYPE(Qt::CursorShape)

/// The look of the window and what a screen reader finds in it.
class tst_MainWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { KitAccessibility::install(); }
    void slotsKeepTheirOrder();
    void keepsTheFormUnderneath();
    void isFramelessAndFixed();
    void part_data();
    void part();
    void backgroundLiesBelowTheRest();
    void paintsItsBackground();
    void labels();
    void captionIsWhite_data();
    void captionIsWhite();
    void startsIdle();
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
    // An empty menu bar would cost 0.4 MB of memory.
    QVERIFY(window.findChild<QMenuBar *>() == nullptr);
    QVERIFY(window.findChild<QStatusBar *>("statusbar") != nullptr);
}

void tst_MainWindow::isFramelessAndFixed()
{
    MainWindow window;
    // Qt adds Qt::Window to every top-level widget. No other flag may be set.
    QCOMPARE(int(window.windowFlags()), int(Qt::Window | Qt::FramelessWindowHint));
    QCOMPARE(window.windowTitle(), QString("FW Update"));
    window.show();
    window.resize(800, 600);
    QCOMPARE(window.size(), QSize(500, 260));
    QCOMPARE(window.frameGeometry().size(), QSize(500, 260));
    window.resize(100, 100);
    QCOMPARE(window.size(), QSize(500, 260));
}

void tst_MainWindow::part_data()
{
    QTest::addColumn<QByteArray>("className");
    QTest::addColumn<int>("index");
    QTest::addColumn<QRect>("geometry");
    QTest::addColumn<QAccessible::Role>("role");
    QTest::addColumn<QString>("name"); // that a screen reader says
    QTest::addColumn<int>("pointSize");
    QTest::addColumn<Qt::CursorShape>("cursor");

    const int usual = QApplication::font().pointSize();
    QTest::newRow("background area") << QByteArray("CustomArea") << 0 << QRect(0, 0, 500, 260)
                                     << QAccessible::Client << "" << usual << Qt::ArrowCursor;
    QTest::newRow("close button, by its tool tip")
        << QByteArray("MButton") << 0 << QRect(455, 12, 30, 30) << QAccessible::PushButton
        << "close Winodw" << usual << Qt::PointingHandCursor;
    QTest::newRow("heading") << QByteArray("QLabel") << 0 << QRect(170, 20, 160, 30)
                             << QAccessible::StaticText << "Firmware Upgrade" << 16
                             << Qt::ArrowCursor;
    QTest::newRow("status, empty at first")
        << QByteArray("QLabel") << 1 << QRect(35, 100, 430, 30) << QAccessible::StaticText << ""
        << 16 << Qt::ArrowCursor;
    QTest::newRow("progress bar") << QByteArray("CustomProgressBar") << 0 << QRect(35, 150, 430, 30)
                                  << QAccessible::ProgressBar << "Upgrade progress" << usual
                                  << Qt::ArrowCursor;
    QTest::newRow("upgrade button, by its text")
        << QByteArray("MButton") << 1 << QRect(170, 200, 160, 36) << QAccessible::PushButton
        << "Start Upgrade" << 16 << Qt::PointingHandCursor;
}

void tst_MainWindow::part()
{
    QFETCH(QByteArray, className);
    QFETCH(int, index);
    QFETCH(QRect, geometry);
    QFETCH(QAccessible::Role, role);
    QFETCH(QString, name);
    QFETCH(int, pointSize);
    QFETCH(Qt::CursorShape, cursor);

    MainWindow window;
    window.show();
    QList<QWidget *> widgets;
    for (QWidget *child : window.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (child->metaObject()->className() == className) {
            widgets.append(child);
        }
    }
    QVERIFY(widgets.size() > index);
    QWidget *part = widgets.at(index);
    QCOMPARE(part->geometry(), geometry);
    QVERIFY(part->isVisible());
    QCOMPARE(part->font().pointSize(), pointSize);
    QCOMPARE(part->font().family(), QApplication::font().family());
    QCOMPARE(part->cursor().shape(), cursor);
    const QAccessibleInterface *read = QAccessible::queryAccessibleInterface(part);
    QCOMPARE(read->role(), role);
    QCOMPARE(read->text(QAccessible::Name), name);
    QCOMPARE(read->rect(), geometry.translated(window.mapToGlobal(QPoint())));
}

void tst_MainWindow::backgroundLiesBelowTheRest()
{
    const MainWindow window;
    const QObjectList &children = window.children(); // bottom to top
    const auto position = [&children](const QObject *child) {
        return children.indexOf(const_cast<QObject *>(child));
    };
    const auto background = position(window.findChild<CustomArea *>());
    QVERIFY(background > position(window.centralWidget()));
    const QVector<QWidget *> others = {closeButton(window), titleLabel(window), statusLabel(window),
                                       progressBar(window), upgradeButton(window)};
    for (const QWidget *other : others) {
        QVERIFY(background < position(other));
    }
}

void tst_MainWindow::paintsItsBackground()
{
    MainWindow window;
    const QPalette expected(kBackground); // Qt derives the other roles from this colour
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
    QCOMPARE(titleLabel(window)->alignment(), Qt::AlignCenter);
    QCOMPARE(titleLabel(window)->styleSheet(), QString("color:#f0f0f0;"));
    QCOMPARE(statusLabel(window)->alignment(), Qt::AlignCenter);
    QCOMPARE(statusLabel(window)->styleSheet(), QString("color:#ffffff;"));
    QCOMPARE(statusLabel(window)->textFormat(), Qt::PlainText);
    QCOMPARE(closeButton(window)->text(), QString());
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
        PointerEvents::cross(*button, PointerEvents::Enter);
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
    const MainWindow window;
    QVERIFY(upgradeButton(window)->isEnabled());
    QVERIFY(closeButton(window)->isEnabled());
    QCOMPARE(progressBar(window)->value(), 0);
}

void tst_MainWindow::closeButtonEndsTheProgram()
{
    MainWindow window;
    window.show();
    QTimer::singleShot(0, &window,
                       [&window] { QTest::mouseClick(closeButton(window), Qt::LeftButton); });
    QCOMPARE(QApplication::exec(), 0); // closing the last window ends it
    QVERIFY(!window.isVisible());
}

void tst_MainWindow::fontsFitTheirRectangles_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QSize>("room");

    const QSize status(430, 30);
    QTest::newRow("heading") << "Firmware Upgrade" << QSize(160, 30);
    QTest::newRow("button") << "Start Upgrade" << QSize(160, 36);
    for (const char *text : {StatusText::kStart, StatusText::kInitialised, StatusText::kFound,
                             StatusText::kNotFound, StatusText::kUpgrading, StatusText::kSuccess}) {
        QTest::newRow(text) << text << status;
    }
}

void tst_MainWindow::fontsFitTheirRectangles()
{
    QFETCH(QString, text);
    QFETCH(QSize, room);

    // The default font depends on what is installed.
    QApplication::setFont(QFont("DejaVu Sans"));
    const MainWindow window;
    // All three have the same font.
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

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/demo/StatusText.h"
#include "simulator/demo/WindowLook.h"
#include "tests/endtoend/Stage.h"

#include <QtTest>

Q_DECLARE_METATYPE(Qt::MouseButton)

namespace {

constexpr int kSoon = 20000;
constexpr int kShortly = 500;

/// A part of the upgrade button that a pointer at its other end does not hide.
QImage leftOfUpgradeButton(Stage &stage)
{
    const int scale = Stage::scale();
    return stage.user.look().copy(172 * scale, 202 * scale, 30 * scale, 32 * scale);
}

} // namespace

/// What a user does with the window, on an X screen or on a Wayland desktop of any scale.
class tst_Window : public QObject
{
    Q_OBJECT

private slots:
    void opensAndCloses_data();
    void opensAndCloses();
    void desktopFindsItsNameAndIcon();
    void upgrades();
    void isDraggedByItsBand_data();
    void isDraggedByItsBand();
    void isDraggedAfterAClick();
    void pointerWorksAfterADrag();
    void looksTheSameAsOnX();
};

void tst_Window::opensAndCloses_data()
{
    QTest::addColumn<QString>("desktop");
    QTest::newRow("desktop without a name") << QString();
    QTest::newRow("GNOME") << "GNOME";
    QTest::newRow("KDE") << "KDE";
}

void tst_Window::opensAndCloses()
{
    QFETCH(const QString, desktop);
    Stage stage;
    QProcessEnvironment environment = stage.program.environment();
    environment.insert("XDG_CURRENT_DESKTOP", desktop);
    stage.program.setEnvironment(environment);
    QVERIFY(stage.open());

    QCOMPARE(stage.user.windowGeometry().size(), QSize(500, 260) * Stage::scale());
    QCOMPARE(stage.status(), QString(""));
    QCOMPARE(stage.progress(), 0);

    stage.user.click(WindowLook::kCloseButton);
    QTRY_VERIFY_WITH_TIMEOUT(!stage.program.isRunning(), kSoon);
    QCOMPARE(stage.program.exitCode(), 0);
    QTRY_VERIFY_WITH_TIMEOUT(!stage.user.seesWindow(), kSoon);
    QCOMPARE(stage.log(), QByteArray());
}

void tst_Window::desktopFindsItsNameAndIcon()
{
    Stage stage;
    QProcessEnvironment environment = stage.program.environment();
    environment.insert("WAYLAND_DEBUG", "1"); // writes what the program tells the compositor
    stage.program.setEnvironment(environment);
    QVERIFY(stage.open());
    if (Stage::isOnWayland()) {
        QVERIFY(stage.log().contains("set_app_id(\"" FW_UPDATE_APPLICATION_ID "\")"));
    } else {
        QCOMPARE(stage.user.windowClass(), QStringList({"fw-update", "fw-update"}));
    }
}

void tst_Window::upgrades()
{
    DeviceBehaviour unhurried;
    unhurried.answerDelay = 15;
    Stage stage(unhurried);
    stage.device.startInApplication();
    QVERIFY(stage.open());

    stage.click(WindowLook::kUpgradeButton);
    QTRY_COMPARE_WITH_TIMEOUT(stage.status(), QString(StatusText::kUpgrading), kSoon);
    QVERIFY(!stage.isUpgradeEnabled());
    QTRY_COMPARE_WITH_TIMEOUT(stage.status(), QString(StatusText::kSuccess), kSoon);
    QTRY_COMPARE_WITH_TIMEOUT(stage.progress(), 10000, kSoon);
    QTRY_VERIFY_WITH_TIMEOUT(stage.isUpgradeEnabled(), kSoon);

    QCOMPARE(stage.device.reports(),
             QList<QByteArray>{QByteArray("\xAA\xBB") + QByteArray(62, '\0')});
    QCOMPARE(stage.device.image(), stage.package.firmware);
    QTRY_COMPARE_WITH_TIMEOUT(stage.device.state(), SimulatedDevice::State::Application, kSoon);
}

void tst_Window::isDraggedByItsBand_data()
{
    QTest::addColumn<QPoint>("from");
    QTest::addColumn<QPoint>("to");
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::addColumn<bool>("moves");
    const auto row
        = [](const char *name, QPoint from, QPoint to, Qt::MouseButton button, bool moves) {
              QTest::newRow(name) << from << to << button << moves;
          };
    row("by its heading", {250, 30}, {330, 70}, Qt::LeftButton, true);
    row("by the band's first row", {20, 0}, {120, 0}, Qt::LeftButton, true);
    row("by the band's last row", {20, 89}, {120, 89}, Qt::LeftButton, true);
    row("below the band", {20, 90}, {120, 90}, Qt::LeftButton, false);
    row("from below the band into it", {20, 90}, {120, 60}, Qt::LeftButton, false);
    row("by the right button", {20, 40}, {120, 60}, Qt::RightButton, false);
    row("by the close button", {470, 27}, {370, 60}, Qt::LeftButton, false);
    row("by the upgrade button", {250, 218}, {350, 40}, Qt::LeftButton, false);
}

void tst_Window::isDraggedByItsBand()
{
    QFETCH(const QPoint, from);
    QFETCH(const QPoint, to);
    QFETCH(const Qt::MouseButton, button);
    QFETCH(const bool, moves);
    Stage stage;
    QVERIFY(stage.open());
    const QPoint way = moves ? stage.inward(to - from) : to - from;
    const QPoint before = stage.position();
    QCOMPARE(stage.drag(from, way, button, moves ? kSoon : kShortly), moves);
    stage.user.release(button);
    const QPoint after = moves ? before + way : before;
    QTRY_COMPARE_WITH_TIMEOUT(stage.position(), after, kSoon);

    // The program has handled the drag by the time that it answers a click.
    stage.click(WindowLook::kUpgradeButton);
    QTRY_COMPARE_WITH_TIMEOUT(stage.status(), QString(StatusText::kNotFound), kSoon);

    QCOMPARE(stage.position(), after);
}

/// Qt calls the second of two quick presses a double click, also if only this one is in the band.
void tst_Window::isDraggedAfterAClick()
{
    constexpr QPoint kBelow(20, 91);
    constexpr QPoint kInside(20, 88);
    Stage stage;
    QVERIFY(stage.open());
    stage.click(kBelow);
    QVERIFY(stage.drag(kInside, stage.inward({100, 0}), Qt::LeftButton, kSoon));
}

void tst_Window::pointerWorksAfterADrag()
{
    constexpr QPoint kPlace(100, 40);
    Stage stage;
    QVERIFY(stage.open());
    const QPoint there = stage.inward({60, 40});
    const QImage idle = leftOfUpgradeButton(stage);

    QVERIFY(stage.drag(kPlace, there, Qt::LeftButton, kSoon));
    stage.user.release();
    stage.user.movePointer({310, 218});
    QTRY_VERIFY_WITH_TIMEOUT(leftOfUpgradeButton(stage) != idle, kSoon);
    stage.movePointerAside();
    QTRY_COMPARE_WITH_TIMEOUT(leftOfUpgradeButton(stage), idle, kSoon);

    QVERIFY(stage.drag(kPlace, -there, Qt::LeftButton, kSoon));
    stage.user.release();
    QVERIFY(stage.drag(kPlace, there, Qt::LeftButton, kSoon));
    stage.user.release();
    stage.user.click(WindowLook::kCloseButton);
    QTRY_VERIFY_WITH_TIMEOUT(!stage.program.isRunning(), kSoon);
}

void tst_Window::looksTheSameAsOnX()
{
    if (!Stage::isOnWayland()) {
        QSKIP("this is X");
    }
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove("QT_FONT_DPI");
    environment.insert("QT_SCALE_FACTOR", QString::number(Stage::scale()));
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(FW_UPDATE_PROGRAM, QStringList());
    ScreenUser user("FW Update");
    QTRY_VERIFY_WITH_TIMEOUT(WindowLook::isUpgradeEnabled(user.look()), kSoon);
    const QImage onX = user.look();
    program.terminate();
    QVERIFY(program.waitForFinished());

    Stage stage;
    QVERIFY(stage.open());
    QTRY_COMPARE_WITH_TIMEOUT(stage.user.look(), onX, kSoon);
}

QTEST_MAIN(tst_Window)
#include "tst_Window.moc"

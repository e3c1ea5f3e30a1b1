// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/endtoend/InstalledProgram.h"
#include "tests/support/ProgramStage.h"
#include "tests/support/ScreenResources.h"

#include <QProcess>
#include <QtTest>

namespace {

/// Among the settings, it means that this variable is not set, as in sessions of X. Qt 6 would
/// prefer Wayland.
const QString kNoWayland = "WAYLAND_DISPLAY";

/// Where there is light text in \a area of \a picture.
QRect ink(const QImage &picture, const QRect &area)
{
    QRect found;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (picture.pixelColor(x, y).lightness() > 120) {
                found |= QRect(x, y, 1, 1);
            }
        }
    }
    return found;
}

QRect scaled(const QRect &rect, int factor)
{
    return {rect.topLeft() * factor, rect.size() * factor};
}

} // namespace

/// How large the program is on dense screens: on X and on a dense Wayland desktop, which fills the
/// X screen.
class tst_DenseScreen : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void windowGrowsWithTheScreen_data();
    void windowGrowsWithTheScreen();
    void cleanupTestCase();

private:
    QProcess m_xwayland;
    QString m_xwaylandDisplay;
};

void tst_DenseScreen::initTestCase()
{
    // It fills the desktop, so that nothing moves the windows on it.
    m_xwayland.start("Xwayland", {"-displayfd", "1"});
    QVERIFY2(m_xwayland.waitForReadyRead(), "there is no Xwayland (Debian package: xwayland)");
    m_xwaylandDisplay = ":" + m_xwayland.readAllStandardOutput().trimmed();
}

void tst_DenseScreen::cleanupTestCase()
{
    m_xwayland.terminate();
    QVERIFY(m_xwayland.waitForFinished());
}

void tst_DenseScreen::windowGrowsWithTheScreen_data()
{
    QTest::addColumn<QStringList>("plugins");
    QTest::addColumn<QByteArray>("dpi");
    QTest::addColumn<QStringList>("settings");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("onX");
    QTest::addColumn<int>("factor");

    const QStringList all = {"platforms", "wayland-shell-integration"};
    const QStringList noWayland = {"platforms/libqxcb.so"};
    const auto rowOnX = [&](const char *name, const QByteArray &dpi, const QStringList &settings,
                            const QStringList &arguments, int factor) {
        QTest::newRow(name) << all << dpi
                            << settings + QStringList{"XDG_SESSION_TYPE=x11", kNoWayland}
                            << arguments << true << factor;
    };
    rowOnX("desktop says nothing", "", {}, {}, 1);
    rowOnX("usual screen", "96", {}, {}, 1);
    rowOnX("hardly denser", "120", {}, {}, 1);
    rowOnX("one and a half times as dense", "144", {}, {}, 2);
    rowOnX("twice as dense", "192", {}, {}, 2);
    rowOnX("three times as dense", "288", {}, {}, 3);
    rowOnX("no number", "many", {}, {}, 1);
    rowOnX("user chooses X by argument", "192", {"QT_QPA_PLATFORM=offscreen"}, {"-platform", "xcb"},
           2);
    rowOnX("user switches scaling on", "192", {"QT_AUTO_SCREEN_SCALE_FACTOR=1"}, {}, 2);
    rowOnX("user lets Qt find the scale", "192", {"QT_DEVICE_PIXEL_RATIO=auto"}, {}, 2);
    rowOnX("user switches scaling off", "192", {"QT_ENABLE_HIGHDPI_SCALING=0"}, {}, 1);
    rowOnX("user switches scaling off the old way", "192", {"QT_AUTO_SCREEN_SCALE_FACTOR=0"}, {},
           1);
    rowOnX("user wants a factor of 1", "192", {"QT_SCALE_FACTOR=1"}, {}, 1);
    rowOnX("user wants a factor of 2", "", {"QT_SCALE_FACTOR=2"}, {}, 2);

    const auto row = [](const char *name, const QStringList &plugins, const QByteArray &dpi,
                        const QStringList &settings, const QStringList &arguments, bool onX) {
        const int factor = onX ? 2 : ProgramStage::scale();
        QTest::newRow(name) << plugins << dpi << settings << arguments << onX << factor;
    };
    row("Wayland", all, "", {}, {}, false);
    row("Wayland, X is denser", all, "288", {}, {}, false);
    row("Wayland, user switches scaling on", all, "", {"QT_AUTO_SCREEN_SCALE_FACTOR=1"}, {}, false);
    row("Wayland, user prefers it", all, "288", {"QT_QPA_PLATFORM=wayland;xcb"}, {}, false);
    row("Wayland, user chooses it by argument in a session of X", all, "288",
        {"XDG_SESSION_TYPE=x11"}, {"-platform", "wayland"}, false);
    row("Wayland, user chooses its own X server", all, "",
        {"QT_QPA_PLATFORM=xcb", "DISPLAY=" + m_xwaylandDisplay}, {}, false);
    row("Wayland, user chooses X", all, "192", {"QT_QPA_PLATFORM=xcb"}, {}, true);
    row("Wayland, user prefers X", all, "192", {"QT_QPA_PLATFORM=xcb;wayland"}, {}, true);
    row("Wayland, user chooses X by argument", all, "192", {}, {"-platform", "xcb"}, true);
    row("Wayland, its plugin is missing", noWayland, "192", {}, {}, true);
    row("Wayland, its compositor is missing", all, "192", {"WAYLAND_DISPLAY=none"}, {}, true);
}

void tst_DenseScreen::windowGrowsWithTheScreen()
{
    QFETCH(const QStringList, plugins);
    QFETCH(const QByteArray, dpi);
    QFETCH(const QStringList, settings);
    QFETCH(const QStringList, arguments);
    QFETCH(const bool, onX);
    QFETCH(const int, factor);

    ScreenResources::set(dpi.isEmpty() ? dpi : "Xft.dpi:\t" + dpi + '\n');
    const InstalledProgram installed(plugins);
    const QProcessEnvironment ours = QProcessEnvironment::systemEnvironment();
    QProcessEnvironment environment = ProgramStage::usersEnvironment(ours);
    environment.insert("DISPLAY", ours.value("DISPLAY")); // desktops have an X server, too
    for (const QString &setting : settings) {
        environment.insert(setting.section('=', 0, 0), setting.section('=', 1));
    }
    if (settings.contains(kNoWayland)) {
        environment.remove(kNoWayland);
    }
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(installed.path(), arguments);
    ScreenUser userOfX("FW Update");
    ScreenUser userOfWayland = ProgramStage::makeUser();
    ScreenUser &user = onX ? userOfX : userOfWayland;
    QTRY_VERIFY_WITH_TIMEOUT(user.seesWindow(), 20000);
    QCOMPARE(userOfX.seesWindow(), onX);
    // A Wayland desktop scales the picture of its X server and blends the window's edge into black.
    const int edge = settings.contains("DISPLAY=" + m_xwaylandDisplay) ? 1 : 0;
    QTRY_COMPARE(user.windowGeometry().size(), QSize(500, 260) * factor - QSize(edge, edge));

    // The heading stands in its place and is neither tiny nor cut off, which its edges would show.
    const QRect place = scaled(QRect(172, 20, 156, 30), factor);
    const QRect band = scaled(QRect(60, 5, 380, 70), factor);
    user.movePointerOnScreen(QPoint(1000, 700) * ProgramStage::scale()); // off the heading
    QRect heading;
    QTRY_VERIFY(!(heading = ink(user.look(), band)).isEmpty() && place.contains(heading));
    QVERIFY(heading.width() > place.width() * 3 / 4);

    program.terminate();
    QVERIFY(program.waitForFinished());
    QTRY_VERIFY(!userOfWayland.seesWindow());
}

QTEST_MAIN(tst_DenseScreen)
#include "tst_DenseScreen.moc"

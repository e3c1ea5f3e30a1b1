// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/demo/ScreenUser.h"
#include "tests/support/ScreenResources.h"

#include <QProcess>
#include <QtTest>

namespace {

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

/// The program on screens whose desktop asks for a larger picture. Needs an X screen.
class tst_DenseScreen : public QObject
{
    Q_OBJECT

private slots:
    void windowGrowsWithTheScreen_data();
    void windowGrowsWithTheScreen();
};

void tst_DenseScreen::windowGrowsWithTheScreen_data()
{
    QTest::addColumn<QByteArray>("resources");
    QTest::addColumn<QStringList>("settings");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("factor");

    const auto row = [](const char *name, const QByteArray &resources, const QStringList &settings,
                        const QStringList &arguments, int factor) {
        QTest::newRow(name) << resources << settings << arguments << factor;
    };
    const QByteArray dense = "Xft.dpi:\t192\n";
    row("desktop says nothing", "", {}, {}, 1);
    row("usual screen", "Xft.dpi:\t96\n", {}, {}, 1);
    row("hardly denser", "Xft.dpi:\t120\n", {}, {}, 1);
    row("one and a half times as dense", "Xft.dpi:\t144\n", {}, {}, 2);
    row("twice as dense", dense, {}, {}, 2);
    row("no number", "Xft.dpi:\tmany\n", {}, {}, 1);
    row("user chooses X", dense, {"QT_QPA_PLATFORM=offscreen"}, {"-platform", "xcb"}, 2);
    row("no Wayland", dense, {"QT_QPA_PLATFORM=wayland;xcb", "WAYLAND_DISPLAY=none"}, {}, 2);
    row("user switches scaling on", dense, {"QT_AUTO_SCREEN_SCALE_FACTOR=1"}, {}, 2);
    row("user switches scaling off", dense, {"QT_ENABLE_HIGHDPI_SCALING=0"}, {}, 1);
    row("user wants a factor of 1", dense, {"QT_SCALE_FACTOR=1"}, {}, 1);
    row("user wants a factor of 2", "", {"QT_SCALE_FACTOR=2"}, {}, 2);
}

void tst_DenseScreen::windowGrowsWithTheScreen()
{
    QFETCH(const QByteArray, resources);
    QFETCH(const QStringList, settings);
    QFETCH(const QStringList, arguments);
    QFETCH(const int, factor);

    ScreenResources::set(resources);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove("QT_FONT_DPI");
    for (const QString &setting : settings) {
        environment.insert(setting.section('=', 0, 0), setting.section('=', 1));
    }
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(FW_UPDATE_PROGRAM, arguments);
    ScreenUser user("FW Update");
    QTRY_VERIFY_WITH_TIMEOUT(user.seesWindow(), 20000);
    QCOMPARE(user.windowGeometry().size(), QSize(500, 260) * factor);

    // The heading stands in its place and is neither tiny nor cut off, which its edges would show.
    const QRect place = scaled(QRect(172, 20, 156, 30), factor);
    const QRect band = scaled(QRect(60, 5, 380, 70), factor);
    QTRY_VERIFY(!ink(user.look(), band).isEmpty());
    const QRect heading = ink(user.look(), band);
    QVERIFY(place.contains(heading));
    QVERIFY(heading.width() > place.width() * 3 / 4);

    program.terminate();
    QVERIFY(program.waitForFinished());
}

QTEST_MAIN(tst_DenseScreen)
#include "tst_DenseScreen.moc"

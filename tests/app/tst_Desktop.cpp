// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/Desktop.h"
#include "simulator/demo/StatusText.h"
#include "tests/support/WindowParts.h"

#include <QApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QtTest>

#include <algorithm>
#include <iostream>

/// Qt reads the desktop's settings once per process, so each case is a process of its own: this
/// program, started again with kReport, goes through the program's start and says what came of it.
static const char *const kReport = "--report";

/// What a program gets that is started without a word about its environment.
static QList<QByteArray> childEnvironment()
{
    QProcess child;
    child.start("env", {"-0"});
    child.waitForFinished();
    QList<QByteArray> environment = child.readAll().split('\0');
    environment.removeLast(); // what comes after the last one's end
    std::sort(environment.begin(), environment.end());
    return environment;
}

static int report(int argc, char *argv[])
{
    const QList<QByteArray> before = childEnvironment();
    Desktop desktop;
    const ApplicationPointer application = desktop.startQt(argc, argv);
    const QStringList libraryPaths = QCoreApplication::libraryPaths();
    desktop.leaveOutPicturePlugins();
    MainWindow window;
    desktop.adopt(window);
    window.show();
    desktop.restoreEnvironment();

    const QFontMetrics metrics(WindowParts::statusLabel(window)->font());
    QJsonObject result;
    result["environmentKept"] = !before.isEmpty() && childEnvironment() == before;
    result["desktopFile"] = QGuiApplication::desktopFileName();
    result["scale"] = window.devicePixelRatioF();
    result["libraryPathsKept"] = QCoreApplication::libraryPaths() == libraryPaths;
    result["pixelsPerPoint"]
        = double(QFontInfo(window.font()).pixelSize()) / QFontInfo(window.font()).pointSizeF();
    result["headingWidth"] = metrics.horizontalAdvance("Firmware Upgrade");
    result["longestStatusWidth"] = metrics.horizontalAdvance(StatusText::kUpgrading);
    std::cout << QJsonDocument(result).toJson().constData();
    return 0;
}

class tst_Desktop : public QObject
{
    Q_OBJECT

private slots:
    void start_data();
    void start();
};

void tst_Desktop::start_data()
{
    QTest::addColumn<QStringList>("settings");
    QTest::addColumn<bool>("pointIsPixel");
    QTest::addColumn<double>("scale");

    const auto row
        = [](const char *name, const QStringList &settings, bool pointIsPixel, double scale) {
              QTest::newRow(name) << settings << pointIsPixel << scale;
          };
    row("nothing set", {}, true, 1);
    row("user asks for OpenGL on Wayland", {"QT_WAYLAND_CLIENT_BUFFER_INTEGRATION=wayland-egl"},
        true, 1);
    row("user switches scaling on", {"QT_ENABLE_HIGHDPI_SCALING=1"}, true, 1);
    row("user sets the font resolution", {"QT_FONT_DPI=192"}, false, 2);
    row("user sets one and a half times the usual font resolution", {"QT_FONT_DPI=144"}, false, 2);
    row("user sets the font resolution and switches scaling on",
        {"QT_FONT_DPI=192", "QT_ENABLE_HIGHDPI_SCALING=1"}, false, 2);
    row("user sets the font resolution and switches scaling off",
        {"QT_FONT_DPI=192", "QT_ENABLE_HIGHDPI_SCALING=0"}, false, 1);
    row("user sets the font resolution and switches scaling off the old way",
        {"QT_FONT_DPI=192", "QT_AUTO_SCREEN_SCALE_FACTOR=0"}, false, 1);
    row("user sets a factor", {"QT_SCALE_FACTOR=2"}, true, 2);
    row("user sets a factor with a fraction", {"QT_SCALE_FACTOR=1.5"}, true, 1.5);
    row("user sets the font resolution and a factor", {"QT_FONT_DPI=192", "QT_SCALE_FACTOR=1"},
        false, 1);
    row("user sets the font resolution, a factor and switches scaling on",
        {"QT_FONT_DPI=192", "QT_SCALE_FACTOR=1.5", "QT_AUTO_SCREEN_SCALE_FACTOR=1"}, false, 3);
    row("user sets the font resolution and a factor per screen",
        {"QT_FONT_DPI=192", "QT_SCREEN_SCALE_FACTORS=1"}, false, 1);
    row("user sets the font resolution and a pixel ratio",
        {"QT_FONT_DPI=192", "QT_DEVICE_PIXEL_RATIO=1"}, false, 1);
}

void tst_Desktop::start()
{
    QFETCH(QStringList, settings);
    QFETCH(bool, pointIsPixel);
    QFETCH(double, scale);

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove("QT_FONT_DPI");
    for (const QString &setting : settings) {
        environment.insert(setting.section('=', 0, 0), setting.section('=', 1));
    }
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(), {kReport});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 0);
    const QJsonObject result = QJsonDocument::fromJson(process.readAllStandardOutput()).object();

    QVERIFY(result["environmentKept"].toBool());
    QVERIFY(result["libraryPathsKept"].toBool());
    QCOMPARE(result["desktopFile"].toString(), QString(DESKTOP_FILE));
    QCOMPARE(result["scale"].toDouble(), scale);
    QCOMPARE(qFuzzyCompare(result["pixelsPerPoint"].toDouble(), 1.0), pointIsPixel);
    // At 96 dpi the heading overruns its 160 pixels; what the user has set stays all the same.
    QCOMPARE(result["headingWidth"].toInt() <= 160, pointIsPixel);
    QCOMPARE(result["longestStatusWidth"].toInt() <= 430, pointIsPixel);
}

int main(int argc, char *argv[])
{
    if (argc > 1 && qstrcmp(argv[1], kReport) == 0) {
        return report(argc, argv);
    }
    QCoreApplication application(argc, argv);
    tst_Desktop test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_Desktop.moc"

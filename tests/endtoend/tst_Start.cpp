// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/endtoend/InstalledProgram.h"
#include "tests/support/ProgramStage.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QtTest>

#include <algorithm>
#include <iterator>

namespace {

constexpr int kSoon = 20000;

QProcessEnvironment usersEnvironment()
{
    return ProgramStage::usersEnvironment(QProcessEnvironment::systemEnvironment());
}

/// Qt's plugin folders of which the program has files in its memory.
QString loadedPlugins(qint64 pid)
{
    QFile maps(QString("/proc/%1/maps").arg(pid));
    if (!maps.open(QIODevice::ReadOnly)) {
        return "/proc cannot be read";
    }
    const QByteArray mappings = maps.readAll();
    const QStringList folders = {"imageformats",
                                 "platforminputcontexts",
                                 "platforms",
                                 "platformthemes",
                                 "styles",
                                 "wayland-graphics-integration-client",
                                 "wayland-shell-integration",
                                 "xcbglintegrations"};
    QStringList loaded;
    std::copy_if(folders.begin(), folders.end(), std::back_inserter(loaded),
                 [&mappings](const QString &folder) {
                     return mappings.contains('/' + folder.toLatin1() + '/');
                 });
    return loaded.join(' ');
}

} // namespace

/// What the program as it ships does until its window is there, on an X screen or a
/// Wayland desktop.
class tst_Start : public QObject
{
    Q_OBJECT

private slots:
    void loadsOnlyPluginsAskedFor_data();
    void loadsOnlyPluginsAskedFor();
    void namesItsButtonsAndKeepsNoPicture();
};

void tst_Start::loadsOnlyPluginsAskedFor_data()
{
    QTest::addColumn<QStringList>("settings");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("asked");

    const auto row = [](const char *name, const QStringList &settings, const QStringList &arguments,
                        const QString &asked) {
        QTest::newRow(name) << settings << arguments << asked;
    };
    const bool wayland = ProgramStage::isOnWayland();
    // Qt 6 on X and Qt 6.8 on Wayland load it only for a window that is painted with OpenGL.
    const QString onX = wayland || QT_VERSION_MAJOR > 5 ? "" : "xcbglintegrations";
    const bool isEager = wayland && QT_VERSION < QT_VERSION_CHECK(6, 8, 0);
    const QString onWayland = isEager ? "wayland-graphics-integration-client" : "";
    row("no desktop", {}, {}, "");
    row("GNOME", {"XDG_CURRENT_DESKTOP=GNOME"}, {}, "");
    row("KDE", {"XDG_CURRENT_DESKTOP=KDE", "KDE_FULL_SESSION=true"}, {}, "");
    row("theme", {"QT_QPA_PLATFORMTHEME=probe"}, {}, "platformthemes");
    row("theme by argument", {}, {"-platformtheme", "probe"}, "platformthemes");
    row("style", {"QT_STYLE_OVERRIDE=probe"}, {}, "styles");
    row("style by argument", {}, {"-style", "probe"}, "styles");
    row("input method", {"QT_IM_MODULE=probe"}, {}, "platforminputcontexts");
    row("OpenGL on X", {"QT_XCB_GL_INTEGRATION=xcb_egl"}, {}, onX);
    row("any OpenGL on X", {"QT_XCB_GL_INTEGRATION="}, {}, onX);
    row("OpenGL on Wayland", {"QT_WAYLAND_CLIENT_BUFFER_INTEGRATION=wayland-egl"}, {}, onWayland);
}

void tst_Start::loadsOnlyPluginsAskedFor()
{
    QFETCH(const QStringList, settings);
    QFETCH(const QStringList, arguments);
    QFETCH(const QString, asked);

    InstalledProgram installed({"platforms", "wayland-graphics-integration-client",
                                "wayland-shell-integration", "xcbglintegrations"});
    installed.addPlugins(PLUGIN_PROBES);
    QProcessEnvironment environment = usersEnvironment();
    for (const QString &setting : settings) {
        environment.insert(setting.section('=', 0, 0), setting.section('=', 1));
    }
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(installed.path(), arguments);
    ScreenUser user = ProgramStage::makeUser();
    QTRY_VERIFY_WITH_TIMEOUT(user.seesWindow(), kSoon);

    // Without an input method, Qt insists on its own one on Wayland.
    QStringList expected = ProgramStage::isOnWayland()
        ? QStringList{"platforminputcontexts", "platforms", "wayland-shell-integration"}
        : QStringList{"platforms"};
    if (!asked.isEmpty() && !expected.contains(asked)) {
        expected.append(asked);
    }
    expected.sort();
    QCOMPARE(loadedPlugins(program.processId()), expected.join(' '));

    program.terminate();
    QVERIFY(program.waitForFinished());
    // Qt complains about a probe, which does nothing.
    if (asked.isEmpty()) {
        QCOMPARE(program.readAllStandardError(), QByteArray());
    }
}

void tst_Start::namesItsButtonsAndKeepsNoPicture()
{
    QProcessEnvironment environment = usersEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    // Its path may contain a space, which would end it in LD_PRELOAD.
    const QFileInfo probe(START_PROBE);
    environment.insert("LD_LIBRARY_PATH", probe.path());
    environment.insert("LD_PRELOAD", probe.fileName());
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(FW_UPDATE_PROGRAM, QStringList());
    QVERIFY(program.waitForFinished());

    QCOMPARE(program.readAllStandardOutput(), QByteArray("close Winodw\nStart Upgrade\n0 kB\n"));
    QCOMPARE(program.exitCode(), 0);
}

QTEST_MAIN(tst_Start)
#include "tst_Start.moc"

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/demo/ScreenUser.h"

#include <QDir>
#include <QFile>
#include <QLibraryInfo>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <iterator>

namespace {

constexpr int kSoon = 20000;

QProcessEnvironment usersEnvironment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove("QT_FONT_DPI"); // users do not set this
    return environment;
}

/// Qt's plugin folders of which the program has files in its memory.
QString loadedPlugins(qint64 pid)
{
    QFile maps(QString("/proc/%1/maps").arg(pid));
    if (!maps.open(QIODevice::ReadOnly)) {
        return "/proc cannot be read";
    }
    const QByteArray mappings = maps.readAll();
    const QStringList folders
        = {"imageformats", "platforminputcontexts", "platforms", "platformthemes",
           "styles",       "xcbglintegrations"};
    QStringList loaded;
    std::copy_if(folders.begin(), folders.end(), std::back_inserter(loaded),
                 [&mappings](const QString &folder) {
                     return mappings.contains('/' + folder.toLatin1() + '/');
                 });
    return loaded.join(' ');
}

/// The program with the plugins of Qt itself and a probe for each of a desktop's.
class InstalledProgram
{
public:
    InstalledProgram()
    {
        QDir(m_folder.path()).mkdir("plugins");
        link(QLibraryInfo::location(QLibraryInfo::PluginsPath), {"platforms", "xcbglintegrations"});
        link(QString(PLUGIN_PROBES),
             QDir(PLUGIN_PROBES).entryList(QDir::Dirs | QDir::NoDotAndDotDot));
        QFile::copy(FW_UPDATE_PROGRAM, path());
        QSettings(m_folder.filePath("qt.conf"), QSettings::IniFormat)
            .setValue("Paths/Plugins", m_folder.filePath("plugins"));
    }

    QString path() const { return m_folder.filePath("fw-update"); }

private:
    void link(const QDir &source, const QStringList &folders)
    {
        for (const QString &folder : folders) {
            QFile::link(source.filePath(folder), m_folder.filePath("plugins/" + folder));
        }
    }

    QTemporaryDir m_folder;
};

} // namespace

/// What the program as it ships does until its window is there. Needs an X screen.
class tst_Start : public QObject
{
    Q_OBJECT

private slots:
    void loadsOnlyPluginsAskedFor_data();
    void loadsOnlyPluginsAskedFor();
    void namesItsButtonsAndKeepsNoPicture();
    void qtGetsItsArguments();
};

void tst_Start::loadsOnlyPluginsAskedFor_data()
{
    QTest::addColumn<QStringList>("settings");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("loaded");

    const auto row = [](const char *name, const QStringList &settings, const QStringList &arguments,
                        const QString &loaded) {
        QTest::newRow(name) << settings << arguments << loaded;
    };
    row("on no desktop", {}, {}, "platforms");
    row("on GNOME", {"XDG_CURRENT_DESKTOP=GNOME"}, {}, "platforms");
    row("on KDE", {"XDG_CURRENT_DESKTOP=KDE", "KDE_FULL_SESSION=true"}, {}, "platforms");
    row("theme", {"QT_QPA_PLATFORMTHEME=probe"}, {}, "platforms platformthemes");
    row("theme by argument", {}, {"-platformtheme", "probe"}, "platforms platformthemes");
    row("style", {"QT_STYLE_OVERRIDE=probe"}, {}, "platforms styles");
    row("style by argument", {}, {"-style", "probe"}, "platforms styles");
    row("input method", {"QT_IM_MODULE=probe"}, {}, "platforminputcontexts platforms");
    row("OpenGL", {"QT_XCB_GL_INTEGRATION=xcb_egl"}, {}, "platforms xcbglintegrations");
    row("any OpenGL", {"QT_XCB_GL_INTEGRATION="}, {}, "platforms xcbglintegrations");
}

void tst_Start::loadsOnlyPluginsAskedFor()
{
    QFETCH(const QStringList, settings);
    QFETCH(const QStringList, arguments);
    QFETCH(const QString, loaded);

    const InstalledProgram installed;
    QProcessEnvironment environment = usersEnvironment();
    for (const QString &setting : settings) {
        environment.insert(setting.section('=', 0, 0), setting.section('=', 1));
    }
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(installed.path(), arguments);
    ScreenUser user("FW Update");
    QTRY_VERIFY_WITH_TIMEOUT(user.seesWindow(), kSoon);

    QCOMPARE(loadedPlugins(program.processId()), loaded);

    program.terminate();
    QVERIFY(program.waitForFinished());
    // Qt complains about a probe, which does nothing.
    if (loaded == "platforms") {
        QCOMPARE(program.readAllStandardError(), QByteArray());
    }
}

void tst_Start::namesItsButtonsAndKeepsNoPicture()
{
    QProcessEnvironment environment = usersEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    environment.insert("LD_PRELOAD", START_PROBE);
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(FW_UPDATE_PROGRAM, QStringList());
    QVERIFY(program.waitForFinished());

    QCOMPARE(program.readAllStandardOutput(), QByteArray("close Winodw\nStart Upgrade\n0 kB\n"));
    QCOMPARE(program.exitCode(), 0);
}

void tst_Start::qtGetsItsArguments()
{
    QProcessEnvironment environment = usersEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(FW_UPDATE_PROGRAM, {"-platform", "xcb"});
    ScreenUser user("FW Update");
    QTRY_VERIFY_WITH_TIMEOUT(user.seesWindow(), kSoon);

    program.terminate();
    QVERIFY(program.waitForFinished());
}

QTEST_MAIN(tst_Start)
#include "tst_Start.moc"

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/demo/ScreenUser.h"

#include <QDir>
#include <QFile>
#include <QLibraryInfo>
#include <QProcess>
#include <QtTest>

namespace {

constexpr int kSoon = 20000;

QProcessEnvironment usersEnvironment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove("QT_FONT_DPI"); // users do not set this
    return environment;
}

/// The memory mappings of the running process, which include all loaded files.
QByteArray mappings(qint64 pid)
{
    QFile maps(QString("/proc/%1/maps").arg(pid));
    return maps.open(QIODevice::ReadOnly) ? maps.readAll() : QByteArray();
}

} // namespace

/// What the program as it ships does until its window is there. Needs an X screen.
class tst_Start : public QObject
{
    Q_OBJECT

private slots:
    void loadsNoPluginInVain_data();
    void loadsNoPluginInVain();
    void namesItsButtonsAndKeepsNoPicture();
    void qtGetsItsArguments();
};

void tst_Start::loadsNoPluginInVain_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("picture formats") << "imageformats";
    QTest::newRow("OpenGL") << "xcbglintegrations";
}

void tst_Start::loadsNoPluginInVain()
{
    QFETCH(const QString, kind);

    const QDir folder(QLibraryInfo::location(QLibraryInfo::PluginsPath) + '/' + kind);
    QVERIFY2(!folder.entryList(QDir::Files).isEmpty(), "there are no plugins to load");
    QProcess program;
    program.setProcessEnvironment(usersEnvironment());
    program.start(FW_UPDATE_PROGRAM, QStringList());
    ScreenUser user("FW Update");
    QTRY_VERIFY_WITH_TIMEOUT(user.seesWindow(), kSoon);

    const QByteArray files = mappings(program.processId());
    QVERIFY(files.contains("/platforms/")); // the plugin that it needs
    QVERIFY(!files.contains('/' + kind.toLatin1() + '/'));

    program.terminate();
    QVERIFY(program.waitForFinished());
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

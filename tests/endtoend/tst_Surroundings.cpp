// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/demo/StatusText.h"
#include "simulator/demo/WindowLook.h"
#include "tests/endtoend/Stage.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr int kSoon = 20000;
const QString kFolder = "Geräte für Zürich";

/// Whether this user may have mounts of their own.
bool canMount()
{
    QProcess mount;
    mount.start(
        "unshare",
        {"--user", "--map-root-user", "--mount", "mount", "-t", "tmpfs", "none", "/dev/shm"});
    return mount.waitForFinished() && mount.exitStatus() == QProcess::NormalExit
        && mount.exitCode() == 0;
}

/// A launcher that runs \a mounts for the program, whose folder is $folder. The simulated devices
/// in the library \a preloaded would hide the machine's from them.
QStringList withMounts(const QString &mounts, const QString &preloaded)
{
    const QString script
        = "folder=$(dirname \"$1\")\n" + mounts + "\nLD_PRELOAD=" + preloaded + " exec \"$@\"";
    return {"env",     "-u",   "LD_PRELOAD", "unshare", "--user", "--map-root-user",
            "--mount", "bash", "-euc",       script,    "bash"};
}

} // namespace

/// Upgrades where, and as whom, people run the program, in a folder with spaces and umlauts.
class tst_Surroundings : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void upgradesWithSettings_data();
    void upgradesWithSettings();
    void upgradesOnMounts_data();
    void upgradesOnMounts();

private:
    void makeLocale(const QString &name) const;
    void prepare(Stage &stage, const QStringList &settings) const;
    void upgrade(Stage &stage) const;

    QTemporaryDir m_locales;
};

void tst_Surroundings::makeLocale(const QString &name) const
{
    const QString folder = m_locales.filePath(name + ".UTF-8");
    // It fails if it has only warned.
    QProcess::execute("localedef", {"--quiet", "--no-archive", "-i", name, "-f", "UTF-8", folder});
    QVERIFY2(QFile::exists(folder + "/LC_CTYPE"), "cannot make a locale (Debian package: locales)");
}

void tst_Surroundings::initTestCase()
{
    makeLocale("ja_JP");
    makeLocale("tr_TR");
}

/// Gives the program \a settings; those without "=" are unset.
void tst_Surroundings::prepare(Stage &stage, const QStringList &settings) const
{
    QProcessEnvironment environment = stage.program.environment();
    environment.insert("LOCPATH", m_locales.path());
    environment.remove("LC_ALL");
    for (const QString &setting : settings) {
        const QString name = setting.section('=', 0, 0);
        if (setting.contains('=')) {
            environment.insert(name, setting.section('=', 1));
        } else {
            environment.remove(name);
        }
    }
    stage.program.setEnvironment(environment);
    stage.device.startInApplication();
}

void tst_Surroundings::upgrade(Stage &stage) const
{
    QVERIFY(stage.open());
    stage.click(WindowLook::kUpgradeButton);
    QTRY_COMPARE_WITH_TIMEOUT(stage.status(), QString(StatusText::kSuccess), kSoon);

    QCOMPARE(stage.device.reports().size(), 1);
    QCOMPARE(stage.device.image(), stage.package.firmware);
}

void tst_Surroundings::upgradesWithSettings_data()
{
    QTest::addColumn<QStringList>("settings");

    const auto row = [](const char *name, const QStringList &settings) {
        QTest::newRow(name) << settings;
    };
    row("no locale", {"LANG"});
    row("C", {"LANG=C"});
    row("Turkish", {"LANG=tr_TR.UTF-8"});
    row("Japanese", {"LANG=ja_JP.UTF-8"});
    row("a locale that is not installed", {"LANG=de_DE.UTF-8"});
    row("a home that nobody can write to", {"HOME=/proc"});
    row("no home", {"HOME"});
    row("a user with umlauts", {"HOME=/home/jürgen groß", "USER=jürgen", "LOGNAME=jürgen"});
    row("a search path without /sbin", {"PATH=/usr/bin:/bin"});
    row("no search path", {"PATH"});
    row("a search path without chmod", {"PATH=/proc"});
    row("no folder for the session", {"XDG_RUNTIME_DIR"});
}

void tst_Surroundings::upgradesWithSettings()
{
    QFETCH(const QStringList, settings);
    Stage stage({}, kFolder);
    prepare(stage, settings);

    upgrade(stage);
}

void tst_Surroundings::upgradesOnMounts_data()
{
    QTest::addColumn<QString>("mounts");

    QTest::newRow("a read-only file system") << R"(
        mount --bind "$UMOCKDEV_DIR" "$UMOCKDEV_DIR"
        mount --bind "$folder" "$folder"
        mount -o remount,bind,ro "$folder"
        mount -o remount,bind,ro /)";
    QTest::newRow("no programs in the folder for temporary files") << R"(
        mount --bind "$folder" "$folder"
        temporary=$(dirname "$folder")
        mount --rbind "$temporary" "$temporary"
        mount -o remount,bind,noexec "$temporary")";
    QTest::newRow("no shared memory") << "mount -t tmpfs -o ro none /dev/shm";
}

void tst_Surroundings::upgradesOnMounts()
{
    QFETCH(const QString, mounts);
    if (!canMount()) {
        QSKIP("This system does not let users mount file systems in a namespace of their own.");
    }
    Stage stage({}, kFolder);
    prepare(stage, {});
    stage.setLauncher(withMounts(mounts, stage.program.environment().value("LD_PRELOAD")));

    upgrade(stage);
}

QTEST_MAIN(tst_Surroundings)
#include "tst_Surroundings.moc"

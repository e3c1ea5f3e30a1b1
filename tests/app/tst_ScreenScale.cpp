// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/Desktop.h"
#include "tests/support/ScreenResources.h"

#include <QDir>
#include <QFile>
#include <QLibraryInfo>
#include <QTemporaryDir>
#include <QtTest>

static QString pluginsFolder;

// This definition goes before that of the library, for whatever is linked into this program.
QString QLibraryInfo::location(LibraryLocation /*location*/)
{
    return pluginsFolder;
}

/// How much the window grows with what a desktop tells. Needs an X screen.
class tst_ScreenScale : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void isRounded_data();
    void isRounded();
    void isOfNoConcernElsewhere_data();
    void isOfNoConcernElsewhere();

private:
    std::unique_ptr<QTemporaryDir> m_plugins;
};

void tst_ScreenScale::init()
{
    m_plugins = std::make_unique<QTemporaryDir>();
    pluginsFolder = m_plugins->path();
    QVERIFY(QDir(pluginsFolder).mkdir("platforms"));
    qunsetenv("QT_FONT_DPI");
    qputenv("QT_QPA_PLATFORM", "xcb");
    qunsetenv("XDG_SESSION_TYPE");
}

void tst_ScreenScale::cleanup()
{
    m_plugins.reset();
}

void tst_ScreenScale::isRounded_data()
{
    QTest::addColumn<QByteArray>("dpi");
    QTest::addColumn<QByteArray>("factor");
    QTest::newRow("usual") << QByteArray("96") << QByteArray("1");
    QTest::newRow("just below one and a half") << QByteArray("143") << QByteArray("1");
    QTest::newRow("one and a half") << QByteArray("144") << QByteArray("2");
    QTest::newRow("just above one and a half") << QByteArray("145") << QByteArray("2");
    QTest::newRow("double") << QByteArray("192") << QByteArray("2");
    QTest::newRow("triple") << QByteArray("288") << QByteArray("3");
    QTest::newRow("the largest") << QByteArray("768") << QByteArray("8");
    QTest::newRow("larger than that") << QByteArray("9600") << QByteArray("8");
    QTest::newRow("tiny") << QByteArray("1") << QByteArray("1");
    QTest::newRow("none") << QByteArray("0") << QByteArray("1");
    QTest::newRow("negative") << QByteArray("-192") << QByteArray("1");
}

void tst_ScreenScale::isRounded()
{
    QFETCH(const QByteArray, dpi);
    QFETCH(const QByteArray, factor);

    ScreenResources::set("Xft.dpi:\t" + dpi + '\n');
    Desktop desktop;
    QCOMPARE(qgetenv("QT_SCALE_FACTOR"), factor);
    desktop.restoreEnvironment();
}

void tst_ScreenScale::isOfNoConcernElsewhere_data()
{
    QTest::addColumn<QByteArray>("platform");
    QTest::addColumn<QByteArray>("session");
    QTest::addColumn<bool>("hasWayland");
    QTest::addColumn<QByteArray>("factor");

    const QByteArray ours = "2";
    const QByteArray none = "1";
    const QByteArray unset;
    QTest::newRow("user chooses X") << QByteArray("xcb") << unset << true << ours;
    QTest::newRow("user chooses X in a session of Wayland")
        << QByteArray("xcb") << QByteArray("wayland") << true << ours;
    QTest::newRow("user chooses another platform")
        << QByteArray("offscreen") << QByteArray("x11") << false << none;
    QTest::newRow("user prefers another platform")
        << QByteArray("wayland;xcb") << QByteArray("x11") << true << none;
    QTest::newRow("session of X") << unset << QByteArray("x11") << true << ours;
    QTest::newRow("session of no kind") << unset << unset << true << ours;
    QTest::newRow("session of Wayland") << unset << QByteArray("wayland") << true << none;
    QTest::newRow("session of Wayland, without the plugin for it")
        << unset << QByteArray("wayland") << false << ours;
}

void tst_ScreenScale::isOfNoConcernElsewhere()
{
    QFETCH(const QByteArray, platform);
    QFETCH(const QByteArray, session);
    QFETCH(const bool, hasWayland);
    QFETCH(const QByteArray, factor);

    ScreenResources::set("Xft.dpi:\t192\n");
    qputenv("QT_QPA_PLATFORM", platform);
    qputenv("XDG_SESSION_TYPE", session);
    QFile plugin(pluginsFolder + "/platforms/libqwayland-generic.so");
    QVERIFY(!hasWayland || plugin.open(QIODevice::WriteOnly));
    Desktop desktop;
    QCOMPARE(qgetenv("QT_SCALE_FACTOR"), factor);
    desktop.restoreEnvironment();
}

QTEST_GUILESS_MAIN(tst_ScreenScale)
#include "tst_ScreenScale.moc"

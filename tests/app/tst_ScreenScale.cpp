// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/Desktop.h"
#include "tests/support/ScreenResources.h"

#include <QApplication>
#include <QtTest>
#include <qpa/qplatformnativeinterface.h>

/// How much the window grows with what a desktop tells. Needs an X screen.
class tst_ScreenScale : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void isRounded_data();
    void isRounded();
    void dependsOnWhatQtUses_data();
    void dependsOnWhatQtUses();
    void startLooksTheSameToTheDesktop_data();
    void startLooksTheSameToTheDesktop();
};

namespace {

/// Qt, started as the program starts it.
struct Started
{
    qreal scale = 0;
    QList<QByteArray> argumentsLeft;
    QByteArray startupId; ///< By this a desktop knows the start again once the window is shown.
};

Started start(QList<QByteArray> arguments)
{
    arguments.prepend("fw-update");
    QVector<char *> argv;
    for (QByteArray &argument : arguments) {
        argv.append(argument.data());
    }
    int argc = int(argv.size());
    argv.append(nullptr);

    Desktop desktop;
    const ApplicationPointer application = desktop.startQt(argc, argv.data());
    desktop.restoreEnvironment();

    Started started;
    started.scale = application->devicePixelRatio();
    for (int i = 1; i < argc; ++i) {
        started.argumentsLeft.append(argv[i]);
    }
    started.startupId = static_cast<const char *>(
        QGuiApplication::platformNativeInterface()->nativeResourceForIntegration("startupid"));
    return started;
}

} // namespace

void tst_ScreenScale::init()
{
    qunsetenv("QT_FONT_DPI");
    qputenv("QT_QPA_PLATFORM", "xcb");
}

void tst_ScreenScale::isRounded_data()
{
    QTest::addColumn<QByteArray>("dpi");
    QTest::addColumn<qreal>("scale");
    QTest::newRow("usual") << QByteArray("96") << 1.0;
    QTest::newRow("just below one and a half") << QByteArray("143") << 1.0;
    QTest::newRow("one and a half") << QByteArray("144") << 2.0;
    QTest::newRow("just above one and a half") << QByteArray("145") << 2.0;
    QTest::newRow("double") << QByteArray("192") << 2.0;
    QTest::newRow("triple") << QByteArray("288") << 3.0;
    QTest::newRow("the largest") << QByteArray("768") << 8.0;
    QTest::newRow("larger than that") << QByteArray("9600") << 8.0;
    QTest::newRow("tiny") << QByteArray("1") << 1.0;
    QTest::newRow("none") << QByteArray("0") << 1.0;
    QTest::newRow("negative") << QByteArray("-192") << 1.0;
}

void tst_ScreenScale::isRounded()
{
    QFETCH(const QByteArray, dpi);
    QFETCH(const qreal, scale);

    ScreenResources::set("Xft.dpi:\t" + dpi + '\n');
    QCOMPARE(start({}).scale, scale);
    QVERIFY(!qEnvironmentVariableIsSet("QT_SCALE_FACTOR"));
}

void tst_ScreenScale::dependsOnWhatQtUses_data()
{
    QTest::addColumn<QByteArray>("platform");
    QTest::addColumn<QByteArray>("display");
    QTest::addColumn<QList<QByteArray>>("arguments");
    QTest::addColumn<qreal>("scale");

    using Arguments = QList<QByteArray>;
    const QByteArray display = qgetenv("DISPLAY");
    const auto row = [](const char *name, const QByteArray &platform, const QByteArray &screen,
                        const Arguments &arguments, qreal scale) {
        QTest::newRow(name) << platform << screen << arguments << scale;
    };
    row("X", "xcb", display, {}, 2);
    row("X, chosen by argument", "offscreen", display, {"-platform", "xcb"}, 2);
    row("X, since the platform that the user prefers is missing", "none;xcb", display, {}, 2);
    row("X on a screen chosen by argument", "xcb", ":nowhere", {"-display", display}, 2);
    row("X on a screen chosen by another spelling", "xcb", ":nowhere", {"--display", display}, 2);
    row("another platform", "offscreen", display, {}, 1);
    row("another platform, chosen by argument", "xcb", display, {"-platform", "offscreen"}, 1);
    row("another platform, which the user prefers to X", "offscreen;xcb", display, {}, 1);
}

void tst_ScreenScale::dependsOnWhatQtUses()
{
    QFETCH(const QByteArray, platform);
    QFETCH(const QByteArray, display);
    QFETCH(const QList<QByteArray>, arguments);
    QFETCH(const qreal, scale);

    ScreenResources::set("Xft.dpi:\t192\n");
    const QByteArray screen = qgetenv("DISPLAY");
    qputenv("QT_QPA_PLATFORM", platform);
    qputenv("DISPLAY", display);
    const Started started = start(arguments);
    qputenv("DISPLAY", screen);
    QCOMPARE(started.scale, scale);
    QCOMPARE(started.argumentsLeft, QList<QByteArray>());
}

void tst_ScreenScale::startLooksTheSameToTheDesktop_data()
{
    QTest::addColumn<QByteArray>("dpi");
    QTest::newRow("usual screen") << QByteArray("96");
    QTest::newRow("dense screen") << QByteArray("192");
}

void tst_ScreenScale::startLooksTheSameToTheDesktop()
{
    QFETCH(const QByteArray, dpi);

    ScreenResources::set("Xft.dpi:\t" + dpi + '\n');
    qputenv("DESKTOP_STARTUP_ID", "start_TIME1");
    const Started started = start({"--own", "-name", "other"});
    QCOMPARE(started.startupId, QByteArray("start_TIME1"));
    QCOMPARE(started.argumentsLeft, QList<QByteArray>{"--own"});
    QVERIFY(!qEnvironmentVariableIsSet("DESKTOP_STARTUP_ID"));
}

QTEST_APPLESS_MAIN(tst_ScreenScale)
#include "tst_ScreenScale.moc"

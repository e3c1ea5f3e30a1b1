// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/Desktop.h"
#include "tests/support/ScreenResources.h"

#include <QApplication>
#include <QtTest>

/// How much the window grows with what a desktop tells. Needs an X screen.
class tst_ScreenScale : public QObject
{
    Q_OBJECT

private slots:
    void isRounded_data();
    void isRounded();
    void needsX_data();
    void needsX();
};

/// Starts Qt as the program does, with \a arguments, and returns how many pixels are a point then.
static qreal startedScale(const QList<QByteArray> &arguments = {})
{
    QVector<QByteArray> texts = {"fw-update"};
    texts += arguments.toVector();
    texts.append("--own");
    QVector<char *> argv;
    for (QByteArray &text : texts) {
        argv.append(text.data());
    }
    int argc = argv.size();
    argv.append(nullptr);

    Desktop desktop;
    const std::unique_ptr<QApplication> application = desktop.startQt(argc, argv.data());
    desktop.restoreEnvironment();
    // Qt takes out what it knows, and nothing else.
    return argc == 2 && argv[1] == QByteArray("--own") ? application->devicePixelRatio() : 0;
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
    qunsetenv("QT_FONT_DPI");
    QCOMPARE(startedScale(), scale);
    QVERIFY(!qEnvironmentVariableIsSet("QT_SCALE_FACTOR"));
}

void tst_ScreenScale::needsX_data()
{
    QTest::addColumn<QByteArray>("platform");
    QTest::addColumn<QList<QByteArray>>("arguments");
    QTest::addColumn<qreal>("scale");

    using Arguments = QList<QByteArray>;
    QTest::newRow("user chooses X") << QByteArray("xcb") << Arguments() << 2.0;
    QTest::newRow("user chooses X by argument")
        << QByteArray("offscreen") << Arguments{"-platform", "xcb"} << 2.0;
    QTest::newRow("user chooses another platform") << QByteArray("offscreen") << Arguments() << 1.0;
    QTest::newRow("user chooses another platform by argument")
        << QByteArray("xcb") << Arguments{"-platform", "offscreen"} << 1.0;
    QTest::newRow("user prefers another platform, and has it")
        << QByteArray("offscreen;xcb") << Arguments() << 1.0;
}

void tst_ScreenScale::needsX()
{
    QFETCH(const QByteArray, platform);
    QFETCH(const QList<QByteArray>, arguments);
    QFETCH(const qreal, scale);

    ScreenResources::set("Xft.dpi:\t192\n");
    qunsetenv("QT_FONT_DPI");
    qputenv("QT_QPA_PLATFORM", platform);
    QCOMPARE(startedScale(arguments), scale);
}

QTEST_APPLESS_MAIN(tst_ScreenScale)
#include "tst_ScreenScale.moc"

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/demo/StatusText.h"
#include "simulator/demo/WindowLook.h"

#include "tests/support/WindowParts.h"

#include <QtTest>

using namespace WindowParts;

namespace {

/// A screenshot of \a window on a screen with this scale.
QImage pictureOf(MainWindow &window, int scale)
{
    QImage picture(window.size() * scale, QImage::Format_RGB32);
    picture.setDevicePixelRatio(scale);
    window.render(&picture);
    return picture;
}

} // namespace

/// Compares what WindowLook recognises with the window itself.
class tst_WindowLook : public QObject
{
    Q_OBJECT

private slots:
    void readsTheStatus_data();
    void readsTheStatus();
    void readsTheProgress_data();
    void readsTheProgress();
    void tellsWhetherTheButtonIsEnabled();
    void findsTheButtons();
    void seesNothingWithoutWindow();
};

void tst_WindowLook::readsTheStatus_data()
{
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("read");
    QTest::newRow("nothing") << ""
                             << "";
    QTest::newRow("no device") << StatusText::kNotFound << StatusText::kNotFound;
    QTest::newRow("upgrading") << StatusText::kUpgrading << StatusText::kUpgrading;
    QTest::newRow("success") << StatusText::kSuccess << StatusText::kSuccess;
    QTest::newRow("additional text") << "trouble"
                                     << "trouble";
    QTest::newRow("another text") << "trouble ahead" << QString();
    QTest::newRow("one letter less") << "Upgrade Successfull" << QString();
    QTest::newRow("one letter more") << "Upgrade Successfullyi" << QString();
}

void tst_WindowLook::readsTheStatus()
{
    QFETCH(const QString, shown);
    QFETCH(const QString, read);

    MainWindow window;
    statusLabel(window)->setText(shown);
    for (const int scale : {1, 2}) {
        const QString status = WindowLook::statusText(pictureOf(window, scale), {"trouble"});
        QCOMPARE(status, read);
        QCOMPARE(status.isNull(), read.isNull());
    }
}

void tst_WindowLook::readsTheProgress_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("read");
    QTest::newRow("none") << 0 << 0;
    QTest::newRow("half") << 5000 << 5000;
    QTest::newRow("at the time-out") << 9105 << 9093; // 391 of 430 pixels
    QTest::newRow("all") << 10000 << 10000;
}

void tst_WindowLook::readsTheProgress()
{
    QFETCH(const int, value);
    QFETCH(const int, read);

    MainWindow window;
    window.findChild<CustomProgressBar *>()->setValue(value);
    for (const int scale : {1, 2}) {
        QCOMPARE(WindowLook::progress(pictureOf(window, scale)), read);
    }
}

void tst_WindowLook::tellsWhetherTheButtonIsEnabled()
{
    for (const int scale : {1, 2}) {
        MainWindow window;
        QVERIFY(WindowLook::isUpgradeEnabled(pictureOf(window, scale)));
        upgradeButton(window)->setEnabled(false);
        QVERIFY(!WindowLook::isUpgradeEnabled(pictureOf(window, scale)));
    }
}

void tst_WindowLook::findsTheButtons()
{
    const MainWindow window;
    QCOMPARE(window.childAt(WindowLook::kUpgradeButton), upgradeButton(window));
    QCOMPARE(window.childAt(WindowLook::kCloseButton), closeButton(window));
}

void tst_WindowLook::seesNothingWithoutWindow()
{
    QVERIFY(WindowLook::statusText({}).isNull());
    QCOMPARE(WindowLook::progress({}), 0);
    QVERIFY(!WindowLook::isUpgradeEnabled({}));
}

QTEST_MAIN(tst_WindowLook)
#include "tst_WindowLook.moc"

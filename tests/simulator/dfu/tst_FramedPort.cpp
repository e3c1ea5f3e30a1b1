// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/dfu/FramedPort.h"

#include "tests/support/PtyDevice.h"

#include <QtTest>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

class tst_FramedPort : public QObject
{
    Q_OBJECT

private slots:
    void sendsAndReceivesFrames();
    void makesTheTerminalRaw();
    void discardsWhatWasLeftInTheTerminal();
    void keepsToItsDeadline_data();
    void keepsToItsDeadline();
    void readsWhatCameBeforeTheEnd();
    void refusesWhatIsNoTerminal();
};

namespace {

const QByteArray kTwoFrames = Slip::encode("first") + Slip::encode("second");

} // namespace

void tst_FramedPort::sendsAndReceivesFrames()
{
    PtyDevice device([](const QByteArray &bytes) { return bytes; });
    FramedPort link(device.fd());
    QVERIFY(link.open());
    for (const QByteArray &frame : {QByteArray("frame"), QByteArray("\xC0\xDB\r\n\x03\x11", 6)}) {
        QByteArray echo;
        QVERIFY(link.send(frame, QDeadlineTimer(5000)));
        QVERIFY2(link.receive(&echo, QDeadlineTimer(5000)), qPrintable(link.errorString()));
        QCOMPARE(echo, frame);
    }
}

void tst_FramedPort::makesTheTerminalRaw()
{
    PtyDevice device([](const QByteArray &) { return QByteArray(); });
    termios settings{};
    QCOMPARE(tcgetattr(device.fd(), &settings), 0);
    settings.c_lflag |= ICANON | ECHO | ISIG;
    settings.c_oflag |= OPOST;
    QCOMPARE(tcsetattr(device.fd(), TCSANOW, &settings), 0);
    FramedPort link(device.fd());
    QVERIFY(link.open());
    QCOMPARE(tcgetattr(device.fd(), &settings), 0);
    QCOMPARE(settings.c_lflag & tcflag_t(ICANON | ECHO | ISIG), tcflag_t(0));
    QCOMPARE(settings.c_oflag & tcflag_t(OPOST), tcflag_t(0));
    QVERIFY((fcntl(device.fd(), F_GETFL) & O_NONBLOCK) != 0);
}

void tst_FramedPort::discardsWhatWasLeftInTheTerminal()
{
    PtyDevice device([](const QByteArray &) { return kTwoFrames; });
    FramedPort link(device.fd());
    QVERIFY(link.open());
    QByteArray frame;
    QVERIFY(link.send("ask", QDeadlineTimer(5000)));
    QVERIFY(link.receive(&frame, QDeadlineTimer(5000)));
    QCOMPARE(frame, QByteArray("first"));
    QVERIFY(link.open());
    QVERIFY(!link.receive(&frame, QDeadlineTimer(50)));
}

void tst_FramedPort::keepsToItsDeadline_data()
{
    QTest::addColumn<int>("milliseconds");
    QTest::addColumn<bool>("received");

    QTest::newRow("in time") << 5000 << true;
    QTest::newRow("too late, although a frame has arrived") << 0 << false;
}

void tst_FramedPort::keepsToItsDeadline()
{
    QFETCH(int, milliseconds);
    QFETCH(bool, received);
    PtyDevice device([](const QByteArray &) { return kTwoFrames; });
    FramedPort link(device.fd());
    QVERIFY(link.open());
    QByteArray frame;
    QVERIFY(link.send("ask", QDeadlineTimer(5000)));
    QVERIFY(link.receive(&frame, QDeadlineTimer(5000)));
    QCOMPARE(link.receive(&frame, QDeadlineTimer(milliseconds)), received);
    QCOMPARE(frame, QByteArray(received ? "second" : "first"));
    QCOMPARE(link.errorString(), QString(received ? "" : "The device did not answer in time"));
}

void tst_FramedPort::readsWhatCameBeforeTheEnd()
{
    PtyDevice device([](const QByteArray &) { return kTwoFrames; });
    FramedPort link(device.fd());
    QVERIFY(link.open());
    QByteArray frame;
    QVERIFY(link.send("ask", QDeadlineTimer(5000)));
    QVERIFY(link.receive(&frame, QDeadlineTimer(5000)));
    device.unplug();
    QVERIFY(link.receive(&frame, QDeadlineTimer(5000)));
    QCOMPARE(frame, QByteArray("second"));
    QVERIFY(!link.receive(&frame, QDeadlineTimer(5000)));
    QCOMPARE(link.errorString(), QString("The port was closed"));
    QVERIFY(!link.send("ask", QDeadlineTimer(5000)));
    QVERIFY(link.errorString().startsWith("The port cannot be written to"));
}

void tst_FramedPort::refusesWhatIsNoTerminal()
{
    FramedPort link(-1);
    QVERIFY(!link.open());
    QVERIFY(link.errorString().startsWith("The port is not a serial port"));
}

QTEST_GUILESS_MAIN(tst_FramedPort)
#include "tst_FramedPort.moc"

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/testbed/Testbed.h"

#include <QProcess>
#include <QtTest>

namespace {

const Testbed::HidInterface kTrigger = {0xFF31, 0x74, {}, {}};

/// The running example.
class Example
{
public:
    Example()
    {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(HOTPLUG, QStringList());
    }

    ~Example()
    {
        m_process.terminate();
        m_process.waitForFinished();
    }

    Example(const Example &) = delete;
    Example &operator=(const Example &) = delete;

    /// Its output so far.
    QString output()
    {
        m_output += m_process.readAllStandardOutput();
        return QString::fromUtf8(m_output);
    }

private:
    QProcess m_process;
    QByteArray m_output;
};

} // namespace

class tst_hotplug : public QObject
{
    Q_OBJECT

private slots:
    void printsArrivalAndRemoval();
    void replacesControlCharactersInNames();
};

void tst_hotplug::printsArrivalAndRemoval()
{
    Testbed testbed;
    const QString first = testbed.addUsbDevice({0x7F3C, 0x0C51, "First", "1"});
    testbed.addHidInterface(first, kTrigger);

    Example example;
    QString expected = "arrived 7f3c:0c51 usage ff31:0074 First\n";
    QTRY_COMPARE(example.output(), expected);

    const QString second
        = testbed.addUsbDevice({0x00AB, 0x0001, QString::fromUtf8("Zweites ä"), "2"});
    testbed.addHidInterface(second, {1, 6, {}, {}});
    expected += "arrived 00ab:0001 usage 0001:0006 Zweites ä\n";
    QTRY_COMPARE(example.output(), expected);

    testbed.removeUsbDevice(first);
    expected += "removed 7f3c:0c51 usage ff31:0074 First\n";
    QTRY_COMPARE(example.output(), expected);

    testbed.removeUsbDevice(second);
    expected += "removed 00ab:0001 usage 0001:0006 Zweites ä\n";
    QTRY_COMPARE(example.output(), expected);
}

void tst_hotplug::replacesControlCharactersInNames()
{
    Testbed testbed;
    testbed.addHidInterface(testbed.addUsbDevice({1, 2, "a\x1B[2Jb", "1"}), kTrigger);
    Example example;
    QTRY_COMPARE(example.output(), QString("arrived 0001:0002 usage ff31:0074 a?[2Jb\n"));
}

QTEST_GUILESS_MAIN(tst_hotplug)
#include "tst_hotplug.moc"

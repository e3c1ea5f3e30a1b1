// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/reliability/RepeatedUpgrades.h"

#include "tests/reliability/ChildProcesses.h"

#include <QDir>
#include <QtTest>

#include <cstdio>

namespace {

void dropLog(QtMsgType type, const QMessageLogContext & /*context*/, const QString &text)
{
    if (type != QtDebugMsg) {
        std::fprintf(stderr, "%s\n", qPrintable(text));
    }
}

} // namespace

RepeatedUpgrades::RepeatedUpgrades()
{
    stage.journal.reset(); // it keeps every line
    m_otherHandler = qInstallMessageHandler(dropLog); // the journal has put back its own
    stage.watch.reset(); // it keeps every timer
    stage.addPort();
}

RepeatedUpgrades::~RepeatedUpgrades()
{
    qInstallMessageHandler(m_otherHandler);
    stage.watch = std::make_unique<EventWatch>(); // the stage clears away with it
    stage.window->close(); // for timers that nobody has watched it need not wait
}

void RepeatedUpgrades::run(int times, const QByteArray &script, const QString &status)
{
    stage.tool->setScript(script);
    for (int i = 0; i < times; ++i) {
        QTRY_VERIFY_WITH_TIMEOUT(stage.canClick(), 10000);
        stage.click();
        QVERIFY(!stage.canClick());
        QTRY_VERIFY_WITH_TIMEOUT(stage.canClick(), 10000);
        QCOMPARE(stage.status(), status);
    }
}

int RepeatedUpgrades::descriptors()
{
    if (!QTest::qWaitFor([] { return childProcesses().isEmpty(); })) {
        return -1;
    }
    QCoreApplication::processEvents(); // the last one's pipes are closed by its end
    return QDir("/proc/self/fd").entryList(QDir::AllEntries | QDir::System).size();
}

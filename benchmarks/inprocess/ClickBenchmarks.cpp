// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "benchmarks/inprocess/SilentTool.h"
#include "simulator/demo/StatusText.h"
#include "tests/support/WindowParts.h"

#include <QCoreApplication>
#include <QProcess>
#include <QSerialPortInfo>

#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>

namespace {

using Clock = std::chrono::steady_clock;

void installTool()
{
    SilentTool::install("echo 'Device programmed.'");
}

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

void clickOurs(benchmark::State &state)
{
    installTool();
    MainWindow window;
    window.show();
    const QLabel *status = WindowParts::statusLabel(window);
    for (auto _ : state) {
        QCoreApplication::processEvents();
        const Clock::time_point start = Clock::now();
        WindowParts::upgradeButton(window)->click();
        while (status->text() != StatusText::kSuccess) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        state.SetIterationTime(secondsSince(start));
    }
}

QString port()
{
    for (const QSerialPortInfo &info : QSerialPortInfo::availablePorts()) {
        if (info.systemLocation().contains("/dev/cu.usbmodem")) {
            return info.systemLocation();
        }
    }
    return {};
}

void clickFloor(benchmark::State &state)
{
    installTool();
    std::unique_ptr<QProcess> tool;
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        tool.reset();
        QProcess chmod;
        chmod.start("chmod", {"+x", "./nrfutil-mac"});
        chmod.waitForFinished();
        tool = std::make_unique<QProcess>();
        bool heard = false;
        QObject::connect(tool.get(), &QProcess::readyReadStandardOutput, tool.get(),
                         [&heard] { heard = true; });
        tool->start(SilentTool::path(), {"dfu", "usb-serial", "-pkg", "dfu.zip", "-p", port()});
        while (!heard) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        state.SetIterationTime(secondsSince(start));
    }
}

} // namespace

BENCHMARK(clickFloor)->Name("click/calls")->UseManualTime()->Iterations(1);
BENCHMARK(clickOurs)->Name("click/ours")->UseManualTime()->Iterations(1);

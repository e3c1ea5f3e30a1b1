// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "benchmarks/floors/PlainWindow.h"
#include "benchmarks/inprocess/SilentTool.h"
#include "simulator/demo/StatusText.h"
#include "tests/support/WindowParts.h"

#include <QCoreApplication>
#include <QDebug>
#include <QLabel>
#include <QProcess>

#include <benchmark/benchmark.h>

#include <dlfcn.h>

#include <chrono>
#include <ctime>
#include <memory>

namespace {

const QByteArray kSuccess = "Device programmed.";
const QString kShown = StatusText::kSuccess;

void waitForText(const QLabel *label, const QString &text)
{
    while (label->text() != text) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

/// The window after an upgrade: the tool is still running and connected, the timer is deleted.
class WatchingWindow
{
public:
    WatchingWindow()
    {
        SilentTool::install();
        m_window.show();
        WindowParts::upgradeButton(m_window)->click();
        m_tool = std::make_unique<SilentTool>();
        m_tool->say(kSuccess);
        waitForText(label(), kShown);
    }

    SilentTool &tool() { return *m_tool; }
    QLabel *label() const { return WindowParts::statusLabel(m_window); }

private:
    MainWindow m_window;
    std::unique_ptr<SilentTool> m_tool;
};

/// A process with one slot for its output, and a plain window.
class BareProcess
{
public:
    BareProcess()
    {
        SilentTool::install();
        m_window.show();
        m_process.start(SilentTool::path(), QStringList());
        m_tool = std::make_unique<SilentTool>();
    }

    QProcess &process() { return m_process; }
    SilentTool &tool() { return *m_tool; }
    QLabel *label() const { return m_window.statusLabel(); }

private:
    PlainWindow m_window;
    QProcess m_process;
    std::unique_ptr<SilentTool> m_tool;
};

using Clock = std::chrono::steady_clock;

/// The last time that a label got a text.
Clock::time_point s_shown;

/// Measures the time from \a say, which writes the tool's output, until \a label has \a text.
template <class Say>
void measureUntilShown(benchmark::State &state, QLabel *label, const QString &text, Say say)
{
    for (auto _ : state) {
        label->setText("");
        QCoreApplication::processEvents();
        const Clock::time_point start = Clock::now();
        say();
        waitForText(label, text);
        state.SetIterationTime(std::chrono::duration<double>(s_shown - start).count());
    }
}

void successOurs(benchmark::State &state)
{
    WatchingWindow window;
    measureUntilShown(state, window.label(), kShown, [&window] { window.tool().say(kSuccess); });
}

void successFloor(benchmark::State &state)
{
    BareProcess bare;
    QObject::connect(&bare.process(), &QProcess::readyReadStandardOutput, bare.label(), [&bare] {
        bare.label()->setText(QString(bare.process().readAllStandardOutput()));
    });
    measureUntilShown(state, bare.label(), kSuccess, [&bare] { bare.tool().say(kSuccess); });
}

void errorOurs(benchmark::State &state)
{
    WatchingWindow window;
    measureUntilShown(state, window.label(), kSuccess,
                      [&window] { window.tool().complain(kSuccess); });
}

void errorFloor(benchmark::State &state, bool logs)
{
    BareProcess bare;
    QObject::connect(&bare.process(), &QProcess::readyReadStandardError, bare.label(),
                     [&bare, logs] {
                         const QByteArray text = bare.process().readAllStandardError();
                         if (logs) {
                             qDebug() << "Standard Error:" << text;
                         }
                         bare.label()->setText(QString(text));
                     });
    measureUntilShown(state, bare.label(), kSuccess, [&bare] { bare.tool().complain(kSuccess); });
}

double cpuSeconds()
{
    timespec time = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

/// Writes one megabyte in each iteration, in chunks of the pipe's size.
void measureDraining(benchmark::State &state, SilentTool &tool)
{
    constexpr int kChunk = 65536;
    constexpr int kChunks = 16;
    QByteArray chunk = QByteArray("  [####################----------------]  48%  00:00:12\n")
                           .repeated(kChunk / 50);
    chunk.truncate(kChunk);
    for (auto _ : state) {
        double seconds = 0;
        for (int i = 0; i < kChunks; ++i) {
            tool.say(chunk);
            const double start = cpuSeconds();
            while (tool.unread() > 0) {
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            }
            seconds += cpuSeconds() - start;
        }
        state.SetIterationTime(seconds);
    }
}

void drainOurs(benchmark::State &state)
{
    WatchingWindow window;
    measureDraining(state, window.tool());
}

void drainFloor(benchmark::State &state, bool logs)
{
    BareProcess bare;
    int found = 0;
    QObject::connect(&bare.process(), &QProcess::readyReadStandardOutput, bare.label(),
                     [&bare, &found, logs] {
                         const QByteArray output = bare.process().readAllStandardOutput();
                         found += QString(output).contains("Device programmed") ? 1 : 0;
                         if (logs) {
                             qDebug() << "Standard Output:" << output;
                         }
                     });
    measureDraining(state, bare.tool());
    benchmark::DoNotOptimize(found);
}

constexpr int kLines = 20;
constexpr int kMegabytes = 2;

} // namespace

// Replaces Qt's function in this program, to exclude the work that a slot does after it has set the
// text.
void QLabel::setText(const QString &text)
{
    using SetText = void (*)(QLabel *, const QString &);
    static const auto original
        = reinterpret_cast<SetText>(::dlsym(RTLD_NEXT, "_ZN6QLabel7setTextERK7QString"));
    original(this, text);
    s_shown = Clock::now();
}

BENCHMARK(successFloor)->Name("success/slot")->UseManualTime()->Iterations(kLines);
BENCHMARK(successOurs)->Name("success/ours")->UseManualTime()->Iterations(kLines);
BENCHMARK_CAPTURE(errorFloor, , false)->Name("error/slot")->UseManualTime()->Iterations(kLines);
BENCHMARK_CAPTURE(errorFloor, , true)
    ->Name("error/slot and log")
    ->UseManualTime()
    ->Iterations(kLines);
BENCHMARK(errorOurs)->Name("error/ours")->UseManualTime()->Iterations(kLines);
BENCHMARK_CAPTURE(drainFloor, , false)
    ->Name("drain/search")
    ->UseManualTime()
    ->Iterations(kMegabytes);
BENCHMARK_CAPTURE(drainFloor, , true)
    ->Name("drain/search and log")
    ->UseManualTime()
    ->Iterations(kMegabytes);
BENCHMARK(drainOurs)->Name("drain/ours")->UseManualTime()->Iterations(kMegabytes);

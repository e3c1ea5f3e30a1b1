// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include <QApplication>
#include <QDir>

#include <benchmark/benchmark.h>

int main(int argc, char *argv[])
{
    benchmark::Initialize(&argc, argv);
    QApplication application(argc, argv);
    QDir::setCurrent(QCoreApplication::applicationDirPath());
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

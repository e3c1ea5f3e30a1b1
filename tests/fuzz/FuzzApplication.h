// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QApplication>
#include <QDir>

#include <cstdio>
#include <cstdlib>

/// An application without a display and without log output, for fuzz targets with widgets.
namespace FuzzApplication {

inline void start()
{
    static int count = 1;
    static char name[] = "fuzz";
    static char *arguments[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("XDG_RUNTIME_DIR", QDir::tempPath().toLocal8Bit());
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    // Never deleted: at the exit, Qt 6 has already cleaned up what the destructor needs.
    [[maybe_unused]] static const auto *const application = new QApplication(count, arguments);
}

/// Aborts if there is a \a difference.
inline void require(const QString &difference)
{
    if (!difference.isEmpty()) {
        std::fprintf(stderr, "%s\n", qPrintable(difference));
        std::abort();
    }
}

} // namespace FuzzApplication

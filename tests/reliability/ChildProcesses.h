// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QVector>

#include <sys/types.h>

/// The child processes that this process has now, dead ones included until they are reaped.
QVector<pid_t> childProcesses();

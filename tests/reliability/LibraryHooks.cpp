// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/reliability/LibraryHooks.h"

#include <QThread>

#include <dlfcn.h>
#include <hidapi.h>

#include <chrono>
#include <thread>

std::function<void(unsigned long secs)> LibraryHooks::insteadOfSleep;
std::function<void()> LibraryHooks::beforeHidOpen;

// These definitions go before those of the libraries, for whatever is linked into this program.

void QThread::sleep(unsigned long secs)
{
    if (LibraryHooks::insteadOfSleep) {
        LibraryHooks::insteadOfSleep(secs);
        return;
    }
    std::this_thread::sleep_for(std::chrono::seconds(secs));
}

hid_device *hid_open_path(const char *path)
{
    if (LibraryHooks::beforeHidOpen) {
        LibraryHooks::beforeHidOpen();
    }
    using Open = hid_device *(*)(const char *);
    static const auto open = reinterpret_cast<Open>(::dlsym(RTLD_NEXT, "hid_open_path"));
    return open(path);
}

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/doubles/CoreFoundationDouble.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <list>
#include <mutex>

// Protects all run loops, which are run, stopped and woken from several threads.

namespace {

using Time = std::chrono::time_point<std::chrono::steady_clock, std::chrono::duration<double>>;

std::mutex lock;
std::condition_variable changed;

struct ModeSource
{
    CFStringRef mode;
    CFRunLoopSource *source;
};

} // namespace

const CFRunLoopMode kCFRunLoopDefaultMode = doubleConstantString("kCFRunLoopDefaultMode");

struct CFRunLoop
{
    CFRunLoop();
    ~CFRunLoop();

    CFRunLoop(const CFRunLoop &) = delete;
    CFRunLoop &operator=(const CFRunLoop &) = delete;

    CFRunLoopRunResult run(CFRunLoopMode mode, CFTimeInterval seconds, bool returnAfterHandled);
    bool waitUntil(std::unique_lock<std::mutex> &guard, Time end);
    bool hasSources(CFRunLoopMode mode) const;
    bool has(const CFRunLoopSource *source) const;
    CFRunLoopSource *takeSignaled(CFRunLoopMode mode) const;

    std::list<ModeSource> sources;
    bool stopped = false;
    bool waiting = false;
    bool woken = false;
};

namespace {

std::list<CFRunLoop *> runLoops;

CFRunLoop &currentRunLoop()
{
    thread_local CFRunLoop runLoop;
    return runLoop;
}

} // namespace

CFRunLoopSource::CFRunLoopSource(std::function<void()> action)
    : perform(std::move(action))
{ }

CFRunLoop::CFRunLoop()
{
    const std::lock_guard guard(lock);
    runLoops.push_back(this);
}

CFRunLoop::~CFRunLoop()
{
    const std::lock_guard guard(lock);
    runLoops.remove(this);
    for (const ModeSource &entry : sources) {
        CFRelease(entry.source);
    }
}

CFRunLoopRunResult CFRunLoop::run(CFRunLoopMode mode, CFTimeInterval seconds,
                                  bool returnAfterHandled)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    std::unique_lock guard(lock);
    stopped = false;
    while (true) {
        if (!hasSources(mode)) {
            return kCFRunLoopRunFinished;
        }
        if (CFRunLoopSource *const source = takeSignaled(mode)) {
            guard.unlock();
            source->perform();
            CFRelease(source);
            guard.lock();
            if (returnAfterHandled) {
                return kCFRunLoopRunHandledSource;
            }
            if (!stopped && std::chrono::steady_clock::now() >= end) {
                return kCFRunLoopRunTimedOut;
            }
        } else if (!waitUntil(guard, end)) {
            return kCFRunLoopRunTimedOut;
        }
        if (stopped) {
            stopped = false;
            return kCFRunLoopRunStopped;
        }
    }
}

/// Waits until it is woken or stopped. A signaled source alone does not end the wait.
bool CFRunLoop::waitUntil(std::unique_lock<std::mutex> &guard, Time end)
{
    waiting = true;
    const bool inTime = changed.wait_until(guard, end, [this] { return stopped || woken; });
    waiting = false;
    woken = false;
    return inTime;
}

bool CFRunLoop::hasSources(CFRunLoopMode mode) const
{
    return std::any_of(sources.begin(), sources.end(),
                       [mode](const ModeSource &entry) { return entry.mode == mode; });
}

bool CFRunLoop::has(const CFRunLoopSource *source) const
{
    return std::any_of(sources.begin(), sources.end(),
                       [source](const ModeSource &entry) { return entry.source == source; });
}

/// Returns the source retained, since performing it may remove it.
CFRunLoopSource *CFRunLoop::takeSignaled(CFRunLoopMode mode) const
{
    for (const ModeSource &entry : sources) {
        if (entry.mode == mode && entry.source->signaled) {
            entry.source->signaled = false;
            CFRetain(entry.source);
            return entry.source;
        }
    }
    return nullptr;
}

int doubleSourceCount()
{
    return static_cast<int>(currentRunLoop().sources.size());
}

bool doubleIsWaiting(CFRunLoopRef runLoop)
{
    const std::lock_guard guard(lock);
    return runLoop->waiting;
}

bool doubleIsAwake(CFRunLoopRef runLoop)
{
    const std::lock_guard guard(lock);
    return runLoop->woken;
}

void doublePost(CFRunLoopSourceRef source)
{
    const std::lock_guard guard(lock);
    source->signaled = true;
    for (CFRunLoop *const runLoop : runLoops) {
        runLoop->woken |= runLoop->has(source);
    }
    changed.notify_all();
}

CFRunLoopRef CFRunLoopGetCurrent()
{
    return &currentRunLoop();
}

void CFRunLoopRun()
{
    constexpr CFTimeInterval kEver = 1e6;
    CFRunLoopRunInMode(kCFRunLoopDefaultMode, kEver, 0);
}

CFRunLoopRunResult CFRunLoopRunInMode(CFRunLoopMode mode, CFTimeInterval seconds,
                                      Boolean returnAfterSourceHandled)
{
    return currentRunLoop().run(mode, seconds, returnAfterSourceHandled != 0);
}

void CFRunLoopStop(CFRunLoopRef runLoop)
{
    const std::lock_guard guard(lock);
    runLoop->stopped = true;
    changed.notify_all();
}

void CFRunLoopWakeUp(CFRunLoopRef runLoop)
{
    if (runLoop == nullptr) {
        doubleFail("no run loop to wake up");
    }
    const std::lock_guard guard(lock);
    runLoop->woken = true;
    changed.notify_all();
}

void CFRunLoopAddSource(CFRunLoopRef runLoop, CFRunLoopSourceRef source, CFRunLoopMode mode)
{
    const std::lock_guard guard(lock);
    CFRetain(source);
    runLoop->sources.push_back({mode, source});
}

CFRunLoopSourceRef CFRunLoopSourceCreate(CFAllocatorRef /*allocator*/, CFIndex /*order*/,
                                         CFRunLoopSourceContext *context)
{
    const auto perform = context->perform;
    void *const info = context->info;
    return std::make_unique<CFRunLoopSource>([perform, info] { perform(info); }).release();
}

void CFRunLoopSourceSignal(CFRunLoopSourceRef source)
{
    // As on macOS, this does not wake up a waiting run loop.
    const std::lock_guard guard(lock);
    source->signaled = true;
}

void CFRunLoopSourceInvalidate(CFRunLoopSourceRef source)
{
    const std::lock_guard guard(lock);
    for (CFRunLoop *const runLoop : runLoops) {
        runLoop->sources.remove_if([source](const ModeSource &entry) {
            if (entry.source != source) {
                return false;
            }
            CFRelease(source);
            return true;
        });
    }
}

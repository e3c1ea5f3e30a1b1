// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/demo/ScreenUser.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <QTimer>

#include <utility>

// Last, because of its macros.
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>

namespace {

QString titleOf(Display *display, Window window)
{
    char *name = nullptr;
    if (XFetchName(display, window, &name) == 0 || name == nullptr) {
        return {};
    }
    QString result = QString::fromLocal8Bit(name);
    XFree(name);
    return result;
}

bool isVisible(Display *display, Window window)
{
    XWindowAttributes attributes = {};
    return XGetWindowAttributes(display, window, &attributes) != 0
        && attributes.map_state == IsViewable;
}

/// The visible window with this title at or below \a window. Window managers reparent windows.
Window findBelow(Display *display, Window window, const QString &title)
{
    if (titleOf(display, window) == title && isVisible(display, window)) {
        return window;
    }
    Window root = 0;
    Window parent = 0;
    Window *children = nullptr;
    unsigned int count = 0;
    Window found = 0;
    if (XQueryTree(display, window, &root, &parent, &children, &count) != 0) {
        for (unsigned int i = 0; i < count && found == 0; ++i) {
            found = findBelow(display, children[i], title);
        }
    }
    if (children != nullptr) {
        XFree(children);
    }
    return found;
}

/// Ignores errors, since a window may disappear at any time. Xlib would exit the process.
int ignoreError(Display * /*display*/, XErrorEvent * /*event*/)
{
    return 0;
}

} // namespace

bool ScreenUser::canSee()
{
    Display *const display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        return false;
    }
    XCloseDisplay(display);
    return true;
}

ScreenUser::ScreenUser(QString title)
    : m_title(std::move(title))
    , m_display(XOpenDisplay(nullptr))
{
    if (m_display == nullptr) {
        qFatal("cannot connect to the X server");
    }
    XSetErrorHandler(ignoreError);
}

ScreenUser::~ScreenUser()
{
    XCloseDisplay(m_display);
}

bool ScreenUser::seesWindow()
{
    return find() != 0;
}

QRect ScreenUser::windowGeometry()
{
    const Window window = find();
    if (window == 0) {
        return {};
    }
    XWindowAttributes attributes = {};
    int x = 0;
    int y = 0;
    Window child = 0;
    if (XGetWindowAttributes(m_display, window, &attributes) == 0
        || XTranslateCoordinates(m_display, window, attributes.root, 0, 0, &x, &y, &child) == 0) {
        return {};
    }
    return {x, y, attributes.width, attributes.height};
}

QImage ScreenUser::look()
{
    const QRect area = windowGeometry();
    if (area.isEmpty()) {
        return {};
    }
    return QGuiApplication::primaryScreen()
        ->grabWindow(0, area.x(), area.y(), area.width(), area.height())
        .toImage()
        .convertToFormat(QImage::Format_RGB32);
}

void ScreenUser::movePointer(const QPoint &position)
{
    movePointerOnScreen(windowGeometry().topLeft() + position);
}

void ScreenUser::movePointerOnScreen(const QPoint &position)
{
    XTestFakeMotionEvent(m_display, -1, position.x(), position.y(), CurrentTime);
    XSync(m_display, False);
}

void ScreenUser::press()
{
    XTestFakeButtonEvent(m_display, Button1, True, CurrentTime);
    XSync(m_display, False);
}

void ScreenUser::release()
{
    XTestFakeButtonEvent(m_display, Button1, False, CurrentTime);
    XSync(m_display, False);
}

void ScreenUser::click(const QPoint &position)
{
    movePointer(position);
    press();
    release();
}

void ScreenUser::drag(const QPoint &from, const QPoint &to)
{
    constexpr int kSteps = 5;
    const QPoint origin = windowGeometry().topLeft();
    movePointerOnScreen(origin + from);
    press();
    for (int step = 1; step <= kSteps; ++step) {
        movePointerOnScreen(origin + from + (to - from) * step / kSteps);
    }
}

bool ScreenUser::waitUntil(const std::function<bool()> &condition, int milliseconds)
{
    constexpr int kLookEach = 20;
    QEventLoop loop;
    const QDeadlineTimer deadline(milliseconds);
    bool holds = condition();
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
        holds = condition();
        if (holds || deadline.hasExpired()) {
            loop.quit();
        }
    });
    if (!holds) {
        timer.start(kLookEach);
        loop.exec();
    }
    return holds;
}

unsigned long ScreenUser::find() const
{
    return findBelow(m_display, DefaultRootWindow(m_display), m_title);
}

// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/demo/ScreenUser.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <QTimer>

#include <algorithm>
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

/// A screenshot of \a area of the screen.
QImage grab(const QRect &area)
{
    return QGuiApplication::primaryScreen()
        ->grabWindow(0, area.x(), area.y(), area.width(), area.height())
        .toImage()
        .convertToFormat(QImage::Format_RGB32);
}

/// The X server's number of \a button.
unsigned int numberOf(Qt::MouseButton button)
{
    return button == Qt::LeftButton ? Button1 : button == Qt::MiddleButton ? Button2 : Button3;
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
    : ScreenUser(std::move(title), QColor(), 1)
{ }

ScreenUser ScreenUser::onWayland(const QColor &colour, int scale)
{
    return {QString(), colour, scale};
}

ScreenUser::ScreenUser(QString title, QColor colour, int scale)
    : m_title(std::move(title))
    , m_colour(std::move(colour))
    , m_scale(scale)
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
    return !windowGeometry().isEmpty();
}

QRect ScreenUser::windowGeometry()
{
    return m_title.isEmpty() ? geometryByColour() : geometryByTitle();
}

QStringList ScreenUser::windowClass() const
{
    const Window window = findBelow(m_display, DefaultRootWindow(m_display), m_title);
    XClassHint hint = {};
    if (m_title.isEmpty() || window == 0 || XGetClassHint(m_display, window, &hint) == 0) {
        return {};
    }
    QStringList names = {hint.res_name, hint.res_class};
    XFree(hint.res_name);
    XFree(hint.res_class);
    return names;
}

QImage ScreenUser::look()
{
    const QRect area = windowGeometry();
    return area.isEmpty() ? QImage() : grab(area);
}

void ScreenUser::movePointer(const QPoint &position)
{
    movePointerOnScreen(windowGeometry().topLeft() + position * m_scale);
}

void ScreenUser::movePointerOnScreen(const QPoint &position)
{
    if (m_title.isEmpty() && !m_isInside) {
        enterDesktop();
    }
    XTestFakeMotionEvent(m_display, -1, position.x(), position.y(), CurrentTime);
    XSync(m_display, False);
}

void ScreenUser::press(Qt::MouseButton button)
{
    XTestFakeButtonEvent(m_display, numberOf(button), True, CurrentTime);
    XSync(m_display, False);
}

void ScreenUser::release(Qt::MouseButton button)
{
    XTestFakeButtonEvent(m_display, numberOf(button), False, CurrentTime);
    XSync(m_display, False);
}

void ScreenUser::click(const QPoint &position)
{
    movePointer(position);
    press();
    release();
}

void ScreenUser::drag(const QPoint &from, const QPoint &to, Qt::MouseButton button)
{
    constexpr int kSteps = 5;
    const QPoint origin = windowGeometry().topLeft();
    movePointerOnScreen(origin + from * m_scale);
    press(button);
    for (int step = 1; step <= kSteps; ++step) {
        movePointerOnScreen(origin + (from + (to - from) * step / kSteps) * m_scale);
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

QRect ScreenUser::geometryByTitle() const
{
    const Window window = findBelow(m_display, DefaultRootWindow(m_display), m_title);
    XWindowAttributes attributes = {};
    int x = 0;
    int y = 0;
    Window child = 0;
    if (window == 0 || XGetWindowAttributes(m_display, window, &attributes) == 0
        || XTranslateCoordinates(m_display, window, attributes.root, 0, 0, &x, &y, &child) == 0) {
        return {};
    }
    return {x, y, attributes.width, attributes.height};
}

QRect ScreenUser::geometryByColour() const
{
    const QImage screen = grab(QGuiApplication::primaryScreen()->geometry());
    QRect found;
    for (int y = 0; y < screen.height(); ++y) {
        const auto *const begin = reinterpret_cast<const QRgb *>(screen.constScanLine(y));
        const auto *const end = begin + screen.width();
        const auto *const first = std::find(begin, end, m_colour.rgb());
        if (first == end) {
            continue;
        }
        const auto *last = end - 1;
        while (*last != m_colour.rgb()) {
            --last;
        }
        found |= QRect(QPoint(static_cast<int>(first - begin), y),
                       QPoint(static_cast<int>(last - begin), y));
    }
    return found;
}

void ScreenUser::enterDesktop()
{
    // A nested desktop adds up the movements since the pointer entered its window. If the pointer
    // was already there when the window appeared, the desktop may assume that it was in the corner.
    // A window on top for a moment makes the pointer leave and enter again.
    XSetWindowAttributes attributes = {};
    attributes.override_redirect = True;
    const QSize size = QGuiApplication::primaryScreen()->size();
    const Window cover
        = XCreateWindow(m_display, DefaultRootWindow(m_display), 0, 0,
                        static_cast<unsigned>(size.width()), static_cast<unsigned>(size.height()),
                        0, 0, InputOnly, nullptr, CWOverrideRedirect, &attributes);
    XMapRaised(m_display, cover);
    XDestroyWindow(m_display, cover);
    XSync(m_display, False);
    m_isInside = true;
}

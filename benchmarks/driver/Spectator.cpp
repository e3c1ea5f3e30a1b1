// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "benchmarks/driver/Spectator.h"

#include <QtDebug>

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <X11/extensions/Xdamage.h>
#include <poll.h>

#include <chrono>
#include <cstring>

namespace {

/// The colour of the root window. No measured program uses it, so it marks unpainted pixels.
constexpr unsigned long kUnpainted = 0xFF00FF;

} // namespace

Spectator::Spectator(const QByteArray &display)
    : m_display(XOpenDisplay(display.constData()))
{
    int error = 0;
    if (m_display == nullptr || !XDamageQueryExtension(m_display, &m_damageEvent, &error)) {
        qFatal("Cannot connect to the X server");
    }
    const Window root = DefaultRootWindow(m_display);
    XSetWindowBackground(m_display, root, kUnpainted);
    XClearWindow(m_display, root);
    XSelectInput(m_display, root, SubstructureNotifyMask);
    // Watches the root window: a program may paint before its own window could be watched.
    XDamageCreate(m_display, root, XDamageReportRawRectangles);
    XTestFakeMotionEvent(m_display, -1, 1279, 799, CurrentTime);
    XSync(m_display, False);
}

Spectator::~Spectator()
{
    XCloseDisplay(m_display);
}

Program::Costs Spectator::waitForContent(Program &program)
{
    takeDamage();
    m_window = QRect();
    const auto deadline = Program::Clock::now() + std::chrono::seconds(30);
    while (Program::Clock::now() < deadline) {
        if (!waitForEvent(1000)) {
            continue;
        }
        program.hold();
        const Program::Costs costs = program.costs();
        handleNextEvent();
        const bool seen = !m_window.isEmpty() && m_damage.intersects(m_window) && isPainted();
        program.release();
        if (seen) {
            return costs;
        }
    }
    qFatal("The window did not appear");
}

QRegion Spectator::takeDamage()
{
    XSync(m_display, False);
    while (XPending(m_display) > 0) {
        handleNextEvent();
    }
    QRegion damage = m_damage.translated(-m_window.topLeft());
    m_damage = QRegion();
    return damage;
}

void Spectator::click(const QPoint &point)
{
    const QPoint place = m_window.topLeft() + point;
    XTestFakeMotionEvent(m_display, -1, place.x(), place.y(), CurrentTime);
    XTestFakeButtonEvent(m_display, 1, True, CurrentTime);
    XTestFakeButtonEvent(m_display, 1, False, CurrentTime);
    XSync(m_display, False);
}

bool Spectator::waitForEvent(int milliseconds)
{
    if (XPending(m_display) > 0) {
        return true;
    }
    pollfd connection = {ConnectionNumber(m_display), POLLIN, 0};
    return ::poll(&connection, 1, milliseconds) > 0 && XPending(m_display) > 0;
}

void Spectator::handleNextEvent()
{
    XEvent event;
    XNextEvent(m_display, &event);
    if (event.type == MapNotify && event.xmap.event == DefaultRootWindow(m_display)) {
        XWindowAttributes place;
        if (XGetWindowAttributes(m_display, event.xmap.window, &place) != 0) {
            m_window = QRect(place.x, place.y, place.width, place.height);
        }
    } else if (event.type == m_damageEvent + XDamageNotify) {
        XDamageNotifyEvent damage;
        std::memcpy(&damage, &event, sizeof damage);
        m_damage += QRect(damage.area.x, damage.area.y, damage.area.width, damage.area.height);
    }
}

bool Spectator::isPainted() const
{
    XImage *const image = XGetImage(m_display, DefaultRootWindow(m_display), m_window.x(),
                                    m_window.y(), static_cast<unsigned>(m_window.width()),
                                    static_cast<unsigned>(m_window.height()), AllPlanes, ZPixmap);
    bool painted = true;
    for (int y = 5; painted && y < m_window.height(); y += 10) {
        for (int x = 5; painted && x < m_window.width(); x += 10) {
            painted = (XGetPixel(image, x, y) & 0xFFFFFF) != kUnpainted;
        }
    }
    XDestroyImage(image);
    return painted;
}

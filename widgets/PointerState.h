// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

/// The state of the pointer over a pixmap button. Each button decides which events change it.
///
/// The disabled look is not a state: a button reads it from the widget when it paints.
struct PointerState
{
    /// The values of state.
    enum Look { Normal = 0, Hover = 1, Pressed = 2 };

    int state = Normal; ///< one of Look; indexes the button's pictures and colours
    bool hovered = false; ///< true between an enter and a leave event; painting never reads it

    /// The pointer has entered the button.
    void enter()
    {
        state = Hover;
        hovered = true;
    }
    /// The pointer has left the button, pressed or not.
    void leave()
    {
        state = Normal;
        hovered = false;
    }
    /// A mouse button was pressed over the button.
    void press() { state = Pressed; }
    /// The mouse button was released. The pointer is assumed to be still over the button; if it is
    /// not, a leave event follows.
    void release() { state = Hover; }
};

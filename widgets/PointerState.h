// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

/// What the pointer does to a pixmap button. Which event counts is each button's own rule.
///
/// The disabled look is not a state: a button reads it from the widget when it paints.
struct PointerState
{
    /// What state may be.
    enum Look { Normal = 0, Hover = 1, Pressed = 2 };

    int state = Normal; ///< one of Look; indexes the button's pictures and colours
    bool hovered = false; ///< true between an enter and a leave event; painting never reads it

    /// The pointer has come over the button.
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
    /// A mouse button has gone down over the button.
    void press() { state = Pressed; }
    /// It has come up. The pointer is taken to be over the button still; a leave event corrects
    /// that.
    void release() { state = Hover; }
};

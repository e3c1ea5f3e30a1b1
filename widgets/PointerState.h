// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

/// What the pointer does to a pixmap button. Which event counts is each button's own rule.
///
/// The disabled look is not a state: a button reads it from the widget when it paints.
struct PointerState
{
    enum Look { Normal = 0, Hover = 1, Pressed = 2 };

    int state = Normal; ///< one of Look; indexes the button's pictures and colours
    bool hovered = false; ///< true between an enter and a leave event; painting never reads it

    void enter()
    {
        state = Hover;
        hovered = true;
    }
    void leave()
    {
        state = Normal;
        hovered = false;
    }
    void press() { state = Pressed; }
    /// The pointer is taken to be over the button still; a leave event corrects that.
    void release() { state = Hover; }
};

#pragma once

#include <Qt>

namespace kavori {

// What a key or mouse button does in the player.
enum class PlayerAction {
    None,
    Next,
    Previous,
    First,
    Last,
    PageBack,           // Page Up: ten slides back
    PageForward,        // Page Down: ten slides on
    Remove,             // Delete: take the slide out of the show
    Pause,              // P or Pause
    ToggleFileNames,    // F
    GoTo,               // G: ask for a slide number
    SlideNumber,        // N: which slide of how many
    ToggleSound,        // S: the show's sound off and on
    ToggleDescriptions, // D
    Close,              // Escape
};

// The action of a key; keypad digits count as their arrows.
PlayerAction ActionForKey(int key, Qt::KeyboardModifiers modifiers);

// The action of a mouse button under the LMousePrev and RMouseNext settings.
PlayerAction ActionForButton(Qt::MouseButton button, bool leftGoesBack, bool rightGoesOn);

// Whether the action moves to another slide (and so only hurries a running transition).
bool IsNavigation(PlayerAction action);

// How far the mouse may move before the screen saver ends, in pixels, by MouseSensitivity
// (1 to 20, higher is more sensitive).
int MouseMoveThreshold(int sensitivity);

// How far Page Up and Page Down move.
constexpr int kSlidePageStep = 10;

} // namespace kavori

#include "PlayerKeys.h"

namespace kavori {

PlayerAction ActionForKey(int key, Qt::KeyboardModifiers modifiers)
{
    const bool keypad = modifiers.testFlag(Qt::KeypadModifier);
    if (keypad) {
        switch (key) {
        case Qt::Key_6:
        case Qt::Key_2:
            return PlayerAction::Next;
        case Qt::Key_4:
        case Qt::Key_8:
            return PlayerAction::Previous;
        default:
            break;
        }
    }
    switch (key) {
    case Qt::Key_Right:
    case Qt::Key_Down:
    case Qt::Key_Space:
        return PlayerAction::Next;
    case Qt::Key_Left:
    case Qt::Key_Up:
    case Qt::Key_Backspace:
        return PlayerAction::Previous;
    case Qt::Key_Home:
        return PlayerAction::First;
    case Qt::Key_End:
        return PlayerAction::Last;
    case Qt::Key_PageUp:
        return PlayerAction::PageBack;
    case Qt::Key_PageDown:
        return PlayerAction::PageForward;
    case Qt::Key_Delete:
        return PlayerAction::Remove;
    case Qt::Key_P:
    case Qt::Key_Pause:
        return PlayerAction::Pause;
    case Qt::Key_F:
        return PlayerAction::ToggleFileNames;
    case Qt::Key_G:
        return PlayerAction::GoTo;
    case Qt::Key_N:
        return PlayerAction::SlideNumber;
    case Qt::Key_S:
        return PlayerAction::ToggleSound;
    case Qt::Key_D:
        return PlayerAction::ToggleDescriptions;
    case Qt::Key_Escape:
        return PlayerAction::Close;
    default:
        return PlayerAction::None;
    }
}

PlayerAction ActionForButton(Qt::MouseButton button, bool leftGoesBack, bool rightGoesOn)
{
    if (button == Qt::LeftButton && leftGoesBack)
        return PlayerAction::Previous;
    if (button == Qt::RightButton && rightGoesOn)
        return PlayerAction::Next;
    return PlayerAction::None;
}

bool IsNavigation(PlayerAction action)
{
    switch (action) {
    case PlayerAction::Next:
    case PlayerAction::Previous:
    case PlayerAction::First:
    case PlayerAction::Last:
    case PlayerAction::PageBack:
    case PlayerAction::PageForward:
        return true;
    default:
        return false;
    }
}

int MouseMoveThreshold(int sensitivity)
{
    const int s = sensitivity >= 1 && sensitivity <= 20 ? sensitivity : 4;
    return (21 - s) * 4;
}

} // namespace kavori

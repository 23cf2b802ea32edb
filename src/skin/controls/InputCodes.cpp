#include "skin/controls/InputCodes.h"

#include <QKeyEvent>

#include <algorithm>
#include <array>

namespace Quorlin::InputCodes {

namespace {

struct KeyCode
{
    int key;
    int code;
};

constexpr std::array Codes = {
    KeyCode{Qt::Key_Backspace, 8},    KeyCode{Qt::Key_Tab, 9},
    KeyCode{Qt::Key_Backtab, 9},      KeyCode{Qt::Key_Clear, 12},
    KeyCode{Qt::Key_Return, 13},      KeyCode{Qt::Key_Enter, 13},
    KeyCode{Qt::Key_Shift, 16},       KeyCode{Qt::Key_Control, 17},
    KeyCode{Qt::Key_Alt, 18},         KeyCode{Qt::Key_AltGr, 18},
    KeyCode{Qt::Key_Pause, 19},       KeyCode{Qt::Key_CapsLock, 20},
    KeyCode{Qt::Key_Escape, 27},      KeyCode{Qt::Key_Space, 32},
    KeyCode{Qt::Key_PageUp, 33},      KeyCode{Qt::Key_PageDown, 34},
    KeyCode{Qt::Key_End, 35},         KeyCode{Qt::Key_Home, 36},
    KeyCode{Qt::Key_Left, 37},        KeyCode{Qt::Key_Up, 38},
    KeyCode{Qt::Key_Right, 39},       KeyCode{Qt::Key_Down, 40},
    KeyCode{Qt::Key_Print, 44},       KeyCode{Qt::Key_Insert, 45},
    KeyCode{Qt::Key_Delete, 46},      KeyCode{Qt::Key_Help, 47},
    KeyCode{Qt::Key_Menu, 93},        KeyCode{Qt::Key_NumLock, 144},
    KeyCode{Qt::Key_ScrollLock, 145}, KeyCode{Qt::Key_Semicolon, 186},
    KeyCode{Qt::Key_Equal, 187},      KeyCode{Qt::Key_Plus, 187},
    KeyCode{Qt::Key_Comma, 188},      KeyCode{Qt::Key_Minus, 189},
    KeyCode{Qt::Key_Period, 190},     KeyCode{Qt::Key_Slash, 191},
    KeyCode{Qt::Key_QuoteLeft, 192},  KeyCode{Qt::Key_BracketLeft, 219},
    KeyCode{Qt::Key_Backslash, 220},  KeyCode{Qt::Key_BracketRight, 221},
    KeyCode{Qt::Key_Apostrophe, 222},
};

constexpr std::array KeypadCodes = {
    KeyCode{Qt::Key_Asterisk, 106}, KeyCode{Qt::Key_Plus, 107},  KeyCode{Qt::Key_Minus, 109},
    KeyCode{Qt::Key_Period, 110},   KeyCode{Qt::Key_Comma, 110}, KeyCode{Qt::Key_Slash, 111},
};

template <typename Table>
int found(const Table &table, int key)
{
    const auto entry = std::ranges::find(table, key, &KeyCode::key);
    return entry == table.end() ? 0 : entry->code;
}

int keypadCode(int key)
{
    constexpr int Digit0 = 96;
    if (key >= Qt::Key_0 && key <= Qt::Key_9)
        return Digit0 + key - Qt::Key_0;
    return found(KeypadCodes, key);
}

} // namespace

int shift(Qt::KeyboardModifiers modifiers)
{
    return (modifiers.testFlag(Qt::ShiftModifier) ? 1 : 0) +
           (modifiers.testFlag(Qt::ControlModifier) ? 2 : 0) +
           (modifiers.testFlag(Qt::AltModifier) ? 4 : 0);
}

int buttons(Qt::MouseButtons pressed)
{
    return (pressed.testFlag(Qt::LeftButton) ? 1 : 0) +
           (pressed.testFlag(Qt::RightButton) ? 2 : 0) +
           (pressed.testFlag(Qt::MiddleButton) ? 4 : 0);
}

int key(const QKeyEvent &event)
{
    constexpr int F1 = 112;
    const auto pressed = event.key();
    if (event.modifiers().testFlag(Qt::KeypadModifier)) {
        if (const auto code = keypadCode(pressed); code != 0)
            return code;
    }
    const auto isLetter = pressed >= Qt::Key_A && pressed <= Qt::Key_Z;
    const auto isDigit = pressed >= Qt::Key_0 && pressed <= Qt::Key_9;
    if (isLetter || isDigit)
        return pressed;
    if (pressed >= Qt::Key_F1 && pressed <= Qt::Key_F24)
        return F1 + pressed - Qt::Key_F1;
    return found(Codes, pressed);
}

} // namespace Quorlin::InputCodes

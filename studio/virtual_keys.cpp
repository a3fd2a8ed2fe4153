#include "studio/virtual_keys.h"

#include <QKeyEvent>

namespace tvw::rgs::studio {

namespace {

struct Row
{
    int key; ///< Qt's
    int code;
};

constexpr Row kRows[] = {
    {Qt::Key_Left, 37},     {Qt::Key_Up, 38},      {Qt::Key_Right, 39},    {Qt::Key_Down, 40},
    {Qt::Key_Backspace, 8}, {Qt::Key_Tab, 9},      {Qt::Key_Backtab, 9},   {Qt::Key_Clear, 12},
    {Qt::Key_Return, 13},   {Qt::Key_Enter, 13},   {Qt::Key_Shift, 16},    {Qt::Key_Control, 17},
    {Qt::Key_Alt, 18},      {Qt::Key_Pause, 19},   {Qt::Key_CapsLock, 20}, {Qt::Key_Escape, 27},
    {Qt::Key_Space, 32},    {Qt::Key_PageUp, 33},  {Qt::Key_PageDown, 34}, {Qt::Key_End, 35},
    {Qt::Key_Home, 36},     {Qt::Key_Insert, 45},  {Qt::Key_Delete, 46},   {Qt::Key_Plus, 187},
    {Qt::Key_Equal, 187},   {Qt::Key_Minus, 189},  {Qt::Key_Comma, 188},   {Qt::Key_Period, 190},
    {Qt::Key_Super_L, 91},  {Qt::Key_Super_R, 92}, {Qt::Key_Meta, 91},     {Qt::Key_AltGr, 165},
};

constexpr Row kKeypad[] = {
    {Qt::Key_Asterisk, 106}, {Qt::Key_Plus, 107},   {Qt::Key_Minus, 109},
    {Qt::Key_Comma, 110},    {Qt::Key_Period, 110}, {Qt::Key_Slash, 111},
};

template <std::size_t N>
int codeIn(const Row (&rows)[N], int key)
{
    for (const Row& row : rows) {
        if (row.key == key)
            return row.code;
    }
    return 0;
}

} // namespace

int virtualKeyOf(const QKeyEvent& event)
{
    const int key = event.key();
    if ((event.modifiers() & Qt::KeypadModifier) != 0) {
        if (key >= Qt::Key_0 && key <= Qt::Key_9)
            return 96 + key - Qt::Key_0;
        if (const int code = codeIn(kKeypad, key))
            return code;
    }
    if (key >= Qt::Key_0 && key <= Qt::Key_9)
        return 48 + key - Qt::Key_0;
    if (key >= Qt::Key_A && key <= Qt::Key_Z)
        return 65 + key - Qt::Key_A;
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24)
        return 112 + key - Qt::Key_F1;
    return codeIn(kRows, key);
}

} // namespace tvw::rgs::studio

/// Buttons and icons of a message box, as bits.
#pragma once

#include <cstdint>
#include <initializer_list>

namespace tvw::gui::box {

inline constexpr std::uint32_t ok = 0x1, cancel = 0x2, close = 0x4, help = 0x8, yes = 0x10,
                               no = 0x20, abort = 0x40, retry = 0x80, ignore = 0x100,
                               yesToAll = 0x200, noToAll = 0x400, apply = 0x800, discard = 0x1000,
                               reset = 0x2000, save = 0x4000;
inline constexpr std::uint32_t question = 0x20000, information = 0x40000, warning = 0x80000,
                               critical = 0x100000;

/// What a box that is not shown answers: the first of Ok, Yes, Save, Abort, Apply that it has, else
/// No.
constexpr std::uint32_t silentAnswer(std::uint32_t flags)
{
    for (const std::uint32_t answer : {ok, yes, save, abort, apply}) {
        if (flags & answer)
            return answer;
    }
    return no;
}

} // namespace tvw::gui::box

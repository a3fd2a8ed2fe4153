#include "core/windows.h"

#include "core/log.h"

namespace tvw::rgs::core {

std::uint32_t box::silentAnswer(std::uint32_t flags)
{
    for (const std::uint32_t button : {ok, yes, save, abort, apply}) {
        if (flags & button)
            return button;
    }
    return no;
}

std::uint32_t Windows::messageBox(void*, const std::string& text, const std::string& title,
                                  std::uint32_t flags, bool)
{
    log(LogKind::Box, flags & box::critical ? LogSeverity::Error : LogSeverity::Warning,
        title + ": " + text);
    return box::silentAnswer(flags);
}

} // namespace tvw::rgs::core

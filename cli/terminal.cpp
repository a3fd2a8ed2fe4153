#include "cli/terminal.h"

#include <charconv>
#include <cstdio>
#include <unistd.h>
#include <utility>

namespace tvw::rgs::cli {

void note(const std::string& text)
{
    std::fprintf(stderr, "rigstage: note: %s\n", text.c_str());
}

void print(const Json& json)
{
    std::puts(json.dump(2, ' ', false, Json::error_handler_t::replace).c_str());
}

std::string textOf(double value)
{
    char text[32];
    return {text, std::to_chars(text, text + sizeof(text), value).ptr};
}

ProgressLine::ProgressLine(std::string what) : what_(std::move(what)), isTerminal_(::isatty(2) == 1)
{
}

ProgressLine::~ProgressLine()
{
    if (shown_)
        std::fputs("\r\033[K", stderr);
}

void ProgressLine::show(double fraction)
{
    using namespace std::chrono;
    const Clock::time_point now = Clock::now();
    if (!isTerminal_ || now - began_ < seconds(1) || now - last_ < milliseconds(200))
        return;
    last_ = now;
    shown_ = true;
    std::fprintf(stderr, "\r%s: %3.0f %%", what_.c_str(), fraction * 100.0);
    if (fraction > 0.0) {
        const double gone = duration<double>(now - began_).count();
        const double left = gone / fraction - gone;
        if (left >= 60.0)
            std::fprintf(stderr, ", %.0f min %.0f s left", left / 60.0 - 0.5,
                         left - 60.0 * static_cast<int>(left / 60.0));
        else
            std::fprintf(stderr, ", %.0f s left", left);
    }
    std::fputs("\033[K", stderr);
    std::fflush(stderr);
}

} // namespace tvw::rgs::cli

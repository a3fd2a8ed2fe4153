/// What the command line says: results on stdout, all else on stderr.
#pragma once

#include <nlohmann/json.hpp>

#include <chrono>
#include <stdexcept>
#include <string>

namespace tvw::rgs::cli {

using Json = nlohmann::ordered_json;

/// Ends the command with one line of error and an exit status.
class Failure : public std::runtime_error
{
public:
    explicit Failure(const std::string& what, int status = 1)
        : std::runtime_error(what), status_(status)
    {
    }
    int status() const { return status_; }

private:
    int status_;
};

/// A command that was given wrongly: exit status 2.
inline constexpr int kUsage = 2;

/// A line on stderr about something that does not stop the command.
void note(const std::string& text);

/// One line of JSON text on stdout; bytes that are no UTF-8 are replaced.
void print(const Json& json);

/// The shortest text that reads back as the same number.
std::string textOf(double value);

/// "42 %, 12 s left" on a terminal, for what takes more than a second. Nothing where stderr is no
/// terminal. The line goes away at the end.
class ProgressLine
{
public:
    explicit ProgressLine(std::string what);
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    void show(double fraction); ///< 0 to 1

private:
    using Clock = std::chrono::steady_clock;

    std::string what_;
    bool isTerminal_;
    bool shown_ = false;
    Clock::time_point began_ = Clock::now();
    Clock::time_point last_ = began_;
};

} // namespace tvw::rgs::cli

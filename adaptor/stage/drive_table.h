/// A table of input over time, as a farm or a script hands it over: comma-separated text.
///
/// The first line names the columns: the first is the time [s] on the scene's time line, whatever
/// it is called, the others are inputs. A name with a comma stands in double quotes, a quote in it
/// is doubled. Each further line is a time and a number for each input; the times rise. Empty lines
/// are left out, line ends may be of either kind, and a byte order mark is skipped.
///
/// An input has the value of the latest line at or before a time, and rests at 0 before the first.
#pragma once

#include "adaptor/stage/flicks.h"
#include "util/result.h"

#include <string>
#include <string_view>
#include <vector>

namespace tvw::rgs::stage {

class DriveTable
{
public:
    /// The reason names the line, counted from 1.
    static Result<DriveTable> parse(std::string_view text);
    static Result<DriveTable> load(const std::string& path);

    [[nodiscard]] const std::vector<std::string>& columns() const
    {
        return columns_;
    } ///< the inputs
    [[nodiscard]] std::size_t rowCount() const { return times_.size(); }
    [[nodiscard]] double lastTime() const
    {
        return times_.empty() ? 0.0 : toSeconds(times_.back());
    }

    /// column: below columns().size(). Times are compared as key times are: rounding moves no line
    /// to another frame.
    [[nodiscard]] double valueAt(std::size_t column, double time) const;

private:
    DriveTable() = default;
    Status addRow(std::string_view line, std::size_t number);

    std::vector<std::string> columns_;
    std::vector<Flicks> times_;
    std::vector<double> values_; ///< columns_.size() for each time
};

} // namespace tvw::rgs::stage

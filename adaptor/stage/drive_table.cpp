#include "adaptor/stage/drive_table.h"

#include "util/file.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

namespace tvw::rgs::stage {

namespace {

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view kBlanks = " \t\r";
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

/// Takes a quoted field off the front of a line, with the blanks behind it; false when it does not
/// end.
bool takeQuoted(std::string_view& line, std::string& field)
{
    for (std::size_t i = 1; i < line.size(); ++i) {
        if (line[i] == '"' && line.substr(i + 1).starts_with('"')) {
            ++i;
        } else if (line[i] == '"') {
            line = trimmed(line.substr(i + 1));
            return true;
        }
        field += line[i];
    }
    return false;
}

/// The fields of a line; nothing when a quoted one does not end, or has something behind its end.
std::optional<std::vector<std::string>> fieldsOf(std::string_view line)
{
    std::vector<std::string> fields;
    for (;;) {
        std::string& field = fields.emplace_back();
        line = trimmed(line);
        if (line.starts_with('"')) {
            if (!takeQuoted(line, field))
                return std::nullopt;
        } else {
            const std::size_t end = std::min(line.find(','), line.size());
            field = trimmed(line.substr(0, end));
            line.remove_prefix(end);
        }
        if (line.empty())
            return fields;
        if (line.front() != ',')
            return std::nullopt;
        line.remove_prefix(1);
    }
}

std::optional<double> numberOf(std::string_view field)
{
    double value = 0.0;
    const char* const end = field.data() + field.size();
    const auto [stopped, error] = std::from_chars(field.data(), end, value);
    const bool whole = error == std::errc() && stopped == end && !field.empty();
    return whole && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

Status wrong(std::size_t line, const std::string& what)
{
    return Status::failure("line " + std::to_string(line) + ": " + what);
}

/// The names of the inputs behind that of the time.
Status readHeader(std::string_view line, std::size_t number, std::vector<std::string>& columns)
{
    auto fields = fieldsOf(line);
    if (!fields)
        return wrong(number, "a quoted name does not end");
    columns.assign(fields->begin() + 1, fields->end());
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].empty())
            return wrong(number, "column " + std::to_string(i + 2) + " has no name");
        if (std::find(columns.begin(), columns.begin() + static_cast<std::ptrdiff_t>(i),
                      columns[i]) != columns.begin() + static_cast<std::ptrdiff_t>(i))
            return wrong(number, "two columns are called \"" + columns[i] + "\"");
    }
    if (columns.empty())
        return wrong(number, "names no input: the columns are a time and at least one input");
    return {};
}

} // namespace

Result<DriveTable> DriveTable::parse(std::string_view text)
{
    DriveTable table;
    if (text.starts_with("\xEF\xBB\xBF"))
        text.remove_prefix(3);
    bool hasHeader = false;
    for (std::size_t number = 1; !text.empty(); ++number) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = trimmed(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.empty())
            continue;
        const Status read =
            hasHeader ? table.addRow(line, number) : readHeader(line, number, table.columns_);
        if (!read)
            return Result<DriveTable>::failure(read.reason());
        hasHeader = true;
    }
    if (!hasHeader)
        return Result<DriveTable>::failure("the table is empty");
    return table;
}

Result<DriveTable> DriveTable::load(const std::string& path)
{
    const Result<std::string> text = readFile(path);
    if (!text)
        return Result<DriveTable>::failure(text.reason());
    Result<DriveTable> table = parse(*text);
    if (!table)
        return Result<DriveTable>::failure(path + ", " + table.reason());
    return table;
}

Status DriveTable::addRow(std::string_view line, std::size_t number)
{
    const auto fields = fieldsOf(line);
    const std::size_t wanted = columns_.size() + 1;
    if (!fields || fields->size() != wanted)
        return wrong(number, "has " + std::to_string(fields ? fields->size() : 0) +
                                 " values, not " + std::to_string(wanted));
    for (std::size_t i = 0; i < wanted; ++i) {
        const auto value = numberOf((*fields)[i]);
        if (!value)
            return wrong(number, "\"" + (*fields)[i] + "\" is no number");
        if (i > 0) {
            values_.push_back(*value);
            continue;
        }
        const Flicks time = toFlicks(*value);
        if (!times_.empty() && time <= times_.back())
            return wrong(number, "the time " + (*fields)[0] +
                                     " does not lie behind that of the line before");
        times_.push_back(time);
    }
    return {};
}

double DriveTable::valueAt(std::size_t column, double time) const
{
    const auto behind = std::upper_bound(times_.begin(), times_.end(), toFlicks(time));
    if (behind == times_.begin())
        return 0.0;
    const auto row = static_cast<std::size_t>(behind - times_.begin()) - 1;
    return values_[row * columns_.size() + column];
}

} // namespace tvw::rgs::stage

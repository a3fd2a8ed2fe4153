/// Any bytes as the binary block of an animated variable, for each type of value that is stored.
#include "tests/fuzz/fuzz.h"
#include "util/avar.h"

#include <cmath>
#include <string>

namespace {

using tvw::fuzz::require;

template <class Variable>
std::string stored(const Variable& variable)
{
    std::string bytes(variable.binarySize(), '\0');
    require(variable.store(bytes.data(), bytes.size()) == bytes.size(), "the sizes differ");
    return bytes;
}

template <class Variable>
void readAround(const Variable& variable)
{
    const auto records = variable.records();
    for (std::size_t i = 0; i < records.size(); ++i) {
        const double time = records[i].time;
        require(!std::isnan(time), "a time is no number");
        require(i == 0 || records[i - 1].time < time, "the times do not rise");
        require(variable.find(time) == static_cast<int>(i), "a record is not found at its time");
    }
    if (!records.empty() && std::isfinite(records.front().time)) {
        (void)variable.get(records.front().time - 1.0);
        (void)variable.get(records.back().time + 1.0);
        (void)variable.get((records.front().time + records.back().time) / 2);
    }
}

template <class Variable>
void check(const std::uint8_t* data, std::size_t size)
{
    Variable variable;
    if (!variable.load(data, size)) {
        require(variable.empty(), "a refused block leaves records behind");
        return;
    }
    readAround(variable);
    const std::string bytes = stored(variable);
    require(bytes.size() <= size, "a block takes more bytes written than read");
    Variable again;
    require(again.load(bytes.data(), bytes.size()), "a stored block is refused");
    require(stored(again) == bytes, "a block changes on its way out and in");
    require(!again.load(bytes.data(), bytes.size() - 1), "a cut block is taken");
    require(again.size() == variable.size(), "a refused block changes the records");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    check<tvw::AVar_Linear<double>>(data, size);
    check<tvw::AVar_Linear<tvw::Vector3d>>(data, size);
    check<tvw::AVar_Linear<bool>>(data, size);
    check<tvw::AVar_Nearest<tvw::Quatd>>(data, size);
    check<tvw::AVar_Nearest<tvw::QTransformd>>(data, size);
    check<tvw::AVar_Latest<int>>(data, size);
    return 0;
}

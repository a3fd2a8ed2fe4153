#include "tests/fuzz/check.h"
#include "util/avar.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

namespace {

/// A block that could be read is written as it was, and a refused one changes nothing. (Bools are
/// written as 0 or 1 whatever was read, so their bytes may differ.)
template <class Variable>
void tryBlock(const std::uint8_t* data, std::size_t size, bool sameBytes)
{
    Variable variable;
    variable.set(5.0, variable.defaultValue());
    if (!variable.load(data, size)) {
        RIGSTAGE_FUZZ_CHECK(variable.size() == 1 && variable.records()[0].time == 5.0);
        return;
    }
    std::vector<std::uint8_t> bytes(variable.binarySize());
    RIGSTAGE_FUZZ_CHECK(bytes.size() <= size);
    RIGSTAGE_FUZZ_CHECK(variable.store(bytes.data(), bytes.size()) == bytes.size());
    RIGSTAGE_FUZZ_CHECK(!sameBytes || std::memcmp(bytes.data(), data, bytes.size()) == 0);
    RIGSTAGE_FUZZ_CHECK(!Variable().load(bytes.data(), bytes.size() - 1));
    const auto records = variable.records();
    for (std::size_t i = 0; i < records.size(); ++i) {
        RIGSTAGE_FUZZ_CHECK(!std::isnan(records[i].time));
        RIGSTAGE_FUZZ_CHECK(i == 0 || records[i - 1].time < records[i].time);
        RIGSTAGE_FUZZ_CHECK(variable.find(records[i].time) == static_cast<int>(i));
    }
    for (const double time : {-1e300, 0.0, 0.5, 1.0, 1e300}) {
        (void)variable.get(time);
        RIGSTAGE_FUZZ_CHECK(variable.find(time) < static_cast<int>(variable.size()));
    }
    variable.set(0.5, variable.defaultValue());
    variable.cutFrom(0.75);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    tryBlock<tvw::AVar_Linear<double>>(data, size, true);
    tryBlock<tvw::AVar_Latest<std::int32_t>>(data, size, true);
    tryBlock<tvw::AVar_Linear<bool>>(data, size, false);
    tryBlock<tvw::AVar_Linear<tvw::Vector3d>>(data, size, true);
    tryBlock<tvw::AVar_Nearest<tvw::Quatd>>(data, size, true);
    tryBlock<tvw::AVar_Nearest<tvw::QTransformd>>(data, size, true);
    return 0;
}

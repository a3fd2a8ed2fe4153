#include "adaptor/stage/drive_table.h"

#include <gtest/gtest.h>

namespace tvw::rgs::stage {
namespace {

TEST(DriveTable, HoldsTheLatestLineAtOrBeforeATime)
{
    const auto table = DriveTable::parse("\xEF\xBB\xBFseconds, Gas ,\"Left, \"\"far\"\"\"\r\n"
                                         "0.28,0.5,-1\r\n"
                                         "\r\n"
                                         "1, 1e-1 ,\"2\"\n");
    ASSERT_TRUE(table) << table.reason();
    EXPECT_EQ(table->columns(), (std::vector<std::string>{"Gas", "Left, \"far\""}));
    EXPECT_EQ(table->rowCount(), 2U);
    struct Case
    {
        const char* name;
        double time, gas, left;
    };
    constexpr Case kCases[] = {
        {"before the first line at rest", 0.24, 0.0, 0.0},
        {"frame 7 at 25 per second, which rounds above 0.28", 7 * 0.04, 0.5, -1.0},
        {"one rounding below a line is that line", 0.27999999999999997, 0.5, -1.0},
        {"held, not drawn out", 0.96, 0.5, -1.0},
        {"at a line", 1.0, 0.1, 2.0},
        {"behind the last line", 99.0, 0.1, 2.0},
    };
    for (const Case& c : kCases) {
        EXPECT_EQ(table->valueAt(0, c.time), c.gas) << c.name;
        EXPECT_EQ(table->valueAt(1, c.time), c.left) << c.name;
    }
}

TEST(DriveTable, NamesTheLineOfWhatItCannotRead)
{
    constexpr std::pair<const char*, const char*> kCases[] = {
        {"", "the table is empty"},
        {"\n\r\n", "the table is empty"},
        {"time\n0\n", "line 1: names no input: the columns are a time and at least one input"},
        {"time,a,\n", "line 1: column 3 has no name"},
        {"time,a,a\n", "line 1: two columns are called \"a\""},
        {"time,\"a\n", "line 1: a quoted name does not end"},
        {"time,\"a\"b\n", "line 1: a quoted name does not end"},
        {"time,a\n0,1\n0.5\n", "line 3: has 1 values, not 2"},
        {"time,a\n0,1,2\n", "line 2: has 3 values, not 2"},
        {"time,a\n\n0,x\n", "line 3: \"x\" is no number"},
        {"time,a\n0,nan\n", "line 2: \"nan\" is no number"},
        {"time,a\n0,1 2\n", "line 2: \"1 2\" is no number"},
        {"time,a\n1,0\n1,0\n", "line 3: the time 1 does not lie behind that of the line before"},
    };
    for (const auto& [text, reason] : kCases) {
        const auto table = DriveTable::parse(text);
        EXPECT_FALSE(table) << text;
        EXPECT_EQ(table.reason(), reason) << text;
    }
}

} // namespace
} // namespace tvw::rgs::stage

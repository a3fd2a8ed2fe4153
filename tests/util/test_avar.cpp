#include "util/avar.h"
#include "util/random.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <iterator>
#include <utility>
#include <vector>

namespace tvw {
namespace {

using Bytes = std::vector<unsigned char>;

template <class T>
Bytes blockOf(const AVar<T>& line)
{
    Bytes bytes(line.binarySize());
    EXPECT_EQ(line.store(bytes.data(), bytes.size()), bytes.size());
    return bytes;
}

template <class T>
std::vector<double> timesOf(const AVar<T>& line)
{
    std::vector<double> times;
    for (const auto& record : line.records()) {
        times.push_back(record.time);
    }
    return times;
}

TEST(AVar, readsBetweenItsRecords)
{
    AVar_Linear<double> linear(7.0);
    AVar_Nearest<double> nearest(7.0);
    AVar_Latest<int> latest(7);
    EXPECT_EQ(linear.get(1.0), 7.0);
    EXPECT_EQ(linear.find(1.0), -1);
    for (const auto& [t, value] : {std::pair{1.0, 10}, {2.0, 20}, {4.0, 0}}) {
        linear.set(t, value);
        nearest.set(t, value);
        latest.set(t, value);
    }
    struct Case
    {
        const char* name;
        double t;
        int index;
        double linear, nearest;
        int latest;
    };
    const Case cases[] = {
        {"before the first", -5.0, 0, 10, 10, 10},   {"on the first", 1.0, 0, 10, 10, 10},
        {"nearer the first", 1.25, 0, 12.5, 10, 10}, {"half way is later", 1.5, 1, 15, 20, 10},
        {"on the second", 2.0, 1, 20, 20, 20},       {"half way, wide gap", 3.0, 2, 10, 0, 20},
        {"nearer the second", 2.5, 1, 15, 20, 20},   {"on the last", 4.0, 2, 0, 0, 0},
        {"behind the last", 9.0, 2, 0, 0, 0},        {"no number", std::nan(""), 0, 10, 10, 10},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(linear.find(c.t), c.index) << c.name;
        EXPECT_EQ(linear.get(c.t), c.linear) << c.name;
        EXPECT_EQ(nearest.get(c.t), c.nearest) << c.name;
        EXPECT_EQ(latest.get(c.t), c.latest) << c.name;
    }
}

TEST(AVar, linearOfOtherTypes)
{
    AVar_Linear<int> ints;
    ints.set(0, 1);
    ints.set(1, -2);
    EXPECT_EQ(ints.get(0.5), 0); // -0.5 goes toward 0
    EXPECT_EQ(ints.get(0.9), -1);

    AVar_Linear<bool> bools;
    for (const auto& [t, value] :
         {std::pair{0.0, false}, {1.0, true}, {2.0, false}, {3.0, false}}) {
        bools.set(t, value);
    }
    EXPECT_FALSE(bools.get(0.0));
    EXPECT_TRUE(bools.get(1e-9));
    EXPECT_TRUE(bools.get(1.999));
    EXPECT_FALSE(bools.get(2.0));
    EXPECT_FALSE(bools.get(2.5));

    AVar_Linear<Vector3d> vectors;
    vectors.set(0, {0, 10, -4});
    vectors.set(2, {4, 0, -4});
    EXPECT_EQ(vectors.get(0.5), (Vector3d{1, 7.5, -4}));
}

TEST(AVar, setEntersReplacesAndInserts)
{
    AVar_Latest<int> line;
    for (const double t : {2.0, 4.0, 3.0, 1.0, 3.0, 4.0, 5.0}) {
        int& stored = line.set(t, static_cast<int>(line.size()) * 100 + static_cast<int>(t));
        EXPECT_EQ(line.get(t), stored);
        stored += 1000; // the reference is to the record
    }
    EXPECT_THAT(timesOf(line), testing::ElementsAre(1, 2, 3, 4, 5));
    std::vector<int> values;
    for (const auto& record : line.records()) {
        values.push_back(record.value);
    }
    EXPECT_THAT(values, testing::ElementsAre(1301, 1002, 1403, 1404, 1405));
}

TEST(AVar, cutsKeepWhatIsBefore)
{
    struct Case
    {
        double t;
        std::size_t from, behind; // records left
    };
    const Case cases[] = {{-1, 0, 0}, {0, 0, 1},   {0.4, 1, 1}, {0.6, 1, 1}, {1, 1, 2},
                          {2, 2, 3},  {2.5, 3, 3}, {3, 3, 4},   {99, 4, 4}};
    for (const Case& c : cases) {
        AVar_Linear<double> line;
        for (int i = 0; i < 4; ++i) {
            line.set(i, i);
        }
        AVar_Linear<double> other = line;
        line.cutFrom(c.t);
        other.cutBehind(c.t);
        EXPECT_EQ(line.size(), c.from) << c.t;
        EXPECT_EQ(other.size(), c.behind) << c.t;
    }
    AVar_Linear<double> empty;
    empty.cutFrom(0);
    empty.cutBehind(0);
    EXPECT_TRUE(empty.empty());
}

TEST(AVar, truncateNeverGrows)
{
    AVar_Linear<double> line;
    line.set(0, 1);
    line.set(1, 2);
    line.truncate(5);
    EXPECT_EQ(line.size(), 2u);
    EXPECT_EQ(line.get(1.0), 2.0); // leaves the cursor at what is cut next
    line.truncate(1);
    EXPECT_EQ(line.get(1.0), 1.0);
    line.clear();
    EXPECT_EQ(line.get(1.0), 0.0);
    AVar_Linear<double> other(2.0);
    swap(line, other);
    EXPECT_EQ(line.get(1.0), 2.0) << "the default goes along";
}

TEST(AVar, aRetakeUsesTheStorageOfTheTakeBefore)
{
    AVar_Linear<double> line;
    for (int i = 0; i < 1000; ++i) {
        line.set(i, i);
    }
    const auto* const storage = line.records().data();
    line.cutFrom(10.0);
    for (int i = 10; i < 1000; ++i) {
        line.set(i, -i);
    }
    EXPECT_EQ(line.records().data(), storage);
}

/// Index of the last record at or before t by looking at all; -1 before the first.
int lastAtOrBefore(const std::vector<double>& times, double t)
{
    int found = -1;
    for (std::size_t i = 0; i < times.size() && times[i] <= t; ++i) {
        found = static_cast<int>(i);
    }
    return found;
}

TEST(AVar, findsTheSameRecordWhateverWasReadBefore)
{
    // Even, uneven and clustered spacing, each size: what a guess or a cursor may get wrong.
    Random random(1);
    for (int spacing = 0; spacing < 3; ++spacing) {
        for (const int count : {1, 2, 3, 4, 5, 17, 64, 300}) {
            AVar_Latest<int> line;
            std::vector<double> times;
            double t = 0.1;
            for (int i = 0; i < count; ++i) {
                times.push_back(t);
                line.set(t, i);
                const double u = random.next01() + 1e-6;
                t += spacing == 0 ? 0.02 : spacing == 1 ? u : std::pow(u, 12) + 1e-9;
            }
            for (int i = 0; i < 2000; ++i) {
                const auto place =
                    static_cast<std::size_t>(random.below(static_cast<std::uint32_t>(count)));
                const double near = times[place] + random.centred() * 0.05;
                const double at = i % 3 == 0   ? times[place]
                                  : i % 3 == 1 ? near
                                               : t * 1.1 * random.next01();
                const int expected = std::max(lastAtOrBefore(times, at), 0);
                ASSERT_EQ(line.get(at), expected) << "spacing " << spacing << ", " << at;
            }
        }
    }
}

TEST(AVarBlock, isLittleEndianWithoutPadding)
{
    AVar_Latest<int> ints;
    EXPECT_THAT(blockOf(ints),
                testing::ElementsAre(16, 0, 0, 0, 0, 0, 0, 0, 100, 0, 0, 0, 0, 0, 0, 0));
    ints.set(1.0, 0x01020304);
    EXPECT_THAT(blockOf(ints),
                testing::ElementsAre(16, 0, 0, 0, 12, 0, 0, 0, 100, 0, 0, 0, 1, 0, 0, 0, //
                                     0, 0, 0, 0, 0, 0, 0xf0, 0x3f, 4, 3, 2, 1));
}

template <class Line, class T>
void expectRoundTrip(const T& value, std::size_t recordSize)
{
    Line line;
    line.set(-1.5, T{});
    line.set(2.5, value);
    EXPECT_EQ(line.binarySize(), 16 + 2 * recordSize);
    Line back;
    back.set(77, value);
    const Bytes bytes = blockOf(line);
    ASSERT_TRUE(back.load(bytes.data(), bytes.size()));
    EXPECT_EQ(back.size(), 2u);
    EXPECT_EQ(back.get(2.5), value);
    EXPECT_EQ(back.get(-1.5), T{});
}

TEST(AVarBlock, keepsEachType)
{
    expectRoundTrip<AVar_Linear<double>>(0.1, 16);
    expectRoundTrip<AVar_Linear<int>>(-5, 12);
    expectRoundTrip<AVar_Linear<bool>>(true, 9);
    expectRoundTrip<AVar_Latest<unsigned char>>(static_cast<unsigned char>(200), 9);
    expectRoundTrip<AVar_Nearest<Vector3d>>(Vector3d{1, 2, 3}, 32);
    expectRoundTrip<AVar_Nearest<Quatd>>(Quatd{1, 2, 3, 4}, 40);
    expectRoundTrip<AVar_Nearest<QTransformd>>(QTransformd{{1, 2, 3}, {4, 5, 6, 7}}, 64);
}

TEST(AVarBlock, aBufferTooSmallGetsTheHeaderOnly)
{
    AVar_Linear<double> line;
    line.set(1.0, 2.0);
    for (const std::size_t room : {0u, 5u, 12u, 31u}) {
        Bytes bytes(40, 0xee);
        EXPECT_EQ(line.store(bytes.data(), room), 32u);
        for (std::size_t i = std::min<std::size_t>(room, 12); i < bytes.size(); ++i) {
            ASSERT_EQ(bytes[i], 0xee) << room << ' ' << i;
        }
    }
}

TEST(AVarBlock, whatIsNoBlockChangesNothing)
{
    AVar_Linear<double> source;
    source.set(1.0, 5.0);
    source.set(2.0, 6.0);
    const Bytes good = blockOf(source);
    struct Case
    {
        const char* name;
        std::size_t at;
        std::uint32_t field;
    };
    const Case cases[] = {
        {"header size", 0, 17},
        {"body size too small", 4, 16},
        {"body size huge", 4, 0xfffffff0},
        {"version", 8, 101},
        {"count too small", 12, 1},
        {"count huge", 12, 0xffffffff},
        {"count that wraps", 12, 0x10000002},
        {"times fall", 16 + 16 + 4, 0},
        {"time no number", 16 + 4, 0x7ff80000},
    };
    AVar_Linear<double> line;
    line.set(9.0, 9.0);
    const auto expectRefused = [&](const Bytes& bytes, const char* name) {
        EXPECT_FALSE(line.load(bytes.data(), bytes.size())) << name;
        EXPECT_THAT(timesOf(line), testing::ElementsAre(9.0)) << name;
    };
    for (const Case& c : cases) {
        Bytes bytes = good;
        std::memcpy(bytes.data() + c.at, &c.field, 4);
        expectRefused(bytes, c.name);
    }
    for (std::size_t size = 0; size < good.size(); ++size) {
        expectRefused(Bytes(good.begin(), std::next(good.begin(), static_cast<long>(size))),
                      "cut off");
    }
    EXPECT_FALSE(line.load(nullptr, 0));

    Bytes longer = good;
    longer.resize(longer.size() + 7);
    EXPECT_TRUE(line.load(longer.data(), longer.size()));
    EXPECT_THAT(timesOf(line), testing::ElementsAre(1.0, 2.0));
}

} // namespace
} // namespace tvw

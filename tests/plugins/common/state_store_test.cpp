#include "plugins/common/items.h"
#include "plugins/common/scrubbed_parameter.h"
#include "plugins/common/state_store.h"

#include <gtest/gtest.h>

namespace tvw::rgs {

namespace {

struct Values
{
    double stiffness = 5.0;
    double height = 1.0;
    int gear = 2;
    bool on = true;
    std::int32_t count = 7;
};

/// A store over its values, as a tool would have it.
struct Tool
{
    explicit Tool(int version = 0) : store("Tool", version)
    {
        store.stored("stiffness", values.stiffness).formerly("springs");
        height = &store.linear("height", values.height);
        store.nearest("gear", values.gear);
        store.packed("flags", 8).field(values.on).field(values.count).required();
    }
    StateEntry* height = nullptr;
    Values values;
    StateStore store;
};

DataChunk through(DataChunk chunk)
{
    std::size_t size = 0;
    const void* const bytes = chunk.serialize(&size);
    return DataChunk(bytes, size);
}

} // namespace

TEST(StateStore, RecordsAndRestoresAtATime)
{
    Tool tool;
    tool.values = {.stiffness = 9.0, .height = 2.0, .gear = 3};
    tool.store.record(1.0);
    tool.values.height = 4.0;
    tool.values.gear = 4;
    tool.store.record(2.0);
    struct Case
    {
        double time, height;
        int gear;
    };
    constexpr Case kCases[] = {
        {1.0, 2.0, 3}, {1.25, 2.5, 3}, {1.75, 3.5, 4}, {2.0, 4.0, 4}, {9.0, 4.0, 4}};
    for (const Case& row : kCases) {
        tool.store.restore(row.time);
        EXPECT_DOUBLE_EQ(tool.values.height, row.height) << row.time;
        EXPECT_EQ(tool.values.gear, row.gear) << row.time;
        EXPECT_EQ(tool.values.stiffness, 9.0) << "is not animated";
    }
    tool.store.cutBehind(1.0);
    tool.store.restore(2.0);
    EXPECT_EQ(tool.values.height, 2.0);
    tool.store.reset();
    EXPECT_EQ(tool.values.height, 1.0);
    EXPECT_EQ(tool.values.gear, 2);
}

TEST(StateStore, LongTakesAreWholeWhenTheyAreReadCutOrSaved)
{
    struct Wide
    {
        double part[9];
    };
    double height = 0.0;
    Wide wide{};
    StateStore store("Tool");
    auto& heights = store.nested("Wheel").linear("height", height);
    auto& wides = store.latest("wide", wide);
    const auto recordUpTo = [&](int first, int last, double factor) {
        for (int i = first; i <= last; ++i) {
            height = wide.part[8] = factor * i;
            store.record(i);
        }
    };
    const auto expectLine = [&](int count, double factor) {
        ASSERT_EQ(heights.curve().size(), count);
        ASSERT_EQ(wides.curve().size(), count);
        for (int i = 0; i < count; ++i) {
            EXPECT_EQ(heights.curve().get(i), factor * i) << i;
            EXPECT_EQ(wides.curve().get(i).part[8], factor * i) << i;
        }
    };
    recordUpTo(0, 36, 2.0);
    expectLine(37, 2.0); // read in the middle of a take, which goes on
    recordUpTo(37, 50, 2.0);
    store.cutBehind(40.0);
    expectLine(41, 2.0);
    recordUpTo(30, 45, 2.0); // once more over a part of it
    store.restore(43.5);
    EXPECT_EQ(height, 87.0);

    const DataChunk saved = through(store.saveRoot());
    recordUpTo(46, 47, 2.0);
    ASSERT_TRUE(store.loadRoot(saved));
    expectLine(46, 2.0);
}

TEST(StateStore, ReadsBackWhatItWrote)
{
    for (const int version : {0, 104}) {
        Tool written(version);
        written.values = {.stiffness = 9.0, .height = 2.0, .gear = 3, .on = false, .count = -1};
        written.store.record(1.0);
        Tool read(version);
        ASSERT_TRUE(read.store.loadRoot(through(written.store.saveRoot()))) << version;
        read.store.restore(1.0);
        EXPECT_EQ(read.values.stiffness, 9.0);
        EXPECT_EQ(read.values.height, 2.0);
        EXPECT_EQ(read.values.gear, 3);
        EXPECT_FALSE(read.values.on);
        EXPECT_EQ(read.values.count, -1);
    }
}

TEST(StateStore, TakesOlderNamesAndRefusesWhatIsNotItsOwn)
{
    const auto member = [](const char* name, std::size_t size) {
        const std::vector<std::byte> zeros(size);
        return DataChunk(name, zeros.data(), size);
    };
    struct Case
    {
        const char *name, *word;
        std::vector<DataChunk> members;
        bool taken;
    };
    const Case cases[] = {
        {"no state at all", "", {}, true},
        {"the required member alone", "Tool", {member("flags", 8)}, true},
        {"another word", "Pear", {member("flags", 8)}, false},
        {"a version where none belongs", "Tool104", {member("flags", 8)}, false},
        {"the required member is missing", "Tool", {member("stiffness", 8)}, false},
        {"a packed member of another size", "Tool", {member("flags", 4)}, false},
        {"a damaged time line", "Tool", {member("flags", 8), member("height", 3)}, false},
        {"an unknown member", "Tool", {member("flags", 8), member("pear", 3)}, true},
    };
    for (const Case& row : cases) {
        DataChunk root(row.word, nullptr, 0);
        for (const DataChunk& part : row.members)
            root.addMember(part);
        Tool tool;
        EXPECT_EQ(tool.store.loadRoot(root), row.taken) << row.name;
    }

    DataChunk old("Tool", nullptr, 0);
    old.addMember(member("flags", 8));
    old.addValue("springs", 3.0);
    Tool tool;
    ASSERT_TRUE(tool.store.loadRoot(old));
    EXPECT_EQ(tool.values.stiffness, 3.0);

    constexpr std::pair<const char*, bool> kVersions[] = {
        {"Tool100", true}, {"Tool250", true}, {"Tool99", false}, {"Tool", false}, {"Toolx", false}};
    for (const auto& [word, taken] : kVersions) {
        DataChunk root(word, nullptr, 0);
        root.addMember(member("flags", 8));
        Tool versioned(104);
        EXPECT_EQ(versioned.store.loadRoot(root), taken) << word;
    }
}

TEST(StateStore, NestedStoresAreMembers)
{
    double x = 1.0;
    StateStore outer("Outer");
    outer.nested("Wheel").stored("x", x);
    const DataChunk saved = through(outer.saveRoot());
    x = 5.0;
    ASSERT_TRUE(outer.loadRoot(saved));
    EXPECT_EQ(x, 1.0);
    x = 5.0;
    ASSERT_TRUE(outer.loadRoot(DataChunk("Outer", nullptr, 0)));
    EXPECT_EQ(x, 5.0) << "a missing one leaves its variables alone";
}

TEST(ScrubbedParameter, IsItselfAgainWhenItSettles)
{
    double spinner = 1.0;
    ScrubbedParameter wanted(spinner);
    wanted.settle();
    EXPECT_EQ(spinner, 1.0);
    wanted.show(5.0);
    wanted.show(6.0);
    EXPECT_EQ(spinner, 6.0);
    wanted.settle();
    EXPECT_EQ(spinner, 1.0);

    wanted.show(5.0);
    spinner = 3.0; // the user's hand
    wanted.touched();
    wanted.settle();
    EXPECT_EQ(spinner, 3.0);
    wanted.show(7.0);
    wanted.settle();
    EXPECT_EQ(spinner, 3.0);
}

namespace {

struct S
{
    double speed = 1.0;
    std::int32_t mode = 1;
};
using I = Items<S>;
constexpr std::string_view kModes[] = {"Slow", "Fast"};

template <class... Row>
constexpr bool sound(const Row&... rows)
{
    return isSound(std::array<Item<S>, sizeof...(Row)>{rows...});
}

constexpr Item<S> speed(std::string_view label, Bounds bounds, std::string_view owner = {})
{
    return I::spinner<&S::speed>(label, "", bounds, kPlain, owner);
}

static_assert(sound(I::group("A"), speed("x", {0, 2, 1}), I::end(), I::group("B"),
                    speed("x", {0, 2, 1}), I::end()),
              "the same label in two groups");
static_assert(sound(speed("x", {0, 2, 1}, "Left "), speed("x", {0, 2, 1}, "Right ")));
static_assert(!sound(speed("x", {0, 2, 1}), speed("x", {0, 2, 1})), "twice in one group");
static_assert(!sound(speed("x", {0, 2, 1}), I::group("A"), speed("y", {0, 2, 1}), I::end(),
                     speed("x", {0, 2, 1})),
              "twice in one group, another between them");
static_assert(!sound(I::group("A"), I::end(), speed("x", {0, 2, 1}), I::group("A"), I::end()),
              "two groups of one label side by side");
static_assert(sound(I::group("A"), I::group("A"), I::end(), I::end(), speed("A", {0, 2, 1})),
              "one in the other, and an item beside them");
static_assert(!sound(speed("x", {2, 3, 1})), "default below the bounds");
static_assert(!sound(speed("x", {0, 2, 0})), "no step");
static_assert(!sound(I::group("A")), "never ends");
static_assert(!sound(I::end(), I::group("A")), "ends before it begins");
static_assert(sound(I::comboBox<&S::mode>("m", "", kModes)));
static_assert(!sound(I::comboBox<&S::mode>("m", "", std::span(kModes).first(1))),
              "chosen past the end");

} // namespace

} // namespace tvw::rgs

#include "core/math_script.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <string>

namespace tvw::rgs::core {

namespace {

using Script = std::unique_ptr<MathScript, Destroyer>;

class MathScripts : public testing::Test
{
protected:
    MathScripts() { registerMathScriptFactories(); }
    ~MathScripts() override { clearMathScriptFactories(); }

    static Script script(const std::string& xml)
    {
        util::xml::Element element;
        EXPECT_EQ(element.parse(xml), 0) << xml;
        return Script(createMathScript(element));
    }
};

std::string two(const std::string& kind, const char* a, const char* b)
{
    return "<" + kind + "><constant>" + a + "</constant><constant>" + b + "</constant></" + kind +
           ">";
}

std::string one(const std::string& kind, const char* a)
{
    return "<" + kind + "><constant>" + a + "</constant></" + kind + ">";
}

constexpr double kInfinite = std::numeric_limits<double>::infinity();
constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

using Case = std::pair<std::string, double>; // a script, and what it comes to

} // namespace

TEST_F(MathScripts, evaluateEachKind)
{
    const Case cases[] = {
        {"<zero/>", 0.0},
        {"<constant>-2.5e1</constant>", -25.0},
        {"<constant>pear</constant>", 0.0},
        {"<constant/>", 0.0},
        {two("add", "2", "3"), 5.0},
        {two("sub", "2", "3"), -1.0},
        {two("mul", "2", "3"), 6.0},
        {two("div", "3", "2"), 1.5},
        {two("greater", "2", "2"), 0.0},
        {two("greater", "3", "2"), 1.0},
        {two("greater_equal", "2", "2"), 1.0},
        {two("greater_equal", "1", "2"), 0.0},
        {two("less", "2", "2"), 0.0},
        {two("less", "1", "2"), 1.0},
        {two("less_equal", "2", "2"), 1.0},
        {two("less_equal", "3", "2"), 0.0},
        {two("equals", "2", "2"), 1.0},
        {two("equals", "2", "3"), 0.0},
        {two("notequals", "2", "2"), 0.0},
        {two("notequals", "2", "3"), 1.0},
        {two("mod", "-7", "3"), -1.0},
        {two("pow", "2", "10"), 1024.0},
        {two("atan2", "0", "-1"), 3.14159265358979323846},
        {one("atan", "0"), 0.0},
        {one("tan", "0"), 0.0},
        {one("sin", "0"), 0.0},
        {one("cos", "0"), 1.0},
        {one("inv", "4"), 0.25},
        {one("neg", "4"), -4.0},
        {"<sum/>", 0.0},
        {"<sum><constant>1</constant><constant>2</constant><constant>4</constant></sum>", 7.0},
    };
    for (const auto& [xml, expected] : cases) {
        const Script made = script(xml);
        ASSERT_TRUE(made) << xml;
        EXPECT_DOUBLE_EQ(made->evaluate(), expected) << xml;
    }
}

TEST_F(MathScripts, countMissingOperandsAsZeroAndLeaveOutUnknownOnes)
{
    const Case cases[] = {
        {"<add/>", 0.0},
        {one("sub", "3"), 3.0},
        {one("div", "3"), kInfinite},
        {"<div/>", kNone},
        {"<inv/>", kInfinite},
        {"<cos/>", 1.0},
        {"<neg><pear/></neg>", -0.0},
        {"<sum><pear/><constant>2</constant></sum>", 2.0},
        {"<add><constant>1</constant><constant>2</constant><constant>4</constant></add>", 3.0},
    };
    for (const auto& [xml, expected] : cases) {
        const double value = script(xml)->evaluate();
        if (std::isnan(expected))
            EXPECT_TRUE(std::isnan(value)) << xml;
        else
            EXPECT_EQ(value, expected) << xml;
    }
    EXPECT_FALSE(script("<pear/>"));
}

TEST_F(MathScripts, readParametersOfTheRootAlone)
{
    const Case cases[] = {
        {"<parameter>0</parameter>", 10.0},
        {"<parameter>2</parameter>", 30.0},
        {"<parameter>5</parameter>", 0.0},
        {"<parameter>-1</parameter>", 0.0},
        {"<neg><sum><mul><parameter>1</parameter><constant>2</constant></mul></sum></neg>", -40.0},
    };
    for (const auto& [xml, expected] : cases) {
        const Script made = script(xml);
        made->parameters() = {10.0, 20.0, 30.0};
        EXPECT_EQ(made->evaluate(), expected) << xml;
    }

    // A part of a tree reads the whole tree's values; by itself it has none.
    const Script whole = script("<neg><parameter>0</parameter></neg>");
    whole->parameters() = {4.0};
    EXPECT_EQ(whole->childAt(0)->evaluate(), 4.0);
    EXPECT_EQ(script("<parameter>0</parameter>")->evaluate(), 0.0);
}

TEST_F(MathScripts, readBackWhatTheyWrote)
{
    const std::string cases[] = {
        "<sum><mul><parameter>0</parameter><constant>2.5</constant></mul><zero/></sum>",
        "<div><constant>0.1</constant><constant>0.30000000000000004</constant></div>",
        "<sub><neg/></sub>",
    };
    for (const std::string& xml : cases) {
        const Script first = script(xml);
        const std::string written = first->save().fragment();
        const Script second = script(written);
        ASSERT_TRUE(second) << written;
        first->parameters() = second->parameters() = {3.0};
        EXPECT_EQ(first->evaluate(), second->evaluate()) << xml;
        EXPECT_EQ(second->save().fragment(), written);
    }
}

} // namespace tvw::rgs::core

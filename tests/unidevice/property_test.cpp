#include "device_fixture.h"
#include "unidevice/property_handler.h"

#include <cmath>
#include <string>

namespace tvw::unidevice {

namespace {

TEST(Property, ShapesTheRawValue)
{
    struct Case
    {
        const char* name;
        double raw, deadzone, exponent, multiplier, offset, expected;
    };
    constexpr Case kCases[] = {
        {"full deflection stays full", 1.0, 0.1, 1.0, 1.0, 0.0, 1.0},
        {"the edge of the dead zone is still rest", 0.1, 0.1, 1.0, 1.0, 0.25, 0.25},
        {"half of what the dead zone leaves", 0.6, 0.2, 1.0, 1.0, 0.0, 0.5},
        {"the sign comes back after the exponent", -1.0, 0.1, 2.0, 3.0, 0.5, -2.5},
        {"an exponent below 1 on a negative value", -0.25, 0.0, 0.5, 2.0, 0.0, -1.0},
        {"a negative multiplier turns it round", 0.5, 0.0, 1.0, -2.0, 0.0, -1.0},
        {"the offset is not multiplied", 0.0, 0.1, 1.0, 5.0, 1.0, 1.0},
        {"rest to the power of 0 is full", 0.0, 0.1, 0.0, 3.0, 0.5, 3.5},
    };
    for (const Case& c : kCases) {
        Control control(nullptr, kind::any, 0.1);
        control.read(c.raw);
        Property property("Gas", 7);
        property.bind(&control);
        property.deadzone = c.deadzone;
        property.exponent = c.exponent;
        property.multiplier = c.multiplier;
        property.offset = c.offset;
        EXPECT_NEAR(property.value(), c.expected, 1e-15) << c.name;
    }
    Property property("Gas", 7);
    property.deadzone = 1.0;
    EXPECT_TRUE(std::isnan(property.value()));
}

TEST(Property, BindingSaysWhetherTheKindsFit)
{
    Control button(nullptr, kind::binary, 0.1);
    Property axis("Steering", kind::trinary | kind::analogue);
    EXPECT_EQ(axis.bind(&button), 0u);
    EXPECT_EQ(axis.control(), &button) << "the binding stands";
    EXPECT_EQ(axis.bind(nullptr), kind::any);
    Property any("Horn", 7);
    EXPECT_EQ(any.bind(&button), kind::binary);
}

TEST(Property, LosesAControlThatGoes)
{
    Property first("First", 7);
    Property second("Second", 7);
    {
        Control control(nullptr, kind::any, 0.1);
        control.read(1.0);
        first.bind(&control);
        second.bind(&control);
        {
            Property brief("Brief", 7);
            brief.bind(&control);
        }
        first.bind(&control);
        EXPECT_EQ(second.value(), 1.0);
    }
    EXPECT_EQ(first.control(), nullptr);
    EXPECT_EQ(second.value(), 0.0);
}

struct Standard final : Property::Factory
{
};

class HandlerTest : public DeviceTest
{
protected:
    HandlerTest()
    {
        gas = inputs.addProperty("Gas", 7, factory);
        steering = inputs.addProperty("Steering", 6, factory);
    }

    std::string written(const char* name = "Mine") const
    {
        util::xml::Element profile;
        inputs.writeProfile(profile, name);
        return profile.fragment();
    }

    int read(const char* text) { return inputs.readProfile(parsed(text), profileName); }

    Standard factory;
    PropertyHandler inputs;
    Property* gas;
    Property* steering;
    std::string profileName = "before";
};

TEST_F(HandlerTest, AProfileReturnsAsItWasWritten)
{
    auto* const pad = new ScriptedDevice("Pad", {.axes = 1});
    gas->bind(pad->controlAt(0));
    gas->multiplier = -1.0;
    gas->exponent = 1.3;
    gas->offset = 1.0 / 3.0;
    const std::string expected = parsed(R"(<profile name="Mine"><property name="Gas">
        <multiplier>-1</multiplier><exponent>1.3</exponent><deadzone>0.1</deadzone>
        <offset>0.333333</offset><control device="Pad" type="Axis" index="0">
        <description>Axis 1</description></control></property><property name="Steering">
        <multiplier>1</multiplier><exponent>1</exponent><deadzone>0.1</deadzone>
        <offset>0</offset></property></profile>)")
                                     .fragment();
    EXPECT_EQ(written(), expected);

    gas->bind(nullptr);
    gas->multiplier = 9.0;
    EXPECT_EQ(read(expected.c_str()), 0);
    EXPECT_EQ(profileName, "Mine");
    EXPECT_EQ(written(), expected);
}

TEST_F(HandlerTest, WhatAProfileLacksKeepsItsNumbersAndLosesItsControl)
{
    auto* const pad = new ScriptedDevice("Pad", {.axes = 2});
    const auto bindBoth = [&] {
        gas->bind(pad->controlAt(0));
        steering->bind(pad->controlAt(1));
        gas->multiplier = steering->multiplier = 2.0;
    };
    bindBoth();
    EXPECT_EQ(read(R"(<profile name="[current]"/>)"), 0);
    EXPECT_EQ(gas->control(), nullptr);
    EXPECT_EQ(steering->control(), nullptr);
    EXPECT_EQ(gas->multiplier, 2.0);

    bindBoth();
    EXPECT_EQ(
        read(R"(<inputprofile><profile><property name="Brake"><control type="Axis"/></property>
        <property name="Gas"><multiplier/><exponent>half</exponent><offset>0.5</offset>
        <control type="Axis" index="1"/></property></profile></inputprofile>)"),
        0);
    EXPECT_EQ(profileName, "[current]") << "a profile without a name changes none";
    EXPECT_EQ(gas->control(), pad->controlAt(1));
    EXPECT_EQ(gas->multiplier, 2.0);
    EXPECT_EQ(gas->exponent, 1.0);
    EXPECT_EQ(gas->offset, 0.5);
    EXPECT_EQ(steering->control(), nullptr);
}

TEST_F(HandlerTest, RefusesWhatIsNoProfile)
{
    auto* const pad = new ScriptedDevice("Pad", {.axes = 1});
    gas->bind(pad->controlAt(0));
    EXPECT_EQ(inputs.readProfile(util::xml::Element(), profileName), PropertyHandler::kNoProfile);
    EXPECT_EQ(read(R"(<unidevice><profile name="x"/></unidevice>)"), PropertyHandler::kNoProfile);
    EXPECT_EQ(gas->control(), pad->controlAt(0));
    EXPECT_EQ(profileName, "before");
}

TEST_F(HandlerTest, ABindingOfAnAbsentDeviceIsSavedAsItCame)
{
    const char* const kAbsent = R"(<profile name="Mine"><property name="Gas">
        <control device="Yoke" devindex="1" index="4" type="Axis" made="elsewhere">
        <description>Throttle</description></control></property></profile>)";
    EXPECT_EQ(read(kAbsent), 1);
    EXPECT_EQ(gas->control(), nullptr);
    const auto controlIn = [](const util::xml::Element& profile) {
        return profile.child("property").child("control").fragment();
    };
    EXPECT_EQ(controlIn(parsed(written().c_str())), controlIn(parsed(kAbsent)));
    EXPECT_EQ(read(R"(<profile name="Mine"><property name="Gas"/></profile>)"), 0);
    EXPECT_EQ(written().find("Yoke"), std::string::npos);
}

TEST_F(HandlerTest, ADeviceThatReturnsGetsItsBindingsBack)
{
    auto* const keys = new KeyboardDevice;
    auto* const emulator = new EmulatedTrinaryDevice;
    auto* pad = new ScriptedDevice("Pad", {.axes = 1, .buttons = 1});
    gas->bind(pad->controlAt(0));
    steering->bind(emulator->createEmulated(pad->controlAt(1), keys->controlOfKey(37)));
    const std::string before = written();

    pad->destroy();
    EXPECT_EQ(gas->control(), nullptr);
    EXPECT_EQ(steering->control(), nullptr);
    EXPECT_EQ(gas->value(), 0.0);
    EXPECT_EQ(written(), before) << "what is saved meanwhile loses nothing";

    new ScriptedDevice("Wheel", {.axes = 1});
    EXPECT_EQ(gas->control(), nullptr) << "another device is not taken for it";

    pad = new ScriptedDevice("Pad", {.axes = 1, .buttons = 1});
    EXPECT_EQ(gas->control(), pad->controlAt(0));
    pad->set("Button", 0, 1.0);
    hub().updateAll();
    EXPECT_EQ(steering->raw(), 1.0);
    EXPECT_EQ(written(), before);
}

TEST_F(HandlerTest, ABindingMadeMeanwhileStays)
{
    auto* const pad = new ScriptedDevice("Pad", {.axes = 1});
    auto* const wheel = new ScriptedDevice("Wheel", {.axes = 1});
    gas->bind(pad->controlAt(0));
    pad->destroy();
    gas->bind(wheel->controlAt(0));
    new ScriptedDevice("Pad", {.axes = 1});
    EXPECT_EQ(gas->control(), wheel->controlAt(0));
}

} // namespace

} // namespace tvw::unidevice

#include "device_fixture.h"

#include <limits>
#include <vector>

namespace tvw::unidevice {

namespace {

/// Notes who tells it.
struct Target final : ControlTarget
{
    void controlDeleted(Control* control) override { lost.push_back(control); }
    std::vector<Control*> lost;
};

TEST_F(DeviceTest, AStoredControlMeansTheFirstThatFits)
{
    new KeyboardDevice;
    auto* const small = new ScriptedDevice("Pad", {.axes = 2, .buttons = 8});
    auto* const big = new ScriptedDevice("Pad", {.axes = 3, .hats = 2, .buttons = 12});
    auto* const wheel = new ScriptedDevice("Wheel", {.axes = 1});
    ASSERT_EQ(big->devIndex(), 1);

    struct Case
    {
        const char* element;
        const Device* device;
        const char* description;
    };
    const Case kCases[] = {
        {R"(<control device="" index="8" type="Button"/>)", big, "Button 9"},
        {R"(<control index="1" type="Axis"/>)", small, "Axis 2"},
        {R"(<control device="Pad" index="2" type="Axis"/>)", big, "Axis 3"},
        {R"(<control device="Pad" devindex="1" index="0" type="Axis"/>)", big, "Axis 1"},
        {R"(<control devindex="1" index="0" type="Axis"/>)", big, "Axis 1"},
        {R"(<control devindex="0" index="1" type="Axis"/>)", small, "Axis 2"},
        {R"(<control device="Wheel" type="Axis"/>)", wheel, "Axis 1"},
        {R"(<control device="" index="1" type="Hat"/>)", big, "Hat 1 (Y axis)"},
        {R"(<control device="Wheel" index="1" type="Axis"/>)", nullptr, ""},
        {R"(<control device="Pad" devindex="2" index="0" type="Axis"/>)", nullptr, ""},
        {R"(<control device="Pad" devindex="one" index="0" type="Axis"/>)", nullptr, ""},
        {R"(<control device="pad" index="0" type="Axis"/>)", nullptr, ""},
        {R"(<control device="Pad" index="0" type="axis"/>)", nullptr, ""},
        {R"(<control device="Pad" index="0"/>)", nullptr, ""},
    };
    for (const Case& c : kCases) {
        const Control* const found = find(c.element);
        ASSERT_EQ(found != nullptr, c.device != nullptr) << c.element;
        if (!found)
            continue;
        EXPECT_EQ(found->device, c.device) << c.element;
        EXPECT_EQ(found->description, c.description) << c.element;
    }
}

TEST_F(DeviceTest, WhatAControlWritesFindsItAgain)
{
    new ScriptedDevice("Pad", {.axes = 2});
    auto* const second = new ScriptedDevice("Pad", {.axes = 2});
    util::xml::Element element;
    second->controlAt(1)->writeXml(element);
    EXPECT_EQ(element.fragment(),
              parsed(R"(<control device="Pad" devindex="1" type="Axis" index="1">
        <description>Axis 2</description></control>)")
                  .fragment());
    EXPECT_EQ(hub().findControl(element), second->controlAt(1));
}

TEST_F(DeviceTest, TheStrongestMovementIsDetectedAndTheFirstOfEqualOnes)
{
    auto* const first = new ScriptedDevice("First", {.axes = 3, .buttons = 1});
    auto* const second = new ScriptedDevice("Second", {.axes = 1});
    struct Case
    {
        const char* name;
        double values[4]; ///< of First's three axes and Second's axis, from rest
        const Control* moved;
    };
    const Case kCases[] = {
        {"nothing moved", {0, 0, 0, 0}, nullptr},
        {"a change of the threshold itself is none", {0.1, 0, 0, 0}, nullptr},
        {"just more is one", {0.1000001, 0, 0, 0}, first->controlAt(0)},
        {"the direction does not count", {0.2, -0.4, 0.3, 0}, first->controlAt(1)},
        {"a tie in one device", {0, 0.5, -0.5, 0}, first->controlAt(1)},
        {"a tie between devices", {0, 0, 0.5, 0.5}, first->controlAt(2)},
        {"the strongest of all devices", {0.5, 0, 0, -0.75}, second->controlAt(0)},
    };
    for (const Case& c : kCases) {
        for (int i = 0; i < 3; ++i)
            first->set("Axis", i, 0.0);
        second->set("Axis", 0, 0.0);
        EXPECT_TRUE(hub().prepareAll()) << c.name;
        for (int i = 0; i < 3; ++i)
            first->set("Axis", i, c.values[i]);
        second->set("Axis", 0, c.values[3]);
        EXPECT_EQ(hub().detectControl(nullptr), c.moved) << c.name;
    }

    first->set("Button", 0, 1.0);
    second->set("Axis", 0, 0.5);
    const ExcludeList exclude{first->controlAt(3)};
    EXPECT_EQ(hub().detectControl(&exclude), second->controlAt(0));
}

TEST_F(DeviceTest, WhereALeverStandsAtTheBeginningIsNoMovement)
{
    auto* const pad = new ScriptedDevice("Pad", {.axes = 1});
    pad->set("Axis", 0, -1.0);
    EXPECT_FALSE(pad->set("Axis", 0, std::numeric_limits<double>::quiet_NaN()));
    EXPECT_FALSE(pad->set("Axis", 1, 1.0)) << "it has one";
    hub().resetAll();
    EXPECT_TRUE(hub().prepareAll());
    EXPECT_EQ(hub().detectControl(nullptr), nullptr);
}

TEST_F(DeviceTest, TheEmulatorAloneIsNoDevice)
{
    EXPECT_EQ(hub().detectControl(nullptr), nullptr);
    EXPECT_TRUE(hub().acquireAll());
    new EmulatedTrinaryDevice;
    EXPECT_FALSE(hub().prepareAll());
    EXPECT_EQ(hub().detectControl(nullptr), nullptr);
}

TEST_F(DeviceTest, ADeviceKeepsItsPlaceAndItsNumberIsTheFirstFreeOne)
{
    auto* const a = new ScriptedDevice("Pad", {.axes = 1});
    auto* const b = new ScriptedDevice("Pad", {.axes = 1});
    auto* const c = new ScriptedDevice("Pad", {.axes = 1});
    EXPECT_EQ(c->devIndex(), 2);
    const int place = hub().deviceIndex(b);
    hub().removeDevice(b);
    EXPECT_EQ(hub().deviceIndex(b), -1);
    EXPECT_EQ(hub().deviceIndex(c), 1);
    hub().addDevice(b, place);
    EXPECT_EQ(hub().deviceIndex(b), 1);
    EXPECT_EQ(hub().deviceIndex(c), 2);
    a->destroy();
    EXPECT_EQ((new ScriptedDevice("Pad", {.axes = 1}))->devIndex(), 0);
}

TEST_F(DeviceTest, ADeviceThatLeavesTellsWhoReadsItOnce)
{
    auto* const pad = new ScriptedDevice("Pad", {.axes = 1, .buttons = 1});
    Target target;
    Control* const axis = pad->controlAt(0);
    Control* const button = pad->controlAt(1);
    axis->addTarget(&target);
    button->addTarget(&target);
    hub().removeDevice(pad);
    EXPECT_EQ(target.lost, (std::vector{axis, button}));
    pad->destroy();
    EXPECT_EQ(target.lost.size(), 2u);
    EXPECT_EQ(hub().findDriver("dummydriver")->deviceCount(), 0);
}

TEST_F(DeviceTest, ACopyOfAControlHasNoTargets)
{
    Target target;
    {
        Control original(nullptr, kind::analogue, 0.1);
        original.addTarget(&target);
        const Control copy(original);
    }
    EXPECT_EQ(target.lost.size(), 1u);
}

class EmulatedTest : public DeviceTest
{
protected:
    KeyboardDevice* keys = new KeyboardDevice;
    EmulatedTrinaryDevice* emulator = new EmulatedTrinaryDevice;
    Control* right = keys->controlOfKey(39);
    Control* left = keys->controlOfKey(37);
};

TEST_F(EmulatedTest, IsTheDifferenceOfItsParts)
{
    keys->acquire(nullptr);
    Control* const steering = emulator->createEmulated(right, left);
    struct Case
    {
        bool right, left;
        double value;
    };
    for (const Case& c :
         {Case{false, false, 0}, {true, false, 1}, {false, true, -1}, {true, true, 0}}) {
        keys->keyEvent(39, c.right);
        keys->keyEvent(37, c.left);
        EXPECT_EQ(steering->value(), c.value) << c.right << c.left;
    }
    EXPECT_EQ(steering->description,
              "emulated control (Keyboard:Right_Arrow, Keyboard:Left_Arrow)");
    EXPECT_EQ(emulator->createEmulated(right, left), steering) << "an equal one is there";
    EXPECT_NE(emulator->createEmulated(left, right), steering) << "the other way round";
    EXPECT_EQ(emulator->createEmulated(right, nullptr), nullptr);
    EXPECT_EQ(emulator->controlCount(), 2);
}

TEST_F(EmulatedTest, AStoredOneIsMadeOnDemandInEitherOrder)
{
    const char* const kForward = R"(<control device="TrinaryEmulator" type="control" index="0">
        <control device="Keyboard" type="Right_Arrow" index="0" te_direction="positive"/>
        <control device="Keyboard" type="Left_Arrow" index="0" te_direction="negative"/></control>)";
    const char* const kSwapped = R"(<control device="TrinaryEmulator" type="control" index="0">
        <control device="Keyboard" type="Left_Arrow" index="0" te_direction="negative"/>
        <control device="Keyboard" type="Right_Arrow" index="0" te_direction="positive"/></control>)";
    Control* const swapped = find(kSwapped);
    ASSERT_NE(swapped, nullptr);
    keys->acquire(nullptr);
    keys->keyEvent(39, true);
    EXPECT_EQ(swapped->value(), 1.0);
    EXPECT_EQ(find(kForward), swapped);
    EXPECT_EQ(find(R"(<control device="TrinaryEmulator" type="control" index="0">
        <control device="Keyboard" type="Left_Arrow" te_direction="negative"/></control>)"),
              nullptr);
    EXPECT_EQ(find(R"(<control device="TrinaryEmulator" type="control" index="0">
        <control device="Keyboard" type="Left_Arrow" te_direction="negative"/>
        <control device="Pad" type="Axis" index="0" te_direction="positive"/></control>)"),
              nullptr);
    EXPECT_EQ(emulator->controlCount(), 1);
}

TEST_F(EmulatedTest, OutlivesItsParts)
{
    auto* const pad = new ScriptedDevice("Pad", {.buttons = 1});
    new ScriptedDevice("Pad", {.buttons = 1});
    Control* const button = hub().findDevice("Pad", 1)->controlAt(0);
    Control* const mixed = emulator->createEmulated(button, right);
    EXPECT_EQ(mixed->description, "emulated control (Pad(1):Button 1, Keyboard:Right_Arrow)");
    keys->acquire(nullptr);
    keys->keyEvent(39, true);
    EXPECT_EQ(mixed->value(), -1.0);
    hub().findDevice("Pad", 1)->destroy();
    EXPECT_EQ(mixed->value(), 0.0);
    util::xml::Element element;
    mixed->writeXml(element);
    EXPECT_EQ(element.childCount("control"), 1u);
    EXPECT_FALSE(mixed->matches(element));
    EXPECT_NE(emulator->createEmulated(pad->controlAt(0), right), mixed);
}

TEST_F(DeviceTest, KeysHaveTheNamesThatProfilesUse)
{
    auto* const keys = new KeyboardDevice;
    constexpr std::pair<int, const char*> kCases[] = {
        {13, "RETUR"}, {17, "CTRL"},   {32, "Space"},      {33, "Page_UP"}, {38, "Up_Arrow"},
        {48, "0"},     {57, "9"},      {65, "A"},          {87, "W"},       {90, "Z"},
        {96, "Num_0"}, {104, "Num_8"}, {105, "Num_9"},     {106, "Num_*"},  {110, "Num_,"},
        {112, "F1"},   {135, "F24"},   {164, "Left_MENU"}, {187, "+"},      {188, ","},
        {189, "-"},    {190, "."},
    };
    for (const auto& [code, name] : kCases) {
        const Control* const key = keys->controlOfKey(code);
        ASSERT_NE(key, nullptr) << name;
        EXPECT_EQ(key->type, name);
        EXPECT_EQ(key->index, 0) << name;
    }
    for (const int code : {-1, 0, 58, 64, 91 + 2, 108, 136, 255, 256})
        EXPECT_EQ(keys->controlOfKey(code), nullptr) << code;
    // 34 named singly, and 10 digits, 26 letters, 10 digits and 24 function keys.
    EXPECT_EQ(keys->controlCount(), 34 + 10 + 26 + 10 + 24);
}

TEST_F(DeviceTest, KeysCountWhileTheKeyboardIsAcquired)
{
    auto* const keys = new KeyboardDevice;
    const Control* const space = keys->controlOfKey(32);
    keys->keyEvent(32, true);
    EXPECT_EQ(space->current, 0.0);
    EXPECT_TRUE(hub().prepareAll());
    keys->keyEvent(32, true);
    EXPECT_EQ(hub().detectControl(nullptr), space);
    keys->keyEvent(32, false);
    EXPECT_EQ(space->previous, 1.0);
    EXPECT_EQ(space->current, 0.0);
    keys->keyEvent(32, true);
    keys->releaseAll();
    EXPECT_EQ(space->current, 0.0);
    keys->keyEvent(500, true);
    hub().releaseAll();
    keys->keyEvent(32, true);
    EXPECT_EQ(space->current, 0.0);
}

} // namespace

} // namespace tvw::unidevice

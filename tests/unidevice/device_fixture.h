/// A hub with its driver, and what tests put into it.
#pragma once

#include "unidevice/device_hub.h"
#include "unidevice/emulated_trinary_device.h"
#include "unidevice/keyboard_device.h"
#include "unidevice/scripted_device.h"
#include "util/xml/element.h"

#include <gtest/gtest.h>

namespace tvw::unidevice {

class DeviceTest : public ::testing::Test
{
protected:
    DeviceTest()
    {
        DeviceHub::end();
        new DummyDriver("dummydriver");
    }
    ~DeviceTest() override { DeviceHub::end(); }

    DeviceHub& hub() { return DeviceHub::instance(); }

    static util::xml::Element parsed(const char* text)
    {
        util::xml::Element element;
        EXPECT_EQ(element.parse(text), util::xml::code::ok) << text;
        return element;
    }

    Control* find(const char* text) { return hub().findControl(parsed(text)); }
};

} // namespace tvw::unidevice

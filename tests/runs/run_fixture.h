/// A session with a pad, and what a take is compared by.
#pragma once

#include "adaptor/stage/session.h"
#include "adaptor/stage/tool_items.h"
#include "core/core_implementation.h"
#include "core/instance.h"
#include "core/instance_reference.h"
#include "unidevice/scripted_device.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tvw::rgs::tests {

/// All keys of a node: its times and local matrices, and of a camera its lens, to the bit.
struct Keys
{
    std::vector<double> times;
    std::vector<Matrix4> poses;
    std::vector<double> lens{}; ///< times and values in turn: fields of view, then target distances
    bool operator==(const Keys&) const = default;
};

class RunTest : public testing::Test
{
protected:
    void open(double fps = 25.0)
    {
        auto started = stage::Session::start({.framesPerSecond = fps, .isolated = true});
        ASSERT_TRUE(started) << started.reason();
        session = *std::move(started);
        pad = &session->addDevice("Pad", {.axes = 2, .buttons = 2});
    }

    core::Instance& create(const std::string& type, core::InstanceReference* parent = nullptr)
    {
        auto made = session->create(type, {}, parent);
        EXPECT_TRUE(made) << made.reason();
        return (*made)->instance();
    }

    static void set(core::Instance& tool, const std::string& label, double value)
    {
        auto item = stage::findToolItem(tool, label);
        ASSERT_TRUE(item) << item.reason();
        const Status done = stage::setToolItem(*item, value);
        ASSERT_TRUE(done) << done.reason();
    }

    static double get(core::Instance& tool, const std::string& label)
    {
        auto item = stage::findToolItem(tool, label);
        EXPECT_TRUE(item) << item.reason();
        return item ? item->node->value() : std::nan("");
    }

    void bindAxis(core::Instance& tool, const std::string& input, int axis)
    {
        tool.properties().findProperty(input)->bind(pad->controlAt(axis));
    }

    /// A take of that length; `hand` moves the pad before each frame.
    void record(double seconds, std::function<void(double)> hand = {}, int countdown = 1)
    {
        const Status done = session->record(
            {.seconds = seconds, .beforeFrame = std::move(hand), .countdown = countdown});
        ASSERT_TRUE(done) << done.reason();
    }

    void resimulate(double from, double to)
    {
        const Status done = session->resimulate(from, to);
        ASSERT_TRUE(done) << done.reason();
    }

    stage::StageNode& node(core::Instance& tool, const std::string& name)
    {
        return static_cast<stage::NodeHandle*>(tool.findNode(name))->node();
    }

    static Keys keysOf(const stage::StageNode& node)
    {
        Keys keys{node.poseKeyTimes(), {}};
        for (const double time : keys.times)
            keys.poses.push_back(node.local(time));
        for (const auto* const track : {&node.fovKeys(), &node.targetDistanceKeys()}) {
            for (std::size_t i = 0; i < track->size(); ++i) {
                keys.lens.push_back(static_cast<double>(track->key(i).time));
                keys.lens.push_back(track->key(i).value);
            }
        }
        return keys;
    }

    /// The keys of every node of the scene, by name.
    std::map<std::string, Keys> allKeys()
    {
        std::map<std::string, Keys> all;
        for (const stage::StageNode* const each : session->stage().nodes())
            all[each->name()] = keysOf(*each);
        return all;
    }

    std::unique_ptr<stage::Session> session;
    unidevice::ScriptedDevice* pad = nullptr;
};

/// A hand that is never still and never repeats within a take.
inline double wobble(double time)
{
    return 0.9 * std::sin(1.3 * time) * std::cos(0.37 * time + 0.2);
}

} // namespace tvw::rgs::tests

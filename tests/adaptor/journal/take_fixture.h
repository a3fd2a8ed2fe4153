/// A Sinusoid that a scripted pad drives, and the folder of a user who may lose a take.
#pragma once

#include "adaptor/stage/lost_takes.h"
#include "adaptor/stage/session.h"
#include "core/instance.h"
#include "core/instance_reference.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tvw::rgs::stage {

class TakeTest : public testing::Test
{
protected:
    std::unique_ptr<Session> start(bool isolated = false) const
    {
        auto session = Session::start({.userFolder = folder_, .isolated = isolated});
        EXPECT_TRUE(session) << session.reason();
        return *std::move(session);
    }

    /// 8 s at 25 frames per second from the time 1 s, with the amplitude's input swung.
    static Status perform(Session& session, const std::function<void(double)>& inFrame = {})
    {
        core::Instance& tool = (*session.create("Sinusoid", "Wave"))->instance();
        unidevice::ScriptedDevice& pad = session.addDevice("Pad", {.axes = 1});
        tool.properties().findProperty("Spinner: Amplitude")->bind(pad.controlAt(0));
        pad.set("Axis", 0, 0.75);
        session.stage().setTime(1.0);
        Session::Take take;
        take.seconds = 8.0;
        take.beforeFrame = [&](double time) {
            pad.set("Axis", 0, std::sin(3.0 * time));
            if (inFrame)
                inFrame(time);
        };
        return session.record(take);
    }

    /// Times and elements of the keys up to `end`.
    static std::vector<double> keys(Session& session, double end)
    {
        std::vector<double> all;
        StageNode* const node = session.stage().find("Wave_SinusNode");
        if (!node)
            return all;
        node->poseKeys().forEach([&](const TrackKey<Matrix4>& key) {
            if (key.time > toFlicks(end))
                return;
            all.push_back(toSeconds(key.time));
            all.insert(all.end(), key.value.m, key.value.m + 16);
        });
        return all;
    }

    std::size_t journalFiles() const
    {
        const std::filesystem::path journal = folder_ + "/journal";
        if (!std::filesystem::exists(journal))
            return 0;
        return std::distance(std::filesystem::directory_iterator(journal), {});
    }

    tests::TemporaryFolder temporary_;
    const std::string folder_ = temporary_.path();
};

} // namespace tvw::rgs::stage

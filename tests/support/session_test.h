/// A session in a folder of its own, with the tiny tool in its library.
#pragma once

#include "adaptor/stage/session.h"
#include "core/core_implementation.h"
#include "core/instance.h"
#include "core/instance_reference.h"
#include "core/library_manager.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/tiny_tool.h"
#include "util/file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace tvw::rgs::tests {

class SessionTest : public testing::Test
{
protected:
    SessionTest() { open(); }
    ~SessionTest() override
    {
        session.reset();
        EXPECT_EQ(TinyTool::alive, 0) << "a tool object outlived the core";
    }

    void open(core::Windows* windows = nullptr)
    {
        session.reset();
        auto started = stage::Session::start({.userFolder = user.path(), .windows = windows});
        ASSERT_TRUE(started) << started.reason();
        session = *std::move(started);
        TinyTool::faults = {};
        TinyTool::completed.clear();
        core::addCorePlugin(new TinyPlugin);
    }

    stage::Stage& scene() { return session->stage(); }
    core::InstanceManager& tools() { return session->core().instances(); }

    core::InstanceReference& make(const std::string& name,
                                  core::InstanceReference* parent = nullptr,
                                  const std::string& type = "Tiny")
    {
        auto made = session->create(type, name, parent);
        EXPECT_TRUE(made) << made.reason();
        return **made;
    }

    core::InstanceReference* read(const std::string& xml, core::InstanceReference* parent = nullptr)
    {
        auto made = session->createFromXml(xml, parent);
        EXPECT_TRUE(made) << made.reason();
        return made ? *made : nullptr;
    }

    void remove(core::InstanceReference& entry)
    {
        core::InstanceManager::deleteReference(&entry, true);
    }

    /// The names of the tools, each behind those above it: "Group/Car".
    std::vector<std::string> tree()
    {
        std::vector<std::string> all;
        addBelow(session->root(), "", all);
        return all;
    }

    std::vector<std::string> sceneNames()
    {
        std::vector<std::string> all;
        scene().forEachNode([&](const stage::StageNode& node) { all.push_back(node.name()); });
        return all;
    }

    TemporaryFolder user;
    std::unique_ptr<stage::Session> session;

private:
    static void addBelow(core::InstanceReference& entry, const std::string& path,
                         std::vector<std::string>& all)
    {
        for (core::InstanceReference* const child : entry.childReferences()) {
            all.push_back(path + child->getText());
            addBelow(*child, all.back() + "/", all);
        }
    }
};

/// A take from the present time at machine speed.
inline void drive(stage::Session& session, double seconds)
{
    const Status done = session.record({.seconds = seconds, .beforeFrame = {}, .progress = {}});
    ASSERT_TRUE(done) << done.reason();
}

} // namespace tvw::rgs::tests

/// Scenes and files for the tests of scene files.
#pragma once

#include "adaptor/stage/scene_build.h"
#include "adaptor/stage/scene_reader.h"
#include "adaptor/stage/scene_writer.h"
#include "adaptor/stage/stage.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace tvw::rgs::stage {

/// A folder of its own, gone afterwards.
class SceneFiles : public testing::Test
{
protected:
    [[nodiscard]] std::string pathOf(const std::string& name) const
    {
        return folder_.path() + "/" + name;
    }
    std::string put(const std::string& name, const std::string& bytes) const
    {
        return folder_.write(name, bytes);
    }

private:
    tests::TemporaryFolder folder_;
};

/// A turned and scaled pose whose numbers no float holds.
inline Matrix4 poseOfFrame(int i)
{
    Matrix4 pose = scaled(rotationMatrix(7.3 * i, 0.0, 1.0, 0.0), {1.1, 1.0 + 0.01 * i, 0.7});
    setTranslation(pose, {0.1 * i, std::sin(0.3 * i), -1.0 / 3.0});
    return pose;
}

/// One of everything that a scene can hold.
inline void fillScene(Stage& stage)
{
    stage.setFramesPerSecond(30.0);
    stage.setRange({-1.5, 12.25});
    StageNode& chassis = stage.addMesh("Chassis", CMesh_Box(4.2, 1.1, 1.9), poseOfFrame(3));
    StageNode& wheel = stage.addMesh("Wheel", chassis.mesh(), poseOfFrame(5), &chassis);
    StageNode& camera = stage.addCamera("Camera", 40.1, poseOfFrame(1), &chassis);
    StageNode& path = stage.addSpline("Path", {{0, 0, 0}, {0.1, 2, 3}, {4, 1.0 / 3.0, 0}}, true);
    StageNode& helper = stage.addEmpty("Späher \xff", poseOfFrame(2), &wheel);
    CMesh textured;
    textured.vertex = {{0, 0, 0}, {1.1, 0, 0}, {0, 1, 0}, {1, 1, 0}};
    textured.texcoord = {{0, 0, 0}, {1, 0, 0}, {0.1, 1, 0.5}};
    textured.face = {0, 1, 2, 1, 3, 2};
    textured.tface = {0, 1, 2, 1, 0, 2};
    stage.addMesh("Textured", textured, {}, &path);
    helper.setMesh(CMesh_Cylinder(8, 0.3, 0.1));
    for (int i = 0; i < 40; ++i) {
        chassis.setLocal(poseOfFrame(i), i / 30.0, true);
        wheel.setLocal(poseOfFrame(2 * i), i / 30.0 - 0.5, true);
        camera.setFov(30.0 + i / 3.0, i / 30.0, true);
        camera.setTargetDistance(5.0 + i / 7.0, i / 15.0, true);
    }
    camera.setViewAngle(ViewAngle::Diagonal);
    chassis.setColor(0.2F, 0.3F, 0.4F);
    wheel.setVisible(false);
    wheel.setWireframe(true);
    path.setAlwaysOnTop(true);
    path.setSelected(true);
    helper.setProperty("note", "a \"quoted\" <text>\n");
    helper.setProperty("rigstage", "our own key");
    helper.setProperty("bytes", std::string("\x80\0\xfe", 3));
    stage.setKeyMode(true);
    stage.setTime(0.7);
}

inline std::string bytesOf(Stage& stage, const UnboundTools& tools = {})
{
    SceneWriter writer(stage, tools);
    const Result<std::string_view> file = writer.write();
    EXPECT_TRUE(file) << file.reason();
    return file ? std::string(*file) : std::string();
}

} // namespace tvw::rgs::stage

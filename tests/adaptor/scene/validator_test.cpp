#include "adaptor/stage/scene_file.h"
#include "tests/adaptor/scene/scene_samples.h"

#include <cstdlib>
#include <sys/wait.h>

namespace tvw::rgs::stage {

namespace {

class Validator : public SceneFiles
{
};

TEST_F(Validator, finds_neither_errors_nor_warnings)
{
    Stage full;
    fillScene(full);
    Stage empty;
    ASSERT_TRUE(exportScene(full, pathOf("export.glb"), {0.01, 1.0}));
    const std::string command =
        std::string("'" RIGSTAGE_VALIDATOR "' '" RIGSTAGE_BUILD_DIR "/gltf-validator' '") +
        put("full.glb", bytesOf(full)) + "' '" + put("empty.glb", bytesOf(empty)) + "' '" +
        pathOf("export.glb") + "'";
    const int status = std::system(command.c_str());
    constexpr int kNotHere = 77;
    ASSERT_TRUE(WIFEXITED(status));
    if (WEXITSTATUS(status) == kNotHere)
        GTEST_SKIP() << "the glTF validator can't be had here: see above";
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

} // namespace

} // namespace tvw::rgs::stage

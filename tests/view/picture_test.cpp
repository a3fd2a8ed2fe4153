// Pictures without a window: what is drawn where, what is picked, and what a playblast leaves.
#include "adaptor/stage/session.h"
#include "tests/support/ground_meshes.h"
#include "tests/support/session_test.h"
#include "view/offscreen.h"
#include "view/picture.h"
#include "view/playblast.h"

#include <QImage>
#include <gtest/gtest.h>

#include <filesystem>

namespace tvw::rgs::view {
namespace {

constexpr int kWidth = 160, kHeight = 120;

/// A square of 2 m in the plane z = 0, seen from +Z.
CMesh square()
{
    CMesh mesh;
    mesh.vertex = {{-1.0, -1.0, 0.0}, {1.0, -1.0, 0.0}, {1.0, 1.0, 0.0}, {-1.0, 1.0, 0.0}};
    mesh.face = {0, 1, 2, 0, 2, 3};
    return mesh;
}

using tests::at;

class PictureTest : public testing::Test
{
protected:
    PictureTest() : session_(*stage::Session::start({.isolated = true})) {}

    stage::Stage& scene() { return session_->stage(); }

    std::unique_ptr<stage::Session> session_;
    tests::TemporaryFolder folder_;
};

class RendererTest : public PictureTest
{
protected:
    void SetUp() override
    {
        auto made = OffscreenContext::make();
        ASSERT_TRUE(made) << made.reason();
        context_ = *std::move(made);
        renderer_ = std::make_unique<Renderer>();
        maker_ = std::make_unique<PictureMaker>(kWidth, kHeight, 0);
        options_.grid = false;
    }
    void TearDown() override
    {
        maker_.reset();
        renderer_.reset();
    }

    /// How much a pixel differs from the empty picture's; x, y: from the upper left.
    int differs(int x, int y)
    {
        const auto pixel = [&](const Picture& picture) {
            const auto place = static_cast<std::size_t>(4 * (y * kWidth + x));
            return std::array{picture.rgba[place], picture.rgba[place + 1],
                              picture.rgba[place + 2]};
        };
        const auto shown = pixel(maker_->draw(*renderer_, scene(), lens_, options_));
        stage::Stage empty;
        const auto blank = pixel(maker_->draw(*renderer_, empty, lens_, options_));
        int sum = 0;
        for (std::size_t i = 0; i < 3; ++i)
            sum += std::abs(shown[i] - blank[i]);
        return sum;
    }

    stage::StageNode* picked(int x, int y)
    {
        return renderer_->pick(scene(), lens_, {0, 0, kWidth, kHeight}, options_, x,
                               kHeight - 1 - y);
    }

    static constexpr int kSeen = 30; ///< of 765
    std::unique_ptr<OffscreenContext> context_;
    std::unique_ptr<Renderer> renderer_;
    std::unique_ptr<PictureMaker> maker_;
    Options options_;
    Lens lens_{at(0.0, 0.0, 5.0), 45.0, stage::ViewAngle::Vertical};
};

TEST_F(RendererTest, DrawsAndPicksWhatIsInFront)
{
    stage::StageNode& left = scene().addMesh("Left", square(), at(-1.2, 0.0, 0.0));
    stage::StageNode& front = scene().addMesh("Front", square(), at(1.2, 0.0, 1.0));
    scene().addMesh("Behind", square(), at(1.2, 0.0, -1.0));
    // The picture's half height is 5 tan(22.5) = 2.07 m at z = 0: 1.2 m are 35 pixels.
    const int middle = kWidth / 2;
    EXPECT_GT(differs(middle - 35, kHeight / 2), kSeen);
    EXPECT_LT(differs(4, 4), kSeen);
    EXPECT_EQ(picked(middle - 35, kHeight / 2), &left);
    EXPECT_EQ(picked(middle + 40, kHeight / 2), &front);
    EXPECT_EQ(picked(4, 4), nullptr);

    left.setVisible(false);
    EXPECT_LT(differs(middle - 35, kHeight / 2), kSeen);
    EXPECT_EQ(picked(middle - 35, kHeight / 2), nullptr);
}

TEST_F(RendererTest, AFarSceneIsDrawnAsANearOne)
{
    constexpr double kFar = 1e6; // [m], where single precision has steps of 6 cm
    scene().addMesh("Near", square());
    const std::vector<std::uint8_t> near = maker_->draw(*renderer_, scene(), lens_, options_).rgba;
    session_->clear();
    scene().addMesh("Far", square(), at(kFar, 0.0, -kFar));
    lens_.world = at(kFar, 0.0, -kFar + 5.0);
    options_.focus = {kFar, 0.0, -kFar};
    EXPECT_EQ(maker_->draw(*renderer_, scene(), lens_, options_).rgba, near);
}

TEST_F(RendererTest, HelpersCanBeLeftOut)
{
    ASSERT_TRUE(session_->create("4WheelerExt", "Car"));
    lens_.world = at(0.0, 0.6, 6.0);
    EXPECT_GT(differs(kWidth / 2, kHeight / 2), kSeen);
    options_.helpers = false;
    EXPECT_LT(differs(kWidth / 2, kHeight / 2), kSeen);
}

class PlayblastTest : public PictureTest
{
protected:
    PlayblastTest()
    {
        scene().addMesh("Square", square());
        scene().addCamera("Eye", 45.0, at(0.0, 0.0, 5.0));
        scene().setRange({0.0, 0.16}); // 5 frames
    }

    Playblast what(const std::string& output) const
    {
        Playblast out;
        out.output = folder_.path() + "/" + output;
        out.camera = "Eye";
        out.width = kWidth;
        out.height = kHeight;
        return out;
    }
    std::vector<std::string> files() const
    {
        std::vector<std::string> out;
        for (const auto& file : std::filesystem::recursive_directory_iterator(folder_.path()))
            out.push_back(file.path().filename().string());
        std::sort(out.begin(), out.end());
        return out;
    }
};

TEST_F(PlayblastTest, WritesAPictureForEachFrame)
{
    ASSERT_TRUE(playblast(scene(), what("frames")));
    EXPECT_EQ(files(),
              (std::vector<std::string>{"frame-00000.png", "frame-00001.png", "frame-00002.png",
                                        "frame-00003.png", "frame-00004.png", "frames"}));
    const QImage image(QString::fromStdString(folder_.path() + "/frames/frame-00003.png"));
    EXPECT_EQ(image.size(), QSize(kWidth, kHeight));
    EXPECT_NE(image.pixel(kWidth / 2, kHeight / 2), image.pixel(4, 4));
}

TEST_F(PlayblastTest, WritesAFilmOrAStillOfARange)
{
    Playblast film = what("film.mp4");
    film.range = core::TimeRange{0.04, 0.12};
    ASSERT_TRUE(playblast(scene(), film));
    EXPECT_GT(std::filesystem::file_size(film.output), 500U);
    ASSERT_TRUE(playblast(scene(), what("still.png")));
    EXPECT_EQ(files(), (std::vector<std::string>{"film.mp4", "still.png"}));
}

TEST_F(PlayblastTest, WhatCantBeDrawnLeavesNothing)
{
    struct Case
    {
        const char* reason;
        std::function<void(Playblast&)> spoil;
    };
    const Case cases[] = {
        {"there is no camera named \"Nobody\"", [](Playblast& p) { p.camera = "Nobody"; }},
        {"there is no camera named \"Square\"", [](Playblast& p) { p.camera = "Square"; }},
        {"the range ends before it starts",
         [](Playblast& p) {
             p.range = core::TimeRange{1.0, 0.5};
         }},
        {"a picture is 16 to 8192 pixels wide and high", [](Playblast& p) { p.width = 9000; }},
        {"cancelled", [](Playblast& p) { p.progress = [](double) { return false; }; }},
        {"/nowhere/", [](Playblast& p) { p.output = "/nowhere/at/all.mp4"; }},
    };
    for (const Case& each : cases) {
        Playblast blast = what("film.mp4");
        each.spoil(blast);
        const Status done = playblast(scene(), blast);
        EXPECT_FALSE(done) << each.reason;
        EXPECT_NE(done.reason().find(each.reason), std::string::npos) << done.reason();
    }
    EXPECT_TRUE(files().empty());
}

} // namespace
} // namespace tvw::rgs::view

#include "adaptor/stage/key_track.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <numbers>
#include <random>

namespace tvw::rgs::stage {
namespace {

using Track = KeyTrack<double>;

/// The track holds the keys of the model, and every way of asking for them agrees.
void expectEqual(const Track& track, const std::map<Flicks, double>& model)
{
    ASSERT_EQ(track.size(), model.size());
    std::size_t i = 0;
    for (const auto& [time, value] : model) {
        ASSERT_EQ(track.key(i).time, time) << "key " << i;
        ASSERT_EQ(track.key(i).value, value);
        ASSERT_TRUE(track.hasKeyAt(time));
        ASSERT_EQ(track.at(time), value);
        ASSERT_EQ(track.indexAtOrBehind(time), i);
        ++i;
    }
    i = 0;
    track.forEach([&](const TrackKey<double>& key) {
        EXPECT_EQ(model.count(key.time), 1U);
        ++i;
    });
    EXPECT_EQ(i, model.size());
    if (!model.empty()) {
        EXPECT_EQ(track.lastTime(), model.rbegin()->first);
        EXPECT_EQ(track.indexAtOrBehind(model.rbegin()->first + 1), model.size());
        EXPECT_EQ(track.indexAtOrBehind(model.begin()->first - 1), 0U);
    }
}

void fill(Track& track, Flicks first, Flicks end, double value)
{
    for (Flicks t = first; t < end; ++t)
        track.write(t, value);
}

TEST(KeyTrack, ReadsBetweenBeforeAndBehindItsKeys)
{
    Track track;
    track.write(0, 0.0);
    track.write(10, 1.0);
    track.write(20, 5.0);
    // In an order that sends the cursor both ways.
    constexpr std::pair<Flicks, double> kCases[] = {{5, 0.5},  {3, 0.3},  {15, 3.0}, {3, 0.3},
                                                    {-4, 0.0}, {99, 5.0}, {20, 5.0}, {10, 1.0},
                                                    {0, 0.0},  {12, 1.8}};
    for (const auto& [time, expected] : kCases)
        EXPECT_DOUBLE_EQ(track.at(time), expected) << "at " << time;
    EXPECT_FALSE(track.hasKeyAt(5));
    EXPECT_FALSE(track.hasKeyAt(21));
}

TEST(KeyTrack, FollowsAModelThroughRandomEdits)
{
    for (unsigned seed = 1; seed <= 6; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        Track track;
        std::map<Flicks, double> model;
        struct Remembered
        {
            Track::Content content;
            std::map<Flicks, double> model;
        };
        std::vector<Remembered> states;
        for (int step = 0; step < 9000; ++step) {
            const auto time = static_cast<Flicks>(random() % 6000);
            const auto value = static_cast<double>(step);
            switch (random() % 40) {
            case 0:
                track.cutBehind(time + 3000);
                model.erase(model.upper_bound(time + 3000), model.end());
                break;
            case 1:
                if (states.size() < 5)
                    states.push_back({track.content(), model});
                break;
            case 2:
                if (!states.empty()) {
                    Remembered& state = states[random() % states.size()];
                    track.exchange(state.content);
                    std::swap(model, state.model);
                }
                break;
            case 3:
            case 4:
                EXPECT_EQ(track.remove(time), model.erase(time) == 1);
                break;
            case 5:
                for (int i = 1; i < 90; ++i) { // a stretch of a take
                    const Flicks next = track.empty() ? 0 : track.lastTime() + 1;
                    track.write(next, value);
                    model[next] = value;
                }
                break;
            default:
                track.write(time, value);
                model[time] = value;
            }
        }
        expectEqual(track, model);
        for (Remembered& state : states) {
            track.exchange(state.content);
            expectEqual(track, state.model);
        }
    }
}

TEST(KeyTrack, KeysReplacedInARememberedStateReadAsTheyWereWritten)
{
    Track track;
    fill(track, 0, 3, 1.0);
    Track::Content before = track.content();
    fill(track, 0, 3, 2.0);
    expectEqual(track, {{0, 2.0}, {1, 2.0}, {2, 2.0}});
    track.exchange(before);
    expectEqual(track, {{0, 1.0}, {1, 1.0}, {2, 1.0}});
}

Matrix4 pose(double degrees, double scale, const Vector3d& position)
{
    Matrix4 out = scaled(rotationMatrix(degrees, 0, 1, 0), {scale, scale, scale});
    setTranslation(out, position);
    return out;
}

TEST(KeyTrack, PosesAtTheirKeysAreThoseWrittenBitForBit)
{
    KeyTrack<Matrix4> track;
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> any(-1e3, 1e3);
    std::vector<Matrix4> written(300);
    for (std::size_t i = 0; i < written.size(); ++i) {
        for (double& element : written[i].m)
            element = any(random); // not even a pose
        track.write(static_cast<Flicks>(i * 3), written[i]);
    }
    for (std::size_t i = 0; i < written.size(); ++i)
        EXPECT_EQ(track.at(static_cast<Flicks>(i * 3)), written[i]);
}

TEST(KeyTrack, PosesTurnEvenlyAndChangeLengthLinearly)
{
    struct Case
    {
        const char* name;
        double fromDegrees, toDegrees, f, degrees;
    };
    const Matrix4 mirrored = scaled(Matrix4{}, {-1, 1, 1});
    constexpr Case kCases[] = {{"a right angle's middle", 0, 90, 0.5, 45},
                               {"a third of the way", 0, 90, 1.0 / 3.0, 30},
                               {"the shorter way round", 10, 350, 0.5, 0},
                               {"across the half turn", 170, 190, 0.25, 175}};
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.name);
        const Matrix4 a = pose(c.fromDegrees, 1, {0, 0, 0});
        const Matrix4 b = pose(c.toDegrees, 3, {4, 8, -2});
        const Matrix4 expected = pose(c.degrees, 1 + 2 * c.f, {4 * c.f, 8 * c.f, -2 * c.f});
        for (const Matrix4& side : {Matrix4{}, mirrored}) {
            const Matrix4 got = interpolate(a * side, b * side, c.f);
            for (int i = 0; i < 16; ++i)
                EXPECT_NEAR(got[i], (expected * side)[i], 1e-12) << "element " << i;
        }
    }
}

} // namespace
} // namespace tvw::rgs::stage

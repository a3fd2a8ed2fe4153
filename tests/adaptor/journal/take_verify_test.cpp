#include "adaptor/stage/take_verify.h"
#include "tests/adaptor/journal/take_fixture.h"

#include <bit>
#include <cstdint>

namespace tvw::rgs::stage {
namespace {

class TakeVerifyTest : public TakeTest
{
protected:
    TakeVerifyTest() : session_(start(true)) { EXPECT_TRUE(perform(*session_)); }

    StageNode& node() { return *session_->stage().find("Wave_SinusNode"); }

    std::unique_ptr<Session> session_;
};

TEST_F(TakeVerifyTest, ATakeThatIsReproducedStaysAsItWas)
{
    const std::vector<double> before = keys(*session_, 100.0);
    const double time = session_->stage().getTime();
    const auto comparison = verifyTake(*session_);
    ASSERT_TRUE(comparison) << comparison.reason();
    EXPECT_FALSE(comparison->difference);
    EXPECT_EQ(comparison->extent.start, 1.0);
    EXPECT_EQ(comparison->extent.end, 9.0);
    EXPECT_EQ(comparison->keys, 201U);
    EXPECT_EQ(keys(*session_, 100.0), before);
    EXPECT_EQ(session_->stage().getTime(), time);
}

TEST_F(TakeVerifyTest, TheFirstBitThatDiffersIsNamed)
{
    for (const double time : {6.0, 3.0}) { // the earlier one counts
        Matrix4 pose = node().local(time);
        pose[13] = std::bit_cast<double>(std::bit_cast<std::uint64_t>(pose[13]) ^ 1U);
        ASSERT_TRUE(node().setLocal(pose, time, true));
    }
    const auto comparison = verifyTake(*session_);
    ASSERT_TRUE(comparison && comparison->difference);
    EXPECT_EQ(comparison->difference->time, 3.0);
    EXPECT_EQ(comparison->difference->node, "Wave_SinusNode");
    EXPECT_EQ(comparison->difference->value, "position y");
    EXPECT_NE(comparison->difference->taken, comparison->difference->resimulated);
}

TEST_F(TakeVerifyTest, AMissingKeyIsADifference)
{
    ASSERT_TRUE(node().removePoseKey(4.0));
    const auto comparison = verifyTake(*session_);
    ASSERT_TRUE(comparison && comparison->difference);
    EXPECT_EQ(comparison->difference->time, 4.0);
    EXPECT_FALSE(comparison->difference->taken);
    EXPECT_TRUE(comparison->difference->resimulated);
}

TEST_F(TakeVerifyTest, ASceneWithoutATakeHasNothingToVerify)
{
    session_->clear();
    EXPECT_FALSE(verifyTake(*session_));
}

} // namespace
} // namespace tvw::rgs::stage

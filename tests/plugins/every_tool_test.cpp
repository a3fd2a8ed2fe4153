// What must hold for every tool, whatever it does: run over the table of tool types.
#include "adaptor/stage/scene_file.h"
#include "core/tool.h"
#include "core/tool_record.h"
#include "plugins/tool_table.h"
#include "tests/adaptor/stage/counting_new.h"
#include "tests/runs/run_fixture.h"
#include "util/random.h"

#include <filesystem>

namespace tvw::rgs::tests {
namespace {

std::vector<std::string> toolIds()
{
    std::vector<std::string> ids;
    for (const MakePlugin make : toolTable()) {
        CCameraPlugin* const plugin = make();
        ids.push_back(plugin->getId());
        plugin->destroy();
    }
    return ids;
}

class EveryTool : public RunTest, public testing::WithParamInterface<std::string>
{
protected:
    void SetUp() override
    {
        open();
        tool_ = &create(GetParam());
        bindAll();
    }

    /// Each input gets an axis of a pad of its own; those that turn spinners if asked for.
    void bindAll(bool spinnersToo = false)
    {
        auto& inputs = tool_->properties();
        if (!spinnersToo)
            pad = &session->addDevice("Sweeper", {.axes = inputs.count()});
        for (int i = 0; i < inputs.count(); ++i) {
            if (spinnersToo || !inputs.propertyAt(i)->name().starts_with("Spinner: "))
                inputs.propertyAt(i)->bind(pad->controlAt(i));
        }
    }

    /// Every input swings at its own pace.
    std::function<void(double)> sweep()
    {
        return [this](double t) {
            for (int i = 0; i < tool_->properties().count(); ++i)
                pad->set("Axis", i, std::sin((0.7 + 0.31 * i) * t + 0.5 * i));
        };
    }

    core::Instance* tool_ = nullptr;
};

TEST_P(EveryTool, KeepsItsLabelsAndNames)
{
    for (const stage::ToolItem& item : stage::toolItems(*tool_)) {
        EXPECT_FALSE(item.label().empty());
        EXPECT_LE(item.node->minimum(), item.node->maximum()) << item.label();
    }
    for (core::CoreNode* const each : tool_->nodes())
        EXPECT_EQ(each->getName(), tool_->name() + "_" + each->shortName());
}

TEST_P(EveryTool, RepeatsATakeToTheBit)
{
    record(2.0, sweep());
    const auto take = allKeys();
    resimulate(0.0, 2.0);
    ASSERT_EQ(allKeys(), take) << "in one piece";
    session->stage().setTime(1.0);
    record(1.0, sweep());
    ASSERT_EQ(allKeys(), take) << "continued in the middle";
    resimulate(0.0, 2.0);
    EXPECT_EQ(allKeys(), take) << "over both pieces";
}

TEST_P(EveryTool, RepeatsATakeInWhichEverySpinnerTurns)
{
    bindAll(true);
    record(1.0, sweep());
    const auto take = allKeys();
    resimulate(0.0, 1.0);
    ASSERT_EQ(allKeys(), take) << "from the values that the take began with";
    resimulate(0.0, 1.0);
    EXPECT_EQ(allKeys(), take) << "and again";
}

TEST_P(EveryTool, UndoTakesTheWholeTakeBack)
{
    const auto before = allKeys();
    record(1.0, sweep());
    const auto after = allKeys();
    ASSERT_TRUE(session->stage().hostUndo());
    EXPECT_EQ(allKeys(), before);
    ASSERT_TRUE(session->stage().hostRedo());
    EXPECT_EQ(allKeys(), after);
}

TEST_P(EveryTool, ComesBackFromAFileAndRepeatsItsTake)
{
    record(1.0, sweep());
    const auto take = allKeys();
    const std::string path =
        (std::filesystem::path(testing::TempDir()) / (GetParam() + ".glb")).string();
    const Status saved = stage::saveScene(*session, path);
    ASSERT_TRUE(saved) << saved.reason();
    const Status opened = stage::openScene(*session, path);
    ASSERT_TRUE(opened) << opened.reason();
    EXPECT_EQ(allKeys(), take);
    resimulate(0.0, 1.0);
    EXPECT_EQ(allKeys(), take);
    std::filesystem::remove(path);
}

TEST_P(EveryTool, ClonesAndComesBackFromDeletion)
{
    const std::size_t nodes = tool_->nodes().size();
    core::InstanceReference* const copy = tool_->reference()->clone();
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->instance().nodes().size(), nodes);
    const std::size_t all = session->stage().nodes().size();
    core::InstanceManager::deleteReference(copy, true);
    EXPECT_EQ(session->stage().nodes().size(), all - nodes);
    ASSERT_TRUE(session->stage().hostUndo());
    EXPECT_EQ(session->stage().nodes().size(), all);
    record(0.5, sweep());
}

TEST_P(EveryTool, AllocatesNothingInATick)
{
    if (RIGSTAGE_SANITIZED)
        GTEST_SKIP() << "the sanitizers allocate for themselves";
    record(2.0, sweep());
    session->stage().setTime(0.0);
    std::uint64_t before = 0;
    std::uint64_t inTicks = 0;
    class Counter final : public core::RunObserver
    {
    public:
        Counter(std::uint64_t& before, std::uint64_t& total) : before_(before), total_(total) {}
        void frameDone(double, const std::vector<core::Instance*>&) override
        {
            total_ += test::allocationCount() - before_;
        }

    private:
        std::uint64_t& before_;
        std::uint64_t& total_;
    } counter(before, inTicks);
    session->core().records().addObserver(&counter);
    const auto hand = sweep();
    record(2.0, [&](double t) {
        hand(t);
        before = test::allocationCount();
    });
    session->core().records().removeObserver(&counter);
    EXPECT_EQ(inTicks, 0u) << "in a retake, whose storage is there";
}

/// Whatever the items are set to within their bounds and whatever the hand does.
TEST_P(EveryTool, LaysOnlyNumbers)
{
    Random random(20);
    for (int round = 0; round < 20; ++round) {
        for (const stage::ToolItem& item : stage::toolItems(*tool_)) {
            const double low = std::max(item.node->minimum(), -1e9);
            const double high = std::min(item.node->maximum(), 1e9);
            const double share = random.next01();
            const double value = share < 0.1   ? low
                                 : share > 0.9 ? high
                                               : low + (high - low) * random.next01();
            if (item.node->kind() == core::configadaptor::NodeKind::CheckBox)
                (void)stage::setToolItem(item, share < 0.5 ? 0.0 : 1.0);
            else if (item.node->maximum() > item.node->minimum())
                (void)stage::setToolItem(item, value);
        }
        record(0.4, [&](double) {
            for (int i = 0; i < tool_->properties().count(); ++i)
                pad->set("Axis", i, 2.0 * random.next01() - 1.0);
        });
        for (const auto& [name, keys] : allKeys()) {
            for (const Matrix4& pose : keys.poses) {
                for (const double number : pose.m)
                    ASSERT_TRUE(std::isfinite(number)) << name << ", round " << round;
            }
        }
        session->stage().hostUndo();
        session->stage().setTime(0.0);
    }
}

INSTANTIATE_TEST_SUITE_P(Tools, EveryTool, testing::ValuesIn(toolIds()), [](const auto& tool) {
    std::string name = tool.param;
    std::erase_if(name, [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); });
    return name;
});

} // namespace
} // namespace tvw::rgs::tests

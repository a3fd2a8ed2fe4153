#include "core/contract/undo.h"
#include "util/avar.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using namespace tvw::rgs;

struct Ending
{
    void operator()(CUndo* record) const { record->destroy(); }
};

template <class T>
std::unique_ptr<CUndo, Ending> recordOf(T& variable)
{
    return std::unique_ptr<CUndo, Ending>(new CVariableModUndo<T>(&variable));
}

TEST(CVariableModUndo, SwapsOncePerDirection)
{
    int value = 1;
    const auto record = recordOf(value);
    value = 2;

    record->redo();
    EXPECT_EQ(value, 2) << "a redo with no undo before it";
    record->restore(true);
    EXPECT_EQ(value, 1);
    record->restore(true);
    EXPECT_EQ(value, 1) << "a second undo with no redo between";
    record->redo();
    EXPECT_EQ(value, 2);
    record->redo();
    EXPECT_EQ(value, 2);
}

TEST(CVariableModUndo, CancelWritesTheCopyAsItStands)
{
    double value = 1.0;
    const auto record = recordOf(value);
    value = 2.0;
    record->restore(false);
    EXPECT_EQ(value, 1.0);

    value = 3.0;
    record->restore(true); // value 1, the copy holds 3
    record->restore(false);
    EXPECT_EQ(value, 3.0) << "after an undo the copy is the newer value";
}

TEST(CVariableModUndo, PutsBackAWholeTimeLine)
{
    tvw::AVar_Linear<double> curve(0.5);
    curve.set(0.0, 1.0);
    const auto record = recordOf(curve);
    curve.clear();
    curve.set(2.0, 7.0);

    record->restore(true);
    ASSERT_EQ(curve.size(), 1u);
    EXPECT_EQ(curve.get(5.0), 1.0);
    record->redo();
    EXPECT_EQ(curve.get(5.0), 7.0);
}

TEST(CREEventUndo, SendsItsEventsWhateverCameBefore)
{
    struct Hears final : CInterfaceCallback
    {
        void itemChanged(const std::string& label) override { heard.push_back(label); }
        std::vector<std::string> heard;
    } hears;
    const std::unique_ptr<CUndo, Ending> record(
        new CREEventUndo(&hears, "REALUNDOHide Helpers", "REALREDOHide Helpers"));

    record->restore(true);
    record->restore(false);
    record->redo();
    EXPECT_EQ(hears.heard, (std::vector<std::string>{"REALUNDOHide Helpers", "REALUNDOHide Helpers",
                                                     "REALREDOHide Helpers"}));
}

} // namespace

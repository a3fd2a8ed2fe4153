#include "gui/componentinterface/graph.h"
#include "tests/app/inputs/fixture.h"

namespace tvw::rgs::app {

namespace {

class Advanced : public tests::InputWindowTest
{
protected:
    QDoubleSpinBox& spinner(int place)
    {
        return *dialog().findChildren<QDoubleSpinBox*>().at(place);
    }
    gui::componentinterface::Graph& graph()
    {
        for (QWidget* const widget : dialog().findChildren<QWidget*>()) {
            auto* const component = dynamic_cast<gui::Component*>(widget);
            if (auto* const found = gui::toGraph(component))
                return *found;
        }
        throw std::runtime_error("no graph");
    }
};

enum Place { kMultiplier, kExponent, kDeadzone, kOffset };

TEST_F(Advanced, eachNumberReachesTheInput)
{
    open();
    press(panel("Turn"), "Advanced");
    struct Case
    {
        Place place;
        double unidevice::Property::*number;
        double shown, wanted, kept;
    };
    const Case cases[] = {
        {kMultiplier, &unidevice::Property::multiplier, 1.0, -2.5, -2.5},
        {kExponent, &unidevice::Property::exponent, 1.0, 2.0, 2.0},
        {kDeadzone, &unidevice::Property::deadzone, 0.1, 1.5, 1.0},
        {kOffset, &unidevice::Property::offset, 0.0, 0.3, 0.3},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(spinner(c.place).value(), c.shown) << c.place;
        spinner(c.place).setValue(c.wanted);
        EXPECT_EQ(turn->*c.number, c.kept) << c.place;
    }
    press(dialog(), "Close");
    EXPECT_FALSE(hasDialog());
}

/// A spinner shows one decimal; to open the window must not round what a profile brought.
TEST_F(Advanced, showingChangesNothing)
{
    open();
    turn->deadzone = 0.25;
    turn->exponent = 1.333;
    press(panel("Turn"), "Advanced");
    press(dialog(), "Close");
    EXPECT_EQ(turn->deadzone, 0.25);
    EXPECT_EQ(turn->exponent, 1.333);
}

TEST_F(Advanced, theCurveIsWhatTheToolReads)
{
    struct Case
    {
        const char* name;
        double multiplier, exponent, deadzone, offset;
        double atEnd; ///< at full deflection
        double top, bottom;
    };
    const Case cases[] = {
        {"plain", 1.0, 1.0, 0.0, 0.0, 1.0, 1.0, -1.0},
        {"shaped", 3.0, 2.0, 0.1, 0.5, 3.5, 3.5, -2.5},
        {"inverted", -2.0, 1.0, 0.0, 0.0, -2.0, 2.0, -2.0},
        {"endless at rest", 1.0, -1.0, 0.0, 0.0, 1.0, 1.0, -1.0},
    };
    open();
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        turn->multiplier = c.multiplier;
        turn->exponent = c.exponent;
        turn->deadzone = c.deadzone;
        turn->offset = c.offset;
        press(panel("Turn"), "Advanced");
        const gui::graph::Curve& curve = *graph().curveAt(0);
        EXPECT_EQ(curve.color, (gui::Color{30, 30, 230, 255}));
        ASSERT_GT(curve.points.size(), 10u);
        EXPECT_EQ(curve.points.front().x, -1.0);
        EXPECT_EQ(curve.points.back().x, 1.0);
        EXPECT_DOUBLE_EQ(curve.points.back().y, c.atEnd);
        EXPECT_EQ(graph().boundary(), (gui::graph::Boundary{-1.0, 1.0, c.top, c.bottom}));
        press(dialog(), "Close");
    }
    turn->deadzone = 1.0; // the quotient is no number
    press(panel("Turn"), "Advanced");
    for (const gui::graph::GraphPoint& point : graph().curveAt(0)->points)
        EXPECT_TRUE(std::isfinite(point.y));
}

} // namespace

} // namespace tvw::rgs::app

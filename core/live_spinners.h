/// Spinners that an input turns while a run is on.
///
/// In each frame the input's value is added to the spinner, as a hand would turn it. Where the hand
/// left it, it stays after the run. So that a second pass over the take begins where the take began,
/// the values are kept over time; but a spinner that the user has set since then begins from that.
#pragma once

#include "core/configadaptor/node.h"
#include "core/contract/undo.h"
#include "unidevice/property.h"
#include "util/avar.h"

#include <cstdint>
#include <vector>

namespace tvw::rgs {
class CInterface;
}

namespace tvw::rgs::core {

class LiveSpinners
{
public:
    void add(std::uint32_t itemId, unidevice::Property* input) { spinners_.push_back({itemId, input}); }

    /// replays: a second pass over a take, not a new one. configuration: may be null.
    void begin(double time, configadaptor::Node* configuration, bool replays, CInterface& runtime);
    void turn(double time);
    void end();

    /// A take that was lost began at `time` with the inputs as they are bound now, or wait to be: a
    /// replay from there turns the spinners as the take did.
    void takeBegan(double time, configadaptor::Node* configuration);

    /// The values of the take, as `spinner` children; nothing where no spinner was turned.
    void write(util::xml::Element& out) const;
    void read(const util::xml::Element& element);

private:
    struct Spinner
    {
        std::uint32_t itemId;
        unidevice::Property* input;
        configadaptor::Node* item = nullptr;
        AVar_Linear<double> values{};
        double left = 0.0; ///< where the last run left it
    };
    static double startOf(const Spinner& spinner, double time, bool replays);

    std::vector<Spinner> spinners_;
    std::vector<Spinner*> turning_; ///< in the present run
};

} // namespace tvw::rgs::core

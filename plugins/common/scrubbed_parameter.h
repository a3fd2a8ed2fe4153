/// A parameter whose spinner shows the recorded value while the user scrubs, and is itself again when
/// a run starts.
#pragma once

namespace tvw::rgs {

class ScrubbedParameter
{
public:
    /// spinner: the variable of the item, for the life of this object.
    explicit ScrubbedParameter(double& spinner) : spinner_(spinner) {}

    /// The spinner shows `recorded`; what the user wants is kept.
    void show(double recorded)
    {
        if (!showing_)
            wanted_ = spinner_;
        showing_ = true;
        spinner_ = recorded;
    }

    /// The user has set the spinner: that is what he wants.
    void touched() { showing_ = false; }

    /// The spinner is the parameter again.
    void settle()
    {
        if (showing_)
            spinner_ = wanted_;
        showing_ = false;
    }

private:
    double& spinner_;
    double wanted_ = 0.0;
    bool showing_ = false;
};

} // namespace tvw::rgs

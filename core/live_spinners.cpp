#include "core/live_spinners.h"

#include "core/contract/interface.h"

namespace tvw::rgs::core {

namespace {

/// Puts a spinner back, and its view with it.
class SpinnerUndo final : public CUndo
{
public:
    explicit SpinnerUndo(configadaptor::Node* item) : item_(item), other_(item->value()) {}

    void restore(bool) override { exchange(); }
    void redo() override { exchange(); }

private:
    void exchange()
    {
        const double present = item_->value();
        item_->setValue(other_);
        item_->refresh();
        other_ = present;
    }

    configadaptor::Node* item_;
    double other_;
};

} // namespace

double LiveSpinners::startOf(const Spinner& spinner, double time, bool replays)
{
    const double present = spinner.item->value();
    if (spinner.values.empty() || present != spinner.left)
        return present;
    const double first = spinner.values.records().front().time;
    const bool continues = replays ? time >= first : time > first;
    return continues ? spinner.values.get(time) : present;
}

void LiveSpinners::begin(double time, configadaptor::Node* configuration, bool replays,
                         CInterface& runtime)
{
    for (Spinner& spinner : spinners_) {
        spinner.item = configuration ? configuration->findNode(spinner.itemId) : nullptr;
        if (!spinner.item || !spinner.input->control()) {
            spinner.item = nullptr;
            continue;
        }
        runtime.pushUndo(new CVariableModUndo<AVar_Linear<double>>(&spinner.values));
        runtime.pushUndo(new SpinnerUndo(spinner.item));
        spinner.item->setValue(startOf(spinner, time, replays));
        spinner.values.cutFrom(time);
        spinner.values.set(time, spinner.item->value());
    }
}

void LiveSpinners::turn(double time)
{
    for (Spinner& spinner : spinners_) {
        if (!spinner.item || !spinner.input->control())
            continue;
        spinner.item->setValue(spinner.item->value() + spinner.input->value());
        spinner.item->refresh();
        spinner.values.set(time, spinner.item->value());
    }
}

void LiveSpinners::end()
{
    for (Spinner& spinner : spinners_) {
        if (spinner.item)
            spinner.left = spinner.item->value();
        spinner.item = nullptr;
    }
}

} // namespace tvw::rgs::core

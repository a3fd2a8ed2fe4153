#include "core/live_spinners.h"

#include "core/contract/interface.h"
#include "util/base64.h"
#include "util/xml/element.h"

#include <cstring>
#include <string>

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
    turning_.clear();
    for (Spinner& spinner : spinners_) {
        spinner.item = configuration ? configuration->findNode(spinner.itemId) : nullptr;
        const bool turns = replays ? !spinner.values.empty() : spinner.input->control() != nullptr;
        if (!spinner.item || (!turns && spinner.values.empty()))
            continue;
        runtime.pushUndo(new CVariableModUndo<AVar_Linear<double>>(&spinner.values));
        if (!turns) {
            spinner.values.cutFrom(time); // what an older take turned from here on is gone
            continue;
        }
        runtime.pushUndo(new SpinnerUndo(spinner.item));
        spinner.item->setValue(startOf(spinner, time, replays));
        spinner.values.cutFrom(time);
        spinner.values.set(time, spinner.item->value());
        turning_.push_back(&spinner);
    }
}

void LiveSpinners::turn(double time)
{
    for (Spinner* const spinner : turning_) {
        spinner->item->setValue(spinner->item->value() + spinner->input->value());
        spinner->item->refresh();
        spinner->values.set(time, spinner->item->value());
    }
}

void LiveSpinners::end()
{
    for (Spinner* const spinner : turning_)
        spinner->left = spinner->item->value();
    turning_.clear();
}

void LiveSpinners::takeBegan(double time, configadaptor::Node* configuration)
{
    for (Spinner& spinner : spinners_) {
        spinner.item = configuration ? configuration->findNode(spinner.itemId) : nullptr;
        const bool bound = spinner.input->control() || !spinner.input->pendingControl().isEmpty();
        if (!spinner.item || !bound) {
            spinner.values.cutFrom(time);
            continue;
        }
        const double start = startOf(spinner, time, false);
        spinner.values.cutFrom(time);
        spinner.values.set(time, start);
        spinner.left = spinner.item->value();
    }
}

void LiveSpinners::write(util::xml::Element& out) const
{
    for (const Spinner& spinner : spinners_) {
        if (spinner.values.empty())
            continue;
        std::string block(spinner.values.binarySize(), '\0');
        spinner.values.store(block.data(), block.size());
        util::xml::Element element = util::xml::TagWithData("spinner", base64Encode(block));
        element.setAttribute("id", std::to_string(spinner.itemId));
        element.setAttribute("left", base64Encode(&spinner.left, sizeof(double)));
        out.addChild(element);
    }
}

void LiveSpinners::read(const util::xml::Element& element)
{
    for (const util::xml::Element& child : element.children()) {
        const auto id = util::xml::integer(child.attributeValue("id"));
        const std::string left = base64Decode(child.attributeValue("left"));
        if (child.name() != "spinner" || !id || left.size() != sizeof(double))
            continue;
        for (Spinner& spinner : spinners_) {
            if (spinner.itemId != static_cast<std::uint32_t>(*id))
                continue;
            const std::string block = base64Decode(child.text());
            spinner.values.load(block.data(), block.size());
            std::memcpy(&spinner.left, left.data(), sizeof(double));
        }
    }
}

} // namespace tvw::rgs::core

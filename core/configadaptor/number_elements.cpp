// The items that hold a number: spinners and check boxes.
#include "core/configadaptor/elements.h"
#include "core/configadaptor/item_layout.h"
#include "core/configadaptor/stored_number.h"
#include "util/base64.h"

#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>
#include <utility>

namespace tvw::rgs::core::configadaptor::element {

using util::xml::Element;
using util::xml::Text;

namespace {

static_assert(std::endian::native == std::endian::little, "profiles hold the bytes of doubles");

std::string blobText(double value)
{
    return base64Encode(&value, sizeof value);
}

/// As it is where the bounds say nothing.
double bounded(double value, const SpinnerBounds& bounds)
{
    if (!(bounds.minimum <= bounds.maximum))
        return value;
    return std::min(std::max(value, bounds.minimum), bounds.maximum);
}

Element makeSpinner(Node& node, const SpinnerBounds& bounds)
{
    Element spinner = makeComponent("spinner", node);
    spinner.setAttribute("min", numberText(bounds.minimum));
    spinner.setAttribute("max", numberText(bounds.maximum));
    spinner.setAttribute("step", numberText(bounds.step));
    spinner.setAttribute("triggerlength", std::to_string(bounds.triggerLength));
    spinner.setAttribute("defaultvalue", numberText(node.value()));
    return makeRow(node, spinner);
}

} // namespace

Spinner::Spinner(std::uint32_t id, std::string label, std::string tooltip, double* variable,
                 const SpinnerBounds& bounds, CInterfaceCallback* callback)
    : Node(NodeKind::Spinner, id, std::move(label), std::move(tooltip), callback),
      variable_(variable), bounds_(bounds)
{
}

void Spinner::refresh()
{
    showInViews();
}

void Spinner::writeProfile(Element& out)
{
    out = makeItem("blob");
    out.addChild(Text(blobText(*variable_)));
}

void Spinner::readProfile(const Element& profile)
{
    const auto stored = storedNumber(itemIn(profile));
    if (!stored)
        return;
    setValue(*stored);
    refresh();
}

void Spinner::setValue(double value)
{
    if (!std::isnan(value))
        *variable_ = bounded(value, bounds_);
}

Element Spinner::buildLayout()
{
    return makeSpinner(*this, bounds_);
}

void Spinner::change(double value)
{
    if (std::isnan(value))
        return;
    setValue(value);
    refresh();
    announceChange();
}

Spinner_Int::Spinner_Int(std::uint32_t id, std::string label, std::string tooltip,
                         std::int32_t* variable, const SpinnerBounds& bounds,
                         CInterfaceCallback* callback)
    : Node(NodeKind::IntSpinner, id, std::move(label), std::move(tooltip), callback),
      variable_(variable), bounds_(bounds)
{
}

void Spinner_Int::refresh()
{
    showInViews();
}

void Spinner_Int::writeProfile(Element& out)
{
    out = makeItem({});
    out.addChild(Text(std::to_string(*variable_)));
}

void Spinner_Int::readProfile(const Element& profile)
{
    const auto stored = storedNumber(itemIn(profile));
    if (!stored)
        return;
    setValue(*stored);
    refresh();
}

void Spinner_Int::setValue(double value)
{
    using Limits = std::numeric_limits<std::int32_t>;
    if (std::isnan(value))
        return;
    const SpinnerBounds representable{Limits::min(), Limits::max(), 1.0, 1};
    *variable_ = static_cast<std::int32_t>(bounded(bounded(value, bounds_), representable));
}

Element Spinner_Int::buildLayout()
{
    return makeSpinner(*this, bounds_);
}

void Spinner_Int::change(double value)
{
    if (std::isnan(value))
        return;
    setValue(value);
    refresh();
    announceChange();
}

CheckBox::CheckBox(std::uint32_t id, std::string label, std::string tooltip, bool* variable,
                   CInterfaceCallback* callback)
    : Node(NodeKind::CheckBox, id, std::move(label), std::move(tooltip), callback),
      variable_(variable)
{
}

void CheckBox::refresh()
{
    showInViews();
}

void CheckBox::writeProfile(Element& out)
{
    out = makeItem({});
    out.addChild(Text(*variable_ ? "1" : "0"));
}

void CheckBox::readProfile(const Element& profile)
{
    const auto stored = storedNumber(itemIn(profile));
    if (!stored)
        return;
    setValue(*stored);
    refresh();
}

Element CheckBox::buildLayout()
{
    Element box = makeComponent("checkbox", *this);
    box.setAttribute("defaultstate", *variable_ ? "true" : "false");
    return makeRow(*this, box);
}

void CheckBox::change(double value)
{
    if (std::isnan(value))
        return;
    setValue(value);
    refresh();
    announceChange();
}

} // namespace tvw::rgs::core::configadaptor::element

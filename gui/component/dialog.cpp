#include "gui/component/dialog.h"

#include "gui/message_ids.h"

namespace tvw::gui::component {

namespace {

using F = DialogFields;
constexpr Row<F> kRows[] = {
    row<&F::icon>("icon"),
    row<&F::topmost>("topmost"),
    row<&F::modal>("modal"),
    row<&F::minimizeButton>("minimizebtn"),
    row<&F::maximizeButton>("maximizebtn"),
    row<&F::closeButton>("closebtn"),
    row<&F::titlebar>("titlebar"),
};

} // namespace

Dialog::Dialog(const util::xml::Element& element) : FieldComponent(kKind, kRows, element)
{
    readSides(element, "padding", layout_.padding);
}

void Dialog::writeXml(util::xml::Element& element) const
{
    FieldComponent::writeXml(element);
    writeSpacing(layout_, element);
}

void Dialog::setPadding(Side side, int pixels)
{
    layout_.padding[static_cast<std::size_t>(side)] = pixels;
    applyLayout();
}

void Dialog::setPadding(int top, int right, int bottom, int left)
{
    layout_.padding = {top, right, bottom, left};
    applyLayout();
}

void Dialog::setTopmost(bool value)
{
    fields_.topmost = value;
    applyWindowFlags();
}

void Dialog::setMaximizeButton(bool value)
{
    fields_.maximizeButton = value;
    applyWindowFlags();
}

void Dialog::setMinimizeButton(bool value)
{
    fields_.minimizeButton = value;
    applyWindowFlags();
}

void Dialog::setCloseButton(bool value)
{
    fields_.closeButton = value;
    applyWindowFlags();
}

void Dialog::showModal()
{
    modal_ = true;
    show();
    shownModally();
    setTopmost(true);
    notify(message::modalShown);
}

void Dialog::endModal()
{
    modal_ = false;
    hide();
}

} // namespace tvw::gui::component

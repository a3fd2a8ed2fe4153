#include "gui/qt/box_holder.h"

#include "gui/qt/boxlayout.h"

#include <QWidget>

namespace tvw::gui {

namespace {

Qt::Alignment alignment(HAlign horizontal, VAlign vertical)
{
    constexpr Qt::AlignmentFlag kHorizontal[] = {Qt::AlignmentFlag(0), Qt::AlignLeft,
                                                 Qt::AlignRight, Qt::AlignHCenter};
    constexpr Qt::AlignmentFlag kVertical[] = {Qt::AlignmentFlag(0), Qt::AlignTop, Qt::AlignBottom,
                                               Qt::AlignVCenter};
    return kHorizontal[static_cast<int>(horizontal)] | kVertical[static_cast<int>(vertical)];
}

} // namespace

QBoxLayoutLimited* BoxHolder::layout() const
{
    return layout_;
}

void BoxHolder::build(QWidget& host, const Component& container,
                      const component::ContainerFields& fields)
{
    drop();
    layout_ = new QBoxLayoutLimited(QBoxLayout::TopToBottom, &host);
    setLimits(container);
    apply(fields);
}

void BoxHolder::drop()
{
    delete layout_.data(); // the widgets stay the host's
}

void BoxHolder::apply(const component::ContainerFields& fields)
{
    if (!layout_)
        return;
    const auto side = [&](Side which) { return fields.padding[static_cast<std::size_t>(which)]; };
    layout_->setDirection(fields.vertical ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    layout_->setContentsMargins(side(Side::Left), side(Side::Top), side(Side::Right),
                                side(Side::Bottom));
    layout_->setAlignment(alignment(fields.halign, fields.valign));
    layout_->invalidate();
}

void BoxHolder::setLimits(const Component& container)
{
    if (layout_)
        layout_->setLimits(container.minSize(), container.maxSize());
}

void BoxHolder::insert(const Component& container, Component& child)
{
    QWidget* const widget = child.widget();
    if (!layout_ || widget == nullptr)
        return;
    layout_->removeWidget(widget);
    int index = 0;
    for (Component* const sibling : container.children()) {
        if (sibling == &child)
            break;
        if (sibling->widget() != nullptr && layout_->indexOf(sibling->widget()) >= 0)
            ++index;
    }
    layout_->insertWidget(index, widget);
}

void BoxHolder::remove(Component& child)
{
    QWidget* const widget = child.widget();
    if (widget == nullptr)
        return;
    if (layout_)
        layout_->removeWidget(widget);
    widget->setParent(nullptr);
    widget->hide();
}

} // namespace tvw::gui

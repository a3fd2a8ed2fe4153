#include "gui/qt/containers.h"

#include "gui/qt/boxlayout.h"
#include "gui/qt/frame.h"

namespace tvw::gui::component::qt {

List::List(const util::xml::Element& element) : QtContainer(element)
{
    applyFrame(*this, fields_.style);
}

void List::applyLayout()
{
    applyFrame(*this, fields_.style);
    QtContainer::applyLayout();
}

Border::Border(const util::xml::Element& element) : QtContainer(element)
{
    applyFrame(*this, fields_.style);
}

void Border::applyLayout()
{
    applyFrame(*this, fields_.style);
    QtContainer::applyLayout();
}

Group::Group(const util::xml::Element& element) : QtContainer(element)
{
    Group::applyLabel();
}

void Group::applyLabel()
{
    setTitle(QString::fromStdString(label()));
}

Scroll::Scroll(const util::xml::Element& element) : QtScrollComponent(element)
{
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
}

void Scroll::build()
{
    if (inner_ == nullptr) {
        inner_ = new QFrame;
        QScrollArea::setWidget(inner_);
        inner_->show();
    }
    box_.build(*inner_, *this, {});
    // The limits are those of the area; what it scrolls may be of any size.
    box_.layout()->setLimits({}, kUnlimited);
}

} // namespace tvw::gui::component::qt

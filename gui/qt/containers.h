/// The containers that hold a layout between show() and hide() and nothing else.
#pragma once

#include "gui/component/container.h"
#include "gui/component/scroll.h"
#include "gui/qt/qtcomponent.h"

#include <QFrame>
#include <QGroupBox>
#include <QScrollArea>

namespace tvw::gui::component::qt {

class List : public QtContainer<QtComponent<QFrame, component::List>>
{
public:
    explicit List(const util::xml::Element& element);

protected:
    void applyLayout() override;
};

class Border : public QtContainer<QtComponent<QFrame, component::Border>>
{
public:
    explicit Border(const util::xml::Element& element);

protected:
    void applyLayout() override;
};

class Group : public QtContainer<QtComponent<QGroupBox, component::Group>>
{
public:
    explicit Group(const util::xml::Element& element);

protected:
    void applyLabel() override;
};

/// Its layout lies in a frame that the area scrolls.
class Scroll : public QtScrollComponent<QScrollArea, component::Scroll>
{
public:
    explicit Scroll(const util::xml::Element& element);

    void childWidgetAdded(Component* child) override { box_.insert(*this, *child); }
    void childWidgetRemoved(Component* child) override { box_.remove(*child); }

protected:
    void build() override;
    void unbuild() override { box_.drop(); }

private:
    QFrame* inner_ = nullptr;
    BoxHolder box_;
};

} // namespace tvw::gui::component::qt

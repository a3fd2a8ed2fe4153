/// The layout that a container has between show() and hide(), and the widgets in it.
#pragma once

#include "gui/component/container.h"

#include <QPointer>

class QWidget;

namespace tvw::gui {

class QBoxLayoutLimited;

class BoxHolder
{
public:
    /// Puts a new layout into the host, in place of the present one.
    void build(QWidget& host, const Component& container, const component::ContainerFields& fields);
    void drop();
    /// Nothing without a layout.
    void apply(const component::ContainerFields& fields);
    void setLimits(const Component& container);
    /// Puts the child's widget where its place among the container's children is, or moves it
    /// there.
    void insert(const Component& container, Component& child);
    /// The child's widget has no parent then.
    void remove(Component& child);

    [[nodiscard]] QBoxLayoutLimited* layout() const;

private:
    QPointer<QBoxLayoutLimited> layout_;
};

} // namespace tvw::gui

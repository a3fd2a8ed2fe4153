/// Joins a widget class with a kind of component: what all of them share stands here.
#pragma once

#include "gui/message_ids.h"
#include "gui/qt/box_holder.h"
#include "gui/qt/widget_events.h"

#include <QEvent>
#include <QKeyEvent>
#include <QMoveEvent>
#include <QPaintEvent>
#include <QResizeEvent>

#include <utility>

namespace tvw::gui::component::qt {

/// W: a widget class; Model: the component of the kind. The widget is hidden until show().
template <class W, class Model>
class QtComponent : public W, public Model
{
public:
    /// The further arguments go to the widget.
    template <class... Arguments>
    explicit QtComponent(const util::xml::Element& element, Arguments&&... arguments)
        : W(std::forward<Arguments>(arguments)...), Model(element)
    {
        this->setWidgetOf(this);
        W::hide();
        if (!Model::styleSheet().empty())
            W::setStyleSheet(QString::fromStdString(Model::styleSheet()));
        applyLimitsTo(*this, *this);
        if (Model::size() != Size{})
            W::resize(Model::size().width, Model::size().height);
        if (Model::position() != Point{})
            W::move(Model::position().x, Model::position().y);
        W::setEnabled(this->ownEnabled());
    }
    ~QtComponent() override
    {
        Model::end();
        ending_ = true;
    }

    void repaint() override { paintArea(*this).update(); }
    void grabKeyboard() override { W::grabKeyboard(); }
    void releaseKeyboard() override { W::releaseKeyboard(); }
    void setDesiredSize(Size size) override
    {
        Model::setDesiredSize(size);
        W::updateGeometry();
    }

    QSize sizeHint() const override
    {
        const Size desired = Model::desiredSize();
        QSize hint = W::sizeHint();
        if (desired.width > 0)
            hint.setWidth(desired.width);
        if (desired.height > 0)
            hint.setHeight(desired.height);
        return hint;
    }

protected:
    /// Whether Ctrl+Z and Ctrl+Y go on to the dialog instead of to the widget's own class.
    [[nodiscard]] virtual bool passesUndoKeysOn() const { return false; }
    /// Paints what the widget is, between background and highlight.
    virtual void paintContent(QPaintEvent* event) { W::paintEvent(event); }

    bool event(QEvent* event) override
    {
        return (!ending_ && handleCommonEvent(*this, *this, *event)) || W::event(event);
    }
    void keyPressEvent(QKeyEvent* event) override
    {
        if (!takeKey(*this, *event, message::keyPressed, passesUndoKeysOn()))
            W::keyPressEvent(event);
    }
    void keyReleaseEvent(QKeyEvent* event) override
    {
        if (!takeKey(*this, *event, message::keyReleased, passesUndoKeysOn()))
            W::keyReleaseEvent(event);
    }
    void paintEvent(QPaintEvent* event) override
    {
        paintBackground(*this);
        paintContent(event);
        paintHighlight(*this, *this, *event);
    }
    void resizeEvent(QResizeEvent* event) override
    {
        // Not the event's size: in a scroll area that is the viewport's.
        const Size size{W::width(), W::height()};
        if (!ending_ && size != Model::size())
            Model::setSize(size);
        W::resizeEvent(event);
    }
    void moveEvent(QMoveEvent* event) override
    {
        const Point position{event->pos().x(), event->pos().y()};
        if (!ending_ && position != Model::position())
            Model::setPosition(position);
        W::moveEvent(event);
    }

    void applyVisible(bool value) override { W::setVisible(value); }
    void applyEnabled(bool value) override { W::setEnabled(value); }
    void applyLimits() override { applyLimitsTo(*this, *this); }
    void applySize() override { W::resize(Model::size().width, Model::size().height); }
    void applyPosition() override { W::move(Model::position().x, Model::position().y); }

private:
    bool ending_ = false;
};

/// The same of a scroll area, whose viewport gets the mouse events.
template <class W, class Model>
class QtScrollComponent : public QtComponent<W, Model>
{
public:
    using QtComponent<W, Model>::QtComponent;

protected:
    bool viewportEvent(QEvent* event) override
    {
        return handlePopup(*this, *this, *event) || W::viewportEvent(event);
    }
};

/// The same of a container. Base: a QtComponent; it has layoutFields().
template <class Base>
class QtContainer : public Base
{
public:
    using Base::Base;

    void childWidgetAdded(Component* child) override { box_.insert(*this, *child); }
    void childWidgetRemoved(Component* child) override { box_.remove(*child); }

protected:
    [[nodiscard]] virtual QWidget& layoutHost() { return *this; }

    void build() override
    {
        Base::build();
        box_.build(layoutHost(), *this, this->layoutFields());
    }
    void unbuild() override
    {
        box_.drop();
        applyLimitsTo(*this, *this);
    }
    void applyLimits() override
    {
        Base::applyLimits();
        box_.setLimits(*this);
    }
    void applyLayout() override { box_.apply(this->layoutFields()); }

    BoxHolder box_;
};

} // namespace tvw::gui::component::qt

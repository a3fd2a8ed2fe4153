#include "app/window_base.h"

#include "core/adaptor.h"
#include "core/core_implementation.h"
#include "core/log.h"
#include "core/paths.h"
#include "gui/componentinterface/dialog.h"
#include "gui/message_ids.h"
#include "util/factory.h"
#include "util/xml/element.h"

#include <QWidget>

#include <utility>

namespace tvw::rgs::app {

using util::xml::Element;

std::string layoutPath(const std::string& name)
{
    return core::getPath("data") + "/core/layout/" + name + ".xml";
}

std::string coreImages()
{
    return core::getPath("data") + "/core/images";
}

std::string productIcon()
{
    return coreImages() + "/tarvo_ico_16.png";
}

Element loadLayout(const std::string& name)
{
    Element element;
    if (element.loadFile(layoutPath(name)) != util::xml::code::ok) {
        core::log(core::LogKind::General, core::LogSeverity::Error,
                  "The window " + layoutPath(name) + " can't be read");
        return {};
    }
    return element;
}

void addImageTokens(gui::Component& component)
{
    component.setVariable("[images]", coreImages());
    component.setVariable("[coreimages]", coreImages());
}

WindowBase::WindowBase(std::string name) : MessageNode(std::move(name)) {}

/// The components tell of their end, which nobody is left to handle.
WindowBase::~WindowBase()
{
    while (sourceCount() > 0 && stopListeningTo(sourceAt(0))) {
    }
}

bool WindowBase::build(const std::string& layout)
{
    const Element element = loadLayout(layout);
    root_.reset(AbstractFactory<gui::Component>::instance().create(element));
    if (root_)
        addImageTokens(*root_);
    return root_ != nullptr;
}

gui::Component* WindowBase::find(int id) const
{
    if (!root_ || root_->id() == id)
        return root_.get();
    return root_->findById(id);
}

void WindowBase::show()
{
    if (root_)
        root_->show();
}

void WindowBase::hide()
{
    if (root_ && root_->isShown())
        root_->hide();
}

bool WindowBase::isShown() const
{
    return root_ && root_->isShown();
}

void WindowBase::raise()
{
    if (auto* const dialog = gui::toDialog(root_.get()))
        dialog->activate();
}

void WindowBase::placeOver(gui::Component& other)
{
    const QWidget* const below = gui::rootOf(other).widget();
    const QWidget* const own = root_ ? root_->widget() : nullptr;
    if (!below || !own)
        return;
    const QPoint corner = below->geometry().center() - own->rect().center();
    root_->setPosition({corner.x(), corner.y()});
}

void WindowBase::setText(int id, const std::string& text)
{
    if (gui::Component* const component = find(id))
        component->setLabel(text);
}

void WindowBase::listen(std::initializer_list<int> ids)
{
    for (const int id : ids) {
        if (gui::Component* const component = find(id); component && !hasSource(component))
            listenTo(component);
    }
}

void WindowBase::listenAll(gui::Component& component)
{
    if (!hasSource(&component))
        listenTo(&component);
    for (std::size_t i = 0; i < component.childCount(); ++i)
        listenAll(*component.childAt(i));
}

void WindowBase::receive(Message& message, bool)
{
    if (message.id < gui::message::first || message.id >= gui::message::end)
        return;
    if (gui::Component* const component = gui::componentOf(message))
        handle(*component, message);
}

bool WindowBase::handleWindowKeys(const Message& message)
{
    core::AdaptorInterface& host = *core::adaptor();
    switch (message.id) {
    case gui::message::windowActive:
        host.disableHostKeys();
        return true;
    case gui::message::windowInactive:
        host.enableHostKeys();
        return true;
    case gui::message::undoKey:
        host.hostUndo();
        return true;
    case gui::message::redoKey:
        host.hostRedo();
        return true;
    default:
        return false;
    }
}

} // namespace tvw::rgs::app

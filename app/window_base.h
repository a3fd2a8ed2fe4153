/// What every window has that is built from a layout file.
#pragma once

#include "gui/componentinterface/interface.h"

#include <initializer_list>
#include <string>

namespace tvw::rgs::app {

/// Owns the tree of components and hears those it listens to. [main thread]
class WindowBase : public MessageNode
{
public:
    explicit WindowBase(std::string name);
    ~WindowBase() override;

    /// Null until `build`, and for a layout that does not build: every operation then does nothing.
    [[nodiscard]] gui::Component* root() const { return root_.get(); }
    [[nodiscard]] gui::Component* find(int id) const; ///< the root too

    /// The interface of a component by its id; null when there is none of that kind.
    template <class Kind>
    [[nodiscard]] Kind* as(int id) const
    {
        return gui::toKind<Kind>(find(id));
    }

    void show();
    void hide();
    [[nodiscard]] bool isShown() const;
    void raise();
    void placeOver(gui::Component& other); ///< in the middle of another window

    void setText(int id, const std::string& text); ///< of a component's label

    void receive(Message& message, bool isBroadcast) final;

protected:
    /// Builds ":/.../core/layout/<layout>.xml" with its image tokens. False, and the log has the
    /// reason, when that fails.
    bool build(const std::string& layout);

    void listen(std::initializer_list<int> ids);
    void listenAll(gui::Component& component); ///< to it and all below it

    /// A message of a component that is listened to, from the range of GUI messages.
    virtual void handle(gui::Component& component, Message& message) = 0;

    /// Ctrl+Z, Ctrl+Y, and the host's keys while the window is in front: for a root's messages.
    /// Whether it was one of these.
    static bool handleWindowKeys(const Message& message);

private:
    gui::ComponentPtr root_;
};

/// The path of a layout file by its name.
std::string layoutPath(const std::string& name);

/// The folder of the program's own images.
std::string coreImages();

/// The parsed layout of that name; an element without a tag when it can't be read, and the log has
/// the reason.
util::xml::Element loadLayout(const std::string& name);

/// "[images]" and "[coreimages]" of a window.
void addImageTokens(gui::Component& component);

/// The main window's icon, for boxes.
std::string productIcon();

} // namespace tvw::rgs::app

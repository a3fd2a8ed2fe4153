/// A box with two or three states.
#pragma once

#include "gui/componentinterface/interface.h"

namespace tvw::gui {

enum class CheckState { Off = 0, Undetermined = 1, On = 2 };

namespace componentinterface {

class CheckBox : public Interface
{
public:
    static constexpr const char* kTag = "checkbox";

    [[nodiscard]] virtual bool value() const = 0; ///< whether the state is On
    virtual void setValue(bool value) = 0;        ///< tells no listener
    [[nodiscard]] virtual CheckState state() const = 0;
    virtual void setState(CheckState state) = 0; ///< tells no listener
    [[nodiscard]] virtual bool tristate() const = 0;
    virtual void setTristate(bool value) = 0;
    [[nodiscard]] virtual CheckState defaultState() const = 0;
    virtual void setDefaultState(CheckState state) = 0; ///< what a right click goes back to
    /// Boxes of one group, 0 or more, take a box's state when it is dragged over them; -1: none.
    virtual void setPaintGroup(int group) = 0;
    [[nodiscard]] virtual int paintGroup() const = 0;
};

} // namespace componentinterface

[[nodiscard]] inline componentinterface::CheckBox* toCheckBox(Component* component)
{
    return toKind<componentinterface::CheckBox>(component);
}

} // namespace tvw::gui

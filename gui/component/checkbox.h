#pragma once

#include "gui/componentinterface/checkbox.h"
#include "gui/stdcomponent.h"

namespace tvw::gui::component {

struct CheckBoxFields
{
    CheckState defaultState = CheckState::Off;
    bool tristate = false;
    int paintGroup = -1;
};

class CheckBox : public FieldComponent<componentinterface::CheckBox, CheckBoxFields>
{
public:
    static constexpr KindInfo kKind{kTag, {16960, 17024}};

    explicit CheckBox(const util::xml::Element& element);

    bool value() const override { return state() == CheckState::On; }
    void setValue(bool value) override { setState(value ? CheckState::On : CheckState::Off); }
    CheckState state() const override { return state_; }
    void setState(CheckState state) override { state_ = state; }
    bool tristate() const override { return fields_.tristate; }
    void setTristate(bool value) override { fields_.tristate = value; }
    CheckState defaultState() const override { return fields_.defaultState; }
    void setDefaultState(CheckState state) override { fields_.defaultState = state; }
    void setPaintGroup(int group) override { fields_.paintGroup = group; }
    int paintGroup() const override { return fields_.paintGroup; }

private:
    CheckState state_;
};

} // namespace tvw::gui::component

#pragma once

#include "gui/componentinterface/menubar.h"
#include "gui/stdcomponent.h"

#include <vector>

namespace tvw::gui::component {

class Menubar : public StdComponent, public componentinterface::Menubar
{
public:
    static constexpr KindInfo kKind{kTag, {17152, 17216}};

    explicit Menubar(const util::xml::Element& element);

    componentinterface::Interface* interface() override
    {
        return static_cast<componentinterface::Menubar*>(this);
    }
    void writeXml(util::xml::Element& element) const override;
    void rebuild(const util::xml::Element& element) override;
    const MenuItem* itemAt(std::size_t index) const override;
    void setItemGrayed(int id, bool grayed) override;
    const util::xml::Element& element() const override { return menus_; }

private:
    void collect(const util::xml::Element& menu);

    util::xml::Element menus_;
    std::vector<MenuItem> items_;
};

} // namespace tvw::gui::component

#pragma once

#include "gui/stdcomponent.h"

namespace tvw::gui::component {

/// Shows its children in an area that can be larger than itself.
class Scroll : public StdComponent
{
public:
    static constexpr KindInfo kKind{"scroll"};

    explicit Scroll(const util::xml::Element& element) : StdComponent(kKind, element) {}
};

} // namespace tvw::gui::component

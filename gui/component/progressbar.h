#pragma once

#include "gui/stdcomponent.h"

namespace tvw::gui::component {

/// A bar that the widget layer draws; it has no interface of its own.
class Progressbar : public StdComponent
{
public:
    static constexpr KindInfo kKind{"progressbar"};

    explicit Progressbar(const util::xml::Element& element) : StdComponent(kKind, element) {}
};

} // namespace tvw::gui::component

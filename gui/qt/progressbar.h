#pragma once

#include "gui/component/progressbar.h"
#include "gui/qt/qtcomponent.h"

#include <QProgressBar>

namespace tvw::gui::component::qt {

class Progressbar : public QtComponent<QProgressBar, component::Progressbar>
{
public:
    using QtComponent::QtComponent;
};

} // namespace tvw::gui::component::qt

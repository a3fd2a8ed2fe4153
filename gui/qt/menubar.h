#pragma once

#include "gui/component/menubar.h"
#include "gui/qt/qtcomponent.h"

#include <QMenuBar>

#include <vector>

namespace tvw::gui::component::qt {

class Menubar : public QtComponent<QMenuBar, component::Menubar>
{
public:
    explicit Menubar(const util::xml::Element& element);

    void rebuild(const util::xml::Element& element) override;
    void setItemGrayed(int id, bool grayed) override;

private:
    void fill(QMenu& menu, const util::xml::Element& element);
    void addMenus();

    std::vector<QAction*> actions_; ///< those of itemAt(0), itemAt(1) ...
};

} // namespace tvw::gui::component::qt

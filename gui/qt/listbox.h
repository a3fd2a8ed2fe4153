#pragma once

#include "gui/component/listbox.h"
#include "gui/qt/qtcomponent.h"

#include <QListWidget>

namespace tvw::gui::component::qt {

class ListBox : public QtScrollComponent<QListWidget, component::ListBox>
{
public:
    explicit ListBox(const util::xml::Element& element);

    void insertItem(const std::string& text, int index) override;
    void removeItem(int index) override;
    void clear() override;
    void selectIndex(int index) override;
    int currentIndex() const override { return currentRow(); }

private:
    void insertRow(const std::string& text, int row);
};

} // namespace tvw::gui::component::qt

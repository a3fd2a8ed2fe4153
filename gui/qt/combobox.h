#pragma once

#include "gui/component/combobox.h"
#include "gui/qt/qtcomponent.h"

#include <QComboBox>

namespace tvw::gui::component::qt {

class ComboBox : public QtComponent<QComboBox, component::ComboBox>
{
public:
    explicit ComboBox(const util::xml::Element& element);

    void insertItem(const std::string& text, int index) override;
    void removeItem(int index) override;
    void clear() override;
    void selectIndex(int index) override;
    void selectText(const std::string& text) override;
    std::string currentText() const override { return QComboBox::currentText().toStdString(); }
    int currentIndex() const override { return QComboBox::currentIndex(); }
    void setEditable(bool value) override;

protected:
    void wheelEvent(QWheelEvent* event) override;

private:
    /// Makes a change of ours, of which listeners do not hear.
    template <class Change>
    void silently(Change change);

    bool silent_ = false;
};

} // namespace tvw::gui::component::qt

#include "gui/qt/combobox.h"

#include <QWheelEvent>

namespace tvw::gui::component::qt {

template <class Change>
void ComboBox::silently(Change change)
{
    const bool before = silent_;
    silent_ = true;
    change();
    silent_ = before;
}

ComboBox::ComboBox(const util::xml::Element& element) : QtComponent(element)
{
    QComboBox::setEditable(editable());
    setInsertPolicy(QComboBox::NoInsert); // Return would add what was typed
    for (int i = 0; i < ItemComponent::count(); ++i)
        QComboBox::addItem(QString::fromStdString(itemAt(i)));
    const auto tell = [this](std::uint32_t id) {
        if (!silent_)
            notify(id);
    };
    QObject::connect(this, qOverload<int>(&QComboBox::currentIndexChanged), this,
                     [tell] { tell(message::selectionChanged); });
    QObject::connect(this, qOverload<int>(&QComboBox::activated), this,
                     [tell] { tell(message::itemActivated); });
    QObject::connect(this, &QComboBox::editTextChanged, this,
                     [tell] { tell(message::comboTextChanged); });
}

void ComboBox::insertItem(const std::string& text, int index)
{
    silently([&] {
        QComboBox::insertItem(place(index), QString::fromStdString(text));
        ItemComponent::insertItem(text, index);
    });
}

void ComboBox::removeItem(int index)
{
    if (!has(index))
        return;
    silently([&] {
        ItemComponent::removeItem(index);
        QComboBox::removeItem(index);
    });
}

void ComboBox::clear()
{
    silently([&] {
        ItemComponent::clear();
        QComboBox::clear();
    });
}

void ComboBox::selectIndex(int index)
{
    silently([&] { setCurrentIndex(has(index) ? index : -1); });
}

void ComboBox::selectText(const std::string& text)
{
    const int index = indexOf(text);
    selectIndex(index);
    if (index < 0 && isEditable())
        silently([&] { setEditText(QString::fromStdString(text)); });
}

void ComboBox::setEditable(bool value)
{
    component::ComboBox::setEditable(value);
    silently([&] { QComboBox::setEditable(value); });
}

/// Whoever scrolls a page of boxes must not change those that pass under the cursor.
void ComboBox::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}

} // namespace tvw::gui::component::qt

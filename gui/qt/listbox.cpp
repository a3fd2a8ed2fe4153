#include "gui/qt/listbox.h"

namespace tvw::gui::component::qt {

ListBox::ListBox(const util::xml::Element& element) : QtScrollComponent(element)
{
    for (int i = 0; i < ItemComponent::count(); ++i)
        insertRow(ItemComponent::itemAt(i), i);
    QObject::connect(this, &QListWidget::currentRowChanged, this,
                     [this] { notify(message::selectionChanged); });
    QObject::connect(this, &QListWidget::itemDoubleClicked, this,
                     [this] { notify(message::itemActivated); });
    QObject::connect(this, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
        if (has(QListWidget::row(item))) // the user has edited it
            replaceItem(QListWidget::row(item), item->text().toStdString());
    });
}

void ListBox::insertRow(const std::string& text, int row)
{
    auto* const item = new QListWidgetItem(QString::fromStdString(text));
    if (fields_.editable)
        item->setFlags(item->flags() | Qt::ItemIsEditable);
    QListWidget::insertItem(row, item);
}

void ListBox::insertItem(const std::string& text, int index)
{
    const int row = place(index);
    ItemComponent::insertItem(text, index);
    insertRow(text, row);
}

void ListBox::removeItem(int index)
{
    if (!has(index))
        return;
    ItemComponent::removeItem(index);
    delete takeItem(index);
}

void ListBox::clear()
{
    ItemComponent::clear();
    QListWidget::clear();
}

void ListBox::selectIndex(int index)
{
    setCurrentRow(has(index) ? index : -1);
}

} // namespace tvw::gui::component::qt

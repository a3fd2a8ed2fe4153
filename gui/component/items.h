/// The texts of a list or combo box, and which of them is the current one.
#pragma once

#include "gui/componentinterface/items.h"
#include "gui/stdcomponent.h"

#include <string>
#include <vector>

namespace tvw::gui::component {

struct ItemFields
{
    bool editable = false;
};
inline constexpr Row<ItemFields> kItemRows[] = {row<&ItemFields::editable>("editable")};

/// Interface: ComboBox or ListBox. The widget layer overrides what changes and reads the current
/// item; the texts are kept here.
template <class Interface>
class ItemComponent : public FieldComponent<Interface, ItemFields>
{
public:
    ItemComponent(const KindInfo& kind, const util::xml::Element& element)
        : FieldComponent<Interface, ItemFields>(kind, kItemRows, element)
    {
        for (const util::xml::Element& child : element.children()) {
            if (child.kind() == util::xml::Kind::Tag && child.name() == "item")
                items_.emplace_back(child.text());
        }
    }

    void writeXml(util::xml::Element& element) const override
    {
        FieldComponent<Interface, ItemFields>::writeXml(element);
        for (const std::string& item : items_)
            element.addChild(util::xml::TagWithData("item", item));
    }

    int count() const override { return static_cast<int>(items_.size()); }
    std::string itemAt(int index) const override { return has(index) ? items_[index] : ""; }
    void insertItem(const std::string& text, int index) override
    {
        items_.insert(items_.begin() + place(index), text);
        if (current_ >= place(index))
            ++current_;
    }
    void removeItem(int index) override
    {
        if (!has(index))
            return;
        items_.erase(items_.begin() + index);
        if (current_ > index || current_ >= count())
            --current_;
    }
    int indexOf(const std::string& text) const override
    {
        for (int i = 0; i < count(); ++i) {
            if (items_[i] == text)
                return i;
        }
        return -1;
    }
    void clear() override
    {
        items_.clear();
        current_ = -1;
    }
    void selectText(const std::string& text) override { this->selectIndex(indexOf(text)); }
    void selectIndex(int index) override { current_ = has(index) ? index : -1; }
    std::string currentText() const override { return itemAt(this->currentIndex()); }
    int currentIndex() const override { return current_; }

protected:
    void replaceItem(int index, const std::string& text) ///< has(index)
    {
        items_[static_cast<std::size_t>(index)] = text;
    }
    [[nodiscard]] bool has(int index) const { return index >= 0 && index < count(); }
    /// Where an item goes that is inserted at an index.
    [[nodiscard]] int place(int index) const
    {
        return index < 0 || index > count() ? count() : index;
    }

private:
    std::vector<std::string> items_;
    int current_ = -1;
};

} // namespace tvw::gui::component

/// What lists and combo boxes have in common.
#pragma once

#include "gui/componentinterface/interface.h"

#include <string>

namespace tvw::gui::componentinterface {

/// Indices count from 0; -1 stands for no item, and behind the last one as an insert position. An
/// index that does not exist changes nothing and reads as "".
class Items : public Interface
{
public:
    [[nodiscard]] virtual int count() const = 0;
    [[nodiscard]] virtual std::string itemAt(int index) const = 0;
    virtual void insertItem(const std::string& text, int index) = 0;
    virtual void removeItem(int index) = 0;
    [[nodiscard]] virtual int indexOf(const std::string& text) const = 0;
    virtual void clear() = 0;
    virtual void selectText(const std::string& text) = 0;
    virtual void selectIndex(int index) = 0; ///< -1: no selection
    [[nodiscard]] virtual std::string currentText() const = 0;
    [[nodiscard]] virtual int currentIndex() const = 0;
};

} // namespace tvw::gui::componentinterface

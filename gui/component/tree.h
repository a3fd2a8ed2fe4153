#pragma once

#include "gui/componentinterface/tree.h"
#include "gui/stdcomponent.h"

#include <array>
#include <vector>

namespace tvw::gui::component {

struct TreeFields
{
    bool dragDrop = false;
};

/// One flag column.
struct TreeFlag
{
    std::string label;
    std::array<std::string, 3> icons; ///< by state: off, on, undetermined; may hold variables
    int defaultState = 0;
    int headerState = 0;
};

class Tree : public FieldComponent<componentinterface::Tree, TreeFields>
{
public:
    static constexpr KindInfo kKind{kTag, {17024, 17088}};

    explicit Tree(const util::xml::Element& element);

    void writeXml(util::xml::Element& element) const override;
    void refresh() override;
    void setFlagCount(int count) override;
    int flagCount() const override { return static_cast<int>(flags_.size()); }
    int headerState(int flag) const override;
    void setHeaderState(int flag, int state) override;
    int defaultState(int flag) const override;
    void setDefaultState(int flag, int state) override;
    void setFlagIcons(int flag, const std::string& falseIcon, const std::string& trueIcon,
                      const std::string& undeterminedIcon) override;
    bool hasFlagIcons(int flag) const override;
    std::string flagIcon(int flag, int state) const override;
    void setRoot(Node* node, bool showRoot) override;
    Node* root() const override { return root_; }
    void select(Node* node) override { selected_ = node; }
    Node* selected() const override { return selected_; }
    void reset() override {}
    int iconIndex(const std::string&) override { return -1; }
    void beginRename(Node* node) override { select(node); }

    [[nodiscard]] bool showsRoot() const { return showRoot_; }
    [[nodiscard]] bool dragDrop() const { return fields_.dragDrop; }
    [[nodiscard]] const TreeFlag* flagAt(int flag) const; ///< null if there is none

private:
    [[nodiscard]] TreeFlag* mutableFlagAt(int flag);

    std::vector<TreeFlag> flags_;
    Node* root_ = nullptr;
    Node* selected_ = nullptr;
    bool showRoot_ = true;
};

} // namespace tvw::gui::component

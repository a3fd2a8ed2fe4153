#include "gui/component/tree.h"

#include "gui/message_ids.h"

#include <algorithm>

namespace tvw::gui::component {

using util::xml::Element;

namespace {

constexpr Row<TreeFields> kRows[] = {row<&TreeFields::dragDrop>("dragdrop")};

constexpr int kMaximumFlags = 32; ///< a node tells its flags in 32 bits

template <std::size_t State>
constexpr Row<TreeFlag> iconRow(const char* key)
{
    return {key, [](std::string_view text, TreeFlag& flag) { flag.icons[State] = text; },
            [](const TreeFlag& flag) { return flag.icons[State]; },
            [](const TreeFlag& a, const TreeFlag& b) { return a.icons[State] == b.icons[State]; }};
}

constexpr Row<TreeFlag> kFlagRows[] = {
    row<&TreeFlag::label>("label"),
    iconRow<0>("falseicon"),
    iconRow<1>("trueicon"),
    iconRow<2>("undeterminedicon"),
    // The state stands as a word, as that of a check box, or as a number.
    {"defaultstate",
     [](std::string_view text, TreeFlag& flag) {
         bool on = flag.defaultState == 1;
         readValue(text, flag.defaultState);
         readValue(text, on);
         if (text == "true" || text == "yes" || text == "false" || text == "no")
             flag.defaultState = on ? 1 : 0;
         else if (text == "undetermined")
             flag.defaultState = 2;
     },
     [](const TreeFlag& flag) {
         constexpr std::array<const char*, 3> kNames{"false", "true", "undetermined"};
         return std::string(kNames[static_cast<std::size_t>(std::clamp(flag.defaultState, 0, 2))]);
     },
     [](const TreeFlag& a, const TreeFlag& b) { return a.defaultState == b.defaultState; }},
};

} // namespace

Tree::Tree(const Element& element) : FieldComponent(kKind, kRows, element)
{
    for (const Element& child : element.children()) {
        if (child.name() != "flag" || flagCount() == kMaximumFlags)
            continue;
        TreeFlag& flag = flags_.emplace_back();
        readAttributes<TreeFlag>(child, kFlagRows, flag);
        flag.headerState = flag.defaultState == 1 ? 1 : 0;
    }
}

void Tree::writeXml(Element& element) const
{
    FieldComponent::writeXml(element);
    for (const TreeFlag& flag : flags_) {
        util::xml::Tag child("flag");
        writeAttributes<TreeFlag>(child, kFlagRows, flag);
        element.addChild(child);
    }
}

TreeFlag* Tree::mutableFlagAt(int flag)
{
    return flag >= 0 && flag < flagCount() ? &flags_[static_cast<std::size_t>(flag)] : nullptr;
}

const TreeFlag* Tree::flagAt(int flag) const
{
    return flag >= 0 && flag < flagCount() ? &flags_[static_cast<std::size_t>(flag)] : nullptr;
}

void Tree::refresh()
{
    repaint();
    notify(message::treeFlagClicked);
}

void Tree::setFlagCount(int count)
{
    flags_.resize(static_cast<std::size_t>(std::clamp(count, 0, kMaximumFlags)));
}

int Tree::headerState(int flag) const
{
    const TreeFlag* const found = flagAt(flag);
    return found ? found->headerState : 0;
}

void Tree::setHeaderState(int flag, int state)
{
    if (TreeFlag* const found = mutableFlagAt(flag))
        found->headerState = state == 1 ? 1 : 0;
    repaint();
}

int Tree::defaultState(int flag) const
{
    const TreeFlag* const found = flagAt(flag);
    return found ? found->defaultState : 0;
}

void Tree::setDefaultState(int flag, int state)
{
    if (TreeFlag* const found = mutableFlagAt(flag))
        found->defaultState = std::clamp(state, 0, 2);
}

void Tree::setFlagIcons(int flag, const std::string& falseIcon, const std::string& trueIcon,
                        const std::string& undeterminedIcon)
{
    if (TreeFlag* const found = mutableFlagAt(flag))
        found->icons = {falseIcon, trueIcon, undeterminedIcon};
}

bool Tree::hasFlagIcons(int flag) const
{
    const TreeFlag* const found = flagAt(flag);
    return found && !found->icons[0].empty() && !found->icons[1].empty();
}

std::string Tree::flagIcon(int flag, int state) const
{
    const TreeFlag* const found = flagAt(flag);
    return found && state >= 0 && state <= 2 ? found->icons[static_cast<std::size_t>(state)] : "";
}

void Tree::setRoot(Node* node, bool showRoot)
{
    root_ = node;
    showRoot_ = showRoot;
    selected_ = nullptr;
}

} // namespace tvw::gui::component

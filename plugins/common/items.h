/// Configuration items as a table.
///
/// A tool's parameters are one plain struct S, whose member initialisers are the defaults; a table of
/// `Item<S>` says how each is shown. The table is walked to declare the items, and checked at compile
/// time against the defaults (`isSound`).
#pragma once

#include "core/contract/interface.h"

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace tvw::rgs {

enum class ItemKind { Group, EndGroup, Spinner, IntSpinner, CheckBox, TextBox, ComboBox, Button, Label };

/// Bounds are inclusive; step is one click of the spinner.
struct Bounds
{
    double minimum, maximum, step;
};

/// How an item behaves beyond its value.
enum ItemFlags : unsigned {
    kPlain = 0,
    kLive = 1,  ///< declares an input "Spinner: " + label that turns the spinner in a run
    kHeard = 2, ///< the tool hears of a change (`itemChanged`)
};

inline constexpr int kTriggerLength = 10; ///< pixels of mouse travel per step, the same everywhere

template <class S>
struct Item
{
    ItemKind kind;
    std::string_view owner; ///< stands before the label: the name of a repeated family's member
    std::string_view label;
    std::string_view tooltip;
    double& (*number)(S&) = nullptr;
    std::int32_t& (*integer)(S&) = nullptr; ///< of a combo box: the index chosen
    bool& (*flag)(S&) = nullptr;
    std::string& (*text)(S&) = nullptr;
    Bounds bounds{0, 0, 1};
    unsigned flags = kPlain;
    std::span<const std::string_view> choices{};
    std::string_view tooltipEnd{}; ///< stands behind the tooltip, as the owner stands before the label

    std::string fullLabel() const { return std::string(owner).append(label); }
};

/// Makes the rows of a table for settings S. `Access` is a pointer to a member of S or of a base of
/// it, or a captureless lambda from S& to the member, for what lies deeper.
template <class S>
struct Items
{
    static constexpr Item<S> group(std::string_view label, std::string_view tooltip = {})
    {
        return {.kind = ItemKind::Group, .owner = {}, .label = label, .tooltip = tooltip};
    }

    static constexpr Item<S> end()
    {
        return {.kind = ItemKind::EndGroup, .owner = {}, .label = {}, .tooltip = {}};
    }

    /// A press is always heard.
    static constexpr Item<S> button(std::string_view label, std::string_view tooltip)
    {
        return {.kind = ItemKind::Button, .owner = {}, .label = label, .tooltip = tooltip, .flags = kHeard};
    }

    static constexpr Item<S> label(std::string_view text)
    {
        return {.kind = ItemKind::Label, .owner = {}, .label = text, .tooltip = {}};
    }

    template <auto Access>
    static constexpr Item<S> spinner(std::string_view label, std::string_view tooltip, Bounds bounds,
                                     unsigned flags = kPlain, std::string_view owner = {})
    {
        return {.kind = ItemKind::Spinner, .owner = owner, .label = label, .tooltip = tooltip,
                .number = &reach<double, Access>, .bounds = bounds, .flags = flags};
    }

    template <auto Access>
    static constexpr Item<S> intSpinner(std::string_view label, std::string_view tooltip, Bounds bounds,
                                        unsigned flags = kPlain, std::string_view owner = {})
    {
        return {.kind = ItemKind::IntSpinner, .owner = owner, .label = label, .tooltip = tooltip,
                .integer = &reach<std::int32_t, Access>, .bounds = bounds, .flags = flags};
    }

    template <auto Access>
    static constexpr Item<S> checkBox(std::string_view label, std::string_view tooltip,
                                      unsigned flags = kPlain, std::string_view owner = {})
    {
        return {.kind = ItemKind::CheckBox, .owner = owner, .label = label, .tooltip = tooltip,
                .flag = &reach<bool, Access>, .flags = flags};
    }

    template <auto Access>
    static constexpr Item<S> textBox(std::string_view label, std::string_view tooltip,
                                     unsigned flags = kPlain)
    {
        return {.kind = ItemKind::TextBox, .owner = {}, .label = label, .tooltip = tooltip,
                .text = &reach<std::string, Access>, .flags = flags};
    }

    template <auto Access>
    static constexpr Item<S> comboBox(std::string_view label, std::string_view tooltip,
                                      std::span<const std::string_view> choices,
                                      unsigned flags = kPlain)
    {
        return {.kind = ItemKind::ComboBox, .owner = {}, .label = label, .tooltip = tooltip,
                .integer = &reach<std::int32_t, Access>, .flags = flags, .choices = choices};
    }

private:
    template <class V, auto Access>
    static constexpr V& reach(S& settings)
    {
        if constexpr (std::is_member_object_pointer_v<decltype(Access)>)
            return settings.*Access;
        else
            return Access(settings);
    }
};

/// Tables one behind the other, for a family of rows made by a function.
template <class T, std::size_t... N>
constexpr auto join(const std::array<T, N>&... tables)
{
    std::array<T, (N + ...)> all{};
    std::size_t at = 0;
    const auto append = [&](const auto& table) {
        for (const T& row : table)
            all[at++] = row;
    };
    (append(tables), ...);
    return all;
}

namespace detail {

template <class S>
constexpr bool defaultWithinBounds(const Item<S>& item, S& defaults)
{
    switch (item.kind) {
    case ItemKind::Spinner: {
        const double value = item.number(defaults);
        return item.bounds.step > 0 && value >= item.bounds.minimum && value <= item.bounds.maximum;
    }
    case ItemKind::IntSpinner: {
        const double value = item.integer(defaults);
        return item.bounds.step > 0 && value >= item.bounds.minimum && value <= item.bounds.maximum;
    }
    case ItemKind::ComboBox: {
        const std::int32_t index = item.integer(defaults);
        return index >= 0 && static_cast<std::size_t>(index) < item.choices.size();
    }
    default:
        return true;
    }
}

/// Whether an earlier row of the same group (at the same depth, back to its start) has this label:
/// an item for an item, a group for a group.
template <class S>
constexpr bool repeatsInGroup(std::span<const Item<S>> items, std::size_t at)
{
    const bool isGroup = items[at].kind == ItemKind::Group;
    int depth = 0;
    for (std::size_t i = at; i-- > 0;) {
        if (items[i].kind == ItemKind::EndGroup) {
            ++depth;
            continue;
        }
        if (items[i].kind == ItemKind::Group && --depth < 0)
            return false;
        if (depth == 0 && (items[i].kind == ItemKind::Group) == isGroup &&
            items[i].owner == items[at].owner && items[i].label == items[at].label)
            return true;
    }
    return false;
}

} // namespace detail

/// Groups are balanced, labels unique within a group and beside it, steps positive, every default
/// within its bounds.
template <class S, std::size_t N>
constexpr bool isSound(const std::array<Item<S>, N>& table)
{
    const std::span<const Item<S>> items(table);
    S defaults{};
    int depth = 0;
    for (std::size_t i = 0; i < N; ++i) {
        if (items[i].kind == ItemKind::EndGroup) {
            if (--depth < 0)
                return false;
            continue;
        }
        if (detail::repeatsInGroup(items, i))
            return false;
        if (items[i].kind == ItemKind::Group)
            ++depth;
        if (!detail::defaultWithinBounds(items[i], defaults))
            return false;
    }
    return depth == 0;
}

/// Declares the items on the settings. callback: who hears of the heard ones.
/// combos: takes the updater of each combo box, in order; may be null.
template <class S>
void declareItems(CInterface& runtime, std::span<const Item<S>> items, S& settings,
                  CInterface::Callback* callback,
                  std::vector<CInterface::ComboUpdater*>* combos = nullptr)
{
    for (const Item<S>& item : items) {
        CInterface::Callback* const heardBy = item.flags & kHeard ? callback : nullptr;
        const bool live = item.flags & kLive;
        const Bounds& b = item.bounds;
        const std::string tooltip = std::string(item.tooltip).append(item.tooltipEnd);
        switch (item.kind) {
        case ItemKind::Group:
            runtime.beginGroup(item.fullLabel(), tooltip);
            break;
        case ItemKind::EndGroup:
            runtime.endGroup();
            break;
        case ItemKind::Spinner:
            runtime.addSpinner(item.fullLabel(), tooltip, &item.number(settings), b.minimum, b.maximum,
                               b.step, kTriggerLength, live, 0, heardBy);
            break;
        case ItemKind::IntSpinner:
            runtime.addIntSpinner(item.fullLabel(), tooltip, &item.integer(settings),
                                  static_cast<std::int32_t>(b.minimum),
                                  static_cast<std::int32_t>(b.maximum),
                                  static_cast<std::int32_t>(b.step), kTriggerLength, live, heardBy);
            break;
        case ItemKind::CheckBox:
            runtime.addCheckBox(item.fullLabel(), tooltip, &item.flag(settings), heardBy);
            break;
        case ItemKind::TextBox:
            runtime.addTextBox(item.fullLabel(), tooltip, &item.text(settings), heardBy);
            break;
        case ItemKind::ComboBox: {
            CInterface::ComboUpdater* updater = runtime.addComboBox(
                item.fullLabel(), tooltip, {item.choices.begin(), item.choices.end()},
                &item.integer(settings), heardBy);
            if (combos)
                combos->push_back(updater);
            break;
        }
        case ItemKind::Button:
            runtime.addButton(item.fullLabel(), tooltip, callback);
            break;
        case ItemKind::Label: {
            LabelRequest request{item.fullLabel(), 0};
            if (runtime.isSupported(code::addLabel))
                runtime.call(code::addLabel, &request);
            break;
        }
        }
    }
}

} // namespace tvw::rgs

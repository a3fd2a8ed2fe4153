/// A tool's entry in the tree. Owns the tool.
#pragma once

#include "core/tree_item.h"

#include <array>
#include <memory>

namespace tvw::rgs::core {

class Instance;
struct LimboOwner;

class InstanceReference final : public TreeItem
{
public:
    /// Takes the instance. With an undo open the making can be taken back.
    explicit InstanceReference(Instance* instance);
    ~InstanceReference() override;

    std::string getText() const override;
    std::string getToolTip() const override;
    void rename(const std::string& text) override; ///< in undo "Rename"; empty: the type's name
    void setState(Column column, ColumnState state, bool recursive) override;
    ColumnState getState(Column column) const override;
    void saveState(Column column) override;
    void restoreState(Column column) override;
    void showMixed(Column column) override;
    InstanceReference* clone() override;
    std::string iconPath() const override;
    util::xml::Element buildMenu() override;
    void onMenuCommand(int id) override;

    Instance& instance() const { return *instance_; }

    /// False while the entry is deleted but an undo record still holds it.
    bool isAlive() const { return alive_; }

    /// Whether a run takes the tool in: column 0, of a closed entry that shows mixed its own state.
    bool takesPart() const;

    InstanceReference* parentReference() const;
    std::vector<InstanceReference*> childReferences() const;

    /// Leaves the tree with the windows closed and the device out of the hub; goes back.
    void takeOut();
    void putIn(InstanceReference* parent, int index);

    /// Points at this entry, and at null once it has ended: for whoever may outlive it.
    using Watch = std::shared_ptr<InstanceReference*>;
    Watch watch() const { return watch_; }

    /// The token that the entry's undo records share.
    std::shared_ptr<LimboOwner> limboOwner();

    /// Visits this entry and all below it, parents first.
    template <class Visit>
    void forEach(Visit&& visit)
    {
        visit(*this);
        for (InstanceReference* const child : childReferences())
            child->forEach(visit);
    }

private:
    void showNodes(Column column, bool visible);

    Instance* instance_;
    std::array<ColumnState, kColumnCount> states_{ColumnState::On, ColumnState::On, ColumnState::On};
    std::array<ColumnState, kColumnCount> saved_{ColumnState::On, ColumnState::On, ColumnState::On};
    bool alive_ = true;
    std::weak_ptr<LimboOwner> limboOwner_;
    Watch watch_ = std::make_shared<InstanceReference*>(this);
};

/// The name of the tool above, empty below the root.
std::string parentToolName(const InstanceReference* reference);

} // namespace tvw::rgs::core

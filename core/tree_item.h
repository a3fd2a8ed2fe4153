/// An entry of the tool tree, as a tree view shows it.
#pragma once

#include "util/dynamicobject.h"
#include "util/xml/element.h"

#include <array>
#include <string>
#include <vector>

namespace tvw::rgs::core {

/// The columns of the tree.
enum class Column { Run, LowPoly, HiPoly };
inline constexpr int kColumnCount = 3;

/// What a column of an entry shows. Mixed: a closed entry whose children differ.
enum class ColumnState { Off, On, Mixed };

/// Owns its children. THE ORDER OF THE VIRTUAL OPERATIONS IS FROZEN.
class TreeItem : public DynamicObject
{
public:
    ~TreeItem() override;

    virtual std::string getText() const = 0;
    virtual std::string getToolTip() const { return {}; }
    virtual void rename(const std::string& text) = 0;
    virtual void setState(Column column, ColumnState state, bool recursive) = 0;
    virtual ColumnState getState(Column column) const = 0;
    virtual void saveState(Column column) = 0;
    virtual void restoreState(Column column) = 0; ///< when the entry is opened
    virtual void showMixed(Column column) = 0;    ///< when it is closed
    virtual int flags() const { return 7; }       ///< a bit for each column shown
    virtual TreeItem* clone() = 0;                ///< null when it can't be
    virtual std::string iconPath() const = 0;
    virtual util::xml::Element buildMenu() = 0;
    virtual void onMenuCommand(int id) = 0;

    TreeItem* parentItem() const { return parent_; }
    const std::vector<TreeItem*>& childItems() const { return children_; }
    int indexInParent() const; ///< -1 without a parent

    /// Whether this entry stands below `other`, or is it.
    bool isWithin(const TreeItem* other) const;

    /// Puts a child at a place, -1 for the end, taking it out of where it was. Within the same parent
    /// the place is that before it was taken out. Nothing when the child holds this entry.
    void attach(TreeItem* child, int index = -1);

    /// Leaves the parent; whoever calls owns the entry then.
    void detach();

private:
    TreeItem* parent_ = nullptr;
    std::vector<TreeItem*> children_;
};

} // namespace tvw::rgs::core

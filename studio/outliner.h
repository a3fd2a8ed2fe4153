/// The scene's nodes as a tree: select, rename, show and hide, link by drag and drop, delete.
#pragma once

#include "adaptor/stage/session.h"

#include <QTreeWidget>

#include <functional>
#include <unordered_map>
#include <vector>

namespace tvw::rgs::studio {

class Outliner final : public QTreeWidget
{
public:
    explicit Outliner(stage::Session& session);

    void removeSelected(); ///< from the scene, in undo "Delete"
    void refresh();        ///< takes over what the scene became; cheap when nothing did

    std::function<void()> changed; ///< the user changed the scene or the selection

protected:
    void dropEvent(QDropEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void rebuild();
    void addBelow(QTreeWidgetItem* parent, stage::StageNode& node);
    void showStates(); ///< names and visibility, in place
    void showSelection();
    void takeSelection();
    void edited(QTreeWidgetItem* item, int column);
    void tell();
    [[nodiscard]] std::uint64_t structure() const; ///< differs whenever the tree does

    stage::Session& session_;
    std::unordered_map<stage::StageNode*, QTreeWidgetItem*> items_;
    std::uint64_t shown_ = 0;
    std::uint64_t version_ = 0;
    std::vector<stage::StageNode*> selected_; ///< as shown last
    bool filling_ = false;
};

} // namespace tvw::rgs::studio

/// The main window: creates tools, shows their tree, records.
#pragma once

#include "app/tool_information.h"
#include "app/tool_lists.h"
#include "app/tool_tree.h"
#include "app/window_base.h"
#include "util/xml/element.h"

#include <array>
#include <functional>
#include <map>
#include <memory>

namespace tvw::rgs::app {

/// What the main window opens beside itself. Each may be empty.
struct MainDialogDoors
{
    std::function<void(core::Instance*)> openConfiguration; ///< null: as before
    std::function<void()> refreshConfiguration;
    std::function<void(core::Instance*)> openInputs;
    std::function<void()> openPreferences;
    std::function<void()> openAbout;
    std::function<void()> openUpdates;
};

class MainDlg final : public WindowBase
{
public:
    explicit MainDlg(MainDialogDoors doors);
    ~MainDlg() override;

    void init(); ///< builds it; the core stands

    void open();
    [[nodiscard]] bool autoExpand() const;
    [[nodiscard]] bool lowPolyOnRecord() const;
    [[nodiscard]] bool resimulateFromFirst() const;

    void refreshTree();      ///< entries came, went or moved
    void refreshRunState();  ///< Record button, slow-motion spinner
    void treeEntryChanged(); ///< a name or a flag
    void beginRename(core::InstanceReference* reference);
    void
    refreshToolLists(); ///< at the next turn of the event loop: a library can change many times

    [[nodiscard]] core::InstanceReference* selected() const; ///< null: none
    void select(core::InstanceReference& reference);

    /// A window that the update check adds below the tree; once.
    void addUpdateBar(gui::Component* bar);

    /// Of the tool help; empty: the tools' pages that lie with the program.
    static constexpr const char* kHelpBase = "";

private:
    void handle(gui::Component& component, Message& message) override;
    bool handleEntry(gui::Component& component, const Message& message);
    void handleButton(int id);
    void flyOut(int button);
    void handleTree(const Message& message);
    void handleMenu(int item);
    bool handleToolItem(int item);

    void create(core::Tool& tool);
    void createGroup();
    void deleteSelected();
    void unplugAll();
    void unplugSelected();
    void cloneSelected();
    void configureSelected();
    void inputsOfSelected();
    void pressRecord();
    void pressResimulate();
    void setHeaderFlag(int column);

    void browse();
    void saveSelected();
    void fillMenus();
    void addToolItems(util::xml::Element& menus);
    void grayMenuItems();
    void fillToolListsNow();
    void showCategoryImages(Category category);
    void showToolInformation(const core::Tool& tool);

    [[nodiscard]] bool isRootSelected() const;

    struct Entry
    {
        core::Tool* tool;
        Category category;
    };
    class Timer;

    MainDialogDoors doors_;
    std::unique_ptr<ToolTreeNode> tree_;
    std::unique_ptr<Timer> popoutTimer_;
    std::array<std::string, kCategories>
        current_; ///< ids of what a click on the button creates; empty: none
    std::map<gui::Component*, Entry> entries_; ///< of the fly-outs
    std::unique_ptr<ToolInformation> information_;
};

} // namespace tvw::rgs::app

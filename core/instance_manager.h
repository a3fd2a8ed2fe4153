/// The tree of all tools.
#pragma once

#include "core/core_subsystem.h"
#include "util/result.h"
#include "util/xml/element.h"

#include <string>
#include <vector>

namespace tvw::rgs::core {

class Instance;
class InstanceReference;

class InstanceManager final : public CoreSubSystem
{
public:
    using CoreSubSystem::CoreSubSystem;
    ~InstanceManager() override;

    void init() override; ///< makes the root

    InstanceReference* root() const { return root_; }

    /// A new tool of the type, below `parent` or the root; null, and nothing stays, when that
    /// fails.
    InstanceReference* create(const std::string& pluginId, const std::string& name,
                              InstanceReference* parent);

    /// The tools of a record; the first of them, null when there is none.
    InstanceReference* createFromXml(const util::xml::Element& element, InstanceReference* parent);

    /// The tools of a saved file, packed or plain. The reason when it is none; nothing changes
    /// then.
    Status loadFile(const std::string& path, InstanceReference* parent,
                    InstanceReference** first = nullptr);

    /// All tools but the root, parents first; with onlyChecked those that take part in a run.
    std::vector<Instance*> collect(bool onlyChecked) const;

    void deleteAll(); ///< no undo

    InstanceReference* find(const std::string& name) const;
    /// A tool by the name that it bore in the file from which it came: while a file is read one of
    /// its own first.
    InstanceReference* findSaved(const std::string& name) const;

    /// Moves an entry with all below it to a place among the other children of a parent, in undo
    /// "Move tool". Below itself: nothing.
    static void move(InstanceReference& entry, InstanceReference& parent, int index);

    /// Deletes an entry and all below it, in undo "Delete Tarvo Tool"; of the root only what is
    /// below. 0, or kAlreadyRunning, and nothing is done: a run holds its tools.
    static int deleteReference(InstanceReference* reference, bool deleteNodes);

    /// Tells a tool and all below it that their tree stands.
    static void announceComplete(InstanceReference& reference);

    void destroyRoot();

private:
    using Entries = std::vector<InstanceReference*>;

    InstanceReference* root_ = nullptr;
    const Entries* loading_ = nullptr; ///< the top entries of the file that is being read
};

/// A copy of the tool and all below it, beside it, with the scene objects that hang on its nodes.
/// Null for the root or when it can't be made.
InstanceReference* cloneTool(InstanceReference& source);

} // namespace tvw::rgs::core

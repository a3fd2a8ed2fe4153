/// A kind of tool, as the core sees it: a factory of the program or of a tool file, or a saved tool.
#pragma once

#include "core/configadaptor/config_profile_manager.h"
#include "unidevice/input_profile_manager.h"
#include "util/dynamicobject.h"
#include "util/messagenode.h"

#include <string>
#include <vector>

namespace tvw::util::xml {
class Element;
}

namespace tvw::rgs::core {

class Instance;
class InstanceReference;
class Library;

enum class ToolKind { Plugin = 1, Template = 2 };

/// Belongs to its library, which it enters at construction. Its name (`MessageNode`) is its first id.
/// THE ORDER OF THE VIRTUAL OPERATIONS IS FROZEN.
class Tool : public DynamicObject, public MessageNode
{
public:
    explicit Tool(Library* library); ///< null: a tool that no library lists
    ~Tool() override;

    /// The layout of this tool's button in the tool lists.
    virtual util::xml::Element createListEntry();
    virtual std::string getDescription() const = 0;
    virtual bool isListed() const = 0;
    virtual ToolKind getKind() const = 0;
    virtual std::string getDataFolder() const = 0;       ///< below the data root
    virtual std::vector<std::string> getIds() const = 0; ///< the present one, then older ones
    virtual std::vector<std::string> getCategories() const = 0;
    virtual std::string getUserFolder() const = 0; ///< where profiles are written
    virtual std::string getDataPath() const = 0;   ///< where shipped ones lie
    virtual std::string getHelpPath() const = 0;

    /// A whole new tool with its entry; null when its making fails. An empty name: the id with "_01".
    virtual InstanceReference* createInstance(const std::string& name) = 0;

    /// The bare tool, without items, nodes and entry; null when it can't be made.
    virtual Instance* createRaw(const std::string& name) = 0;

    /// The element from which `createFromXml` makes such a tool.
    virtual void makeElement(util::xml::Element& out, const std::string& name) const = 0;

    virtual std::string getDisplayName() const { return name(); }
    virtual std::string getImagePath() const { return getDataPath() + "/images"; }

    /// What `createInstance` has made stands in the tree: the rest of the making.
    virtual void place() {}

    bool hasId(const std::string& id) const;

    ConfigProfileManager& configProfiles() { return configProfiles_; }
    unidevice::InputProfileManager& inputProfiles() { return inputProfiles_; }

    const std::vector<Instance*>& instances() const { return instances_; }
    void addInstance(Instance* instance) { instances_.push_back(instance); }
    void removeInstance(Instance* instance);

    /// A new tool's profiles: "Factory Settings" and "Start Profile" are made of the present values
    /// where they are missing.
    void prepareProfiles(Instance& instance);

    Library* library() const { return library_; }

protected:
    /// Where the stores read and write. Called once the folders are known.
    void openProfileStores(const std::string& userFolder, const std::string& dataPath);

private:
    Library* library_;
    ConfigProfileManager configProfiles_;
    unidevice::InputProfileManager inputProfiles_;
    std::vector<Instance*> instances_;
};

inline constexpr const char* kFactorySettings = "Factory Settings";
inline constexpr const char* kStartProfile = "Start Profile";

} // namespace tvw::rgs::core

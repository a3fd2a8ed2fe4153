#include "core/tool.h"

#include "core/instance.h"
#include "core/library.h"
#include "core/paths.h"
#include "util/xml/element.h"

#include <algorithm>

namespace tvw::rgs::core {

Tool::Tool(Library* library) : MessageNode("Tool"), library_(library)
{
    configProfiles_.addReadOnly(kFactorySettings);
    inputProfiles_.addReadOnly(kFactorySettings);
    if (library_)
        library_->addTool(this);
}

Tool::~Tool() = default;

util::xml::Element Tool::createListEntry() { return {}; }

bool Tool::hasId(const std::string& id) const
{
    const std::vector<std::string> ids = getIds();
    return std::find(ids.begin(), ids.end(), id) != ids.end();
}

void Tool::removeInstance(Instance* instance) { std::erase(instances_, instance); }

/// Configuration: the user's folder last, so that his profile of a shipped name wins. Inputs: first,
/// but for the profile that new tools begin with: it was shipped only until the user chose his own.
void Tool::openProfileStores(const std::string& userFolder, const std::string& dataPath)
{
    if (!userFolder.empty()) {
        inputProfiles_.setSaveFolder(joinPath(userFolder, "/inputprofiles"));
        inputProfiles_.addSource(joinPath(userFolder, "/inputprofiles"));
    }
    inputProfiles_.addSource(joinPath(dataPath, "/inputprofile.xml"));
    inputProfiles_.addSource(joinPath(dataPath, "/inputprofiles"));
    if (!userFolder.empty())
        inputProfiles_.addSource(joinPath(userFolder, "/inputprofiles/Start Profile.tvi"));
    inputProfiles_.rescan();

    configProfiles_.addSource(joinPath(dataPath, "/configprofile.xml"));
    configProfiles_.addSource(joinPath(dataPath, "/configprofiles"));
    if (!userFolder.empty()) {
        configProfiles_.setSaveFolder(joinPath(userFolder, "/configprofiles"));
        configProfiles_.addSource(joinPath(userFolder, "/configprofiles"));
    }
    configProfiles_.rescan();
}

void Tool::prepareProfiles(Instance& instance)
{
    const bool inMemory = false;
    const bool inFile = true;
    util::xml::Element present;
    if (configProfiles_.profile(kFactorySettings).isEmpty()) {
        instance.writeConfigProfile(present, kFactorySettings);
        configProfiles_.store(present, inMemory, true);
    }
    if (configProfiles_.profile(kStartProfile).childCount() == 0) {
        instance.writeConfigProfile(present, kStartProfile);
        configProfiles_.store(present, inFile, true);
    }
    if (inputProfiles_.profile(kFactorySettings).isEmpty()) {
        instance.writeInputProfile(present, kFactorySettings);
        inputProfiles_.store(present, inMemory, true);
    }
    if (inputProfiles_.profile(kStartProfile).childCount() == 0) {
        instance.writeInputProfile(present, kStartProfile);
        inputProfiles_.store(present, inFile, true);
    }
}

} // namespace tvw::rgs::core

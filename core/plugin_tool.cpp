#include "core/plugin_tool.h"

#include "core/contract/codes.h"
#include "core/documentation.h"
#include "core/instance.h"
#include "core/instance_reference.h"
#include "core/paths.h"
#include "util/xml/element.h"

#include <algorithm>
#include <memory>
#include <sstream>

namespace tvw::rgs::core {

namespace {

std::vector<std::string> splitAt(const std::string& text, char separator)
{
    std::vector<std::string> parts;
    std::istringstream in(text);
    for (std::string part; std::getline(in, part, separator);)
        parts.push_back(part);
    return parts;
}

} // namespace

Plugin::Plugin(Library* library, CCameraPlugin* factory) : Tool(library), factory_(factory)
{
    MessageNode::setName(factory_->getId());
    openProfileStores(getUserFolder(), getDataPath());
}

Plugin::~Plugin() { factory_->destroy(); }

std::string Plugin::getDescription() const { return factory_->getDescription(); }

std::string Plugin::getDisplayName() const { return factory_->getDisplayName(); }

bool Plugin::isListed() const { return !factory_->isSupported(code::unlisted); }

std::string Plugin::getDataFolder() const { return factory_->getDataFolder(); }

std::vector<std::string> Plugin::getIds() const
{
    std::vector<std::string> ids{factory_->getId()};
    if (factory_->isSupported(code::olderIds)) {
        std::vector<std::string> older;
        factory_->call(code::olderIds, &older);
        ids.insert(ids.end(), older.begin(), older.end());
        factory_->release(older);
    }
    return ids;
}

std::vector<std::string> Plugin::getCategories() const { return splitAt(factory_->getCategory(), ';'); }

std::string Plugin::getUserFolder() const
{
    return getUserPath().empty() ? std::string() : joinPath(getUserPath(), "/data/" + getDataFolder());
}

std::string Plugin::getDataPath() const { return joinPath(getPath("data"), "/" + getDataFolder()); }

namespace {

/// A page's name is the id in small letters, without what no file name likes.
std::string pageOf(const std::string& id)
{
    std::string page;
    for (const char c : id) {
        if ((c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || c == '_')
            page += c;
        else if (c >= 'A' && c <= 'Z')
            page += static_cast<char>(c - 'A' + 'a');
    }
    return page + ".md";
}

} // namespace

/// A library of others brings a page named by its data folder; ours lie together.
std::string Plugin::getHelpPath() const
{
    if (const std::string page = findPage("tools/" + pageOf(factory_->getId())); !page.empty())
        return page;
    std::string page = getDataFolder();
    std::replace(page.begin(), page.end(), '/', '_');
    std::replace(page.begin(), page.end(), '\\', '_');
    return joinPath(getPath("doc"), "/" + page + ".html");
}

Instance* Plugin::createRaw(const std::string& name)
{
    CCamera::CreateParam param(name);
    CCamera* const object = factory_->create(param);
    return object ? new Instance(this, object, name) : nullptr;
}

InstanceReference* Plugin::createInstance(const std::string& name)
{
    Instance* const instance = createRaw(name.empty() ? this->name() + "_01" : name);
    if (!instance)
        return nullptr;
    if (instance->tool()->declareConfiguration() != 0 || instance->tool()->createNodes() != 0) {
        instance->destroy();
        return nullptr;
    }
    prepareProfiles(*instance);
    instance->loadConfigProfile(configProfiles().profile(kStartProfile));
    instance->loadInputProfile(inputProfiles().profile(kStartProfile));
    return new InstanceReference(instance);
}

void Plugin::makeElement(util::xml::Element& out, const std::string& name) const
{
    out = util::xml::Tag("RGT_Plugin");
    out.setAttribute("version", "2.5");
    out.addChild(util::xml::TagWithData("type", factory_->getId()));
    if (!name.empty())
        out.addChild(util::xml::TagWithData("name", name));
}

} // namespace tvw::rgs::core

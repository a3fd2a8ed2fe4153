#include "core/core_implementation.h"

#include "core/adaptor.h"
#include "core/instance.h"
#include "core/instance_reference.h"
#include "core/log.h"
#include "core/paths.h"
#include "core/tool.h"
#include "core/tool_record.h"
#include "unidevice/property.h"
#include "util/xml/element.h"

#include <cassert>

namespace tvw::rgs::core {

namespace {

CoreImplementation* theCore = nullptr;

} // namespace

CoreImplementation::CoreImplementation(Clock& clock, Windows& windows)
    : CoreInterface("CORE"), windows_(&windows), settings_(getSettingsFile()), adaptorManager_(this),
      records_(this, clock), instances_(this), updates_(this)
{
    assert(!theCore);
    theCore = this;
}

CoreImplementation::~CoreImplementation()
{
    instances_.destroyRoot();
    CoreSubSystem::setReady(false);
    theCore = nullptr;
}

CoreImplementation& CoreImplementation::instance()
{
    assert(theCore);
    return *theCore;
}

bool CoreImplementation::exists() { return theCore != nullptr; }

// Tools.

void CoreImplementation::saveTree(XmlSink& sink)
{
    util::xml::Element record;
    writeRecord(*instances_.root(), recordflag::state, record);
    sink.take(record);
}

void CoreImplementation::saveUnboundTools(util::xml::Element& element)
{
    writeUnboundTools(*instances_.root(), element);
}

InstanceReference* CoreImplementation::createFromXml(const util::xml::Element& element)
{
    return instances_.createFromXml(element, nullptr);
}

void CoreImplementation::deleteAllInstances() { instances_.deleteAll(); }

InstanceReference* CoreImplementation::findInstance(const std::string& name)
{
    return instances_.find(name);
}

bool CoreImplementation::applyConfigProfile(const std::string& instance, const std::string& profile)
{
    InstanceReference* const reference = instances_.find(instance);
    if (!reference)
        return false;
    const util::xml::Element& stored =
        reference->instance().type()->configProfiles().profile(profile);
    if (stored.isEmpty())
        return false;
    reference->instance().loadConfigProfile(stored);
    return true;
}

std::string CoreImplementation::createNamedInstance(const std::string& pluginId)
{
    InstanceReference* const reference = instances_.create(pluginId, {}, nullptr);
    return reference ? reference->instance().name() : std::string();
}

std::string CoreImplementation::cloneInstance(const std::string& name)
{
    InstanceReference* const source = instances_.find(name);
    InstanceReference* const copy = source ? source->clone() : nullptr;
    return copy ? copy->instance().name() : std::string();
}

void CoreImplementation::deleteInstance(const std::string& name)
{
    InstanceReference* const reference = instances_.find(name);
    if (reference && InstanceManager::deleteReference(reference, true) != 0)
        log(LogKind::General, LogSeverity::Error, name + " stays: a run is on");
}

// Windows.

int CoreImplementation::openMainWindow(void* parent) { return windows_->openMainWindow(parent); }
int CoreImplementation::closeMainWindow() { return windows_->closeMainWindow(); }
bool CoreImplementation::isMainWindowOpen() { return windows_->isMainWindowOpen(); }
gui::Component* CoreImplementation::getMainComponent() { return windows_->mainComponent(); }

gui::Component* CoreImplementation::createComponent(const util::xml::Element& element)
{
    return windows_->createComponent(element);
}

void CoreImplementation::addImageTokens(gui::Component* component) { windows_->addImageTokens(component); }
void CoreImplementation::flushEvents() { windows_->flushEvents(); }

std::uint32_t CoreImplementation::messageBox(void* parent, const std::string& text,
                                             const std::string& title, std::uint32_t flags, bool force)
{
    if (settings_.get().silentMode && !force)
        return windows_->Windows::messageBox(parent, text, title, flags, force); // into the log
    return windows_->messageBox(parent, text, title, flags, force);
}

void CoreImplementation::describeProperty(const unidevice::Property& property, std::string& out)
{
    if (const unidevice::Control* const control = property.control()) {
        const std::string device = control->device ? control->device->name() : std::string();
        out = device.empty() ? control->description : device + ": " + control->description;
    } else {
        out = std::string(property.pendingControl().child("description").text());
    }
}

// Runs.

Settings CoreImplementation::getSettings() { return settings_.get(); }
void CoreImplementation::timeChanged(double time) { records_.timeChanged(time); }
bool CoreImplementation::isRunning() { return records_.isRunning(); }
bool CoreImplementation::isResimulating() { return records_.isResimulating(); }
void CoreImplementation::setHookKeys(const std::vector<HookKey>& keys) { records_.keyHook().setKeys(keys); }
int CoreImplementation::startRecord() { return records_.startRecord(); }
void CoreImplementation::stopRecord() { records_.stopRecord(); }
int CoreImplementation::getTimeScale() { return records_.getTimeScale(); }

void CoreImplementation::setTimeScale(int n)
{
    records_.setTimeScale(n);
    windows_->refreshRunState();
}

int CoreImplementation::startResimulation(double from, double to)
{
    return records_.startResimulation(from, to);
}

} // namespace tvw::rgs::core

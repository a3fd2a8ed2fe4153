#include "core/startup.h"

#include "core/adaptor.h"
#include "core/configadaptor/node.h"
#include "core/core_implementation.h"
#include "core/library_manager.h"
#include "core/log.h"
#include "core/math_script.h"
#include "core/paths.h"
#include "core/plugins/group.h"
#include "core/plugins/template_plugin.h"
#include "core/resources.h"
#include "unidevice/device_hub.h"
#include "unidevice/emulated_trinary_device.h"
#include "unidevice/keyboard_device.h"

#include <memory>

namespace tvw::rgs::core {

namespace {

std::unique_ptr<CoreImplementation> theCore;
std::unique_ptr<Windows> noWindows;

constexpr const char* kTemplateIds[] = {"template", "PRM", "PRS", "PRC"};

void beginItemUndo(const std::string& name) { adaptor()->beginUndo(name); }
void endItemUndo() { adaptor()->endUndo(); }
constexpr configadaptor::UndoBracket kItemUndo{&beginItemUndo, &endItemUndo};

void makeUserFolders(const std::string& adaptorId)
{
    if (getUserPath().empty())
        return;
    makeDirectories(joinPath(getUserPath(), "/data/core"));
    makeDirectories(joinPath(getUserPath(), "/data/" + adaptorId));
}

void makeLibraries(const CoreParts& parts)
{
    makeCoreLibrary(parts.tools);
    for (const char* const id : kTemplateIds)
        addCorePlugin(new plugins::TemplatePlugin(id, "core/template"));
    addCorePlugin(new plugins::Group);
    LibraryManager::instance().scan();
}

/// The drivers stand before the tools, which are devices of theirs.
void makeDrivers()
{
    new unidevice::DummyDriver("dummydriver");
    new unidevice::WinDriver("windriver");
}

void makeDevices(const CoreParts& parts)
{
    new unidevice::KeyboardDevice;
    if (parts.startInput)
        parts.startInput();
    new unidevice::EmulatedTrinaryDevice;
}

} // namespace

CoreInterface* startCore(const CoreParts& parts)
{
    installResourceLoader();
    if (parts.registerGui)
        parts.registerGui();
    theLog();
    registerMathScriptFactories();
    setAdaptor(parts.adaptor);
    makeUserFolders(parts.adaptor->getAdaptorId());
    makeLibraries(parts);
    makeDrivers();
    configadaptor::setUndoBracket(&kItemUndo);

    Windows* windows = parts.windows;
    if (!windows) {
        noWindows = std::make_unique<Windows>();
        windows = noWindows.get();
    }
    theCore = std::make_unique<CoreImplementation>(*parts.clock, *windows);
    CoreSubSystem::setReady(true);
    for (CoreSubSystem* const subsystem : CoreSubSystem::all())
        subsystem->init();
    if (parts.adaptor->getInterfaceVersion() != kInterfaceVersion)
        return nullptr;
    makeDevices(parts);
    windows->refreshToolLists();
    return theCore.get();
}

void shutdownCore()
{
    if (!theCore)
        return;
    theCore->records().finishResimulation();
    theCore->stopRecord();
    theCore->instances().destroyRoot();
    adaptor()->shutdown();
    LibraryManager::instance().unloadAll();
    theCore.reset();
    LibraryManager::end();
    unidevice::DeviceHub::end();
    clearMathScriptFactories();
    configadaptor::setUndoBracket(nullptr);
    setAdaptor(nullptr);
    noWindows.reset();
}

} // namespace tvw::rgs::core

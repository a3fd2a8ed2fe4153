#include "core/core_subsystem.h"

#include "core/core_implementation.h"

#include <algorithm>

namespace tvw::rgs::core {

namespace {

std::vector<CoreSubSystem*>& list()
{
    static std::vector<CoreSubSystem*> subsystems;
    return subsystems;
}

bool ready = false;

} // namespace

CoreSubSystem::CoreSubSystem(CoreImplementation* core) : core_(core)
{
    if (!ready)
        list().push_back(this);
}

CoreSubSystem::~CoreSubSystem()
{
    setReady(false);
    std::erase(list(), this);
}

CoreImplementation* CoreSubSystem::core()
{
    if (!core_)
        return nullptr;
    if (!ready) {
        core_->messageBox(nullptr, "Using CORE pointer before being correctly initialized", "Error",
                          box::ok | box::warning, true);
        return nullptr;
    }
    return core_;
}

const std::vector<CoreSubSystem*>& CoreSubSystem::all() { return list(); }

bool CoreSubSystem::isReady() { return ready; }

void CoreSubSystem::setReady(bool isReady) { ready = isReady; }

} // namespace tvw::rgs::core

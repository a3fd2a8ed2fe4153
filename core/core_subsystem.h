/// A part of the core with a place in the order of its start.
#pragma once

#include <vector>

namespace tvw::rgs::core {

class CoreImplementation;

/// Enters the process-wide list at construction (while it grows: until the core is ready) and leaves it
/// at destruction. THE ORDER OF THE VIRTUAL OPERATIONS IS FROZEN.
class CoreSubSystem
{
public:
    explicit CoreSubSystem(CoreImplementation* core);
    CoreSubSystem(const CoreSubSystem&) = delete;
    CoreSubSystem& operator=(const CoreSubSystem&) = delete;

    virtual void init() {}

    /// The core. Null, with a warning box, before it is ready.
    virtual CoreImplementation* core();

    virtual ~CoreSubSystem();

    /// Those alive, in the order of their construction.
    static const std::vector<CoreSubSystem*>& all();

    static bool isReady();
    static void setReady(bool ready);

private:
    CoreImplementation* core_;
};

} // namespace tvw::rgs::core

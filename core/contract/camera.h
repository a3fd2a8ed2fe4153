/// A tool object: one tool in one scene.
#pragma once

#include "core/contract/extendable.h"

#include <string>
#include <utility>

namespace tvw::rgs {

class CCameraPlugin;
class CInterface;

/// The runtime calls: constructor; `declareConfiguration`; then `createNodes` for a new tool or `load`
/// for one from a file; code 42 once the tree around it stands; for each run `startRun`, `tick` for
/// each frame with rising time, `stopRun`; `timeChanged` between runs; `save` before each save;
/// `destroy`. The interface is not there yet in the constructor.
class CCamera : public CExtendable
{
public:
    /// What a factory is given to make an object; lives on the caller's stack.
    class CreateParam final : public CExtendable
    {
    public:
        explicit CreateParam(std::string toolName) : name(std::move(toolName)) {}

        std::int32_t version = 100;
        CCameraPlugin* plugin = nullptr; ///< set by `CCameraPlugin::create`
        std::string name;
    };

    explicit CCamera(const CreateParam& param) : plugin_(param.plugin), name_(param.name) {}

    /// time: the start [s]. Push undo for every variable that the run changes, set the state.
    virtual void startRun(double time);

    /// Release what the run held.
    virtual void stopRun();

    /// One frame: read inputs, step the model to `time` [s], write the nodes at `time`, then refresh
    /// outputs (code 40) and configuration. Must not allocate once warm, lock, or look up by name.
    virtual void tick(double time);

    /// The host's time changed.
    virtual void timeChanged(double time);

    virtual int declareConfiguration() = 0; ///< 0 for success, else the creation is given up
    virtual int createNodes() = 0;          ///< 0 for success, else the creation is given up
    virtual int load() = 0;                 ///< 0 for success, else the tool is not made
    virtual int save() = 0;                 ///< 0 for success, else the file holds no state
    virtual void destroy() { delete this; }
    virtual ~CCamera() = default;

    CCamera(const CCamera&) = delete;
    CCamera& operator=(const CCamera&) = delete;

    CCameraPlugin* plugin() const { return plugin_; }
    const std::string& name() const { return name_; }
    void setName(std::string name) { name_ = std::move(name); } ///< the runtime's, when it renames

    CInterface* interface() const { return interface_; }
    void setInterface(CInterface* runtime) { interface_ = runtime; } ///< the runtime's, once

private:
    CCameraPlugin* plugin_;
    std::string name_;
    CInterface* interface_ = nullptr;
};

inline void CCamera::startRun(double) {}
inline void CCamera::stopRun() {}
inline void CCamera::tick(double) {}
inline void CCamera::timeChanged(double) {}

} // namespace tvw::rgs

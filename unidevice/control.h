/// One movable part of a device: an axis, a button, a key, or an output of a tool.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tvw::util::xml {
class Element;
}

namespace tvw::unidevice {

class Control;
class Device;

/// The kinds of control, as bits of a mask.
namespace kind {
inline constexpr std::uint32_t binary = 1;   ///< 0 or 1: a button, a key
inline constexpr std::uint32_t trinary = 2;  ///< -1, 0 or 1: a hat, two keys as one
inline constexpr std::uint32_t analogue = 4; ///< -1 to 1: an axis, a slider
inline constexpr std::uint32_t unbounded = 8;
inline constexpr std::uint32_t any = 65535;
} // namespace kind

/// Reads a control and is told when it goes.
class ControlTarget
{
public:
    virtual void controlDeleted(Control* control) = 0;

protected:
    ~ControlTarget() = default;
};

/// Force feedback effects (`Control::createEffect`).
class Effect;
enum class EffectKind : std::int32_t;

class Control
{
public:
    /// device     the owner, or null; not owned.
    /// threshold  a change above it counts as movement in detection.
    Control(Device* device, std::uint32_t kindMask, double threshold);

    /// A copy starts with no targets.
    Control(const Control& other);
    Control& operator=(const Control&) = delete;

    /// Fills the element as a `control` and answers it.
    virtual util::xml::Element& writeXml(util::xml::Element& element) const;

    /// Whether a stored `control` element means this one: an empty device or index means any.
    virtual bool matches(const util::xml::Element& element) const;

    /// The value after the last read of the hardware; does nothing but answer.
    virtual double value() { return current; }

    virtual void destroy() { delete this; }
    virtual bool supportsEffect(EffectKind kind);
    virtual Effect* createEffect(EffectKind kind);

    /// Tells every target.
    virtual ~Control();

    /// Whether it moved by more than its threshold at the last read.
    bool hasChanged() const;

    /// Takes a new reading; the old one becomes `previous`.
    void read(double reading)
    {
        previous = current;
        current = reading;
    }

    void addTarget(ControlTarget* target) { targets_.push_back(target); }
    void removeTarget(ControlTarget* target); ///< one entry of it

    std::uint32_t kindMask;
    double previous = 0.0;
    double current = 0.0;
    double threshold;
    std::string type;         ///< "Axis", "Slider", "Hat", "Button", a key's name, or "control"
    std::int32_t index = 0;   ///< among the device's controls of that type
    std::string description;  ///< for people
    Device* device;

private:
    std::vector<ControlTarget*> targets_;
};

} // namespace tvw::unidevice

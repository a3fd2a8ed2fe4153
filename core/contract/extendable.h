/// The root of every class of the tool contract.
///
/// The contract is the binary interface between the runtime and tools that were compiled apart from
/// it. THE ORDER OF THE VIRTUAL OPERATIONS OF EVERY CLASS IN THIS FOLDER IS FROZEN. A new ability is
/// never a new virtual operation but a new code of `call`, tested for with `isSupported` first.
///
/// Phases named in brackets at each operation:
///   [declare]  from `declareConfiguration` on, and only inside it
///   [live]     from `declareConfiguration` to `destroy`
///   [run]      between `startRun` and `stopRun`, both included
/// All operations are called on the host's main thread, none throws, and none blocks.
#pragma once

#include <cstdint>
#include <vector>

namespace tvw::rgs {

class CExtendable
{
public:
    /// A numbered operation (core/contract/codes.h lists them with their arguments).
    /// An unknown code answers 0. [live]
    virtual std::intptr_t call(std::int32_t code, void* argument);

    /// The codes that `call` understands. [live]
    virtual std::vector<std::int32_t> supportedCodes();

    /// Whether `supportedCodes` holds the code. A caller tests this before it depends on a code.
    virtual bool isSupported(std::int32_t code);

protected:
    CExtendable() = default;
    CExtendable(const CExtendable&) = default;
    CExtendable& operator=(const CExtendable&) = default;
    ~CExtendable() = default; // derived contract classes end their own table with a virtual one
};

inline std::intptr_t CExtendable::call(std::int32_t, void*) { return 0; }

inline std::vector<std::int32_t> CExtendable::supportedCodes() { return {}; }

inline bool CExtendable::isSupported(std::int32_t code)
{
    for (const std::int32_t supported : supportedCodes()) {
        if (supported == code)
            return true;
    }
    return false;
}

} // namespace tvw::rgs

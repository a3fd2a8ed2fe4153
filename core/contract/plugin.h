/// A tool type: what the library shows of it, and how its objects are made.
///
/// An external tool file exports, with C linkage:
///   std::int32_t getVersion();                            answers kToolFileVersion
///   tvw::rgs::CCameraPlugin* getPlugin(std::int32_t i);   the i-th factory, null behind the last;
///                                                         the caller ends it with destroy
#pragma once

#include "core/contract/camera.h"

#include <string>
#include <vector>

namespace tvw::rgs {

inline constexpr std::int32_t kInterfaceVersion = 23101;
inline constexpr std::int32_t kToolFileVersion = 250;

/// Codes: 16 the older ids of the type, 51 (presence) not listed.
class CCameraPlugin : public CExtendable
{
public:
    virtual CCamera* createObject(const CCamera::CreateParam& param) = 0; ///< null on failure
    virtual std::string getId() = 0;              ///< the key in files, unique over all libraries
    virtual std::string getDataFolder();          ///< below the data root; default: the id
    virtual std::string getDisplayName() = 0;
    virtual std::string getCategory() = 0;        ///< "Vehicle", "Camera", "Utility" ..., ";" between
    virtual std::string getDescription() = 0;
    virtual std::string reservedText1();
    virtual std::string reservedText2();
    virtual std::vector<std::string> getExtraCategories();
    virtual bool release(std::vector<std::string>& vector); ///< empties a vector of ours on our heap
    virtual std::int32_t getVersion();
    virtual void destroy() { delete this; }
    virtual ~CCameraPlugin() = default;

    /// Makes an object of this factory.
    CCamera* create(CCamera::CreateParam& param)
    {
        param.plugin = this;
        return createObject(param);
    }
};

inline std::string CCameraPlugin::getDataFolder() { return getId(); }
inline std::string CCameraPlugin::reservedText1() { return {}; }
inline std::string CCameraPlugin::reservedText2() { return {}; }
inline std::vector<std::string> CCameraPlugin::getExtraCategories() { return {}; }
inline bool CCameraPlugin::release(std::vector<std::string>& vector)
{
    std::vector<std::string>().swap(vector);
    return true;
}
inline std::int32_t CCameraPlugin::getVersion() { return kInterfaceVersion; }

} // namespace tvw::rgs

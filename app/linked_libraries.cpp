#include "app/linked_libraries.h"

#include "core/paths.h"
#include "core/resources.h"
#include "util/file.h"

#include <QtGlobal>
#include <nlohmann/json.hpp>

#include <LinearMath/btScalar.h>
#include <SDL_version.h>
#include <assimp/version.h>
#include <httplib.h>

namespace tvw::rgs::app {

namespace {

template <class... Parts>
std::string versionOf(Parts... parts)
{
    std::string text;
    ((text += (text.empty() ? "" : ".") + std::to_string(parts)), ...);
    return text;
}

std::string bulletVersion() // 324 is 3.24
{
    return versionOf(btGetVersion() / 100, btGetVersion() % 100);
}

std::string sdlVersion()
{
    SDL_version linked;
    SDL_GetVersion(&linked);
    return versionOf(linked.major, linked.minor, linked.patch);
}

std::string assimpVersion()
{
    return versionOf(aiGetVersionMajor(), aiGetVersionMinor(), aiGetVersionPatch());
}

std::string jsonVersion()
{
    return versionOf(NLOHMANN_JSON_VERSION_MAJOR, NLOHMANN_JSON_VERSION_MINOR,
                     NLOHMANN_JSON_VERSION_PATCH);
}

} // namespace

std::vector<LinkedLibrary> linkedLibraries()
{
    return {
        {"bullet", "Bullet " + bulletVersion(), "bullet.txt", "libbullet-dev",
         "Bullet, the collision detection, comes under the zlib licence. See bulletphysics.org."},
        {"qt", std::string("Qt ") + qVersion(), "qt.txt", "libqt5core5a",
         "Qt, the window library, comes under the GNU Lesser General Public License, version 3. "
         "See "
         "qt.io/licensing."},
        {"sdl", "SDL " + sdlVersion(), "sdl.txt", "libsdl2-2.0-0",
         "SDL, which reads joysticks and wheels, comes under the zlib licence. See libsdl.org."},
        {"httplib", std::string("cpp-httplib ") + CPPHTTPLIB_VERSION, "cpp-httplib.txt",
         "libcpp-httplib-dev",
         "cpp-httplib, which asks for new versions, comes under the MIT licence. See "
         "github.com/yhirose/cpp-httplib."},
        {"assimp", "Assimp " + assimpVersion(), "assimp.txt", "libassimp5",
         "Assimp, which reads foreign scene files, comes under a BSD licence with three clauses. "
         "See "
         "assimp.org."},
        {"json", "nlohmann json " + jsonVersion(), "json.txt", "nlohmann-json3-dev",
         "nlohmann json, which reads and writes scenes and settings, comes under the MIT licence. "
         "See "
         "json.nlohmann.me."},
        {"epoxy", std::string("libepoxy ") + RIGSTAGE_EPOXY_VERSION, "epoxy.txt", "libepoxy0",
         "libepoxy, which finds the functions of OpenGL, comes under the MIT licence. See "
         "github.com/anholt/libepoxy."},
    };
}

std::string licenceText(const LinkedLibrary& library)
{
    std::string text;
    if (core::readResource(core::getPath("data") + "/license_texts/" + library.licence, text))
        return text;
    if (const Result<std::string> installed =
            readFile("/usr/share/doc/" + library.package + "/copyright"))
        return *installed;
    return library.notice;
}

} // namespace tvw::rgs::app

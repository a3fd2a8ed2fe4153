#include "adaptor/stage/extension_reader.h"

#include "adaptor/stage/glb_writer.h"
#include "adaptor/stage/scene_writer.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

namespace tvw::rgs::stage {

namespace {

template <class T>
T valueAt(std::string_view bytes, std::size_t i)
{
    T value;
    std::memcpy(&value, bytes.data() + i * sizeof value, sizeof value);
    return value;
}

/// By exponent, eight at a time: long takes hold millions of numbers.
bool areFinite(std::string_view bytes)
{
    constexpr std::uint64_t kExponent = 0x7FF0000000000000;
    std::uint64_t bad = 0;
    for (std::size_t i = 0; i < bytes.size() / sizeof(double); ++i)
        bad |=
            static_cast<std::uint64_t>((valueAt<std::uint64_t>(bytes, i) & kExponent) == kExponent);
    return bad == 0;
}

bool doRise(std::string_view times)
{
    for (std::size_t i = 1; i < times.size() / sizeof(Flicks); ++i) {
        if (valueAt<Flicks>(times, i - 1) >= valueAt<Flicks>(times, i))
            return false;
    }
    return true;
}

} // namespace

ExtensionReader::ExtensionReader(const GltfFile& file)
    : file_(file), json_(objectIn(objectIn(file.root(), "extensions"), kExtension))
{
    if (json_.empty())
        return;
    if (const double version = numberIn(json_, "version", 0.0); version != kExtensionVersion)
        throw FileFault{"it was written by a later version of Rigstage"};
    const std::string_view bytes = file.buffer();
    if (numberIn(json_, "bytes", -1.0) != static_cast<double>(bytes.size()))
        return; // packed anew by another program
    if (textIn(json_, "fingerprint") != hexOf(fingerprintOf(bytes)))
        throw FileFault{"it is damaged: its data is not what was written"};
    usable_ = true;
}

const Json& ExtensionReader::exactOf(const Json& node)
{
    return objectIn(objectIn(node, "extensions"), kExtension);
}

bool ExtensionReader::readMatrix(const Json& node, Matrix4& out) const
{
    if (!json_.contains("matrices"))
        return false;
    const std::string_view bytes = file_.view(indexIn(json_, "matrices", kNone));
    const std::size_t index = indexIn(exactOf(node), "matrix", bytes.size() / sizeof out.m);
    if (index == kNone)
        return false;
    const std::string_view one = bytes.substr(index * sizeof out.m, sizeof out.m);
    if (!areFinite(one))
        throw FileFault{"a pose holds what is no number"};
    std::memcpy(out.m, one.data(), sizeof out.m);
    return true;
}

template <class T>
void ExtensionReader::readKeys(const Json& json, KeyData<T>& out) const
{
    if (json.empty())
        return;
    constexpr bool isPose = sizeof(T) > sizeof(double);
    out.times = file_.view(indexIn(json, "times", kNone));
    out.values = file_.view(indexIn(json, "values", kNone));
    out.doubles = indexIn(json, "size", 17);
    const std::size_t count = out.times.size() / sizeof(Flicks);
    const bool isKnown = isPose ? out.doubles == 12 || out.doubles == 16 : out.doubles == 1;
    if (!isKnown || out.times.size() % sizeof(Flicks) != 0 ||
        out.values.size() != count * out.doubles * sizeof(double))
        throw FileFault{"keys have another number of values than of times"};
    if (!doRise(out.times) || !areFinite(out.values))
        throw FileFault{"keys are out of order or hold what is no number"};
    file_.spend(count, sizeof(TrackKey<T>));
}

bool ExtensionReader::readPose(const Json& node, const std::vector<std::size_t>& channels,
                               KeyData<Matrix4>& out) const
{
    const Json& pose = objectIn(exactOf(node), "pose");
    const Json& accessors = listIn(pose, "accessors");
    const auto isSame = [](const Json& a, std::size_t b) {
        return a.is_number_unsigned() && a.get<std::size_t>() == b;
    };
    if (!std::equal(accessors.begin(), accessors.end(), channels.begin(), channels.end(), isSame))
        return false;
    readKeys(pose, out);
    return true;
}

void ExtensionReader::readLens(const Json& node, KeyData<double>& fov,
                               KeyData<double>& targetDistance) const
{
    readKeys(objectIn(exactOf(node), "fovKeys"), fov);
    readKeys(objectIn(exactOf(node), "targetDistanceKeys"), targetDistance);
}

std::size_t ExtensionReader::meshOf(const Json& node) const
{
    const Json& meshes = listIn(json_, "meshes");
    const std::size_t index = indexIn(exactOf(node), "mesh", meshes.size());
    if (index == kNone || indexIn(meshes[index], "mesh", kNone) != indexIn(node, "mesh", kNone))
        return kNone;
    return index;
}

template <class T>
void ExtensionReader::readList(const Json& views, const char* name, std::vector<T>& out) const
{
    if (!views.contains(name))
        return;
    const std::string_view bytes = file_.view(indexIn(views, name, kNone));
    if (bytes.size() % sizeof(T) != 0)
        throw FileFault{std::string("a mesh's list \"") + name + "\" ends within an entry"};
    file_.spend(bytes.size(), 1);
    out.resize(bytes.size() / sizeof(T));
    if (!out.empty())
        std::memcpy(out.data(), bytes.data(), bytes.size());
}

bool ExtensionReader::readMesh(std::size_t index, CMesh& out) const
{
    const Json& views = listIn(json_, "meshes")[index];
    if (flagIn(views, "plain", false))
        return false;
    readList(views, "vertex", out.vertex);
    readList(views, "texcoord", out.texcoord);
    readList(views, "face", out.face);
    readList(views, "tface", out.tface);
    return true;
}

} // namespace tvw::rgs::stage

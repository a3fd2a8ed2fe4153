#include "unidevice/xml_file_manager.h"

#include <algorithm>
#include <filesystem>

namespace tvw::unidevice {

using util::xml::Element;
namespace fs = std::filesystem;

namespace {

ResourceLister& resourceLister()
{
    static ResourceLister lister;
    return lister;
}

bool isEmbedded(std::string_view path)
{
    return path.starts_with(':');
}

bool isFile(const std::string& path)
{
    return path.size() >= 4 && path[path.size() - 4] == '.';
}

std::string lowerCase(std::string_view text)
{
    std::string lower(text);
    for (char& c : lower) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
    return lower;
}

/// Sorted, so that of two files with one profile the same one counts everywhere.
std::vector<std::string> listFolder(const std::string& folder, const std::string& ending)
{
    std::vector<std::string> files;
    std::error_code error;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
        std::error_code unknown;
        if (lowerCase(at->path().filename().string()).ends_with(ending) &&
            at->is_regular_file(unknown))
            files.push_back(at->path().string());
    }
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace

void setResourceLister(ResourceLister lister)
{
    resourceLister() = std::move(lister);
}

std::string XMLFileManager::saveToFile(const Element& element, const std::string& folder)
{
    const std::string name = profileName(element);
    const std::string path = folder + "/" + name + pattern().substr(1);
    Element root = root_;
    if (element.name() == root_.name()) {
        root = element;
    } else {
        for (const Element& other : othersIn(path, name))
            root.addChild(other);
        root.addChild(element);
    }
    return root.save(path) ? path : std::string();
}

bool XMLFileManager::removeFromFile(const std::string& name, const std::string& path)
{
    const std::vector<Element> others = othersIn(path, name);
    if (others.empty()) {
        std::error_code error;
        fs::remove(path, error);
        return !error;
    }
    Element root = root_;
    for (const Element& other : others)
        root.addChild(other);
    return static_cast<bool>(root.save(path));
}

std::vector<Element> XMLFileManager::othersIn(const std::string& path, const std::string& name)
{
    std::vector<Element> profiles = loadFromFile(path);
    std::erase_if(profiles, [&](const Element& profile) { return profileName(profile) == name; });
    return profiles;
}

void XMLFileManager::addReadOnly(std::string_view name)
{
    readOnlyNames_.push_back(lowerCase(name));
}

bool XMLFileManager::isReadOnly(std::string_view name) const
{
    return std::find(readOnlyNames_.begin(), readOnlyNames_.end(), lowerCase(name)) !=
           readOnlyNames_.end();
}

bool XMLFileManager::isValidName(std::string_view name)
{
    constexpr std::string_view kForbidden = "\\/:*?\"<>|.,[];=";
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' '; };
    return !name.empty() && name.find_first_of(kForbidden) == std::string_view::npos &&
           std::none_of(name.begin(), name.end(), isControl);
}

std::vector<std::string> XMLFileManager::filesOf(const std::string& source)
{
    if (isFile(source))
        return {source};
    if (!isEmbedded(source))
        return listFolder(source, pattern().substr(1));
    return resourceLister() ? resourceLister()(source, pattern()) : std::vector<std::string>();
}

void XMLFileManager::rescan()
{
    std::erase_if(entries_, [this](const Entry& entry) {
        const bool livesInMemory = saveFolder_.empty() && !files_.contains(entry.name);
        return !livesInMemory && !isReadOnly(entry.name);
    });
    files_.clear();
    for (const std::string& source : sources_) {
        for (const std::string& path : filesOf(source)) {
            for (const Element& element : loadFromFile(path)) {
                constexpr bool inMemory = false;
                if (store(element, inMemory, false) == done)
                    files_[profileName(element)] = path;
            }
        }
    }
}

int XMLFileManager::store(const Element& element, bool writeToFile, bool force)
{
    const std::string name = profileName(element);
    if (!force && isReadOnly(name))
        return refused;
    if (writeToFile && !saveFolder_.empty()) {
        if (!isValidName(name))
            return failed;
        std::error_code error;
        fs::create_directories(saveFolder_, error);
        const std::string path = saveToFile(element, saveFolder_);
        if (path.empty())
            return failed;
        const std::string former = fileOf(name);
        if (former != path && former.starts_with(saveFolder_ + "/"))
            removeFromFile(name, former); // else the next scan could find the old values in it
        files_[name] = path;
    }
    put(name, element);
    return done;
}

void XMLFileManager::put(const std::string& name, const Element& element)
{
    for (Entry& entry : entries_) {
        if (entry.name == name) {
            entry.element = element;
            return;
        }
    }
    entries_.push_back({name, element});
}

int XMLFileManager::remove(const std::string& name)
{
    const auto file = files_.find(name);
    if (isReadOnly(name) || file == files_.end() || isEmbedded(file->second))
        return refused;
    if (!removeFromFile(name, file->second))
        return failed;
    files_.erase(file);
    std::erase_if(entries_, [&](const Entry& entry) { return entry.name == name; });
    return done;
}

const Element& XMLFileManager::profile(const std::string& name) const
{
    static const Element kNone;
    for (const Entry& entry : entries_) {
        if (entry.name == name)
            return entry.element;
    }
    return kNone;
}

std::vector<std::string> XMLFileManager::names() const
{
    std::vector<std::string> all;
    for (const Entry& entry : entries_)
        all.push_back(entry.name);
    return all;
}

std::string XMLFileManager::fileOf(const std::string& name) const
{
    const auto file = files_.find(name);
    return file == files_.end() ? std::string() : file->second;
}

} // namespace tvw::unidevice

/// Profiles by name, in memory and in the files that they came from.
#pragma once

#include "util/xml/element.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tvw::unidevice {

/// The embedded files of a folder that match a pattern such as "*.tvi", as whole paths.
using ResourceLister =
    std::function<std::vector<std::string>(const std::string& folder, std::string_view pattern)>;
/// What is asked for folders whose paths begin with ":"; until it is set they are empty.
void setResourceLister(ResourceLister lister);

/// The kinds of profile differ in their files' format. THE ORDER OF THE VIRTUAL OPERATIONS IS
/// FROZEN. [main thread]
class XMLFileManager
{
public:
    /// Answers of `store` and `remove`.
    enum Outcome { done = 0, refused = 1, failed = 2 };

    /// Writes a profile into the file that bears its name; other profiles in that file stay.
    /// Answers the path, empty when it can't be written.
    virtual std::string saveToFile(const util::xml::Element& element, const std::string& folder);

    /// The profiles of a file; none when it can't be read or isn't one.
    virtual std::vector<util::xml::Element> loadFromFile(const std::string& path) = 0;

    /// Takes the profile out of the file, and the file away when none is left. False, and the file
    /// is as it was, when it can't be written.
    virtual bool removeFromFile(const std::string& name, const std::string& path);
    virtual std::string profileName(const util::xml::Element& element) = 0;
    virtual std::string pattern() = 0; ///< of the files' names, "*" and the ending
    virtual ~XMLFileManager() = default;

    /// root: what a file of profiles has around them, still without any.
    explicit XMLFileManager(util::xml::Element root) : root_(std::move(root)) {}
    XMLFileManager(const XMLFileManager&) = delete;
    XMLFileManager& operator=(const XMLFileManager&) = delete;

    /// Where new files go. Empty: profiles live in memory only.
    void setSaveFolder(std::string folder) { saveFolder_ = std::move(folder); }

    /// A file, when its fourth character from the end is ".", else a folder. Later ones come first
    /// in that they replace profiles of the same name.
    void addSource(std::string path) { sources_.push_back(std::move(path)); }

    /// A name, in any case of its letters, that only a forced store may write, and only in memory.
    void addReadOnly(std::string_view name);
    bool isReadOnly(std::string_view name) const;

    /// Reads all sources anew. What is read-only stays, as does what has no folder to be saved in.
    void rescan();

    /// refused: the name is read-only and force isn't set. failed: the file can't be written, or
    /// the name can't be a file's; then memory is as it was too.
    int store(const util::xml::Element& element, bool writeToFile, bool force);

    /// refused: the name is read-only, has no file, or is shipped with the program. failed: the
    /// file can't be written.
    int remove(const std::string& name);

    /// An empty element when there is none. Good until the next store, remove or rescan.
    const util::xml::Element& profile(const std::string& name) const;
    std::vector<std::string> names() const;            ///< in the order in which they came
    std::string fileOf(const std::string& name) const; ///< empty when it is in memory only

    /// Whether a user may give this name to a profile: it becomes a file's.
    static bool isValidName(std::string_view name);

private:
    struct Entry
    {
        std::string name;
        util::xml::Element element;
    };

    std::vector<util::xml::Element> othersIn(const std::string& path, const std::string& name);
    std::vector<std::string> filesOf(const std::string& source);
    void put(const std::string& name, const util::xml::Element& element);

    util::xml::Element root_;
    std::vector<std::string> sources_;
    std::string saveFolder_;
    std::vector<Entry> entries_;
    std::map<std::string, std::string> files_; ///< of each profile
    std::vector<std::string> readOnlyNames_;   ///< in lower case
};

} // namespace tvw::unidevice

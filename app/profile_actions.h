/// What a user does with the profiles of a tool, in any window that shows them.
#pragma once

#include "core/instance_reference.h"
#include "unidevice/xml_file_manager.h"
#include "util/xml/element.h"

#include <optional>
#include <string>

class QWidget;

namespace tvw::rgs::core {
class Instance;
class Tool;
} // namespace tvw::rgs::core

namespace tvw::rgs::app {

/// What differs in wording between the kinds of profile.
struct ProfileTexts
{
    const char* filter; ///< of the file dialogs
    const char* newTitle;
    const char* saveAsTitle;
    const char* importRefused;
    const char* importFailed;
};

/// The tool's side: its present values, and where its profiles are.
class ProfileSubject
{
public:
    /// tool: in the tree.
    explicit ProfileSubject(core::Instance& tool);
    virtual ~ProfileSubject() = default;

    /// Questions run the event loop: the tool can go while one waits. Of the others only `store`
    /// may be asked for then.
    [[nodiscard]] bool isThere() const;
    virtual unidevice::XMLFileManager& store() = 0;
    virtual util::xml::Element present(const std::string& name) = 0; ///< as a profile of that name
    virtual void load(const util::xml::Element& profile) = 0; ///< its name becomes the current one
    virtual std::string current() = 0;
    virtual void setCurrent(const std::string& name) = 0;
    /// Whether a value is another than in the profile, and that is worth a question before another
    /// profile is loaded. What the profile does not hold does not count.
    virtual bool differsFrom(const util::xml::Element&) { return false; }
    /// A profile has been deleted; neighbour: the one behind it, or ahead of it for the last.
    virtual void deleted(const std::string& name, const std::string& neighbour) = 0;
    virtual util::xml::Element fileOf(const util::xml::Element& profile) = 0; ///< with nothing else
    virtual const ProfileTexts& texts() const = 0;

protected:
    core::Instance& tool_;
    core::Tool& type_; ///< outlives the tool

private:
    core::InstanceReference::Watch entry_;
};

/// Each action asks and says what it must in boxes above the parent. What fails or is given up
/// leaves values, names and files as they were. `name`: the profile that is chosen in the window,
/// empty: none. Whoever shows names reads them anew afterwards. A bool: whether it was done.
class ProfileActions
{
public:
    /// Both outlive it; null: boxes of their own.
    ProfileActions(ProfileSubject& subject, QWidget* parent) : subject_(subject), parent_(parent) {}

    void createNew(); ///< from the factory settings
    bool save(const std::string& name);
    bool saveAs();
    void rename(const std::string& name);
    void remove(const std::string& name);
    void importFile();
    std::string exportFile(); ///< the file that was written, or empty
    bool saveAsStartup();
    /// Loads a profile; asks first whether changes are to be saved under the current name.
    void select(const std::string& name);

private:
    /// Nothing if the user gives up, or if the tool has gone meanwhile.
    std::optional<std::string> askName(const std::string& title, const std::string& prompt,
                                       const std::string& suggestion = {});
    [[nodiscard]] bool ask(const std::string& text, const std::string& title);
    [[nodiscard]] bool store(const util::xml::Element& profile);
    bool saveUnder(const std::string& name);
    [[nodiscard]] bool importProfile(util::xml::Element profile, const std::string& fallback);

    ProfileSubject& subject_;
    QWidget* parent_;
};

} // namespace tvw::rgs::app

/// A saved tool: the form in which a record stands in the tool lists, and what makes tools of it.
#pragma once

#include "core/tool.h"
#include "util/xml/element.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tvw::rgs::core {

/// One exists for each saved tool file, and for the length of a call for each record that is read.
class Template final : public Tool
{
public:
    /// record: an `RGT_Plugin`, packed or not, or an `RGT` whose first one counts; copied. path:
    /// the folder of its file, with "/" at its end; may be empty.
    Template(Library* library, const util::xml::Element& record, const std::string& path);

    std::string getDescription() const override { return {}; }
    bool isListed() const override { return true; }
    ToolKind getKind() const override { return ToolKind::Template; }
    std::string getDataFolder() const override { return "template"; }
    std::vector<std::string> getIds() const override;
    std::vector<std::string> getCategories() const override;
    std::string getUserFolder() const override;
    std::string getDataPath() const override { return getUserFolder(); }
    std::string getHelpPath() const override;
    std::string getImagePath() const override { return imagePath_; }

    /// Makes the tool and all below it; its entry stands in no tree yet. Attach it, then `place`.
    InstanceReference* createInstance(const std::string& name) override;
    Instance* createRaw(const std::string&) override { return nullptr; }
    void makeElement(util::xml::Element& out, const std::string& name) const override;

    /// Puts the nodes of tools that were newly made where the record has them: parents first, then
    /// meshes, visibility and poses, for all tools that `createInstance` made. Nothing for a record
    /// with state, whose nodes stood in the scene.
    void place() override;

    const util::xml::Element& record() const { return record_; }

private:
    /// A record and the tool that was made of it.
    using Made = std::pair<std::unique_ptr<Template, Destroyer>, InstanceReference*>;

    InstanceReference* build(const std::string& name, std::vector<Made>& made);

    util::xml::Element record_;
    std::string path_;
    std::string imagePath_;
    std::vector<std::string> categories_;
    std::vector<std::pair<const Template*, InstanceReference*>> unplaced_;
    std::vector<Made> made_;
};

/// Null when the record's type is not known.
std::unique_ptr<Template, Destroyer>
makeTemplate(Library* library, const util::xml::Element& record, const std::string& path);

} // namespace tvw::rgs::core

#include "core/configadaptor/template_config.h"

#include "util/base64.h"
#include "util/xml/number.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <string_view>
#include <vector>

namespace tvw::rgs::core::configadaptor {

using util::xml::Element;

namespace {

constexpr std::string_view kDataPathToken = "[datapath]";

std::string replaced(std::string text, std::string_view token, const std::string& by)
{
    for (std::size_t at = text.find(token); at != std::string::npos;
         at = text.find(token, at + by.size()))
        text.replace(at, token.size(), by);
    return text;
}

/// One value of the layout, by the id of its component.
struct IdData
{
    std::uint32_t id;
    std::string label;
    bool isFlag;
    double value;
    double minimum, maximum;
};

class TemplateConfig final : public Node
{
public:
    TemplateConfig(const Element& config, const std::string& dataPath);

    double valueOf(std::uint32_t id) override;
    void setValueOf(std::uint32_t id, double value) override;
    void writeProfile(Element& out) override;
    void readProfile(const Element& profile) override;
    Element buildLayout() override { return layout_; }

private:
    void collect(const Element& element);
    IdData* find(std::uint32_t id);

    Element layout_;
    std::vector<IdData> values_;
};

TemplateConfig::TemplateConfig(const Element& config, const std::string& dataPath)
    : Node(NodeKind::Template, kNoId, {}, {}, nullptr), layout_(util::xml::Tag("list"))
{
    if (config.childCount() > 0 &&
        layout_.parse(replaced(config.childAt(0).fragment(), kDataPathToken, dataPath)) != 0)
        layout_ = util::xml::Tag("list");
    collect(layout_);
}

void TemplateConfig::collect(const Element& element)
{
    const auto attribute = [&](const char* key, double fallback) {
        return util::xml::number(element.attributeValue(key)).value_or(fallback);
    };
    const bool isFlag = element.name() == "checkbox";
    const auto id = util::xml::integer(element.attributeValue("id"));
    if (id && (isFlag || element.name() == "spinner")) {
        constexpr double kAny = std::numeric_limits<double>::max();
        const double value = isFlag ? (element.attributeValue("defaultstate") == "true" ? 1.0 : 0.0)
                                    : attribute("defaultvalue", 0.0);
        const double minimum = attribute("min", -kAny);
        values_.push_back({static_cast<std::uint32_t>(*id), element.attributeValue("label"), isFlag,
                           value, minimum, std::max(minimum, attribute("max", kAny))});
    }
    for (const Element& child : element.children())
        collect(child);
}

IdData* TemplateConfig::find(std::uint32_t id)
{
    const auto found = std::find_if(values_.begin(), values_.end(),
                                    [id](const IdData& data) { return data.id == id; });
    return found == values_.end() ? nullptr : &*found;
}

double TemplateConfig::valueOf(std::uint32_t id)
{
    const IdData* const data = find(id);
    return data ? data->value : 0.0;
}

void TemplateConfig::setValueOf(std::uint32_t id, double value)
{
    IdData* const data = find(id);
    if (!data || value != value)
        return;
    data->value =
        data->isFlag ? (value != 0.0 ? 1.0 : 0.0) : std::clamp(value, data->minimum, data->maximum);
    refresh();
    Message changed(message::itemChanged, id, 0);
    originate(changed);
}

void TemplateConfig::writeProfile(Element& out)
{
    out = util::xml::Tag("group");
    out.setAttribute("id", "-1");
    for (const IdData& data : values_) {
        std::string text = data.value != 0.0 ? "1" : "0";
        if (!data.isFlag)
            text = base64Encode(
                std::string_view(reinterpret_cast<const char*>(&data.value), sizeof(double)));
        Element item = util::xml::TagWithData("item", text);
        item.setAttribute("id", std::to_string(data.id));
        if (!data.isFlag)
            item.setAttribute("type", "blob");
        if (!data.label.empty())
            item.setAttribute("label", data.label);
        out.addChild(item);
    }
}

void TemplateConfig::readProfile(const Element& profile)
{
    for (const Element& group : profile.children()) {
        if (group.name() != "group")
            continue;
        for (const Element& item : group.children()) {
            const auto id = util::xml::integer(item.attributeValue("id"));
            if (!id || item.name() != "item")
                continue;
            double value = util::xml::number(item.text()).value_or(0.0);
            if (item.attributeValue("type") == "blob") {
                const std::string bytes = base64Decode(item.text());
                if (bytes.size() < sizeof(double))
                    continue;
                std::memcpy(&value, bytes.data(), sizeof(double));
            }
            setValueOf(static_cast<std::uint32_t>(*id), value);
        }
    }
}

} // namespace

Node* makeTemplateConfig(const Element& config, const std::string& dataPath)
{
    return new TemplateConfig(config, dataPath);
}

} // namespace tvw::rgs::core::configadaptor

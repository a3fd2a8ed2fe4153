#include "core/configadaptor/profile_conversion.h"

#include <string>

namespace tvw::rgs::core::configadaptor {

using util::xml::Element;
using util::xml::Tag;
using util::xml::Text;

namespace {

/// Turns the elements of one older profile, in order.
class Converter
{
public:
    void convertChildren(const Element& from, Element& into)
    {
        for (const Element& child : from.children())
            convert(child, into);
    }

private:
    void convert(const Element& old, Element& into)
    {
        if (old.name() == "spinner")
            into.addChild(item(old, "generic", old.text()));
        else if (old.name() == "check")
            into.addChild(item(old, "generic", old.text() == "true" ? "1" : "0"));
        else if (old.name() == "combo" || old.name() == "text")
            into.addChild(item(old, "string", old.attributeValue("value")));
        else if (old.name() == "group")
            into.addChild(group(old));
        else if (old.name() == "button")
            ++nextId_;
    }

    Element item(const Element& old, std::string_view type, std::string_view content)
    {
        const std::string id = old.attributeValue("id");
        Tag made("item");
        made.setAttribute("id", id.empty() ? std::to_string(nextId_++) : id);
        made.setAttribute("label", old.attributeValue("name"));
        made.setAttribute("type", type);
        made.addChild(Text(content));
        return made;
    }

    Element group(const Element& old)
    {
        const std::string id = old.attributeValue("id");
        Tag made("group");
        made.setAttribute("id", id.empty() ? "-1" : id);
        made.setAttribute("label", old.attributeValue("name"));
        convertChildren(old, made);
        return made;
    }

    long nextId_ = 0;
};

} // namespace

bool isPresentProfile(const Element& element)
{
    return element.name() == "configprofile" &&
           element.attributeValue("version") == kProfileVersion;
}

Element convertProfile(const Element& element)
{
    if (isPresentProfile(element))
        return element;
    const bool isWrapped = element.name() == "configprofile" && element.childCount() > 0;
    const Element& source = isWrapped ? element.childAt(0) : element;
    const bool ownName = element.hasAttribute("name");
    Tag converted("configprofile");
    converted.setAttribute("version", kProfileVersion);
    converted.setAttribute("name", (ownName ? element : source).attributeValue("name"));
    converted.setAttribute("converted", "yes");
    if (source.name() == "profile")
        Converter().convertChildren(source, converted);
    return converted;
}

} // namespace tvw::rgs::core::configadaptor

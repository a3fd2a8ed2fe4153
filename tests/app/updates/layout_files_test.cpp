/// What every layout file and its images must hold to.
#include "app/window_base.h"
#include "core/library_manager.h"
#include "core/paths.h"
#include "core/resources.h"
#include "core/tool.h"
#include "gui/component.h"
#include "gui/qt/pixmap.h"
#include "tests/app/updates/fixture.h"
#include "util/factory.h"
#include "util/xml/element.h"

#include <functional>
#include <map>
#include <set>

namespace tvw::rgs::app {

namespace {

using util::xml::Element;

class LayoutFiles : public tests::WindowTest
{
protected:
    /// Calls with each layout of the program, parsed.
    void forEach(const std::function<void(const Element& layout)>& look)
    {
        const auto files = core::listResources(core::getPath("data") + "/core/layout", "*.xml");
        ASSERT_GE(files.size(), 7u);
        for (const std::string& file : files) {
            SCOPED_TRACE(file);
            Element layout;
            ASSERT_EQ(layout.loadFile(file), util::xml::code::ok);
            look(layout);
        }
    }

    static bool isComponent(const Element& element)
    {
        return AbstractFactory<gui::Component>::instance().hasFactory(std::string(element.name()));
    }

    static void forEachComponent(const Element& element,
                                 const std::function<void(const Element&)>& look)
    {
        if (!isComponent(element))
            return;
        look(element);
        for (const Element& child : element.children())
            forEachComponent(child, look);
    }
};

TEST_F(LayoutFiles, haveKnownTagsOnly)
{
    const std::set<std::string_view> common = {"tooltip", "popup", "background", "stylesheet"};
    const std::map<std::string_view, std::set<std::string_view>> own = {
        {"menubar", {"menu", "item", "separator"}},
        {"tree", {"flag"}},
        {"combobox", {"item"}},
        {"listbox", {"item"}},
    };
    forEach([&](const Element& layout) {
        ASSERT_TRUE(isComponent(layout)) << layout.name();
        forEachComponent(layout, [&](const Element& element) {
            const auto special = own.find(element.name());
            for (const Element& child : element.children()) {
                const bool isKnown =
                    child.kind() != util::xml::Kind::Tag || isComponent(child) ||
                    common.contains(child.name()) ||
                    (special != own.end() && special->second.contains(child.name()));
                EXPECT_TRUE(isKnown) << child.name() << " in " << element.name();
            }
        });
    });
}

TEST_F(LayoutFiles, buildAndComeBackAsTheyWere)
{
    forEach([](const Element& layout) {
        auto& factory = AbstractFactory<gui::Component>::instance();
        const gui::ComponentPtr built(factory.create(layout));
        ASSERT_TRUE(built);
        Element written, again;
        built->writeXml(written);
        const gui::ComponentPtr copy(factory.create(written));
        ASSERT_TRUE(copy);
        copy->writeXml(again);
        EXPECT_EQ(again.toString(), written.toString());
        std::size_t components = 0, kept = 0;
        forEachComponent(layout, [&](const Element&) { ++components; });
        forEachComponent(written, [&](const Element&) { ++kept; });
        EXPECT_EQ(kept, components) << "a container dropped a child";
    });
}

/// The lists of the fly-outs are looked up below their own button.
TEST_F(LayoutFiles, haveEachIdOnce)
{
    const std::set<std::string> repeated = {"510", "511"};
    forEach([&](const Element& layout) {
        std::set<std::string> ids;
        forEachComponent(layout, [&](const Element& element) {
            const std::string id = element.attributeValue("id");
            if (!id.empty() && !repeated.contains(id)) {
                EXPECT_TRUE(ids.insert(id).second) << id;
            }
        });
    });
}

TEST_F(LayoutFiles, explainEveryControl)
{
    const std::set<std::string_view> controls = {"button",  "flmbutton", "checkbox", "spinner",
                                                 "textbox", "combobox",  "listbox",  "tree"};
    forEach([&](const Element& layout) {
        forEachComponent(layout, [&](const Element& element) {
            if (controls.contains(element.name())) {
                EXPECT_FALSE(element.child("tooltip").text().empty())
                    << element.name() << " " << element.attributeValue("id");
            }
        });
    });
}

void expectImage(const std::string& path)
{
    EXPECT_FALSE(gui::loadPixmap(path, 1.0).isNull()) << path;
}

TEST_F(LayoutFiles, findTheirImages)
{
    const std::function<void(const Element&, const gui::Component&)> look =
        [&](const Element& element, const gui::Component& variables) {
            for (std::size_t i = 0; i < element.attributeCount(); ++i) {
                const std::string value(element.attributeAt(i).value);
                const bool isOfATool = value.find("button_product_") != std::string::npos;
                if (value.ends_with(".png") && !isOfATool)
                    expectImage(variables.expandVariables(value));
            }
            for (const Element& child : element.children())
                look(child, variables);
        };
    forEach([&](const Element& layout) {
        const gui::ComponentPtr built(AbstractFactory<gui::Component>::instance().create(layout));
        ASSERT_TRUE(built);
        addImageTokens(*built);
        look(layout, *built);
    });
}

TEST_F(LayoutFiles, everyToolHasItsImages)
{
    std::set<QByteArray> pictures;
    std::size_t tools = 0;
    for (core::Tool* const tool : core::LibraryManager::instance().listTools(true)) {
        if (tool->getIds().front() != "PRM" && tool->getIds().front() != "PRS" &&
            tool->getIds().front() != "PRC") { // these share the template's
            const QImage image =
                gui::loadPixmap(tool->getImagePath() + "/button_product_default.png", 1.0)
                    .toImage();
            pictures.insert({reinterpret_cast<const char*>(image.constBits()),
                             static_cast<int>(image.sizeInBytes())});
            ++tools;
        }
        for (const char* const state : {"default", "hover", "pressed"})
            expectImage(tool->getImagePath() + "/button_product_" + state + ".png");
    }
    EXPECT_EQ(pictures.size(), tools) << "two tools look the same";
}

TEST_F(LayoutFiles, codeFindsItsImages)
{
    for (const char* const name :
         {"treeicons/tarvo_vehicle_tools", "treeicons/tarvo_camera_tools",
          "treeicons/tarvo_accessory_tools", "treeicons/group", "treeicons/template",
          "icon_inputs_wacom", "icon_inputs_connexion", "icon_inputs_gamepad",
          "icon_inputs_keyboard", "tarvo_ico_16", "tarvo_ico_64", "ok", "warning"})
        expectImage(coreImages() + "/" + name + ".png");
}

} // namespace

} // namespace tvw::rgs::app

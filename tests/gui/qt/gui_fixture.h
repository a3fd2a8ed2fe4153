/// Windows on the offscreen platform.
#pragma once

#include "gui/component.h"
#include "tests/gui/model/listener.h"
#include "tests/support/offscreen_test.h"
#include "util/factory.h"
#include "util/xml/element.h"

#include <QApplication>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

#include <string>

namespace tvw::gui {

class GuiTest : public OffscreenTest
{
protected:
    static ComponentPtr build(const std::string& xml)
    {
        util::xml::Element element;
        EXPECT_EQ(element.parse(xml), util::xml::code::ok) << xml;
        return ComponentPtr(AbstractFactory<Component>::instance().create(element));
    }

    /// A shown dialog around the content.
    Component& open(const std::string& content, const std::string& attributes = {})
    {
        window =
            build("<dialog width='300' height='200' " + attributes + ">" + content + "</dialog>");
        window->show();
        QApplication::processEvents();
        return *window;
    }
    Component& at(int id)
    {
        Component* const found = window->findById(id);
        EXPECT_NE(found, nullptr) << id;
        return *found;
    }
    QWidget* widget(int id) { return at(id).widget(); }
    template <class W>
    W& widgetAs(int id)
    {
        return *dynamic_cast<W*>(widget(id));
    }

    ComponentPtr window;
};

} // namespace tvw::gui

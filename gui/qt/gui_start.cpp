#include "gui/qt/gui_start.h"

#include "gui/component_factory.h"
#include "gui/qt/background.h"
#include "gui/qt/button.h"
#include "gui/qt/checkbox.h"
#include "gui/qt/combobox.h"
#include "gui/qt/containers.h"
#include "gui/qt/dialog.h"
#include "gui/qt/flmbutton.h"
#include "gui/qt/graph.h"
#include "gui/qt/label.h"
#include "gui/qt/listbox.h"
#include "gui/qt/menubar.h"
#include "gui/qt/my_app.h"
#include "gui/qt/progressbar.h"
#include "gui/qt/spinner.h"
#include "gui/qt/style.h"
#include "gui/qt/textbox.h"
#include "gui/qt/tree.h"

namespace tvw::gui {

namespace {

bool haveApplication()
{
    return qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr;
}

/// Builds nothing without an application object, in which no widget can live.
template <class Kind>
class WidgetFactory : public ComponentFactory<Kind>
{
public:
    Component* create(const util::xml::Element& element) const override
    {
        return haveApplication() ? ComponentFactory<Kind>::create(element) : nullptr;
    }
};

template <class Kind>
class PaintedFactory : public BackgroundFactory<Kind>
{
public:
    Background* create(const util::xml::Element& element) const override
    {
        return haveApplication() ? BackgroundFactory<Kind>::create(element) : nullptr;
    }
};

template <class... Kinds>
void addComponents()
{
    (addFactoryOnce<Component>(new WidgetFactory<Kinds>), ...);
}

template <class... Kinds>
void addBackgrounds()
{
    (addFactoryOnce<Background>(new PaintedFactory<Kinds>), ...);
}

} // namespace

void registerComponents()
{
    using namespace component::qt;
    addComponents<Dialog, Button, FlmButton, List, Border, Scroll, TextBox, ComboBox, Group,
                  Spinner, Label, CheckBox, Tree, Graph, Progressbar, ListBox, Menubar>();
    addBackgrounds<background::qt::ColorFill, background::qt::LinearGradient>();
}

void unregisterComponents()
{
    AbstractFactory<Background>::instance().clear();
    AbstractFactory<Component>::instance().clear();
}

bool hasDisplay()
{
    return qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || qEnvironmentVariableIsSet("DISPLAY") ||
           qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
}

Status startGui()
{
    if (!haveApplication()) {
        if (QCoreApplication::instance() != nullptr)
            return Status::failure("this process runs an application that has no windows");
        if (!hasDisplay())
            return Status::failure("there is no display to show a window on");
        QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
        QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
        QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
            Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
        // Never ended: at process exit Qt's own statics, which it needs, would be gone before it.
        static int count = 0;
        static MyApp* const application = new MyApp(count, nullptr);
        applyStyle(*application);
    }
    softenInactiveHighlight();
    registerComponents();
    return {};
}

} // namespace tvw::gui

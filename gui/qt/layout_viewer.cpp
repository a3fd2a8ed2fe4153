#include "gui/qt/layout_viewer.h"

#include "gui/qt/gui_start.h"
#include "util/factory.h"
#include "util/file.h"
#include "util/xml/element.h"

#include <QApplication>
#include <QBuffer>
#include <QPixmap>
#include <QWidget>

#include <cstdio>

namespace tvw::gui {

using util::xml::Element;

namespace {

const char* reasonOf(int code)
{
    switch (code) {
    case util::xml::code::noRoot:
        return "it does not begin with a tag";
    case util::xml::code::unclosed:
        return "a tag is not closed";
    case util::xml::code::mismatched:
        return "a closing tag does not match its opening one";
    default:
        return "an attribute is malformed, or tags are nested too deep";
    }
}

/// The element as the only child of a dialog that takes its size.
Element inDialog(const Element& element)
{
    util::xml::Tag dialog("dialog");
    for (const char* const key : {"width", "height", "label"}) {
        if (element.hasAttribute(key))
            dialog.setAttribute(key, element.attributeValue(key));
    }
    dialog.addChild(element);
    return dialog;
}

/// What a platform without a display says about what it can't do is no news here.
void onlyErrors(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        std::fprintf(stderr, "%s\n", qPrintable(text));
}

Status draw(Component& window, const std::string& path)
{
    QApplication::processEvents(); // the layouts settle
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    window.widget()->grab().save(&buffer, "PNG");
    return writeFileAtomically(path, {bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

} // namespace

Result<ComponentPtr> loadLayout(const std::string& path)
{
    using Outcome = Result<ComponentPtr>;
    const Result<std::string> text = readFile(path);
    if (!text)
        return Outcome::failure(text.reason());
    Element element;
    const int code = element.parse(*text);
    if (code != util::xml::code::ok)
        return Outcome::failure("cannot show " + path + ": " + reasonOf(code));
    const bool isWindow = element.name() == "dialog";
    ComponentPtr window(
        AbstractFactory<Component>::instance().create(isWindow ? element : inDialog(element)));
    if (!window || (!isWindow && window->childCount() == 0))
        return Outcome::failure("cannot show " + path + ": there is no component \"" +
                                std::string(element.name()) + "\"");
    return window;
}

Status showLayout(const std::string& path, const std::string& imagesFolder,
                  const std::string& screenshot)
{
    if (!screenshot.empty())
        qInstallMessageHandler(onlyErrors);
    if (const Status started = startGui(); !started)
        return started;
    Result<ComponentPtr> loaded = loadLayout(path);
    if (!loaded)
        return Status::failure(loaded.reason());
    Component& window = **loaded;
    for (const char* const name : {"[images]", "[coreimages]", "[coreicons]", "[datapath]"})
        window.setVariable(name, imagesFolder);
    window.show();
    if (!screenshot.empty())
        return draw(window, screenshot);
    QApplication::exec(); // until its last window is closed
    return {};
}

} // namespace tvw::gui

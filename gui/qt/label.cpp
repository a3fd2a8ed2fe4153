#include "gui/qt/label.h"

#include "gui/qt/frame.h"
#include "gui/qt/pixmap.h"

namespace tvw::gui::component::qt {

namespace {

Qt::Alignment textAlignment(HAlign horizontal, VAlign vertical)
{
    constexpr Qt::AlignmentFlag kHorizontal[] = {Qt::AlignLeft, Qt::AlignLeft, Qt::AlignRight,
                                                 Qt::AlignHCenter};
    constexpr Qt::AlignmentFlag kVertical[] = {Qt::AlignVCenter, Qt::AlignTop, Qt::AlignBottom,
                                               Qt::AlignVCenter};
    return kHorizontal[static_cast<int>(horizontal)] | kVertical[static_cast<int>(vertical)];
}

} // namespace

Label::Label(const util::xml::Element& element) : QtComponent(element)
{
    Label::applyAll();
    Label::applyLabel();
}

void Label::applyAll()
{
    applyFrame(*this, fields_.style);
    setAlignment(textAlignment(fields_.halign, fields_.valign));
    setWordWrap(fields_.wrap);
    const Qt::TextInteractionFlags links =
        Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard;
    if (fields_.selectable)
        setTextInteractionFlags(links | Qt::TextSelectableByMouse);
    else
        setTextInteractionFlags(fields_.hyperlinks ? links : Qt::NoTextInteraction);
    setOpenExternalLinks(fields_.hyperlinks);
}

void Label::setStyle(FrameStyle style)
{
    component::Label::setStyle(style);
    applyAll();
}

void Label::setHalign(HAlign align)
{
    component::Label::setHalign(align);
    applyAll();
}

void Label::setValign(VAlign align)
{
    component::Label::setValign(align);
    applyAll();
}

void Label::setWrap(bool value)
{
    component::Label::setWrap(value);
    applyAll();
}

void Label::setFlags(int flags)
{
    component::Label::setFlags(flags);
    applyAll();
}

void Label::setImagePath(const std::string& path)
{
    component::Label::setImagePath(path);
    if (isShown())
        showImage();
}

void Label::applyLabel()
{
    setText(QString::fromStdString(label()));
}

void Label::build()
{
    if (!imagePath().empty())
        showImage();
}

void Label::showImage()
{
    const QPixmap image = loadPixmap(expandVariables(imagePath()), devicePixelRatioF());
    if (image.isNull()) {
        clear(); // an empty text would leave the former image
        applyLabel();
        return;
    }
    setPixmap(image);
    const QSize size = image.size() / image.devicePixelRatio();
    const Size extent{size.width(), size.height()};
    setMinSize(extent);
    setMaxSize(extent);
    setDesiredSize(extent);
    component::Label::setSize(extent);
}

} // namespace tvw::gui::component::qt

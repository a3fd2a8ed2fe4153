#include "gui/qt/button.h"

#include "gui/qt/color.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>

namespace tvw::gui::component::qt {

Button::Button(const util::xml::Element& element) : QtComponent(element)
{
    Button::setDefault(fields_.isDefault);
    Button::setToggle(fields_.toggle);
    QPushButton::setFlat(fields_.flat);
    Button::applyLabel();
    QObject::connect(this, &QPushButton::pressed, this, [this] { notify(message::buttonPressed); });
    QObject::connect(this, &QPushButton::released, this,
                     [this] { notify(message::buttonReleased); });
    QObject::connect(this, &QPushButton::clicked, this,
                     [this](bool isChecked) { clickedNow(isChecked); });
}

void Button::applyLabel()
{
    setText(QString::fromStdString(label()));
}

void Button::setImage(int index, const std::string& path)
{
    component::Button::setImage(index, path);
    if (isShown())
        loadImages();
}

void Button::clearImages()
{
    component::Button::clearImages();
    images_.clear();
    repaint();
}

void Button::setToggle(bool value)
{
    component::Button::setToggle(value);
    setCheckable(value);
}

void Button::setChecked(bool value)
{
    component::Button::setChecked(value);
    QPushButton::setChecked(value);
}

void Button::setFlat(bool value)
{
    component::Button::setFlat(value);
    QPushButton::setFlat(value);
}

void Button::setFlatColorDefault(Color color)
{
    component::Button::setFlatColorDefault(color);
    repaint();
}

void Button::setFlatColorPressed(Color color)
{
    component::Button::setFlatColorPressed(color);
    repaint();
}

void Button::setFlatColorHover(Color color)
{
    component::Button::setFlatColorHover(color);
    repaint();
}

void Button::setDefault(bool value)
{
    component::Button::setDefault(value);
    setAutoDefault(value); // else Return in a text box would press the window's first button
    QPushButton::setDefault(value);
}

void Button::build()
{
    loadImages();
    if (childCount() > 0)
        box_.build(*this, *this, {});
}

void Button::loadImages()
{
    images_.load(*this, fields_.images, devicePixelRatioF());
    if (hasImages()) {
        setMinSize(images_.size());
        setMaxSize(images_.size());
    }
    repaint();
}

void Button::clickedNow(bool isChecked)
{
    if (childCount() > 1)
        showNextChild();
    if (fields_.toggle)
        notify(message::buttonClicked, isChecked ? 1 : 0);
    else
        notify(message::buttonClicked);
}

void Button::showNextChild()
{
    Component* const present = component::Button::childAt(currentChild());
    if (present->isShown()) {
        present->hide();
        box_.remove(*present);
    }
    nextChild();
    if (isShown())
        component::Button::childAt(currentChild())->show();
}

Color Button::flatColor() const
{
    if (isDown())
        return fields_.flatPressed;
    return underMouse() && QPushButton::isEnabled() ? fields_.flatHover : fields_.flatDefault;
}

void Button::paintContent(QPaintEvent* event)
{
    if (!flat() && !hasImages()) {
        QPushButton::paintEvent(event);
        return;
    }
    QPainter painter(this);
    if (flat())
        painter.fillRect(rect(), toQColor(flatColor()));
    if (hasImages()) {
        painter.setOpacity(QPushButton::isEnabled() || !images_.lackDisabled() ? 1.0 : 0.4);
        painter.drawPixmap(0, 0, images_.of(*this));
        painter.setOpacity(1.0);
    } else {
        painter.setPen(
            palette().color(QPushButton::isEnabled() ? QPalette::Normal : QPalette::Disabled,
                            QPalette::ButtonText));
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextShowMnemonic, text());
    }
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

} // namespace tvw::gui::component::qt
